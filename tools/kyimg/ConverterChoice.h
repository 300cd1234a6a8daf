#ifndef KYIMG_CONVERTERCHOICE_H
#define KYIMG_CONVERTERCHOICE_H

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <cstdint>

namespace kyimg {

/// What a source becomes when the user does not say.
std::int64_t DefaultDestination(std::int64_t source);

/// Throws Failure with the library's words when the library has no such converter.
const KyPixelConverter& FindConverter(std::int64_t source, std::int64_t destination);

/// Whether a type holds LSB-aligned Bayer samples in 16-bit words, not packed, of a single tap, not interlaced: it can
/// become RGB48.
bool IsMosaicOfWords(std::int64_t id);

}  // namespace kyimg

#endif
