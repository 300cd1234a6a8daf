#ifndef KYIMGLIB_CONVERSION_IMAGECONVERSIONINTERNAL_H
#define KYIMGLIB_CONVERSION_IMAGECONVERSIONINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <cstddef>
#include <cstdint>

namespace ky {

/// Where the planes of an image after the first one lie, in bytes.
struct ImagePlanes {
    std::ptrdiff_t toSecond;  ///< from the first plane to the second
    std::ptrdiff_t step;      ///< from the second to the third
    std::ptrdiff_t stride;    ///< from one of their lines to the next
};

struct Stages;

/// A checked conversion of some lines of an image.
struct ImageConversion {
    const std::uint8_t* source;   ///< first line; interlaced: of the first field in memory
    std::ptrdiff_t sourceStride;  ///< bytes from one line to the next; interlaced: within a field
    std::ptrdiff_t fieldStride;   ///< interlaced source: bytes from the first field to the second
    ImagePlanes sourcePlanes;
    std::size_t sourceRowBytes;  ///< of the pixels of a line, in the first plane
    std::uint8_t* destination;   ///< planar: first plane
    std::ptrdiff_t destinationStride;
    ImagePlanes destinationPlanes;
    std::uint32_t width, height;  ///< of the whole image
    std::uint32_t flags;          ///< FLAG_ constants; without a Bayer pattern: GRBG
    const KyRGBFilter* filter;    ///< null: none
    std::uint32_t firstLine, endLine;
};

/// Lines that bands are multiples of; 0 when the library knows no kernels of the converter (an application's own class, or a
/// chain with one): then only its area form can convert, the whole image at a time.
std::uint32_t BandStepOf(const KyPixelConverter& converter, std::uint32_t flags, const KyRGBFilter* filter);

/// Converts the lines; exactly `width` pixels of each. False, and nothing is done, where BandStepOf() is 0. Throws
/// std::bad_alloc.
bool ConvertImage(const Stages& stages, const ImageConversion& conversion);

}  // namespace ky

#endif
