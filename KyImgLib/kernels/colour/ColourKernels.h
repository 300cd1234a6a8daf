#ifndef KYIMGLIB_KERNELS_COLOUR_COLOURKERNELS_H
#define KYIMGLIB_KERNELS_COLOUR_COLOURKERNELS_H

#include <KyImgLib/kernels/Filter16.h>
#include <KyImgLib/kernels/Filter8.h>
#include <KyImgLib/pipeline/RowKernel.h>

#include <cstdint>

namespace ky {

/// Settings of kernels from one colour layout to another. Destinations take the three channels in the order of the filter's.
template <typename FilterType>
struct ColourSettings {
    using Filter = FilterType;

    Filter filter;
    bool isExchanged;          ///< the source's first and third channel change places
    std::uint8_t sampleShift;  ///< of words that are read as bytes: to the right; 16 leaves nothing
    std::uint8_t places[3];    ///< 4:4:4: of Y, U and V among the bytes of a pixel
};

using Colour8Settings = ColourSettings<Filter8>;
using Colour16Settings = ColourSettings<Filter16>;

/// Kernels from one source by destination; null where there is none.
template <typename Settings>
struct ColourKernels {
    using Make = void (*)(const Settings& settings, RowKernel& kernel);
    Make toRGB16, toRGB24, toRGB32, toPlanar;
};

/// Kernels by source. Channels are bytes, but for the last two.
struct RGBKernels {
    ColourKernels<Colour8Settings> fromRGB16;  ///< only green is read; red and blue are samples of 0
    ColourKernels<Colour8Settings> fromRGB24;
    ColourKernels<Colour8Settings> fromRGB32;
    ColourKernels<Colour16Settings> fromRGB48;
    ColourKernels<Colour16Settings> fromRGB64;
};
struct YUVKernels {
    ColourKernels<Colour8Settings> from422;
    ColourKernels<Colour8Settings> from422Words;
    ColourKernels<Colour8Settings> from411;
    ColourKernels<Colour8Settings> from444;
};

}  // namespace ky

#endif
