#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16PACKEDKERNELSINTERNAL_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16PACKEDKERNELSINTERNAL_H

#include <KyImgLib/converters/grayscale/GrayBandInternal.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToGrayscale.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>

struct KyGrayscale16PackedConverter::Kernels {
    template <auto kKernel>
    static void ConvertPass(const KyPixelConverter& converter, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        const bool hasDestinationTaps = (converter.GetDestinationType() & KY_TAP_LAYOUT_MASK) != 0;
        const ky::TapLayout layout = hasDestinationTaps ? ky::TapLayout() : ky::TapLayout::HalvesOf(converter);
        ky::GrayBand band = ky::BandOf(converter, context, pass, pass.width - pass.width % 2, layout);
        band.packed = Layout(static_cast<const KyGrayscale16PackedConverter&>(converter));
        ky::ActiveGrayKernel<kKernel> (&ky::GrayKernels::fromPacked)(band);
    }

private:
    static ky::PackedLayout Layout(const KyGrayscale16PackedConverter& converter) {
        const auto leftShift = static_cast<unsigned>(std::clamp<int>(converter.leftShift, 0, 8));
        const auto lowShift = static_cast<unsigned>(std::clamp<int>(converter.lowPosition, 0, 8));
        ky::PackedLayout layout;
        layout.highShift = 8 - leftShift;
        layout.highMask = static_cast<std::uint16_t>(0xFFu << leftShift);
        layout.lowShift = lowShift;
        layout.lowMask[0] = converter.lowMask & 0xFFu;
        layout.lowMask[1] = static_cast<std::uint16_t>(converter.lowMask & 0xFFu >> lowShift);
        layout.align = (converter.GetDestinationType() & KY_TYPE_NORMALIZED) != 0 ? 8 - leftShift : 0;
        return layout;
    }
};

#endif
