#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>

#include <KyImgLib/converters/bayer/BayerLinesInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace {
constexpr std::uint32_t kWordSize = 2;
constexpr std::uint32_t kPipelining = 8;
// The published number of this one class; every other has 8.
constexpr std::uint32_t kPipeliningToRGB24 = 2;
}  // namespace

KyBayerRGB16ToRGB::KyBayerRGB16ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                     std::uint32_t a, std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t shift,
                                     std::uint32_t reserved)
    : KyBayerToRGB(sourceType, destinationType, a, b, c, swap, shift, reserved) {}

KyBayerRGB16ToRGB16::KyBayerRGB16ToRGB16(const std::int64_t& sourceType, std::uint32_t shift, std::uint32_t reserved)
    : KyBayerRGB16ToRGB(sourceType, KY_TYPE_RGB16, kWordSize, 2, kPipelining, false, shift, reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB16ToRGB16),
                                 ky::Bayer16Maker{&ky::Bayer16Table::toRGB16, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB16ToRGB16::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                   std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB16ToRGB16::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                       std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}

KyBayerRGB16ToRGB24::KyBayerRGB16ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t shift,
                                         std::uint32_t reserved)
    : KyBayerRGB16ToRGB(sourceType, swap ? KY_TYPE_BGR24 : KY_TYPE_RGB24, kWordSize, 3, kPipeliningToRGB24, swap, shift,
                        reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB16ToRGB24),
                                 ky::Bayer16Maker{&ky::Bayer16Table::toRGB24, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB16ToRGB24::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                   std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB16ToRGB24::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                       std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}

KyBayerRGB16ToRGB32::KyBayerRGB16ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t shift,
                                         std::uint32_t reserved)
    : KyBayerRGB16ToRGB(sourceType, swap ? KY_TYPE_BGR32 : KY_TYPE_RGB32, kWordSize, 4, kPipelining, swap, shift,
                        reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB16ToRGB32),
                                 ky::Bayer16Maker{&ky::Bayer16Table::toRGB32, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB16ToRGB32::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                   std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB16ToRGB32::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                       std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}

KyBayerRGB16ToRGB48::KyBayerRGB16ToRGB48(const std::int64_t& sourceType, bool normalized, std::uint32_t reserved)
    : KyBayerRGB16ToRGB(sourceType, normalized ? KY_TYPE_RGB48 | KY_TYPE_NORMALIZED : KY_TYPE_RGB48, kWordSize, 6,
                        kPipelining, false, 0, reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB16ToRGB48),
                                 ky::Bayer16Maker{&ky::Bayer16Table::toRGB48, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB16ToRGB48::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                   std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB16ToRGB48::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                       std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}
