#ifndef KYIMGLIB_IMAGES_LAYOUTINTERNAL_H
#define KYIMGLIB_IMAGES_LAYOUTINTERNAL_H

#include <KyImgLib/images/KyImage.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>

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
    OtherPlanes otherPlanes;    ///< after the first one, which the above tells
    std::uint32_t fields;       ///< 2 for an interlaced image
    std::uint32_t lineStep;     ///< lines that cannot be told apart: 2 for interlaced types and dual lines
    bool hasTaps;               ///< a sample's place depends on the length of the line

    std::uint32_t Planes() const { return 1 + otherPlanes.count; }
    /// Whether all planes have the same lines.
    bool ArePlanesAlike() const {
        return otherPlanes.count == 0 || (otherPlanes.group.pixels == groupPixels &&
                                          otherPlanes.group.bytes == groupBytes && otherPlanes.sharedLines == 1);
    }
    /// Whether images of both have the same planes, with lines of the same groups.
    bool HasPlanesOf(const Layout& other) const {
        return groupPixels == other.groupPixels && groupBytes == other.groupBytes && hasOwnRule == other.hasOwnRule &&
               otherPlanes == other.otherPlanes;
    }
    /// Of the first plane.
    std::uint64_t LineBytes(std::uint32_t width) const;
    /// Of all planes together.
    std::uint64_t LineBytesOfPlanes(std::uint32_t width) const {
        return LineBytes(width) + otherPlanes.count * otherPlanes.LineBytes(width);
    }
    /// The layout of a destination, whose lines are in the order of the picture.
    Layout Deinterlaced() const;
};

/// Refuses a type that is not registered. `role` says in the text whose type it is.
std::uint32_t FindLayout(const char* role, std::int64_t type, Layout& layout);

/// Where the lines of an image lie, with the defaults of its strides filled in.
struct Placement {
    /// A plane or a field.
    struct Part {
        std::size_t lineBytes;  ///< of the pixels of a line
        std::size_t stride;     ///< bytes from one line to the next
        std::uint32_t lines;
        std::uint32_t sharedLines;  ///< lines of the picture that share a line
    };

    Part first, others;        ///< the first part, and each of the others
    std::uint32_t parts;       ///< planes or fields
    std::size_t firstStride;   ///< bytes from the first part to the second
    std::size_t othersStride;  ///< bytes from each of the others to the next
    std::size_t size;          ///< bytes from the first one to the last one of all pixels

    const Part& PartAt(std::uint32_t index) const { return index == 0 ? first : others; }
    /// Whether lines and parts follow one another without gaps.
    bool IsTight() const {
        return first.stride == first.lineBytes && others.stride == others.lineBytes &&
               (parts < 2 || firstStride == first.stride * first.lines) &&
               (parts < 3 || othersStride == others.stride * others.lines);
    }
    std::size_t OffsetOf(std::uint32_t index) const {
        return index == 0 ? 0 : firstStride + (index - 1) * othersStride;
    }
};

/// Refuses what no buffer could hold and strides that are too small; does not look at the buffer.
std::uint32_t PlaceImage(const char* role, const KyImage& image, const Layout& layout, Placement& place);

/// Refuses a buffer that is too small for the placement.
std::uint32_t CheckBuffer(const char* role, const KyImage& image, const Placement& place);

}  // namespace ky

#endif
