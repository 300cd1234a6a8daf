#include "SizeHints.h"

#include "ImageSizes.h"
#include "TypeNames.h"

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <vector>

namespace kyimg {

namespace {

constexpr std::int64_t kUnusual = KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK;

/// Whether a person who means one type may have mistaken it for the other: both gray, both mosaics, or both colours.
bool AreOfAKind(std::int64_t one, std::int64_t other) {
    const bool isMosaic = KyPixelTypeFactory::FindPixelType(one)->IsBayerPattern();
    if (isMosaic != KyPixelTypeFactory::FindPixelType(other)->IsBayerPattern()) return false;
    const auto isGray = [](std::int64_t id) { return (id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE; };
    return isGray(one) == isGray(other);
}

std::string ExplainTypes(const SourceFrame& source, std::uint64_t bytes) {
    constexpr std::size_t kMost = 4;
    std::vector<std::string> names;
    for (const std::int64_t type : AllTypes()) {
        KyImage image = MakeImage(type, source.GetShown().width, source.GetShown().height);
        std::size_t needed = 0;
        const std::vector<KyPixelFormatName> known = CameraNamesOf(type);
        const bool isUnusual =
            (type & kUnusual) != 0 || known.empty() || LibraryName(type).find("deprecated") != std::string::npos;
        if (isUnusual || !AreOfAKind(type, source.GetImage().type) ||
            KyImage_GetSize(&image, &needed) != KY_STATUS_SUCCESS || needed != bytes)
            continue;
        const std::string name = known.front().name;
        if (std::ranges::find(names, name) == names.end()) names.push_back(name);
    }
    if (names.empty()) return "";
    const bool areMore = names.size() > kMost;
    if (areMore) names.resize(kMost);
    return fmt::format("; such a frame of {}{} has as many", fmt::join(names, ", "), areMore ? " and others" : "");
}

}  // namespace

std::string ExplainSize(const SourceFrame& source, std::uint64_t bytes) {
    if (bytes % source.GetFileBytes() == 0 && bytes > 0) return ExplainTypes(source, bytes);
    const ImageSize size = source.GetShown();
    const std::uint64_t needed = source.GetFileBytes(), stride = needed / size.height;
    const bool hasPlainLines = (source.GetImage().type & KY_TYPE_PLANAR) == 0 && needed % size.height == 0;
    std::string text;
    if (hasPlainLines && bytes % size.height == 0 && bytes / size.height > stride && bytes / size.height < 2 * stride)
        text += fmt::format("; {} bytes are {} lines of {}: --stride {}", bytes, size.height, bytes / size.height,
                            bytes / size.height);
    else if (hasPlainLines && bytes % stride == 0 && bytes / stride > 0)
        text += fmt::format("; {} bytes are {} lines: --size {}x{}", bytes, bytes / stride, size.width, bytes / stride);
    constexpr std::uint64_t kLongestHeader = 65536;
    if (text.empty() && bytes > needed && bytes - needed <= std::min(kLongestHeader, needed / 4))
        text += fmt::format("; {} bytes more may be a header: --skip-bytes {}", bytes - needed, bytes - needed);
    text += ExplainTypes(source, bytes);
    return text.empty() ? "; kyimg guess may find out what it is" : text;
}

}  // namespace kyimg
