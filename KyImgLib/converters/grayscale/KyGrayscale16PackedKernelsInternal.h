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
    static unsigned Clamped(int number, int least, int most) {
        return static_cast<unsigned>(std::clamp(number, least, most));
    }

    static ky::PackedLayout Layout(const KyGrayscale16PackedConverter& converter) {
        const unsigned leftShift = Clamped(converter.leftShift, 1, 8);
        const unsigned position = Clamped(converter.lowPosition, 0, 8);
        const bool leftAligned = (converter.GetDestinationType() & KY_TYPE_NORMALIZED) != 0;
        const unsigned align = leftAligned ? 8 - leftShift : 0;
        ky::PackedLayout layout;
        layout.highFactor = static_cast<std::uint16_t>(1u << (leftShift + align));
        for (const unsigned sample : {0u, 1u}) {
            const unsigned shift = sample == 0 ? 0 : position;
            layout.lowMask[sample] = static_cast<std::uint16_t>(std::uint32_t{converter.lowMask} << shift & 0xFF);
            layout.lowFactor[sample] = static_cast<std::uint16_t>(1u << (8 + align - shift));
        }
        return layout;
    }
};

#endif
