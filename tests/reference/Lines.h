#ifndef KYIMGLIB_TESTS_REFERENCE_LINES_H
#define KYIMGLIB_TESTS_REFERENCE_LINES_H

#include <tests/reference/Pixels.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace reference {

/// What a line call is about.
struct Line {
    const std::uint8_t* source;
    std::uint32_t width;
    const Tables& filter;
    std::uint32_t row = 0;  ///< of the destination lines that one call makes
};

/// Pixel x of the destination line that a source line becomes.
using Reader = std::function<Rgb(const Line& line, std::uint32_t x)>;

/// How the pixels of a source share its bytes.
struct Layout {
    std::uint32_t groupPixels, groupBytes;
    bool onlyWholeGroups = false;      ///< a group that is cut is left out, otherwise converted whole
    std::uint32_t overhang = 0;        ///< bytes after the last group that its pixels use
    std::uint32_t linePixelBytes = 0;  ///< bytes of a pixel by which lines are sized; 0 for those of a group

    std::uint32_t Groups(std::uint32_t width) const {
        return onlyWholeGroups ? width / groupPixels : (width + groupPixels - 1) / groupPixels;
    }
    std::uint32_t PixelsWritten(std::uint32_t width) const { return Groups(width) * groupPixels; }
    std::uint32_t BytesRead(std::uint32_t width) const {
        return Groups(width) == 0 ? 0 : Groups(width) * groupBytes + overhang;
    }
    std::uint32_t LineBytes(std::uint32_t width) const {
        if (linePixelBytes != 0) return width * linePixelBytes;
        return onlyWholeGroups ? width / groupPixels * groupBytes : width * groupBytes / groupPixels;
    }
};

/// Where a source line begins, and the destination line that it becomes.
struct LinePlace {
    std::size_t source, destination;
    std::uint32_t row = 0;
};

/// The lines of an area in the order they are converted, so many with each call; what is left of them is left out.
inline std::vector<LinePlace> PlainWalk(std::uint32_t height, std::size_t sourceLine, std::size_t destinationLine,
                                        std::uint32_t rows = 1) {
    std::vector<LinePlace> lines;
    for (std::uint32_t y = 0; y < height / rows * rows; ++y)
        lines.push_back({(y - y % rows) * sourceLine, y * destinationLine, y % rows});
    return lines;
}

/// The even lines of the destination from one half of the source buffer, then the odd ones from the other.
inline std::vector<LinePlace> InterlacedWalk(std::uint32_t height, std::size_t sourceLine, std::size_t destinationLine,
                                             std::uint32_t sourceHeight, bool inverted) {
    std::vector<LinePlace> lines;
    for (std::uint32_t field = 0; field < 2; ++field) {
        const std::size_t start = (field == 1) != inverted ? sourceHeight * sourceLine / 2 : 0;
        for (std::uint32_t y = 0; y < height / 2; ++y)
            lines.push_back({start + y * sourceLine, (2 * y + field) * destinationLine});
    }
    return lines;
}

}  // namespace reference

#endif
