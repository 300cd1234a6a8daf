#include <KyImgLib/converters/grayscale/KyGrayscale16ToGrayscale.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace {
constexpr std::uint32_t kWordSize = 2;
constexpr std::uint32_t kPipelining = 4;
constexpr std::uint32_t kHighByte = 8;
}  // namespace

KyGrayscale16Converter::KyGrayscale16Converter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                               std::uint32_t destinationByteSize, std::uint32_t pipeliningSize,
                                               std::uint32_t linesPerConvert, std::uint32_t shiftCount)
    : KyPixelConverter(sourceType, destinationType, kWordSize, destinationByteSize, pipeliningSize, linesPerConvert),
      shift(shiftCount % 32) {}

KyGrayscale16ToGrayscale16RightShift::KyGrayscale16ToGrayscale16RightShift(const std::int64_t& sourceType,
                                                                           const std::int64_t& destinationType,
                                                                           std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, destinationType, kWordSize, kPipelining, 1, shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16ToGrayscale16RightShift),
                                 ky::GrayMaker::Of(&ky::GrayTable::shiftRight, shift));
}

KyGrayscale16ToGrayscale16LeftShift::KyGrayscale16ToGrayscale16LeftShift(const std::int64_t& sourceType,
                                                                         const std::int64_t& destinationType,
                                                                         std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, destinationType, kWordSize, kPipelining, 1, shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16ToGrayscale16LeftShift),
                                 ky::GrayMaker::Of(&ky::GrayTable::shiftLeft, shift));
}

KyGrayscale16ToGrayscale8::KyGrayscale16ToGrayscale8(const std::int64_t& sourceType, std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, KY_TYPE_GRAYSCALE8, 1, kPipelining, 1, shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16ToGrayscale8),
                                 ky::GrayMaker::To(&ky::GrayTable::toGray8, &ky::GrayKernels::fromWords, shift));
}

KyGrayscale16NormalizedToGrayscale8::KyGrayscale16NormalizedToGrayscale8(const std::int64_t& sourceType)
    : KyGrayscale16Converter(sourceType, KY_TYPE_GRAYSCALE8, 1, kPipelining, 1, kHighByte) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16NormalizedToGrayscale8),
                                 ky::GrayMaker::To(&ky::GrayTable::toGray8, &ky::GrayKernels::fromWords, shift));
}
