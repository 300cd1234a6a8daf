#ifndef KYIMGLIB_KERNELS_COLOUR_RGBBITSKERNELS_H
#define KYIMGLIB_KERNELS_COLOUR_RGBBITSKERNELS_H

#include <KyImgLib/kernels/colour/ColourKernels.h>

namespace ky {

using MakeRGB48 = void (*)(const Colour16Settings& settings, RowKernel& kernel);

/// Kernels from RGB whose samples have other than 8 bits, or lie in planes. The first channel is the one in the lowest bits or
/// the first word.
struct RGBBitsTable {
    /// Samples become bytes, v * 255 / largest rounded to nearest, before they pass the filter.
    ColourKernels<Colour8Settings> from565, from555;
    ColourKernels<Colour8Settings> from10Bits32;  ///< three samples of 10 bits in 32
    ColourKernels<Colour8Settings> from10BitWords;

    /// Three words of samples as they are, but for the filter, whose index mask is that of the samples.
    MakeRGB48 filterRGB48;  ///< words, shifted right before
    MakeRGB48 filterRGB64;  ///< four, of which the last is ignored
    MakeRGB48 unpack10Bits32;

    /// From three planes of bytes to RGB24, and of words to RGB48. `places` tell the planes of red, green and blue.
    ColourKernels<Colour8Settings>::Make planesToRGB24;
    MakeRGB48 planesToRGB48;
};

}  // namespace ky

#endif
