#include <KyImgLib/converters/bayer/KyBayerRGB8ToRGB.h>

#include <KyImgLib/converters/bayer/BayerLinesInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace {
constexpr std::uint32_t kPipelining = 8;
}  // namespace

KyBayerRGB8ToRGB::KyBayerRGB8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t a,
                                   std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t e, std::uint32_t reserved)
    : KyBayerToRGB(sourceType, destinationType, a * (e + 1), b, c, swap, e + 1, reserved) {}

KyBayerRGB8ToRGB16::KyBayerRGB8ToRGB16(const std::int64_t& sourceType, std::uint32_t e, std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, KY_TYPE_RGB16, 1, 2, kPipelining, false, e, reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB8ToRGB16),
                                 ky::Bayer8Maker{&ky::Bayer8Table::toRGB16, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB8ToRGB16::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                  std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB8ToRGB16::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                      std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}

KyBayerRGB8ToRGB24::KyBayerRGB8ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t e,
                                       std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, swap ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 1, 3, kPipelining, swap, e, reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB8ToRGB24),
                                 ky::Bayer8Maker{&ky::Bayer8Table::toRGB24, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB8ToRGB24::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                  std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB8ToRGB24::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                      std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}

KyBayerRGB8ToRGB32::KyBayerRGB8ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t e,
                                       std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, swap ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 1, 4, kPipelining, swap, e, reserved) {
    Record::Of(*this).SetKernels(typeid(KyBayerRGB8ToRGB32),
                                 ky::Bayer8Maker{&ky::Bayer8Table::toRGB32, shiftOrStep, swapRedBlue});
}

std::uint32_t KyBayerRGB8ToRGB32::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                  std::uint32_t count) const {
    return ky::ConvertLinePair(*this, source, destination, count);
}

std::uint32_t KyBayerRGB8ToRGB32::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                      std::uint32_t count) const {
    return ky::ConvertInterpolated(*this, source, destination, count);
}
