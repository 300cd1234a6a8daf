#include "FrameWriter.h"

#include "Errors.h"

#include <fmt/format.h>

#include <filesystem>

namespace kyimg {

FrameWriter::FrameWriter(const ConvertOptions& givenOptions, const FrameRange& range)
    : options(givenOptions), limits{options.input, options.noClobber},
      format(FindOutputFormat(options.output, options.format)),
      isNumbered(!range.IsSingle() && !IsStream(options.output)) {
    if (!isNumbered) CheckOutput(options.output, limits);
    if (!isNumbered && !range.IsSingle() && HoldsOneFrame(format))
        throw UsageError("several pictures of this format cannot follow one another: use ppm or raw, or name a file");
}

/// "film.png" is "film-0007.png" for the seventh of several frames.
std::string FrameWriter::PathOf(std::uint64_t number) const {
    if (!isNumbered) return options.output;
    std::filesystem::path path(options.output);
    const std::string extension = path.extension().string();
    path.replace_extension();
    path += fmt::format("-{:04}{}", number, extension);
    return path.string();
}

namespace {

void WriteFrame(const std::string& path, const OutputLimits& limits, OutputFormat format, const Encoding& encoding,
                const ConvertedFrame& frame) {
    OutputFile file(path, limits);
    Encode(format, encoding, frame, [&file](std::span<const std::uint8_t> bytes) { file.Write(bytes); });
    file.Finish();
}

}  // namespace

void FrameWriter::Write(const ConvertedFrame& frame, std::uint64_t number) const {
    WriteFrame(PathOf(number), limits, format, options.encoding, frame);
}

void WritePicture(const std::string& path, const OutputLimits& limits, const ConvertedFrame& picture) {
    const OutputFormat format = FindOutputFormat(path, "");
    CheckHolds(format, picture);
    WriteFrame(path, limits, format, {}, picture);
}

}  // namespace kyimg
