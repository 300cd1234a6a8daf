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

std::uint32_t PlanesOf(std::int64_t type) {
    const bool isPlanar = (type & KY_TYPE_PLANAR) != 0;
    return isPlanar ? KyPixelTypeFactory::FindPixelType(type)->GetPixelByteSize() : 1;
}

/// Whether some planes have fewer lines or pixels than others.
bool HasUnlikePlanes(std::int64_t type) { return PlanesOf(type) > 1 && (type & KY_COLOUR_SPACE_YUV) != 0; }

/// Of a frame with padded lines, the padding of its last line included: of the widest image with such lines.
std::size_t BytesOfWholeLines(KyImage image) {
    std::size_t bytes = SizeOf(image), wider = 0;
    const std::uint32_t narrow = image.width;
    for (std::uint32_t step = 1u << 30; step != 0; step /= 2) {
        image.width += step;
        const bool fits = image.width > narrow && KyImage_GetSize(&image, &wider) == KY_STATUS_SUCCESS;
        if (fits)
            bytes = wider;
        else
            image.width -= step;
    }
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
    if (HasUnlikePlanes(image.type)) {
        fileBytes = options.stride == 0 ? tightBytes : BytesOfWholeLines(image);
        if (options.stride != 0) linesText = fmt::format(" in lines of {} bytes", options.stride);
        return;
    }
    const std::uint32_t planes = PlanesOf(image.type);
    const std::uint64_t lineBytes = tightBytes / planes / image.height;
    const std::uint64_t stride = options.stride == 0 ? lineBytes : options.stride;
    fileBytes = stride * planes * size.height;
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
