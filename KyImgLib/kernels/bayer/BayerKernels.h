#ifndef KYIMGLIB_KERNELS_BAYER_BAYERKERNELS_H
#define KYIMGLIB_KERNELS_BAYER_BAYERKERNELS_H

#include <KyImgLib/kernels/Filter16.h>
#include <KyImgLib/kernels/Filter8.h>
#include <KyImgLib/kernels/bayer/Mosaic.h>
#include <KyImgLib/pipeline/RowKernel.h>

#include <cstdint>

namespace ky {

/// Settings of kernels from Bayer mosaics.
template <typename SampleType, typename FilterType>
struct BayerSettings {
    using Sample = SampleType;
    using Filter = FilterType;

    MosaicLine firstLine;  ///< row 0 of the picture
    bool repeatsLastRow;   ///< nearest-neighbour demosaicing: the last row, an odd one, repeats the one before it
    Filter filter;
};

using Bayer8Settings = BayerSettings<std::uint8_t, Filter8>;
using Bayer16Settings = BayerSettings<std::uint16_t, Filter16>;

/// Kernels from Bayer mosaics to one destination format. They write red first: for destinations that store blue first,
/// exchange red and blue in the mosaic line and in the filter.
template <typename Settings>
struct BayerKernels {
    using Make = void (*)(const Settings& settings, RowKernel& kernel);
    Make bilinear;  ///< each row from itself and the rows above and below
    Make nearest;   ///< each two rows from their 2 x 2 cells
};

/// Kernels of the 8-bit family by destination.
struct Bayer8Table {
    BayerKernels<Bayer8Settings> toRGB16, toRGB24, toRGB32;
};

/// Kernels of the 16-bit family by destination.
struct Bayer16Table {
    BayerKernels<Bayer16Settings> toRGB16, toRGB24, toRGB32, toRGB48;
};

}  // namespace ky

#endif
