#ifndef KYIMG_GUESS_SAMPLEWINDOWS_H
#define KYIMG_GUESS_SAMPLEWINDOWS_H

#include "SampleLayouts.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kyimg {

/// Lines in a file, all `stride` bytes apart.
struct LineGrid {
    std::size_t begin;  ///< of the first line
    std::size_t stride;
    std::size_t lines;
};

/// A rectangle of samples, one word each.
struct SampleWindow {
    std::size_t width = 0, lines = 0;
    std::vector<std::uint16_t> samples;

    const std::uint16_t* GetLine(std::size_t y) const { return samples.data() + y * width; }
};

/// Whole groups of samples that a line of `bytes` has, in samples.
std::size_t SamplesOfLine(const SampleFormat& format, std::size_t bytes);

/// Reads lines from `firstLine` on, from sample `firstSample` on, which must begin a group. The window must lie in the file.
SampleWindow ReadWindow(std::span<const std::uint8_t> file, const SampleFormat& format, const LineGrid& grid,
                        std::size_t firstLine, std::size_t lines, std::size_t firstSample, std::size_t width);

/// `count` windows of a few lines each, all over the grid: they begin at even lines and at multiples of 24 samples.
std::vector<SampleWindow> ReadSpread(std::span<const std::uint8_t> file, const SampleFormat& format,
                                     const LineGrid& grid, std::size_t count);

}  // namespace kyimg

#endif
