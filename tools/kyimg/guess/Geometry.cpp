#include "Geometry.h"

#include "UsualSizes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace kyimg {

namespace {

std::size_t SamplesOfGroup(const SampleLayout& layout) { return std::strlen(layout.components); }

/// To the left neighbour of the same colour, as far as any component needs.
std::size_t LeftDistance(const SampleLayout& layout) { return layout.isMosaic ? 2 : SamplesOfGroup(layout); }

/// Up to `most` lines all over the grid.
std::vector<std::size_t> SpreadLines(std::size_t lines, std::size_t first, std::size_t most) {
    std::vector<std::size_t> chosen;
    if (lines <= first) return chosen;
    const std::size_t count = std::min(most, lines - first);
    for (std::size_t i = 0; i < count; ++i) chosen.push_back(first + (lines - first) * i / count);
    return chosen;
}

/// Samples at the end of the lines that are the same in all lines.
std::size_t ConstantTail(std::span<const std::uint8_t> file, const SampleFormat& format, const LineGrid& grid) {
    const std::size_t width = SamplesOfLine(format, grid.stride);
    std::vector<std::uint16_t> first;
    std::size_t constant = width;
    for (const std::size_t y : SpreadLines(grid.lines, 0, 128)) {
        const SampleWindow line = ReadWindow(file, format, grid, y, 1, 0, width);
        if (line.samples.empty()) return 0;
        if (first.empty()) first = line.samples;
        std::size_t same = 0;
        while (same < constant && line.samples[width - 1 - same] == first[width - 1 - same]) ++same;
        constant = same;
    }
    // The right border of a dark or saturated picture is as constant, but padding is nothing but one value.
    std::size_t tail = 0;
    while (tail < constant && first[width - 1 - tail] == first[width - 1]) ++tail;
    return grid.lines < 8 ? 0 : tail;
}

/// Mean difference of each line from the one above that has the same colours.
std::vector<double> LineDifferences(std::span<const std::uint8_t> file, const SampleLayout& layout,
                                    const LineGrid& grid) {
    constexpr std::size_t kWidest = 240, kMostLines = 30000;
    const std::size_t inLine = SamplesOfLine(*layout.format, grid.stride);
    const std::size_t width = std::min(kWidest, inLine), step = layout.isMosaic ? 2 : 1;
    const std::size_t left = (inLine - width) / 2 / 24 * 24;
    std::vector<double> differences(std::min(grid.lines, kMostLines));
    const SampleWindow window = ReadWindow(file, *layout.format, grid, 0, differences.size(), left, width);
    if (window.samples.empty()) return {};
    for (std::size_t y = step; y < differences.size(); ++y) {
        const std::uint16_t* const line = window.GetLine(y);
        const std::uint16_t* const above = window.GetLine(y - step);
        for (std::size_t x = 0; x < width; ++x) differences[y] += std::abs(line[x] - above[x]);
        differences[y] /= static_cast<double>(width);
    }
    return differences;
}

/// How the difference at a line compares to those around it.
class Jumps {
public:
    Jumps(std::vector<double> lineDifferences) : differences(std::move(lineDifferences)) {
        std::vector<double> sorted = differences;
        std::ranges::sort(sorted);
        // A few lines from the largest: pictures have edges.
        if (!sorted.empty()) usual = std::max(sorted[sorted.size() * 9 / 10], 0.5);
    }

