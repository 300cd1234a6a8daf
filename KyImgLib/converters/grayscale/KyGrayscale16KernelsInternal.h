#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16KERNELSINTERNAL_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16KERNELSINTERNAL_H

#include <KyImgLib/converters/grayscale/GrayBandInternal.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16ToGrayscale.h>

struct KyGrayscale16Converter::Kernels {
    template <auto kKernel, ky::TapLayout (*kLayout)(const KyPixelConverter&) = &ky::TapLayout::InOrder>
    static void ConvertPass(const KyPixelConverter& converter, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        ky::GrayBand band = ky::BandOf(converter, context, pass, pass.width, kLayout(converter));
        band.shift = static_cast<const KyGrayscale16Converter&>(converter).shift;
        ky::ActiveGrayKernel<kKernel> (&ky::GrayKernels::fromWords)(band);
    }
};

#endif
