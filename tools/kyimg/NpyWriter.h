#ifndef KYIMG_NPYWRITER_H
#define KYIMG_NPYWRITER_H

#include "ByteSink.h"
#include "Picture.h"

namespace kyimg {

/// Whether frames of a type are an array of bytes, words or floats.
bool IsArray(std::int64_t type);

/// An array that numpy.load() reads: the bytes of the frame as they are, in the shape (height, width) or (height, width,
/// channels), of planes (3, height, width). Throws Failure when the type is no array.
void WriteNpy(const ConvertedFrame& frame, const ByteSink& sink);

}  // namespace kyimg

#endif
