#ifndef KYIMGLIB_KERNELS_BAYER_BAYERBAND_H
#define KYIMGLIB_KERNELS_BAYER_BAYERBAND_H

#include <KyImgLib/kernels/Filter16.h>
#include <KyImgLib/kernels/Filter8.h>
#include <KyImgLib/kernels/bayer/Mosaic.h>
#include <KyImgLib/lines/FetchAhead.h>
#include <KyImgLib/lines/LineStage.h>

#include <cstddef>
#include <cstdint>

namespace ky {

/// Lines of a Bayer mosaic to be converted, and where they go.
template <typename SampleType, typename FilterType>
struct BayerBand {
    using Sample = SampleType;
    using Filter = FilterType;

    const std::uint8_t* source;  ///< first pixel of the first line
    std::ptrdiff_t sourceLine;   ///< bytes from a line to the one below
    std::uint32_t sourceStep;    ///< bytes of a source pixel, which ends with the sample
    std::uint8_t* destination;
    std::ptrdiff_t destinationLine;  ///< bytes from a line to the one below
    std::uint32_t width;             ///< pixels of each line
    std::uint32_t lines;
    MosaicLine firstLine;
    bool hasLineAbove;        ///< the first line has a neighbour above it in the source
    bool hasLineBelow;        ///< the last line has a neighbour below it in the source
    bool isLarge;             ///< reads and writes more than the caches hold
    FetchAhead ahead;         ///< with each line
    LineJoint* joint;         ///< null where the source is in memory and nothing is asked
    std::uint32_t lineIndex;  ///< of the first line, for the joint
    Filter filter;
};

/// The sample of the first pixel of line y.
template <typename Band>
const std::uint8_t* FirstSample(const Band& band, std::ptrdiff_t y) {
    return SourceLineOf(band, y) + (band.sourceStep - sizeof(typename Band::Sample));
}

using Bayer8Band = BayerBand<std::uint8_t, Filter8>;
using Bayer16Band = BayerBand<std::uint16_t, Filter16>;

/// Kernels from Bayer mosaics to one destination format. They write the line's own colour or the opposite one first,
/// whichever is red: for blue first, exchange the colours of the mosaic and of the filter.
template <typename Band>
struct BayerKernels {
    /// Each line from itself and the lines above and below.
    void (*interpolate)(const Band& band);
    /// Each two lines from each other; `lines` and `width` are even.
    void (*replicate)(const Band& band);
};

/// Kernels of the 8-bit family by destination.
struct Bayer8Table {
    BayerKernels<Bayer8Band> toRGB16, toRGB24, toRGB32;
};

/// Kernels of the 16-bit family by destination.
struct Bayer16Table {
    BayerKernels<Bayer16Band> toRGB16, toRGB24, toRGB32, toRGB48;
};

}  // namespace ky

#endif
