#ifndef KYIMGLIB_CONVERTERS_PASSBANDINTERNAL_H
#define KYIMGLIB_CONVERTERS_PASSBANDINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/kernels/PixelBand.h>

namespace ky {

inline FetchAhead AheadOf(const KyLinePass& pass) {
    return {pass.ahead, static_cast<std::ptrdiff_t>(pass.aheadStep), pass.aheadBytes};
}

/// The lines of a pass, each of which a line call would convert, with `width` pixels each. None where that is 0.
inline PixelBand BandOf(const KyLinePass& pass, std::size_t width) {
    PixelBand band;
    band.source = pass.source;
    band.sourceLine = static_cast<std::ptrdiff_t>(pass.sourceStep);
    band.destination = pass.destination;
    band.destinationLine = static_cast<std::ptrdiff_t>(pass.destinationStep);
    band.width = width;
    band.lines = width == 0 ? 0 : pass.height / pass.lineStep;
    band.isLarge = pass.isLarge;
    band.ahead = AheadOf(pass);
    band.joint = pass.joint;
    band.lineIndex = pass.firstLine;
    return band;
}

}  // namespace ky

#endif
