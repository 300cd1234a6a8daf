#ifndef KYIMGLIB_IMAGES_LAYOUTINTERNAL_H
#define KYIMGLIB_IMAGES_LAYOUTINTERNAL_H

#include <KyImgLib/images/KyImage.h>

#include <cstddef>
#include <cstdint>

class KyPixelType;

namespace ky {

/// How the pixels of a type lie in a line, and lines in an image.
struct Layout {
    const KyPixelType* type;
    std::uint32_t groupPixels;  ///< pixels that share bytes
    std::uint32_t groupBytes;   ///< bytes of such a group
    bool hasOwnRule;            ///< an application's class tells the bytes of a line
    std::uint32_t planes;       ///< planes of bytes
    std::uint32_t fields;       ///< 2 for an interlaced image
    std::uint32_t lineStep;     ///< lines that cannot be told apart: 2 for interlaced types and dual lines
    bool hasTaps;               ///< a sample's place depends on the length of the line

    std::uint64_t LineBytes(std::uint32_t width) const;
    /// The layout of a destination, whose lines are in the order of the picture.
    Layout Deinterlaced() const;
};

/// Refuses a type that is not registered. `role` says in the text whose type it is.
std::uint32_t FindLayout(const char* role, std::int64_t type, Layout& layout);

/// Where the lines of an image lie, with the defaults of its strides filled in.
struct Placement {
    std::size_t lineBytes;    ///< of the pixels of a line
    std::size_t stride;       ///< bytes from one line of a part to the next
    std::size_t partStride;   ///< bytes from one plane or field to the next
    std::uint32_t parts;      ///< planes or fields
    std::uint32_t partLines;  ///< lines of each
    std::size_t size;         ///< bytes from the first one to the last one of all pixels
};

/// Refuses what no buffer could hold and strides that are too small; does not look at the buffer.
std::uint32_t PlaceImage(const char* role, const KyImage& image, const Layout& layout, Placement& place);

/// Refuses a buffer that is too small for the placement.
std::uint32_t CheckBuffer(const char* role, const KyImage& image, const Placement& place);

}  // namespace ky

#endif
