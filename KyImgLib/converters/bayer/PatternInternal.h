#ifndef KYIMGLIB_CONVERTERS_BAYER_PATTERNINTERNAL_H
#define KYIMGLIB_CONVERTERS_BAYER_PATTERNINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>

namespace ky {

struct BayerPattern {
    std::uint32_t flag;
    std::uint32_t evenRowType;  ///< MosaicLine type of the even lines; that of the odd ones is 3 less this
};

/// In the order in which flags are looked at: the first that is set counts.
constexpr BayerPattern kBayerPatterns[] = {
    {KyPixelConverter::FLAG_BAYER_GRBG, 0},
    {KyPixelConverter::FLAG_BAYER_GBRG, 1},
    {KyPixelConverter::FLAG_BAYER_RGGB, 2},
    {KyPixelConverter::FLAG_BAYER_BGGR, 3},
};

constexpr bool HasBayerPattern(std::uint32_t flags) {
    for (const BayerPattern& pattern : kBayerPatterns)
        if ((flags & pattern.flag) != 0) return true;
    return false;
}

/// Without any pattern flag, that of GRBG.
constexpr std::uint32_t EvenRowType(std::uint32_t flags) {
    for (const BayerPattern& pattern : kBayerPatterns)
        if ((flags & pattern.flag) != 0) return pattern.evenRowType;
    return 0;
}

}  // namespace ky

#endif
