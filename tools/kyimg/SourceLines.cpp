#include "SourceLines.h"

#include "Errors.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyIdentityConverter.h>
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

}  // namespace

std::int64_t TypeToConvertFrom(std::int64_t source, std::int64_t destination) {
    const bool hasTwin = source == KY_TYPE_RGB24 || source == KY_TYPE_BGR24;
    return hasTwin && source == destination ? source | KY_TYPE_PACKED : source;
}

SourceLines::SourceLines(const KyPixelConverter& converter, ImageSize size, std::uint64_t wantedLineBytes)
    : lineBytes(), fileLineBytes(), fileLines(size.height), converted(size), isWidened(false) {
    const std::int64_t id = converter.GetSourceType();
    const PixelGroup group = GroupOf(id);
    const std::uint32_t groups = (size.width - 1) / group.pixels + 1;
    converted.width = groups * group.pixels;
    isWidened = converted.width != size.width;
    // A copy has no groups, only bytes, of which it reckons more for a pixel of 4:1:1 than there are.
    if (group.bytes != 0 && dynamic_cast<const KyIdentityConverter*>(&converter) != nullptr)
        converted.width = groups * group.bytes / converter.GetSourceByteSize(1);
    if ((id & KY_TYPE_INTERLACED) != 0) converted.height += size.height % 2;

    lineBytes = converter.GetSourceByteSize(converted.width);
    fileLineBytes = wantedLineBytes == 0 ? lineBytes : wantedLineBytes;
    if (fileLineBytes < lineBytes)
        throw UsageError(fmt::format("--line-bytes: a line of {} pixels of {} has {} bytes, not {}", size.width,
                                     DescribeType(id), lineBytes, wantedLineBytes));
    constexpr std::uint32_t kMostBytes = std::numeric_limits<std::uint32_t>::max();
    if (fileLineBytes > kMostBytes / converted.height)
        throw Failure(fmt::format("{} lines of {} bytes are too large; a frame has at most {} bytes", size.height,
                                  fileLineBytes, kMostBytes));
}

const std::uint8_t* SourceLines::Arrange(const std::vector<std::uint8_t>& frame,
                                         std::vector<std::uint8_t>& scratch) const {
    if (!HasPadding() && converted.height == fileLines) return frame.data();
    scratch.resize(lineBytes * converted.height);
    std::uint8_t* out = scratch.data();
    for (std::uint32_t y = 0; y < fileLines; ++y, out += lineBytes)
        std::copy_n(frame.data() + y * fileLineBytes, lineBytes, out);
    // The line that an odd second field lacks: nobody sees it, but neighbours may be made of it.
    if (converted.height != fileLines && fileLines > 1) std::copy_n(out - lineBytes, lineBytes, out);
    return scratch.data();
}

}  // namespace kyimg
