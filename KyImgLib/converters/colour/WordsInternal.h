#ifndef KYIMGLIB_CONVERTERS_COLOUR_WORDSINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_WORDSINTERNAL_H

#include <KyImgLib/converters/PlanesConverterInternal.h>

namespace ky {

/// What a destination of deep samples is, and what it is made of.
enum class WordLayout : std::uint8_t {
    kRGB48,        ///< words R, G, B
    kRGBA64,       ///< and A, the largest sample
    kWordPlanes,   ///< three planes of words
    kFloatPlanes,  ///< three planes of floats, 1.0 for the largest sample
    kBytes,        ///< RGB of bytes: of RGB24 any, of RGB48 RGB24
    kGray,         ///< words of gray samples
    kLuma,         ///< words of RGB24's luma
};

struct WordConversion {
    std::int64_t source, destination;
    WordLayout layout;
    std::uint8_t bits;   ///< of the source's samples: 8 are bytes, more are words
    bool isFullRange;    ///< 2^bits - 1 becomes 65535; otherwise samples stay as they are
    bool appliesFilter;  ///< before anything else; where false, filters are ignored
};

/// From RGB24, RGB48 or gray to words or floats, or to bytes. As a stage of a chain it ignores filters: the stage before it has
/// applied them.
class WordsConverter final : public PlanesConverter {
public:
    explicit WordsConverter(const WordConversion& conversion);
};

}  // namespace ky

#endif
