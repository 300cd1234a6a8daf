#ifndef KYIMGLIB_LINES_FETCHAHEAD_H
#define KYIMGLIB_LINES_FETCHAHEAD_H

#include <cstddef>
#include <cstdint>

namespace ky {

/// Memory that is read soon, to be asked for while lines are converted. Addresses are numbers, for they may lie outside of
/// the image and of all memory.
struct FetchAhead {
    std::uintptr_t from;  ///< while the first line is converted
    std::ptrdiff_t line;  ///< bytes from there to what comes with the next line
    std::size_t bytes;    ///< with each line; 0: nothing

    /// What comes with line y.
    FetchAhead At(std::ptrdiff_t y) const { return {from + static_cast<std::uintptr_t>(y * line), line, bytes}; }
    /// What comes with some columns of a line.
    FetchAhead Part(std::size_t begin, std::size_t end, std::size_t width) const {
        return {from + bytes * begin / width, line, bytes * (end - begin) / width};
    }
};

}  // namespace ky

#endif
