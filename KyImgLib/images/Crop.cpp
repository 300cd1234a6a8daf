#include <KyImgLib/images/ImageInternal.h>

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/TypeTextInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

namespace ky {

namespace {

struct Rectangle {
    std::uint32_t x, y, width, height;
};

/// The flags of Bayer patterns in the order in which they count, and where red is in the first 2 x 2 pixels.
struct Pattern {
    std::uint32_t flag, redX, redY;
};

constexpr Pattern kPatterns[] = {
    {KyPixelConverter::FLAG_BAYER_GRBG, 1, 0},
    {KyPixelConverter::FLAG_BAYER_GBRG, 0, 1},
    {KyPixelConverter::FLAG_BAYER_RGGB, 0, 0},
    {KyPixelConverter::FLAG_BAYER_BGGR, 1, 1},
};

/// The flags with the pattern that is seen from another pixel.
std::uint32_t WithPatternAt(std::uint32_t x, std::uint32_t y, std::uint32_t flags) {
    const Pattern* whole = kPatterns;
    for (const Pattern& pattern : kPatterns)
        if ((flags & pattern.flag) != 0) {
            whole = &pattern;
            break;
        }
    for (const Pattern& pattern : kPatterns) {
        flags &= ~pattern.flag;
        if (pattern.redX == (whole->redX ^ (x & 1)) && pattern.redY == (whole->redY ^ (y & 1))) flags |= pattern.flag;
    }
    return flags;
}

/// Of planes that have fewer lines or pixels than the first one.
std::uint32_t CheckPlanes(const KyImage& image, const Layout& layout, const Rectangle& part) {
    const OtherPlanes& planes = layout.otherPlanes;
    const std::uint32_t columns = planes.group.pixels, lines = planes.sharedLines;
    const std::uint32_t right = part.x + part.width, bottom = part.y + part.height;
    if (part.x % columns != 0 || part.y % lines != 0 || (right % columns != 0 && right != image.width) ||
        (bottom % lines != 0 && bottom != image.height))
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "a part from " << part.x << "," << part.y << " to " << right << "," << bottom << " of type "
               << TypeText{image.type} << " tears pixels with common colours apart: expected multiples of " << columns
               << " and " << lines << " or the size, which is " << image.width << "x" << image.height;
    if (planes.count > 1 && !layout.ArePlanesAlike())
        return Refusal(KY_STATUS_BAD_ARGUMENT) << "type " << TypeText{image.type}
                                               << " has its third plane where the height says, so no part of it is an "
                                                  "image: convert the whole, and take "
                                                  "a part of the result";
    return KY_STATUS_SUCCESS;
}

std::uint32_t CheckPart(const KyImage& image, const Layout& layout, const Rectangle& part) {
    if (part.x > image.width || part.width > image.width - part.x || part.y > image.height ||
        part.height > image.height - part.y)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "a part of " << part.width << "x" << part.height << " pixels at " << part.x << "," << part.y
               << " reaches beyond the image, which has " << image.width << "x" << image.height;
    if (layout.hasTaps && (part.x != 0 || part.width != image.width))
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "a part from x " << part.x << " to " << part.x + part.width << " of type " << TypeText{image.type}
               << ", whose taps share the line: expected whole lines, from 0 to " << image.width;
    if (part.y % layout.lineStep != 0 || part.height % layout.lineStep != 0)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "a part of " << part.height << " lines from line " << part.y << " on of type " << TypeText{image.type}
               << ", whose lines go in pairs: expected even numbers";
    const std::uint32_t end = part.x + part.width;
    if (part.x % layout.groupPixels != 0 || (end % layout.groupPixels != 0 && end != image.width))
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "a part from x " << part.x << " to " << end << " tears a group of type " << TypeText{image.type}
               << " apart: expected multiples of " << layout.groupPixels << " or the width, which is " << image.width;
    return CheckPlanes(image, layout, part);
}

}  // namespace

std::uint32_t CropImage(const KyImage* image, std::uint32_t x, std::uint32_t y, std::uint32_t width,
                        std::uint32_t height, KyImage* part, std::uint32_t* flags) noexcept {
    if (image == nullptr || part == nullptr)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << (image == nullptr ? "image" : "part") << " is null";
    return Guard([&]() -> std::uint32_t {
        Layout layout;
        if (const std::uint32_t status = FindLayout("image", image->type, layout)) return status;
        Placement whole, place;
        if (const std::uint32_t status = PlaceImage("image", *image, layout, whole)) return status;
        if (const std::uint32_t status = CheckBuffer("image", *image, whole)) return status;
        if (const std::uint32_t status = CheckPart(*image, layout, {x, y, width, height})) return status;

        if (width == image->width && height == image->height) {
            // Strides of its own may say what those of a part cannot.
            const std::size_t size = whole.size;
            *part = *image;
            part->size = size;
            return KY_STATUS_SUCCESS;
        }
        KyImage made = *image;
        made.width = width;
        made.height = height;
        made.stride = whole.first.stride;
        const std::size_t offset =
            y / layout.fields * whole.first.stride + std::size_t{x / layout.groupPixels} * layout.groupBytes;
        const OtherPlanes& planes = layout.otherPlanes;
        const std::size_t offsetInOthers = planes.count == 0
                                               ? offset
                                               : y / planes.sharedLines * whole.others.stride +
                                                     std::size_t{x / planes.group.pixels} * planes.group.bytes;
        made.planeStride = whole.firstStride - offset + offsetInOthers;
        if (const std::uint32_t status = PlaceImage("part", made, layout, place)) return status;
        if (place.size != 0 && planes.count > 0 && place.others.lines > 1 && place.others.stride != whole.others.stride)
            return Refusal(KY_STATUS_BAD_ARGUMENT)
                   << "image.stride is " << whole.first.stride << " and lines of the other planes are "
                   << whole.others.stride << " bytes apart, which no part can say: expected an even stride";
        made.size = place.size;
        if (place.size != 0) made.data += offset;
        *part = made;
        if (flags != nullptr && layout.type->IsBayerPattern()) *flags = WithPatternAt(x, y, *flags);
        return KY_STATUS_SUCCESS;
    });
}

}  // namespace ky
