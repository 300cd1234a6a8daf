#include <KyImgLib/converters/grayscale/KyTapsToGrayscale.h>

#include <KyImgLib/converters/grayscale/GrayBandInternal.h>

namespace {

constexpr std::uint32_t kPipelining = 4;

template <auto kKernel, ky::TapLayout (*kLayout)(const KyPixelConverter&)>
void ReorderPass(const KyPixelConverter& converter, const KyPixelConverterContext& context, const KyLinePass& pass) {
    const ky::GrayBand band = ky::BandOf(converter, context, pass, pass.width, kLayout(converter));
    ky::ActiveGrayKernel<kKernel> (&ky::GrayKernels::fromBytes)(band);
}

}  // namespace

KyDualGrayscale8ToGrayscale8::KyDualGrayscale8ToGrayscale8(const std::int64_t& sourceType,
                                                           const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 1, 1, kPipelining, 1) {
    SetPassFunction(typeid(KyDualGrayscale8ToGrayscale8),
                    &ReorderPass<&ky::GrayTable::toGray8, &ky::TapLayout::HalvesOf>);
}

KyDualLinesGrayscale8ToGrayscale8::KyDualLinesGrayscale8ToGrayscale8(const std::int64_t& sourceType,
                                                                     const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 1, 1, kPipelining, 2) {
    SetPassFunction(typeid(KyDualLinesGrayscale8ToGrayscale8),
                    &ReorderPass<&ky::GrayTable::toGray8, &ky::TapLayout::LinePairs>);
}

Dalsa4x8ToGrayscale8::Dalsa4x8ToGrayscale8(const std::int64_t& sourceType, const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 1, 1, kPipelining, 1) {
    SetPassFunction(typeid(Dalsa4x8ToGrayscale8), &ReorderPass<&ky::GrayTable::reorderBytes, &ky::TapLayout::Quarters>);
}

Dalsa4x16ToGrayscale16::Dalsa4x16ToGrayscale16(const std::int64_t& sourceType, const std::int64_t& destinationType)
    : KyPixelConverter(sourceType, destinationType, 2, 2, kPipelining, 1) {
    SetPassFunction(typeid(Dalsa4x16ToGrayscale16), &ReorderPass<&ky::GrayTable::shiftRight, &ky::TapLayout::Quarters>);
}
