#include "SourceFrame.h"

#include "Errors.h"
#include "ImageSizes.h"
#include "TypeNames.h"

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace kyimg {

namespace {

bool IsInterlaced(std::int64_t type) { return (type & KY_TYPE_INTERLACED) != 0; }
bool HasDualLines(std::int64_t type) { return (type & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES; }

struct PixelGroup {
    std::uint32_t pixels = 0, bytes = 0;

    explicit PixelGroup(std::int64_t type) { KyPixelTypeFactory::FindPixelType(type)->GetPixelGroup(pixels, bytes); }
};

/// Bytes of an image whose lines are padded, also the last one of each plane: those of an image that has pixels there.
std::size_t PaddedSize(KyImage image) {
    const PixelGroup group(image.type);
    image.width = static_cast<std::uint32_t>(image.stride / group.bytes * group.pixels);
    std::size_t bytes = 0;
    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS)
        throw UsageError(
            fmt::format("--line-bytes: {} bytes end within a group of pixels of the other planes; give room "
                        "for an even number of pixels",
                        image.stride));
    return bytes;
}

/// Nothing in a line may depend on where it ends.
void CheckContinuous(std::int64_t type, const ConvertOptions& options) {
    if (options.stride != 0)
        throw UsageError(
            "--continuous and --line-bytes contradict each other: either pairs run on over the ends of lines, "
            "or each line starts at a place of its own");
    constexpr std::int64_t kByLines = KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK;
    if (UnpackedType(type) == 0 || (type & kByLines) != 0)
        throw UsageError(
            fmt::format("--continuous is for pixels packed in pairs, of a single tap and not interlaced, not for {}",
                        DescribeType(type)));
}

}  // namespace

SourceFrame::SourceFrame(std::int64_t type, ImageSize givenSize, const ConvertOptions& options)
    : size(givenSize), shown(size), image(MakeImage(type, size.width, size.height)),
      isContinuous(options.isContinuous) {
    if (isContinuous)
        JoinLines(options);
    else
        PlaceLines(options);
}

void SourceFrame::JoinLines(const ConvertOptions& options) {
    CheckContinuous(image.type, options);
    constexpr std::uint32_t kMostPixels = std::numeric_limits<std::uint32_t>::max();
    if (size.width > kMostPixels / size.height)
        throw Failure(fmt::format("--continuous: {}x{} is too large; such a frame has at most {} pixels", size.width,
                                  size.height, kMostPixels));
    image = MakeImage(image.type, size.width * size.height, 1);
    fileBytes = SizeOf(image);
    if (size.height > 1) linesText = " in pairs that run on";
}

void SourceFrame::PlaceLines(const ConvertOptions& options) {
    if (HasDualLines(image.type)) image.height = shown.height -= size.height % 2;
    if (IsInterlaced(image.type)) image.height += size.height % 2;
    if (shown.height == 0) throw Failure(fmt::format("{} is too small: two lines are needed", Describe()));

    image.stride = options.stride;
    std::size_t bytes = 0;
    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS)
        throw UsageError(fmt::format("{}: {}", options.stride == 0 ? "--size" : "--line-bytes", KyImage_GetError()));

    const std::size_t tightBytes = SizeOf(MakeImage(image.type, image.width, image.height));
    const PixelGroup group(image.type);
    const std::uint64_t lineBytes = (std::uint64_t{size.width} + group.pixels - 1) / group.pixels * group.bytes;
    const std::uint64_t stride = options.stride == 0 ? lineBytes : options.stride;
    fileBytes = stride * size.height;
    if ((image.type & KY_TYPE_PLANAR) != 0) fileBytes = options.stride == 0 ? tightBytes : PaddedSize(image);
    // Pixels that share bytes are there together: a last one has room for its neighbour.
    const bool endsInGroup = SizeOf(MakeImage(image.type, size.width + 1, image.height)) == tightBytes;
    if (stride == lineBytes && !endsInGroup) return;
    linesText = fmt::format(" in lines of {} bytes", stride);
    if (endsInGroup && UnpackedType(image.type) != 0) linesText += " without --continuous";
}

std::string SourceFrame::Describe() const {
    return fmt::format("{}x{} {}{}", size.width, size.height, KyPixelTypeFactory::GetPixelTypeName(image.type),
                       linesText);
}

std::uint64_t SourceFrame::GetBufferBytes() const { return std::max<std::uint64_t>(fileBytes, SizeOf(image)); }

}  // namespace kyimg
