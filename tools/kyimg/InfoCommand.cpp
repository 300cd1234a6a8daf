#include "InfoCommand.h"

#include "ConvertOptions.h"
#include "ConverterChoice.h"
#include "Errors.h"
#include "SourceLines.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>
#include <vector>

namespace kyimg {

namespace {

std::string ColourSpaceText(const KyPixelType& type) {
    switch (type.GetTypeID() & KY_COLOUR_SPACE_MASK) {
        case KY_COLOUR_SPACE_GRAYSCALE: return "gray";
        case KY_COLOUR_SPACE_RGB: return type.IsBayerPattern() ? "RGB, Bayer mosaic" : "RGB";
        case KY_COLOUR_SPACE_YUV: return "YUV";
        default: return "unknown";
    }
}

std::string LayoutText(std::int64_t id) {
    std::vector<const char*> flags;
    if ((id & KY_TYPE_NORMALIZED) != 0) flags.push_back("normalized (samples left-aligned)");
    if ((id & KY_TYPE_INTERLACED) != 0) flags.push_back("interlaced (two fields)");
    if ((id & KY_TYPE_PACKED) != 0) flags.push_back("packed");
    if ((id & KY_TYPE_PLANAR) != 0) flags.push_back("planar");
    return flags.empty() ? "plain" : fmt::format("{}", fmt::join(flags, ", "));
}

const char* TapText(std::int64_t id) {
    switch (id & KY_TAP_LAYOUT_MASK) {
        case KY_TAP_SINGLE: return "single";
        case KY_TAP_LEFT_RIGHT: return "dual, left + right";
        case KY_TAP_LEFT_RIGHT_INVERTED: return "dual, left + right inverted";
        case KY_TAP_LEFT_INVERTED_RIGHT: return "dual, left inverted + right";
        case KY_TAP_LEFT_INVERTED_RIGHT_INVERTED: return "dual, left inverted + right inverted";
        case KY_TAP_DUAL_LINES: return "dual lines";
        default: return "unknown";
    }
}

/// Of a frame as kyimg convert reads it; "-" when there is none of this size.
std::string FrameBytesText(const KyPixelConverter& converter, const ImageSize& size) {
    try {
        return std::to_string(SourceLines(converter, size, ConvertOptions()).GetFrameBytes());
    } catch (const Failure&) {  // such as an odd width of packed pairs
        return "-";
    }
}

/// Converters of a type do not all read frames of the same size: 24-bit types may have 3 or 4 bytes for a pixel.
void PrintDestinations(std::int64_t source, const ImageSize& size) {
    fmt::print("\nconverts to                 frame bytes read\n");
    std::int64_t destination = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumConverterFrom(index, source, destination); ++index)
        fmt::print("  {}  {:>12}  {}\n", FormatTypeID(destination),
                   FrameBytesText(FindConverter(source, destination), size),
                   KyPixelTypeFactory::GetPixelTypeName(destination));
}

}  // namespace

CLI::App* AddInfoCommand(CLI::App& app, InfoOptions& options) {
    CLI::App* const command = app.add_subcommand("info", "Explain a pixel type: its ID, sizes, where it converts to");
    command->add_option("TYPE", options.type, "ID as 0x20010 or decimal, or display name")->required();
    command->add_option("-s,--size", options.size, "Image size of the example (640x480)");
    return command;
}

void RunInfo(const InfoOptions& options) {
    const ImageSize size = ParseSize(options.size);
    const std::int64_t id = FindType(options.type);
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);

    fmt::print("{}\n\n", DescribeType(id));
    fmt::print("format index   0x{:02X}\n", id & KY_TYPE_INDEX_MASK);
    fmt::print("colour space   {}\n", ColourSpaceText(type));
    fmt::print("layout         {}\n", LayoutText(id));
    fmt::print("taps           {}\n", TapText(id));
    fmt::print("bits, bytes    {}, {}\n", type.GetPixelBitSize(), type.GetPixelByteSize());
    fmt::print("buffer         {} bytes for {}x{}\n", type.GetBufferSizeFor(size.width, size.height), size.width,
               size.height);
    PrintDestinations(id, size);
}

}  // namespace kyimg
