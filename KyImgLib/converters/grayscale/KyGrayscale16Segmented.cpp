#include <KyImgLib/converters/grayscale/KyGrayscale16Segmented.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace {

constexpr std::uint32_t kPipelining = 4;

std::uint32_t LinesPerConvert(std::int64_t sourceType) {
    return (sourceType & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES ? 2 : 1;
}

std::int64_t RGBType(bool alternate, bool has32Bits) {
    if (has32Bits) return alternate ? KY_TYPE_BGR32 : KY_TYPE_RGB32;
    return alternate ? KY_TYPE_BGR24 : KY_TYPE_RGB24;
}

}  // namespace

KyGrayscale16SegmentedToGrayscale16::KyGrayscale16SegmentedToGrayscale16(const std::int64_t& sourceType,
                                                                         const std::int64_t& destinationType,
                                                                         std::uint32_t shiftCount)
    : KyGrayscale16Converter(sourceType, destinationType, 2, kPipelining, LinesPerConvert(sourceType), shiftCount) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16SegmentedToGrayscale16),
                                 ky::GrayMaker::Of(&ky::GrayTable::shiftRight, shift, ky::TapsOf(sourceType)));
}

KyGrayscale16SegmentedToRGB24_32::KyGrayscale16SegmentedToRGB24_32(const std::int64_t& sourceType, bool alternate,
                                                                   std::uint32_t shiftCount,
                                                                   std::uint32_t destinationByteSize)
    : KyGrayscale16Converter(sourceType, RGBType(alternate, destinationByteSize == 4), destinationByteSize == 4 ? 4 : 3,
                             kPipelining, LinesPerConvert(sourceType), shiftCount) {
    const auto destination = destinationByteSize == 4 ? &ky::GrayTable::toRGB32 : &ky::GrayTable::toRGB24;
    Record::Of(*this).SetKernels(
        typeid(KyGrayscale16SegmentedToRGB24_32),
        ky::GrayMaker::To(destination, &ky::GrayKernels::fromWords, shift, ky::TapsOf(sourceType)));
}
