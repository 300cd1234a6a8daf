#include "Hypotheses.h"

#include "CodingCost.h"
#include "Geometry.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>

namespace kyimg {

namespace {

using File = std::span<const std::uint8_t>;

bool SetsUnusedBits(File file, const SampleFormat& format, const LineGrid& grid) {
    if (format.unusedBits == decltype(format.unusedBits){}) return false;
    const std::size_t groups = grid.stride / format.groupBytes;
    for (std::size_t y = 0; y < grid.lines; y += 1 + grid.lines / 128) {
        const std::uint8_t* const line = file.data() + grid.begin + y * grid.stride;
        for (std::size_t i = 0; i < groups * format.groupBytes; ++i)
            if ((line[i] & format.unusedBits[i % format.groupBytes]) != 0) return true;
    }
    return false;
}

/// Planes of chroma below that of Y: how they are coded, and how far from gray they are.
class Chroma {
public:
    Chroma(File givenFile, const Hypothesis& given, std::size_t most) : file(givenFile), windows(most) {
        const std::uint64_t height = HeightOfLines(given.layout->chroma, given.grid.lines);
        const bool isHalved =
            given.layout->chroma == ChromaPlanes::Interleaved420 || given.layout->chroma == ChromaPlanes::Separate420;
        LineGrid grid = {given.grid.begin + height * given.grid.stride, given.grid.stride,
                         isHalved ? height / 2 : height};
        if (given.layout->chroma == ChromaPlanes::Interleaved420 ||
            given.layout->chroma == ChromaPlanes::Interleaved422) {
            Add(*given.layout, grid, "UV");
            return;
        }
        grid.stride /= 2;
        Add(*given.layout, grid, "U");
        grid.begin += grid.lines * grid.stride;
        Add(*given.layout, grid, "U");
    }

    double bits = 0;      ///< per sample, the mean of all planes
    double distance = 0;  ///< from gray

private:
    void Add(const SampleLayout& layout, const LineGrid& grid, const char* components) {
        const std::vector<SampleWindow> spread = ReadSpread(file, *layout.format, grid, windows);
        const double share = components[1] == 'V' ? 1 : 0.5;
        bits += share * BitsPerSample(spread, components, 1, 8);
        double sum = 0, count = 1;
        for (const SampleWindow& window : spread)
            for (const std::uint16_t sample : window.samples) {
                sum += std::abs(sample - 128);
                ++count;
            }
        distance += share * sum / count;
    }

    File file;
    std::size_t windows;
};

/// Of the U and V between the samples of Y.
double ChromaDistance(std::span<const SampleWindow> windows, const char* components) {
    const std::size_t period = std::strlen(components);
    double sum = 0, count = 1;
    for (const SampleWindow& window : windows)
        for (std::size_t y = 0; y < window.lines; ++y)
            for (std::size_t x = 0; x < window.width; ++x)
                if (components[x % period] == 'U' || components[x % period] == 'V') {
                    sum += std::abs(window.GetLine(y)[x] - 128);
                    ++count;
                }
    return sum / count;
}

/// Most colours are near gray.
double ChromaPenalty(double distance) { return std::max(0.0, 0.4 * (distance - 24)); }

/// Fills in what it costs to code the file so.
void Measure(File file, std::span<const SampleWindow> windows, std::size_t most, Hypothesis& hypothesis) {
    const SampleLayout& layout = *hypothesis.layout;
    const SampleFormat& format = *layout.format;
    double bits = BitsPerSample(windows, layout.components, layout.isMosaic ? 2 : 1, format.bits);
    if (layout.chroma != ChromaPlanes::None) {
        const Chroma chroma(file, hypothesis, most);
        const auto all = static_cast<double>(hypothesis.grid.lines);
        const double share = static_cast<double>(HeightOfLines(layout.chroma, hypothesis.grid.lines)) / all;
        bits = share * bits + (1 - share) * chroma.bits;
        hypothesis.penalty += ChromaPenalty(chroma.distance);
    }
    if (std::strchr(layout.components, 'U') != nullptr)
        hypothesis.penalty += ChromaPenalty(ChromaDistance(windows, layout.components));
    const auto samples = static_cast<double>(SamplesOfLine(format, hypothesis.grid.stride));
    hypothesis.bitsPerByte = bits * samples / static_cast<double>(hypothesis.grid.stride);
}

std::vector<LineGrid> GridsOfStride(std::size_t fileSize, std::size_t stride) {
    const std::size_t rest = fileSize % stride, lines = fileSize / stride;
    std::vector<LineGrid> grids = {{rest, stride, lines}};
    if (rest != 0) grids.push_back({0, stride, lines});
    return grids;
}

}  // namespace

std::vector<Hypothesis> MeasureAll(File file, const Strides& strides, std::size_t most) {
    constexpr std::size_t kWindows = 12, kLeastLines = 6;
    std::vector<Hypothesis> all;
    for (const std::size_t stride : strides.GetAll())
        for (const LineGrid& grid : GridsOfStride(file.size(), stride)) {
            std::map<const SampleFormat*, std::vector<SampleWindow>> windows;
            for (const SampleLayout& layout : AllSampleLayouts()) {
                const SampleFormat& format = *layout.format;
                if (IsWords(format) && stride % 2 != 0) continue;
                if (HeightOfLines(layout.chroma, grid.lines) < kLeastLines) continue;
                if (layout.chroma != ChromaPlanes::None && stride % 2 != 0) continue;
                if (SetsUnusedBits(file, format, grid)) continue;
                if (!windows.contains(&format)) windows[&format] = ReadSpread(file, format, grid, kWindows);
                Hypothesis hypothesis = {&layout, grid, 8, layout.penalty};
                Measure(file, windows[&format], kWindows / 3, hypothesis);
                if (SamplesOfLine(format, stride) >= std::strlen(layout.components)) all.push_back(hypothesis);
            }
        }
    std::ranges::sort(all, std::less(), &Hypothesis::GetPoints);
    if (all.size() > most) all.resize(most);
    return all;
}

void MeasureWell(File file, Hypothesis& hypothesis) {
    constexpr std::size_t kWindows = 32;
    const SampleLayout& layout = *hypothesis.layout;
    hypothesis.penalty = layout.penalty;
    Measure(file, ReadSpread(file, *layout.format, hypothesis.grid, kWindows), kWindows / 2, hypothesis);
}

}  // namespace kyimg
