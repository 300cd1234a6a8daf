#ifndef KYIMGLIB_CONVERSION_AREACONVERSIONINTERNAL_H
#define KYIMGLIB_CONVERSION_AREACONVERSIONINTERNAL_H

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pipeline/Pipeline.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <cstddef>
#include <cstdint>

namespace ky {

/// The numbers of an area conversion, see KyPixelConverter::Convert().
struct Area {
    std::uint32_t sourceWidth, sourceHeight;
    std::uint32_t destinationWidth, destinationHeight;
    std::uint32_t width, height;
    std::uint32_t flags;
    std::uint32_t destinationPadding;
};

inline bool IsInterlaced(const KyPixelConverter& converter) {
    return (converter.GetSourceType() & KY_TYPE_INTERLACED) != 0;
}

/// A converter alone, or the stages of a chain, one after the other.
struct Stages {
    static constexpr std::size_t kMost = Pipeline::kMostKernels;

    const KyPixelConverter* converters[kMost];
    std::size_t count = 0;  ///< more than kMost when there is no room for all: no pipeline can have so many

    static Stages Of(const KyPixelConverter& converter);

    void Add(const KyPixelConverter& converter) {
        if (count < kMost) converters[count] = &converter;
        ++count;
    }
    /// Whether a stage only copies, so that the ones around it can do without it.
    bool Copies(std::size_t index) const;
    /// Whether all of them have kernels that do all that they do, and the images between them are neither interlaced nor
    /// planar.
    bool ConvertByKernels() const;
};

/// Converts an area by kernels, through the filter of the context. False, and nothing is done, where they would not do what
/// line calls do.
bool ConvertAreaByKernels(const Stages& stages, const Area& area, const std::uint8_t* source, std::uint8_t* destination,
                          ThreadContext& context);

/// Converts an area by one line call after the other, which is what every area conversion is equal to.
void ConvertAreaByLineCalls(const KyPixelConverter& converter, const Area& area, const std::uint8_t* source,
                            std::uint8_t* destination, ThreadContext& context);

}  // namespace ky

#endif
