#ifndef KYIMGLIB_CONVERTERS_COLOUR_COLOURDRIVERINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_COLOURDRIVERINTERNAL_H

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/converters/FilterStageInternal.h>
#include <KyImgLib/converters/PassBandInternal.h>
#include <KyImgLib/kernels/KernelTable.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace ky {

constexpr std::int64_t RGB24Or(bool isBGR) { return isBGR ? KY_TYPE_BGR24 : KY_TYPE_RGB24; }
constexpr std::int64_t RGB32Or(bool isBGR) { return isBGR ? KY_TYPE_BGR32 : KY_TYPE_RGB32; }

/// A band of YUV, with everything but its place and what only some layouts have.
inline Colour8Band YUVBand(const KyPixelConverterContext& context, bool destinationIsBGR) {
    Colour8Band band = {};
    band.filter = ByteStage(FilterOf(context, 8), destinationIsBGR, 0);
    band.isExchanged = destinationIsBGR;
    band.sampleBytes = 1;
    return band;
}

/// The kernel for a destination pixel of this size.
template <typename Band>
typename ColourKernels<Band>::Kernel KernelTo(const ColourKernels<Band>& kernels, std::uint32_t pixelBytes) {
    return pixelBytes == 2 ? kernels.toRGB16 : pixelBytes == 3 ? kernels.toRGB24 : kernels.toRGB32;
}

/// Converts the lines of a pass in whole groups of pixels, which share no sample with others. `band` has everything but its place.
template <typename Band>
void ConvertLines(typename ColourKernels<Band>::Kernel kernel, std::uint32_t groupPixels, Band band,
                  const KyLinePass& pass) {
    const std::size_t width = (std::size_t{pass.width} + groupPixels - 1) / groupPixels * groupPixels;
    static_cast<PixelBand&>(band) = BandOf(pass, width);
    kernel(band);
}

}  // namespace ky

#endif
