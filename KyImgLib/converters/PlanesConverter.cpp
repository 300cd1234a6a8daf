#include <KyImgLib/converters/PlanesConverterInternal.h>

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/platform/KyStatus.h>

namespace ky {

namespace {

PixelFormat FormatOfID(std::int64_t type) { return FormatOf(*KyPixelTypeFactory::FindPixelType(type)); }

std::uint32_t LineBytes(const PixelFormat& format, std::uint32_t width) {
    return static_cast<std::uint32_t>(format.LineBytes(width) +
                                      format.otherPlanes.count * format.otherPlanes.LineBytes(width));
}

}  // namespace

PlanesConverter::PlanesConverter(std::int64_t sourceType, std::int64_t destinationType)
    : KyPixelConverter(sourceType, destinationType, KyPixelTypeFactory::FindPixelType(sourceType)->GetPixelByteSize(),
                       KyPixelTypeFactory::FindPixelType(destinationType)->GetPixelByteSize(), 1, 1),
      from(FormatOfID(sourceType)), to(FormatOfID(destinationType)),
      hasPlanes(from.otherPlanes.count != 0 || to.otherPlanes.count != 0) {}

std::uint32_t PlanesConverter::GetSourceByteSize(std::uint32_t count) const { return LineBytes(from, count); }

std::uint32_t PlanesConverter::GetDestinationByteSize(std::uint32_t count) const { return LineBytes(to, count); }

std::uint32_t PlanesConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                       std::uint32_t count) const {
    if (hasPlanes) return KY_STATUS_NOT_SUPPORTED;
    return KyPixelConverter::Convert(source, destination, count);
}

}  // namespace ky
