#ifndef KYIMGLIB_CONVERSION_AREAINTERNAL_H
#define KYIMGLIB_CONVERSION_AREAINTERNAL_H

#include <cstddef>
#include <cstdint>

namespace ky {

struct LineJoint;

/// The numbers of an area conversion, see KyPixelConverter::Convert().
struct Area {
    std::uint32_t sourceWidth;
    std::uint32_t sourceHeight;
    std::uint32_t destinationWidth;
    std::uint32_t destinationHeight;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t flags;
    std::uint32_t destinationPadding;
};

/// Some lines of an area, in whole steps.
struct AreaLines {
    const std::uint8_t* source;  ///< line `sourceFirst`; of an interlaced source the whole image
    std::uint32_t sourceFirst;   ///< 0 for an interlaced source
    std::uint8_t* destination;   ///< line `begin`
    std::uint32_t begin, end;    ///< destination lines
    std::uint32_t step;          ///< lines that are converted together
    std::uint32_t width;         ///< pixels of each
    bool isLarge;                ///< see KyLinePass
    bool asksOnward;             ///< for what follows these lines in the source, see KyLinePass::ahead
    std::uintptr_t ahead;        ///< or for what is here,
    std::size_t aheadLine;       ///< so many bytes with each line; 0: for nothing
    LineJoint* joint;            ///< null where the source is in memory
};

/// The two halves of an interlaced source.
struct Fields {
    const std::uint8_t* lines[2];
};

}  // namespace ky

#endif
