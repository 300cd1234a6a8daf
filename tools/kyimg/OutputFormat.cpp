#include "OutputFormat.h"

#include "Errors.h"
#include "PngWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace kyimg {

namespace {

struct FormatName {
    const char* name;
    OutputFormat format;
};

constexpr FormatName kFormatNames[] = {{"png", OutputFormat::Png},
                                       {"ppm", OutputFormat::Pnm},
                                       {"pgm", OutputFormat::Pnm},
                                       {"pnm", OutputFormat::Pnm},
                                       {"raw", OutputFormat::Raw}};

/// Samples keep their own range, which the header states.
std::vector<std::uint8_t> EncodePnm(const PictureRows& rows) {
    const PictureLayout& layout = rows.GetLayout();
    std::vector<std::uint8_t> bytes;
    fmt::format_to(std::back_inserter(bytes), "P{}\n{} {}\n{}\n", layout.channels == 1 ? 5 : 6, rows.GetWidth(),
                   rows.GetHeight(), (1U << layout.bits) - 1);
    const std::size_t headerSize = bytes.size();
    bytes.resize(headerSize + rows.GetRowSize() * rows.GetHeight());
    for (std::uint32_t y = 0; y < rows.GetHeight(); ++y)
        rows.CopyRow(y, bytes.data() + headerSize + y * rows.GetRowSize());
    return bytes;
}

}  // namespace

OutputFormat FindOutputFormat(const std::string& path, const std::string& name) {
    std::string wanted = name;
    if (wanted.empty() && path != "-") {
        wanted = std::filesystem::path(path).extension().string();
        if (!wanted.empty()) wanted.erase(0, 1);
    }
    std::ranges::transform(wanted, wanted.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    for (const FormatName& known : kFormatNames)
        if (wanted == known.name) return known.format;
    if (!name.empty()) throw UsageError(fmt::format("unknown format \"{}\"; png, ppm and raw can be written", name));
    throw UsageError(fmt::format("what to write to {} is not clear: name the file .png, .ppm or .raw, or give --format",
                                 path == "-" ? "standard output" : path));
}

std::vector<std::uint8_t> Encode(OutputFormat format, const ConvertedFrame& frame) {
    switch (format) {
        case OutputFormat::Png: return EncodePng(PictureRows(frame));
        case OutputFormat::Pnm: return EncodePnm(PictureRows(frame));
        case OutputFormat::Raw: break;
    }
    return frame.bytes;
}

}  // namespace kyimg
