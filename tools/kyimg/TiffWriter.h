#ifndef KYIMG_TIFFWRITER_H
#define KYIMG_TIFFWRITER_H

#include "ByteSink.h"
#include "Picture.h"

namespace kyimg {

enum class TiffCompression { None, Deflate };

/// A TIFF file of 8 or 16 bits a sample; one of more than 4 GB is a BigTIFF. Samples of 10, 12 or 14 bits are scaled to the
/// full 16-bit range. Throws Failure.
void WriteTiff(const ConvertedFrame& frame, TiffCompression compression, const ByteSink& sink);

/// A DNG file: the samples of a Bayer mosaic as they are, with what a raw developer needs to know. Nobody has measured the
/// colours of the sensor, so its red, green and blue count as those of sRGB. Throws Failure.
void WriteDng(const ConvertedFrame& frame, const ByteSink& sink);

}  // namespace kyimg

#endif
