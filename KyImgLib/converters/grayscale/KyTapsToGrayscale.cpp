#include <KyImgLib/converters/grayscale/KyTapsToGrayscale.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>

namespace {

constexpr std::uint32_t kPipelining = 4;

}  // namespace

KyDualGrayscale8ToGrayscale8::KyDualGrayscale8ToGrayscale8(const std::int64_t& sourceType,
                                                           const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 1, 1, kPipelining, 1) {
    Record::Of(*this).SetKernels(
        typeid(KyDualGrayscale8ToGrayscale8),
        ky::GrayMaker::To(&ky::GrayTable::toGray8, &ky::GrayKernels::fromBytes, 0, ky::HalvesOf(sourceType)));
}

KyDualLinesGrayscale8ToGrayscale8::KyDualLinesGrayscale8ToGrayscale8(const std::int64_t& sourceType,
                                                                     const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 1, 1, kPipelining, 2) {
    Record::Of(*this).SetKernels(
        typeid(KyDualLinesGrayscale8ToGrayscale8),
        ky::GrayMaker::To(&ky::GrayTable::toGray8, &ky::GrayKernels::fromBytes, 0, {ky::TapLayout::kLinePairs}));
}

Dalsa4x8ToGrayscale8::Dalsa4x8ToGrayscale8(const std::int64_t& sourceType, const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 1, 1, kPipelining, 1) {
    Record::Of(*this).SetKernels(typeid(Dalsa4x8ToGrayscale8),
                                 ky::GrayMaker::Of(&ky::GrayTable::reorderBytes, 0, {ky::TapLayout::kQuarters}));
}

Dalsa4x16ToGrayscale16::Dalsa4x16ToGrayscale16(const std::int64_t& sourceType, const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 2, 2, kPipelining, 1) {
    Record::Of(*this).SetKernels(typeid(Dalsa4x16ToGrayscale16),
                                 ky::GrayMaker::Of(&ky::GrayTable::shiftRight, 0, {ky::TapLayout::kQuarters}));
}