    double At(std::size_t line) const { return line < differences.size() ? differences[line] / usual : 0; }

private:
    std::vector<double> differences;
    double usual = 1;
};

double JumpPenalty(double jump) { return jump > 1.5 ? 3 - std::min(8.0, 3 * std::log2(jump)) : 10; }

struct Width {
    std::uint32_t pixels;
    std::uint64_t paddingBytes;
    double penalty;
};

std::uint32_t PixelsOf(const SampleLayout& layout, std::size_t samples) {
    return static_cast<std::uint32_t>(samples / SamplesOfGroup(layout) * layout.groupPixels);
}

std::vector<Width> FindWidths(std::span<const std::uint8_t> file, const SampleLayout& layout, const LineGrid& grid) {
    const SampleFormat& format = *layout.format;
    const std::size_t inLine = SamplesOfLine(format, grid.stride);
    const std::size_t rest = grid.stride % format.groupBytes;
    LineGrid lines = grid;
    if (layout.chroma != ChromaPlanes::None) lines.lines = HeightOfLines(layout.chroma, grid.lines);
    const std::size_t tail = ConstantTail(file, format, lines) / SamplesOfGroup(layout) * SamplesOfGroup(layout);
    const double ofRest = rest == 0 ? 0 : 6;
    // A tail of less than a group completes the group of an odd width.
    const bool completes = format.groupSamples > 1 && tail > 0 && tail < format.groupSamples && rest == 0;
    const double evidence = completes ? 5 : tail == 0 ? 0 : std::min(14.0, 4 + 2 * static_cast<double>(tail));
    std::vector<Width> widths = {{PixelsOf(layout, inLine), rest, ofRest + evidence}};
    if (tail == 0 || tail == inLine) return widths;
    const std::size_t bytes = (tail / format.groupSamples) * format.groupBytes + rest;
    const double aligned = completes ? 0 : grid.stride % 16 == 0 ? 2 : grid.stride % 4 == 0 ? 3 : 6;
    widths.push_back({PixelsOf(layout, inLine - tail), bytes, aligned});
    return widths;
}

/// Headers of several lines: usual ones, and those that leave a usual size.
std::vector<std::size_t> FindHeaderLines(const LineGrid& grid, std::uint32_t width) {
    constexpr std::size_t kLongest = 65536;
    std::vector<std::size_t> counts;
    const std::size_t most = std::min(grid.lines / 2, kLongest / grid.stride);
    for (std::size_t lines = 1; lines <= most; ++lines)
        if (HeaderPenalty(grid.begin + lines * grid.stride) <= 3 || SizePenalty(width, grid.lines - lines) <= 0)
            counts.push_back(lines);
    return counts;
}

void AddFrames(const Geometry& one, const Jumps& jumps, std::vector<Geometry>& found) {
    constexpr std::size_t kMostFrames = 200, kLeastLines = 8;
    for (std::size_t frames = 2; frames <= kMostFrames && one.height / frames >= kLeastLines; ++frames) {
        if (one.height % frames != 0) continue;
        const std::size_t height = one.height / frames;
        double least = 1e9;
        for (std::size_t i = 1; i < frames; ++i) least = std::min(least, jumps.At(i * height));
        if (least < 1.5) continue;
        Geometry film = one;
        film.height = static_cast<std::uint32_t>(height);
        film.frames = frames;
        film.penalty += SizePenalty(film.width, height) - SizePenalty(one.width, one.height) + 2 + JumpPenalty(least);
        found.push_back(film);
    }
}

void AddHeaders(const Geometry& plain, const Jumps& jumps, std::vector<Geometry>& found) {
    for (const std::size_t lines : FindHeaderLines(plain.grid, plain.width)) {
        Geometry later = plain;
        later.grid.begin += lines * plain.grid.stride;
        later.grid.lines -= lines;
        later.height = static_cast<std::uint32_t>(later.grid.lines);
        later.penalty += HeaderPenalty(later.grid.begin) - HeaderPenalty(plain.grid.begin) +
                         SizePenalty(later.width, later.height) - SizePenalty(plain.width, plain.height) +
                         JumpPenalty(jumps.At(lines));
        found.push_back(later);
    }
}

}  // namespace

std::uint64_t LinesWithChroma(ChromaPlanes chroma, std::uint64_t height) {
    switch (chroma) {
        case ChromaPlanes::None: return height;
        case ChromaPlanes::Interleaved420:
        case ChromaPlanes::Separate420: return height + height / 2;
        default: return 2 * height;
    }
}

std::uint64_t HeightOfLines(ChromaPlanes chroma, std::uint64_t lines) {
    switch (chroma) {
        case ChromaPlanes::None: return lines;
        case ChromaPlanes::Interleaved420:
        case ChromaPlanes::Separate420: return lines % 3 == 0 ? lines / 3 * 2 : 0;
        default: return lines % 2 == 0 ? lines / 2 : 0;
    }
}

double SeamContrast(std::span<const std::uint8_t> file, const SampleLayout& layout, const LineGrid& grid) {
    constexpr std::size_t kMargin = 24;
    const SampleFormat& format = *layout.format;
    const std::size_t groups = kMargin / format.groupSamples;
    if (grid.stride < groups * format.groupBytes || grid.lines < 2) return 1;
    LineGrid shifted = grid;
    shifted.begin = grid.begin + grid.stride - groups * format.groupBytes;
    const std::size_t left = LeftDistance(layout);
    double seam = 0, elsewhere = 0;
    for (const std::size_t y : SpreadLines(grid.lines - 1, 0, 200)) {
        const SampleWindow line = ReadWindow(file, format, shifted, y, 1, 0, 2 * kMargin);
        if (line.samples.empty()) return 1;
        for (std::size_t x = left; x < line.width; ++x) {
            const double difference = std::abs(line.samples[x] - line.samples[x - left]);
            if (x >= kMargin && x < kMargin + left)
                seam += difference / static_cast<double>(left);
            else if (x < kMargin || x >= kMargin + left)
                elsewhere += difference / static_cast<double>(line.width - 2 * left);
        }
    }
    return (seam + 1) / (elsewhere + 1);
}

std::vector<Geometry> FindGeometries(std::span<const std::uint8_t> file, const SampleLayout& layout,
                                     const LineGrid& grid) {
    std::vector<Geometry> found;
    const bool hasPlanes = layout.chroma != ChromaPlanes::None;
    const std::uint64_t height = HeightOfLines(layout.chroma, grid.lines);
    if (height == 0) return found;
    const Jumps jumps(hasPlanes ? std::vector<double>() : LineDifferences(file, layout, grid));
    for (const Width& width : FindWidths(file, layout, grid)) {
        if (width.pixels == 0) continue;
        Geometry plain;
        plain.width = width.pixels;
        plain.height = static_cast<std::uint32_t>(height);
        plain.grid = grid;
        plain.paddingBytes = width.paddingBytes;
        plain.trailerBytes = file.size() - grid.begin - grid.lines * grid.stride;
        plain.penalty = width.penalty + SizePenalty(width.pixels, height) + HeaderPenalty(grid.begin) +
                        (plain.trailerBytes == 0 ? 0 : 2 + HeaderPenalty(plain.trailerBytes));
        found.push_back(plain);
        if (hasPlanes) continue;
        AddHeaders(plain, jumps, found);
        AddFrames(plain, jumps, found);
    }
    return found;
}

}  // namespace kyimg
