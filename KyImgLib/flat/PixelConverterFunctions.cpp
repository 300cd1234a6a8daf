#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/flat/GuardInternal.h>

using ky::Guarded;

namespace {

template <typename Call>
uint32_t Converting(const KyPixelConverter* converter, Call call) {
    return Guarded(converter, uint32_t{KY_STATUS_BAD_ARGUMENT}, uint32_t{KY_STATUS_OUT_OF_MEMORY}, call);
}

}  // namespace

int64_t KyPixelConverter_GetSourceType(const KyPixelConverter* converter) {
    return Guarded(converter, int64_t{0}, [](auto& c) { return c.GetSourceType(); });
}

int64_t KyPixelConverter_GetDestinationType(const KyPixelConverter* converter) {
    return Guarded(converter, int64_t{0}, [](auto& c) { return c.GetDestinationType(); });
}

uint32_t KyPixelConverter_GetSourceByteSize(const KyPixelConverter* converter, uint32_t count) {
    return Guarded(converter, uint32_t{0}, [=](auto& c) { return c.GetSourceByteSize(count); });
}

uint32_t KyPixelConverter_GetDestinationByteSize(const KyPixelConverter* converter, uint32_t count) {
    return Guarded(converter, uint32_t{0}, [=](auto& c) { return c.GetDestinationByteSize(count); });
}

uint32_t KyPixelConverter_ConvertPixel(const KyPixelConverter* converter, const uint8_t* source, uint8_t* destination) {
    return Converting(converter, [=](auto& c) { return c.Convert(source, destination); });
}

uint32_t KyPixelConverter_ConvertLine(const KyPixelConverter* converter, const uint8_t* source, uint8_t* destination,
                                      uint32_t count) {
    return Converting(converter, [=](auto& c) { return c.Convert(source, destination, count); });
}

uint32_t KyPixelConverter_ConvertArea(const KyPixelConverter* converter, const uint8_t* source, uint32_t sourceWidth,
                                      uint32_t sourceHeight, uint8_t* destination, uint32_t destinationWidth,
                                      uint32_t destinationHeight, uint32_t width, uint32_t height, uint32_t flags,
                                      uint32_t destinationPadding) {
    return Converting(converter, [=](auto& c) {
        return c.Convert(source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight, width,
                         height, flags, destinationPadding);
    });
}

uint32_t KyPixelConverter_ConvertAreaFilter(const KyPixelConverter* converter, const KyRGBFilter* filter,
                                            const uint8_t* source, uint32_t sourceWidth, uint32_t sourceHeight,
                                            uint8_t* destination, uint32_t destinationWidth, uint32_t destinationHeight,
                                            uint32_t width, uint32_t height, uint32_t flags,
                                            uint32_t destinationPadding) {
    return Converting(converter, [=](auto& c) {
        return c.Convert(*filter, source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight,
                         width, height, flags, destinationPadding);
    });
}
