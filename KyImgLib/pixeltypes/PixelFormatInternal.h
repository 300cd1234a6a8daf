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
};

struct PixelGroup {
    std::uint32_t pixels, bytes;
};

/// What the bytes of a type are.
struct PixelFormat {
    PixelGroup group;  ///< pixels that share bytes
    /// The type of the same samples in scan order, LSB-aligned in words, or in bytes; RGB24 where a pixel has several samples.
    std::int64_t plain;
};

PixelFormat FormatOf(const KyPixelType& type);

/// A row of the table of extended types.
struct ExtendedType {
    std::int64_t id;
    const char* name;
    Packing packing;
    std::uint32_t bits;
    PixelGroup group;
    std::int64_t plain;
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
