#ifndef KYIMGLIB_KERNELS_GRAY_GRAYBAND_H
#define KYIMGLIB_KERNELS_GRAY_GRAYBAND_H

#include <KyImgLib/kernels/PixelBand.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace ky {

/// How two samples lie in three bytes: high bits in the first and the third, low bits in the middle. A sample is
/// high * highFactor | (middle & lowMask) * 256 * lowFactor / 65536, with a mask and a factor for either sample.
struct PackedLayout {
    std::uint16_t highFactor;
    std::uint16_t lowMask[2];
    std::uint16_t lowFactor[2];
};

/// Where the samples of one of several outputs go, which alternate in the source.
struct TapRun {
    std::ptrdiff_t first;  ///< bytes from the start of the destination line to the pixel of the first sample
    bool descends;         ///< the following samples go to the pixels before it, not after it
};

/// Gray samples to be converted, and where they go.
struct GrayBand : PixelBand {
    std::uint32_t pixelBytes;  ///< of the source, where the last byte of each pixel is read
    std::uint32_t shift;       ///< of words, 0 to 31
    PackedLayout packed;
    std::uint32_t taps;  ///< outputs that alternate in the source: 1, 2 or 4
    std::array<TapRun, 4> runs;
};

using GrayKernel = void (*)(const GrayBand& band);

/// Kernels to one destination by what they read.
struct GrayKernels {
    GrayKernel fromBytes;      ///< 1 or 2 outputs
    GrayKernel fromLastBytes;  ///< of pixels of any size; 1 output
    GrayKernel fromWords;      ///< the low byte of each shifted right; 1 or 2 outputs
    GrayKernel fromPacked;     ///< the high byte of each sample; 1 or 2 outputs
};

struct GrayTable {
    GrayKernels toGray8, toRGB16, toRGB24, toRGB32;
    /// Words to words; 1, 2 or 4 outputs.
    GrayKernel shiftRight;
    /// Words to words; 1 output.
    GrayKernel shiftLeft;
    /// Packed samples to words; 1 or 2 outputs.
    GrayKernel unpack;
    /// Bytes to bytes; 4 outputs.
    GrayKernel reorderBytes;
};

}  // namespace ky

#endif
