#ifndef KYIMGLIB_CONVERTERS_COLOUR_YCBCRINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_YCBCRINTERNAL_H

#include <KyImgLib/converters/PlanesConverterInternal.h>

namespace ky {

/// From an extended YCbCr type to RGB24, BGR24, RGB32 or BGR32.
class YCbCrToRGBConverter final : public PlanesConverter {
public:
    YCbCrToRGBConverter(std::int64_t sourceType, std::int64_t destinationType);
};

/// From RGB24 to NV12 or I420, in any colours.
class RGBToYCbCrConverter final : public PlanesConverter {
public:
    /// \param appliesFilter  false: in chains, whose stage before it has applied the filter
    RGBToYCbCrConverter(std::int64_t destinationType, bool appliesFilter);
};

}  // namespace ky

#endif
