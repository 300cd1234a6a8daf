#ifndef KYIMG_CONVERTERCHOICE_H
#define KYIMG_CONVERTERCHOICE_H

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <cstdint>

namespace kyimg {

/// What a source becomes when the user does not say.
///
/// \param keepsMosaic  whether a Bayer mosaic is not demosaiced
std::int64_t DefaultDestination(std::int64_t source, bool keepsMosaic = false);

/// Throws Failure with the library's words when the library has no such converter.
const KyPixelConverter& FindConverter(std::int64_t source, std::int64_t destination);

/// Bits of a source's samples once they are RGB48: their own, or 8.
std::uint32_t BitsInRGB48(std::int64_t source);

}  // namespace kyimg

#endif
