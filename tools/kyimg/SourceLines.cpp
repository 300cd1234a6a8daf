#include "SourceLines.h"

#include "Errors.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace kyimg {

namespace {

struct PixelGroup {
    std::uint32_t pixels;
    std::uint32_t bytes;  ///< 0: as many as the converter says
};

/// Pixels that share their colour.
PixelGroup GroupOf(std::int64_t id) {
    if ((id & KY_COLOUR_SPACE_MASK) != KY_COLOUR_SPACE_YUV) return {1, 0};
    switch (id & KY_TYPE_INDEX_MASK) {
        case 0x01: return {2, 4};
        case 0x02: return {2, 8};
        case 0x06: return {4, 6};
        default: return {1, 0};
    }
}

/// Two pixels share three bytes.
bool IsPackedInPairs(std::int64_t id) {
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
    const bool isPacked = (id & KY_TYPE_PACKED) != 0;
    const bool hasOneSample = (id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE || type.IsBayerPattern();
    return isPacked && hasOneSample && (type.GetPixelBitSize() == 10 || type.GetPixelBitSize() == 12);
}

/// Nothing that the converter does may depend on where lines end.
void CheckContinuous(std::int64_t source, std::int64_t destination, const ConvertOptions& options) {
    if (options.stride != 0)
        throw UsageError(
            "--continuous and --line-bytes contradict each other: either pairs run on over the ends of lines, "
            "or each line starts at a place of its own");
    constexpr std::int64_t kByLines = KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK;
    if (!IsPackedInPairs(source) || (source & kByLines) != 0)
        throw UsageError(
            fmt::format("--continuous is for pixels packed in pairs, of a single tap and not interlaced, not for {}",
                        DescribeType(source)));
    const bool becomesColour = KyPixelTypeFactory::FindPixelType(source)->IsBayerPattern() &&
                               !KyPixelTypeFactory::FindPixelType(destination)->IsBayerPattern();
    if (becomesColour || IsPackedInPairs(destination) || (destination & KY_TYPE_PLANAR) != 0)
        throw UsageError(fmt::format("--continuous cannot go to {} at once: unpack first", DescribeType(destination)));
}

void CheckWidth(std::int64_t source, std::uint32_t width) {
    if (IsPackedInPairs(source) && width % 2 != 0)
        throw Failure(
            fmt::format("{} packs pixels in pairs, and a line of {} pixels would end within one: the width "
                        "must be even (or give --continuous, when pairs go on from line to line)",
                        DescribeType(source), width));
}

bool IsInLinePairs(std::int64_t id) { return (id & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES; }

}  // namespace

SourceLines::SourceLines(const KyPixelConverter& converter, ImageSize size, const ConvertOptions& options)
    : shown(size), converted(size), pixelStride(size.width), fileLines(size.height) {
    const std::int64_t source = converter.GetSourceType();
    const std::int64_t destination = converter.GetDestinationType();
    if (options.isContinuous) {
        CheckContinuous(source, destination, options);
        JoinLines();
    } else {
        CheckWidth(source, size.width);
        WidenLines(converter);
        if ((source & KY_TYPE_INTERLACED) != 0) converted.height += size.height % 2;
        if (IsInLinePairs(source) && !IsInLinePairs(destination)) {
            shown.height -= size.height % 2;
            converted.height = shown.height;
        }
    }
    lineBytes = converter.GetSourceByteSize(converted.width);
    fileStride = options.stride == 0 ? lineBytes : options.stride;
    if (fileStride < lineBytes)
        throw UsageError(fmt::format("--line-bytes: a line of {} pixels of {} has {} bytes, not {}", size.width,
                                     DescribeType(source), lineBytes, options.stride));
    constexpr std::uint32_t kMostBytes = std::numeric_limits<std::uint32_t>::max();
    if (fileStride > kMostBytes / std::max(fileLines, converted.height))
        throw Failure(fmt::format("{} lines of {} bytes are too large; a frame has at most {} bytes", size.height,
                                  fileStride, kMostBytes));
}

void SourceLines::JoinLines() {
    const std::uint32_t pixels = shown.width * shown.height;
    converted = {pixels + pixels % 2, 1};
    fileLines = 1;
}

void SourceLines::WidenLines(const KyPixelConverter& converter) {
    const PixelGroup group = GroupOf(converter.GetSourceType());
    const std::uint32_t groups = (shown.width - 1) / group.pixels + 1;
    converted.width = groups * group.pixels;
    isWidened = converted.width != shown.width;
    // A copy has no groups, only bytes, of which it reckons more for a pixel of 4:1:1 than there are.
    if (group.bytes != 0 && dynamic_cast<const KyIdentityConverter*>(&converter) != nullptr)
        converted.width = groups * group.bytes / converter.GetSourceByteSize(1);
    pixelStride = converted.width;
}

std::string SourceLines::Describe() const {
    if (fileLines == 1 && shown.height > 1) return " in pairs that run on";
    return HasPadding() || isWidened ? fmt::format(" in lines of {} bytes", fileStride) : "";
}

const std::uint8_t* SourceLines::Arrange(const std::vector<std::uint8_t>& frame,
                                         std::vector<std::uint8_t>& scratch) const {
    if (!HasPadding() && converted.height <= fileLines) return frame.data();
    scratch.resize(lineBytes *
                   converted.height);  // of an odd second field's last line, which it lacks, nothing is shown
    std::uint8_t* out = scratch.data();
    for (std::uint32_t y = 0; y < std::min(fileLines, converted.height); ++y, out += lineBytes)
        std::copy_n(frame.data() + y * fileStride, lineBytes, out);
    return scratch.data();
}

}  // namespace kyimg
