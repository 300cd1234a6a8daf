#ifndef KYIMGLIB_KERNELS_KERNELTABLE_H
#define KYIMGLIB_KERNELS_KERNELTABLE_H

#include <KyImgLib/kernels/bayer/BayerKernels.h>
#include <KyImgLib/kernels/colour/ColourKernels.h>
#include <KyImgLib/kernels/colour/RGBBitsKernels.h>
#include <KyImgLib/kernels/colour/YCbCrKernels.h>
#include <KyImgLib/kernels/gray/GrayKernels.h>
#include <KyImgLib/kernels/words/WordKernels.h>

namespace ky {

/// All kernels of one instruction-set level.
struct KernelTable {
    const Bayer8Table& bayer8;
    const Bayer16Table& bayer16;
    const RGBKernels& rgb;
    const YUVKernels& yuv;
    const YCbCrKernels& ycbcr;
    const GrayTable& gray;
    const RGBBitsTable& rgbBits;
    const WordTable& words;
};

/// The kernels of the active level.
const KernelTable& ActiveKernels();

}  // namespace ky

#endif
