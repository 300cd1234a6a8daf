#include <KyImgLib/converters/grayscale/KyGrayscale16ToRGB.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace {
constexpr std::uint32_t kPipelining = 4;
}  // namespace

KyGrayscale16ToRGB16::KyGrayscale16ToRGB16(const std::int64_t& sourceType, std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, KY_TYPE_RGB16, 2, kPipelining, 1, shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16ToRGB16),
                                 ky::GrayMaker::To(&ky::GrayTable::toRGB16, &ky::GrayKernels::fromWords, shift));
}

KyGrayscale16ToRGB24::KyGrayscale16ToRGB24(const std::int64_t& sourceType, bool alternate, std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, alternate ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 3, kPipelining, 1, shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16ToRGB24),
                                 ky::GrayMaker::To(&ky::GrayTable::toRGB24, &ky::GrayKernels::fromWords, shift));
}

KyGrayscale16ToRGB32::KyGrayscale16ToRGB32(const std::int64_t& sourceType, bool alternate, std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, alternate ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 4, kPipelining, 1, shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16ToRGB32),
                                 ky::GrayMaker::To(&ky::GrayTable::toRGB32, &ky::GrayKernels::fromWords, shift));
}
