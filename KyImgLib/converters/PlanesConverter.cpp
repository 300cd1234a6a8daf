#include <KyImgLib/converters/PlanesConverterInternal.h>

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/ImageConversionInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/platform/KyStatus.h>

namespace ky {

namespace {

PixelFormat FormatOfID(std::int64_t type) { return FormatOf(*KyPixelTypeFactory::FindPixelType(type)); }

std::size_t FirstLineBytes(const PixelFormat& format, std::uint32_t width) {
    const PixelGroup& group = format.group;
    return (std::size_t{width} + group.pixels - 1) / group.pixels * group.bytes;
}

std::uint32_t LineBytes(const PixelFormat& format, std::uint32_t width) {
    const std::uint64_t others = format.otherPlanes.count * format.otherPlanes.LineBytes(width);
    return static_cast<std::uint32_t>(FirstLineBytes(format, width) + others);
}

/// Where the planes of a whole image lie that has no gaps.
ImagePlanes PlanesOf(const PixelFormat& format, std::uint32_t width, std::uint32_t height) {
    const auto stride = static_cast<std::ptrdiff_t>(format.otherPlanes.LineBytes(width));
    return {static_cast<std::ptrdiff_t>(FirstLineBytes(format, width) * height),
            stride * static_cast<std::ptrdiff_t>(format.otherPlanes.Lines(height)), stride};
}

}  // namespace

PlanesConverter::PlanesConverter(std::int64_t sourceType, std::int64_t destinationType)
    : KyPixelConverter(sourceType, destinationType, KyPixelTypeFactory::FindPixelType(sourceType)->GetPixelByteSize(),
                       KyPixelTypeFactory::FindPixelType(destinationType)->GetPixelByteSize(), 1, 1),
      from(FormatOfID(sourceType)), to(FormatOfID(destinationType)),
      hasPlanes(from.otherPlanes.count != 0 || to.otherPlanes.count != 0) {}

std::uint32_t PlanesConverter::GetSourceByteSize(std::uint32_t count) const { return LineBytes(from, count); }

std::uint32_t PlanesConverter::GetDestinationByteSize(std::uint32_t count) const { return LineBytes(to, count); }

std::uint32_t PlanesConverter::Convert(const std::uint8_t* source, std::uint32_t sourceWidth,
                                       std::uint32_t sourceHeight, std::uint8_t* destination,
                                       std::uint32_t destinationWidth, std::uint32_t destinationHeight,
                                       std::uint32_t width, std::uint32_t height, std::uint32_t flags,
                                       std::uint32_t destinationPadding) const {
    if (!hasPlanes)
        return KyPixelConverter::Convert(source, sourceWidth, sourceHeight, destination, destinationWidth,
                                         destinationHeight, width, height, flags, destinationPadding);
    const AreaScope context(sourceWidth);
    ImageConversion image = {};
    image.source = source;
    image.sourceRowBytes = FirstLineBytes(from, sourceWidth);
    image.sourceStride = static_cast<std::ptrdiff_t>(image.sourceRowBytes);
    image.sourcePlanes = PlanesOf(from, sourceWidth, sourceHeight);
    image.destination = destination;
    image.destinationStride = static_cast<std::ptrdiff_t>(FirstLineBytes(to, destinationWidth) + destinationPadding);
    image.destinationPlanes = PlanesOf(to, destinationWidth, destinationHeight);
    image.width = width;
    image.height = height;
    image.flags = flags;
    image.filter = context->filter;
    image.endLine = height;
    ConvertImage(*this, image);
    return KY_STATUS_SUCCESS;
}

std::uint32_t PlanesConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                       std::uint32_t count) const {
    if (hasPlanes) return KY_STATUS_NOT_SUPPORTED;
    return KyPixelConverter::Convert(source, destination, count);
}

}  // namespace ky
