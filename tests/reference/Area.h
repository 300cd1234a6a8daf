#ifndef KYIMGLIB_TESTS_REFERENCE_AREA_H
#define KYIMGLIB_TESTS_REFERENCE_AREA_H

#include <cstddef>
#include <cstdint>

namespace reference {

/// The numbers of an area conversion.
struct Area {
    std::uint32_t width = 0, height = 0;
    std::uint32_t sourceWidth = 0, sourceLines = 0;  ///< of the buffers
    std::uint32_t destinationWidth = 0, destinationLines = 0;
    std::uint32_t padding = 0;
    std::uint32_t flags = 0;

    /// The same conversion of everything that the source has.
    Area Whole() const {
        return {sourceWidth, sourceLines, sourceWidth, sourceLines, sourceWidth, sourceLines, 0, flags};
    }
};

/// Bytes up to the last one that a conversion touches.
struct Extent {
    std::size_t source = 0, destination = 0;
};

}  // namespace reference

#endif
