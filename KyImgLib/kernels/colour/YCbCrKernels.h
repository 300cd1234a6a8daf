#ifndef KYIMGLIB_KERNELS_COLOUR_YCBCRKERNELS_H
#define KYIMGLIB_KERNELS_COLOUR_YCBCRKERNELS_H

#include <KyImgLib/kernels/Filter8.h>
#include <KyImgLib/kernels/colour/YCbCrRule.h>
#include <KyImgLib/pipeline/RowKernel.h>

#include <cstdint>

namespace ky {

/// Settings of kernels between YCbCr and RGB.
struct YCbCrSettings {
    YCbCrColours colours;
    std::uint8_t bits;             ///< of a sample
    std::uint8_t wordShift;        ///< of samples in the upper bits of words: to the right
    std::uint8_t places[4];        ///< in a pixel, the bytes of Y, Cb, Cr; in a pair of pixels, those of Y, Cb, Y, Cr
    bool crFirst;                  ///< planes: Cr before Cb
    std::uint8_t linesPerCbCrRow;  ///< planes: 2 where two lines of the picture share Cb and Cr

    Filter8 filter;    ///< from YCbCr: of the destination's channels
    bool isExchanged;  ///< from YCbCr: the destination has blue first
};

using MakeYCbCr = void (*)(const YCbCrSettings& settings, RowKernel& kernel);

/// Kernels from one layout.
struct YCbCrToRGB {
    MakeYCbCr toRGB24, toRGB32;
};

struct YCbCrKernels {
    YCbCrToRGB fromPairs;          ///< bytes, two pixels in four
    YCbCrToRGB fromFours;          ///< bytes, four pixels in six
    YCbCrToRGB fromPixels;         ///< bytes, a pixel in three
    YCbCrToRGB fromWordPairs;      ///< words, two pixels in four
    YCbCrToRGB fromTwoPlanes;      ///< bytes, Y apart, Cb and Cr of two pixels in turn
    YCbCrToRGB fromThreePlanes;    ///< bytes, each apart
    YCbCrToRGB fromTwoWordPlanes;  ///< as two planes, of words
    /// RGB24 to planes of bytes where two by two pixels share Cb and Cr.
    MakeYCbCr toTwoPlanes, toThreePlanes;
};

}  // namespace ky

#endif
