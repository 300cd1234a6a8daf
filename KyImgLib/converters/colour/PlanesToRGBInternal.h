#ifndef KYIMGLIB_CONVERTERS_COLOUR_PLANESTORGBINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_PLANESTORGBINTERNAL_H

#include <KyImgLib/converters/PlanesConverterInternal.h>

namespace ky {

/// RGB in planes.
struct PlanarFormat {
    std::int64_t id;
    std::uint8_t bits;       ///< of a sample: 8 in bytes, more in words
    std::uint8_t planes[3];  ///< of red, green and blue
};

/// From planes of bytes to RGB24, or of words to RGB48 of as many bits, through the filter.
class PlanesToRGB final : public PlanesConverter {
public:
    explicit PlanesToRGB(const PlanarFormat& source);
};

}  // namespace ky

#endif
