#ifndef KYIMG_PNGWRITER_H
#define KYIMG_PNGWRITER_H

#include "Picture.h"

#include <cstdint>
#include <vector>

namespace kyimg {

/// A PNG file of 8 or 16 bits a sample. Samples of 10, 12 or 14 bits are scaled to the full 16-bit range, and an sBIT
/// chunk tells their true depth. Throws Failure.
std::vector<std::uint8_t> EncodePng(const PictureRows& rows);

}  // namespace kyimg

#endif
