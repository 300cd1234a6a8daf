#ifndef KYIMGLIB_KERNELS_GRAY_GRAYKERNELS_H
#define KYIMGLIB_KERNELS_GRAY_GRAYKERNELS_H

#include <KyImgLib/pipeline/RowKernel.h>

#include <cstdint>

namespace ky {

/// How two samples lie in three bytes: high bits in the first and the third, low bits in the middle. A sample is
/// high * highFactor | (middle & lowMask) * 256 * lowFactor / 65536, with a mask and a factor for either sample.
struct PackedLayout {
    std::uint16_t highFactor;
    std::uint16_t lowMask[2];
    std::uint16_t lowFactor[2];
};

/// How the samples of a camera's taps alternate in a row.
struct TapLayout {
    enum Order : std::uint8_t {
        kInOrder,    ///< one tap
        kHalves,     ///< left, right
        kLinePairs,  ///< a line, the line below
        kQuarters,   ///< the left half from both its ends, the right half from both its ends
    };

    Order order = kInOrder;
    bool leftInverted = false, rightInverted = false;  ///< of halves: read from the far end
    /// Line pairs: samples of a source row; what a pair of lines needs beyond them is in the row below. 0: source rows follow
    /// one another without a gap.
    std::uint32_t rowSamples = 0;
};

/// Where each byte of a pixel of four bytes comes from: a byte of the source pixel, or a constant.
struct ByteOrder {
    static constexpr std::uint8_t kZero = 0x80, kFull = 0x81;  ///< 0 and 255

    std::uint8_t from[4];
};

/// Settings of kernels of gray samples.
struct GraySettings {
    std::uint32_t shift;  ///< of words, 0 to 31
    PackedLayout packed;
    TapLayout taps;
    ByteOrder order;
};

using MakeGray = void (*)(const GraySettings& settings, RowKernel& kernel);

/// Kernels to one destination by what they read; one or two taps.
struct GrayKernels {
    MakeGray fromBytes;
    MakeGray fromWords;   ///< the low byte of each shifted right
    MakeGray fromPacked;  ///< the high byte of each sample
};

/// What is gathered from pixels whose samples have several bytes: the last byte of each sample.
struct GatherSettings {
    std::uint32_t sampleBytes;
    std::uint32_t group, groupSamples;  ///< pixels that share samples, and those samples
    /// Of three samples a pixel: bytes from the last byte of the first sample to those that are taken.
    bool hasPlaces;
    std::uint32_t places[3];
};

struct GrayTable {
    GrayKernels toGray8, toRGB16, toRGB24, toRGB32;
    MakeGray shiftRight;    ///< words to words; one, two or four taps
    MakeGray shiftLeft;     ///< words to words; one tap
    MakeGray unpack;        ///< packed samples to words; one or two taps
    MakeGray reorderBytes;  ///< bytes to bytes; four taps
    /// Bytes of any source, one after the other, for the kernels that read bytes.
    void (*gather)(const GatherSettings& settings, RowKernel& kernel);
    /// Samples that lie bit by bit, one tap: of 10, 12 and 14 bits to words, in a stream from the lowest bit on and with the
    /// high bytes first (MIPI); of 1, 2 and 4 bits to bytes.
    MakeGray unpackLeastFirst[3], unpackHighBytesFirst[3], unpackFewBits[3];
    MakeGray swapBytes;     ///< big-endian words to words
    MakeGray reorderPixel;  ///< the bytes of pixels of four, in another order
};

}  // namespace ky

#endif
