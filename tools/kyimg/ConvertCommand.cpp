#include "ConvertCommand.h"

#include "Conversion.h"
#include "Errors.h"
#include "OutputFile.h"
#include "OutputFormat.h"
#include "RawInput.h"
#include "StandardStreams.h"
#include "TypeNames.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>

namespace kyimg {

namespace {

/// Nothing is written when the size of the input already tells that it does not fit.
void CheckInputSize(std::uint64_t available, const Conversion& conversion, const FrameRange& range) {
    const std::uint64_t needed = conversion.GetSourceFrameSize();
    const std::uint64_t whole = available / needed;
    if (range.last == FrameRange::kNoEnd) {
        if (available % needed != 0 || whole == 0)
            throw Failure(fmt::format("input holds {} bytes, which is no whole number of frames: {} needs {} each",
                                      available, conversion.DescribeSource(), needed));
    } else if (range.mayBeMore) {
        if (whole < range.last)
            throw Failure(fmt::format("input holds {} bytes, frame {} of {} ends at {}", available, range.last,
                                      conversion.DescribeSource(), range.last * needed));
    } else if (available != needed) {
        const bool severalFrames = whole > 1 && available % needed == 0;
        throw Failure(fmt::format("frame holds {} bytes, {} needs {}{}", available, conversion.DescribeSource(), needed,
                                  severalFrames ? fmt::format(" (for {} frames give --frames all)", whole) : ""));
    }
}

/// The next frame; false at the end of an input that may end here.
bool ReadFrame(RawInput& input, const Conversion& conversion, const FrameRange& range, std::uint64_t number,
               std::vector<std::uint8_t>& frame) {
    const std::uint64_t needed = conversion.GetSourceFrameSize();
    const std::uint64_t held = input.Read(frame.data(), needed);
    if (held == 0 && number > 1 && range.last == FrameRange::kNoEnd) return false;
    if (held < needed)
        throw Failure(fmt::format("frame {}holds {} bytes, {} needs {}",
                                  range.mayBeMore || range.last > 1 ? fmt::format("{} ", number) : "", held,
                                  conversion.DescribeSource(), needed));

    std::uint8_t next = 0;
    if (!range.mayBeMore && range.IsSingle() && input.Read(&next, 1) != 0)
        throw Failure(fmt::format("frame holds more than the {} bytes that {} needs (give --frames for several)",
                                  needed, conversion.DescribeSource()));
    return true;
}

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
    if (options.output == "-" && IsTerminal(stdout))
        throw UsageError("pictures are not for a terminal: redirect standard output or name a file");
    if (options.output == "-" && format == OutputFormat::Png && !range.IsSingle())
        throw UsageError("several PNGs cannot follow one another on standard output: use ppm or raw, or name a file");
    return format;
}

}  // namespace

void RunConvert(const ConvertOptions& options) {
    const Conversion conversion(options);
    const FrameRange range = ParseFrames(options.frames);
    const OutputFormat format = ChooseFormat(options, conversion, range);
    RawInput input(options.input);
    if (options.skipBytes > 0) input.Skip(options.skipBytes);
    if (const auto available = input.GetRemainingSize()) CheckInputSize(*available, conversion, range);

    const bool showsProgress = !options.quiet && !range.IsSingle() && IsTerminal(stderr);
    std::vector<std::uint8_t> frame(conversion.GetSourceFrameSize() + Conversion::kSlack);
    for (std::uint64_t number = 1; number <= range.last; ++number) {
        if (!ReadFrame(input, conversion, range, number, frame)) break;
        if (number < range.first) continue;
        const std::vector<std::uint8_t> contents = Encode(format, conversion.Convert(frame));
        WriteOutput(range.IsSingle() ? options.output : NumberedPath(options.output, number), contents);
        if (showsProgress) fmt::print(stderr, "\rframe {}", number);
    }
    if (showsProgress) fmt::print(stderr, "\n");
    if (!options.quiet)
        for (const std::string& note : conversion.GetNotes()) fmt::print(stderr, "kyimg: note: {}\n", note);
}

}  // namespace kyimg
