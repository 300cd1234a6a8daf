#ifndef KYIMGLIB_PIXELTYPES_PIXELFORMATINTERNAL_H
#define KYIMGLIB_PIXELTYPES_PIXELFORMATINTERNAL_H

#include <cstdint>

class KyPixelType;

namespace ky {

/// How the samples of an extended type lie in bytes.
enum class Packing : std::uint8_t {
    kNone,        ///< each in a little-endian word of its own
    kBigEndian,   ///< each in a big-endian word
    kLeastFirst,  ///< a stream of bits, from the lowest bit of each byte on: PFNC's "p" formats
    kMIPI,        ///< a byte of high bits for each, then the low bits of all
    kYCbCr,       ///< Y, Cb and Cr, in bytes or little-endian words
    kColours,     ///< several samples a pixel
};

struct PixelGroup {
    std::uint32_t pixels, bytes;

    bool operator==(const PixelGroup&) const = default;
};

/// Bytes of so many pixels, whole groups.
inline std::uint64_t BytesOf(const PixelGroup& group, std::uint32_t pixels) {
    return (std::uint64_t{pixels} + group.pixels - 1) / group.pixels * group.bytes;
}

/// The planes of a type after the first one, all alike: colours of YUV, often with fewer samples than the first plane.
struct OtherPlanes {
    std::uint32_t count = 0;
    PixelGroup group = {1, 1};      ///< pixels of the picture, and the bytes of a plane for them
    std::uint32_t sharedLines = 1;  ///< lines of the picture that share a line of a plane

    bool operator==(const OtherPlanes&) const = default;

    std::uint64_t LineBytes(std::uint32_t width) const { return BytesOf(group, width); }
    std::uint32_t Lines(std::uint32_t height) const { return height / sharedLines + (height % sharedLines != 0); }
};

/// What the bytes of a type are.
struct PixelFormat {
    PixelGroup group;  ///< pixels that share bytes, in the first plane where there are several
    OtherPlanes otherPlanes;
    /// The type of the same samples in scan order, LSB-aligned in words, or in bytes; RGB24 where a pixel has several samples.
    std::int64_t plain;

    /// Of the first plane.
    std::uint64_t LineBytes(std::uint32_t width) const { return BytesOf(group, width); }
};

PixelFormat FormatOf(const KyPixelType& type);

/// A row of the table of extended types.
struct ExtendedType {
    std::int64_t id;
    const char* name;
    Packing packing;
    std::uint32_t bits;  ///< of a sample, or of a pixel of several
    PixelGroup group;    ///< of the first plane where there are several
    std::int64_t plain;
    OtherPlanes otherPlanes = {};
};

struct ExtendedTypeRows {
    const ExtendedType *first, *last;

    const ExtendedType* begin() const { return first; }
    const ExtendedType* end() const { return last; }
};
/// Types whose plain type is an extended one come after that.
ExtendedTypeRows AllExtendedTypes();

/// Null for every other ID.
const ExtendedType* FindExtendedType(std::int64_t id);

}  // namespace ky

#endif
