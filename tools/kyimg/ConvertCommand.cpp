#include "ConvertCommand.h"

#include "Conversion.h"
#include "Errors.h"
#include "FrameReader.h"
#include "OutputFile.h"
#include "OutputFormat.h"
#include "StandardStreams.h"
#include "TypeNames.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <utility>

namespace kyimg {

namespace {

/// "film.png" is "film-0007.png" for the seventh of several frames.
std::string NumberedPath(const std::string& output, std::uint64_t number) {
    if (output == "-") return output;
    std::filesystem::path path(output);
    const std::string extension = path.extension().string();
    path.replace_extension();
    path += fmt::format("-{:04}{}", number, extension);
    return path.string();
}

OutputFormat ChooseFormat(const ConvertOptions& options, const Conversion& conversion, const FrameRange& range) {
    const OutputFormat format = FindOutputFormat(options.output, options.format);
    if (format != OutputFormat::Raw && !conversion.MakesPicture())
        throw UsageError(fmt::format("{} can only be written as raw", DescribeType(conversion.GetDestinationType())));
    CheckOutput(options.output);
    if (options.output == "-" && format == OutputFormat::Png && !range.IsSingle())
        throw UsageError("several PNGs cannot follow one another on standard output: use ppm or raw, or name a file");
    return format;
}

}  // namespace

void RunConvert(const ConvertOptions& options) {
    Conversion conversion(options);
    const FrameRange range = ParseFrames(options.frames);
    const OutputFormat format = ChooseFormat(options, conversion, range);
    FrameReader reader(options, conversion.GetSource(), range, "--frames all");

    const bool showsProgress = !options.quiet && !range.IsSingle() && IsTerminal(stderr);
    bool isFirst = true;
    while (reader.Next()) {
        if (std::exchange(isFirst, false)) conversion.Adapt(reader.GetFrame());  // to all frames of a film
        const std::vector<std::uint8_t> contents = Encode(format, conversion.Convert(reader.GetFrame()));
        WriteOutput(range.IsSingle() ? options.output : NumberedPath(options.output, reader.GetNumber()), contents);
        if (showsProgress) fmt::print(stderr, "\rframe {}", reader.GetNumber());
    }
    if (showsProgress) fmt::print(stderr, "\n");
    if (!options.quiet) conversion.PrintNotes();
}

}  // namespace kyimg
