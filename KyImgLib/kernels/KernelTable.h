#ifndef KYIMGLIB_KERNELS_KERNELTABLE_H
#define KYIMGLIB_KERNELS_KERNELTABLE_H

#include <KyImgLib/kernels/bayer/Bayer8.h>

namespace ky {

/// Kernels of the 8-bit Bayer family by destination.
struct Bayer8Table {
    Bayer8Kernels toRGB16;
    Bayer8Kernels toRGB24;
    Bayer8Kernels toRGB32;
};

/// All kernels of one instruction-set level.
struct KernelTable {
    const Bayer8Table& bayer8;
};

/// The kernels of the active level.
const KernelTable& ActiveKernels();

}  // namespace ky

#endif
