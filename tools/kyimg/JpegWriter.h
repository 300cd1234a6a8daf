#ifndef KYIMG_JPEGWRITER_H
#define KYIMG_JPEGWRITER_H

#include "ByteSink.h"
#include "Picture.h"

namespace kyimg {

/// A baseline JPEG of a frame with 8 bits a sample; an alpha is left out. Throws Failure.
///
/// \param quality  1 to 100
void WriteJpeg(const ConvertedFrame& frame, int quality, const ByteSink& sink);

}  // namespace kyimg

#endif
