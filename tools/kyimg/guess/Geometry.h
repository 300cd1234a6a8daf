#ifndef KYIMG_GUESS_GEOMETRY_H
#define KYIMG_GUESS_GEOMETRY_H

#include "SampleWindows.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kyimg {

/// Where the pixels of a file may be.
struct Geometry {
    std::uint32_t width = 0, height = 0;
    std::uint64_t frames = 1;
    LineGrid grid = {};              ///< of all frames, with the chroma planes
    std::uint64_t paddingBytes = 0;  ///< at the end of each line
    std::uint64_t trailerBytes = 0;
    double penalty = 0;  ///< for being unusual, less what speaks for it
};

/// How much larger the differences from line end to line begin are than those within lines: well above 1 where lines begin
/// where the grid says; 1 where lines are too short to tell.
double SeamContrast(std::span<const std::uint8_t> file, const SampleLayout& layout, const LineGrid& grid);

/// The possible images of such lines: with and without padding, with headers of some lines more, of several frames.
std::vector<Geometry> FindGeometries(std::span<const std::uint8_t> file, const SampleLayout& layout,
                                     const LineGrid& grid);

/// Lines of the grid that an image of so many lines has, with its chroma planes.
std::uint64_t LinesWithChroma(ChromaPlanes chroma, std::uint64_t height);

/// The reverse; 0 where there is no such image.
std::uint64_t HeightOfLines(ChromaPlanes chroma, std::uint64_t lines);

}  // namespace kyimg

#endif
