#ifndef KYIMGLIB_KERNELS_COLOUR_COLOURBAND_H
#define KYIMGLIB_KERNELS_COLOUR_COLOURBAND_H

#include <KyImgLib/kernels/Filter16.h>
#include <KyImgLib/kernels/Filter8.h>
#include <KyImgLib/kernels/PixelBand.h>

namespace ky {

/// Lines of pixels in colour. Destinations take the three channels in the order of the filter's.
template <typename FilterType>
struct ColourBand : PixelBand {
    using Filter = FilterType;

    Filter filter;
    bool isExchanged;                ///< the source's first and third channel change places
    std::ptrdiff_t planeOffsets[2];  ///< bytes from the first plane of a planar destination to the other two
    /// Sources of bytes: what a sample, the last byte of it, takes in the source.
    std::uint32_t sampleBytes;
    /// Sources of words that are read as bytes: their right shift, with which 16 leaves nothing.
    std::uint8_t sampleShift;
    /// 4:4:4: bytes from the last byte of a pixel's first sample to its Y, U and V.
    std::uint32_t places[3];
};

using Colour8Band = ColourBand<Filter8>;
using Colour16Band = ColourBand<Filter16>;

/// Kernels from one source by destination; null where there is none.
template <typename Band>
struct ColourKernels {
    using Kernel = void (*)(const Band& band);
    Kernel toRGB16, toRGB24, toRGB32, toPlanar;
};

/// Kernels by source. Channels are bytes, but for the last two.
struct RGBKernels {
    ColourKernels<Colour8Band> fromRGB16;  ///< only green is read; red and blue are samples of 0
    ColourKernels<Colour8Band> fromRGB24;
    ColourKernels<Colour8Band> fromRGB32;
    ColourKernels<Colour16Band> fromRGB48;
    ColourKernels<Colour16Band> fromRGB64;
};
struct YUVKernels {
    ColourKernels<Colour8Band> from422;
    ColourKernels<Colour8Band> from422Words;
    ColourKernels<Colour8Band> from411;
    ColourKernels<Colour8Band> from444;
};

}  // namespace ky

#endif
