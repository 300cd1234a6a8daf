#ifndef KYIMGLIB_KERNELS_BAYER_BAYER8_H
#define KYIMGLIB_KERNELS_BAYER_BAYER8_H

#include <KyImgLib/kernels/Filter8.h>
#include <KyImgLib/kernels/bayer/Mosaic.h>

#include <cstddef>
#include <cstdint>

namespace ky {

/// Lines of a Bayer mosaic to be converted, and where they go.
struct BayerBand {
    const std::uint8_t* source;  ///< first pixel of the first line
    std::ptrdiff_t sourceLine;   ///< bytes from a line to the one below
    std::uint32_t sourceStep;    ///< bytes of a source pixel, of which the last is the sample
    std::uint8_t* destination;
    std::ptrdiff_t destinationLine;  ///< bytes from a line to the one below
    std::uint32_t width;             ///< pixels of each line
    std::uint32_t lines;
    MosaicLine firstLine;
    bool hasLineAbove;  ///< the first line has a neighbour above it in the source
    bool hasLineBelow;  ///< the last line has a neighbour below it in the source
    bool isLarge;       ///< writes more than the caches hold
    Filter8 filter;
};

/// Kernels from Bayer mosaics of one byte per sample to one destination format. They write the line's own colour or the
/// opposite one first, whichever is red: for blue first, exchange the colours of the mosaic and of the filter.
struct Bayer8Kernels {
    /// Each line from itself and the lines above and below.
    void (*interpolate)(const BayerBand& band);
    /// Each two lines from each other; `lines` and `width` are even.
    void (*replicate)(const BayerBand& band);
};

}  // namespace ky

#endif
