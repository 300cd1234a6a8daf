#ifndef KYIMG_PNMWRITER_H
#define KYIMG_PNMWRITER_H

#include "ByteSink.h"
#include "Picture.h"

namespace kyimg {

/// A PPM or, of gray, a PGM. Samples keep their own range, which the header states; an alpha is left out. Throws Failure.
void WritePnm(const ConvertedFrame& frame, const ByteSink& sink);

}  // namespace kyimg

#endif
