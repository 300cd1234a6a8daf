#ifndef KYIMG_PNGWRITER_H
#define KYIMG_PNGWRITER_H

#include "ByteSink.h"
#include "Picture.h"

namespace kyimg {

enum class PngCompression {
    Fast,     ///< none: as large as the samples
    Default,  ///< a quick way that suits the picture, found by trying some on a sample of its lines
    Best      ///< the smallest of several ways, tried on the whole picture
};

/// A PNG file of 8 or 16 bits a sample. Samples of 10, 12 or 14 bits are scaled to the full 16-bit range, and an sBIT
/// chunk tells their true depth. Throws Failure.
void WritePng(const ConvertedFrame& frame, PngCompression compression, const ByteSink& sink);

}  // namespace kyimg

#endif
