#include "CodingCost.h"
#include "ColourCues.h"
#include "FrameGuess.h"
#include "Geometry.h"
#include "LinePeriods.h"
#include "NameHints.h"
#include "SampleLayouts.h"
#include "UsualSizes.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/names/KyPixelFormat.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <set>

namespace kyimg {

namespace {

using File = std::span<const std::uint8_t>;

constexpr double kPointsPerBit = 100;  ///< of coding cost per byte, against penalties for what is unusual
constexpr double kOfAlpha = 20;        ///< points for an alpha that is not the same everywhere: cameras send none
constexpr double kPointsOfChance = 4;  ///< that make a guess less likely by e

/// A layout of samples on lines that are this far apart, and what it costs to code the file so.
struct Hypothesis {
    const SampleLayout* layout = nullptr;
    LineGrid grid = {};
    double bitsPerByte = 8;
    double penalty = 0;

    double GetPoints() const { return kPointsPerBit * bitsPerByte + penalty; }
};

/// One with an image.
struct Candidate {
    Hypothesis hypothesis;
    Geometry geometry;
    double points = 0;
};

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

    double bits = 0;  ///< per sample, the mean of all planes

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

/// The strides to try of each layout, and where the first line may begin.
class Strides {
public:
    Strides(File givenFile, const NameHints& givenHints) : file(givenFile), hints(givenHints) {
        constexpr std::size_t kMostPeriods = 12, kSlant = 6;
        periods = FindLinePeriods(file, kMostPeriods);
        for (const LinePeriod& period : periods) {
            Add(period.bytes);
            if (period.bytes % 2 == 0) Add(period.bytes / 2);
            // Slanting contents shift the period by a pixel or two; a stride that the file is a multiple of is likelier.
            for (std::size_t stride = period.bytes - kSlant; stride <= period.bytes + kSlant; ++stride)
                if (file.size() % stride == 0) Add(stride);
        }
        for (const SampleLayout& layout : AllSampleLayouts()) {
            for (const UsualSize& size : AllUsualSizes()) AddSize(layout, size.width, size.height);
            if (hints.width != 0) AddSize(layout, hints.width, hints.height);
        }
    }

    const std::set<std::size_t>& GetAll() const { return strides; }

    /// Of the strongest period that is a multiple of the stride; 0 where there is none.
    double GetCorrelation(std::size_t stride) const {
        for (const LinePeriod& period : periods)
            if (period.bytes % stride == 0 && period.bytes / stride <= 2) return period.correlation;
        return 0;
    }

private:
    void Add(std::size_t stride) {
        constexpr std::size_t kShortest = 16, kLeastLines = 8;
        if (stride >= kShortest && stride * kLeastLines <= file.size()) strides.insert(stride);
    }

    /// Where the file is as large as such an image, with or without a header.
    void AddSize(const SampleLayout& layout, std::uint64_t width, std::uint64_t height) {
        const std::uint64_t samples =
            (width + layout.groupPixels - 1) / layout.groupPixels * std::strlen(layout.components);
        const SampleFormat& format = *layout.format;
        const std::uint64_t stride = (samples + format.groupSamples - 1) / format.groupSamples * format.groupBytes;
        const std::uint64_t bytes = stride * LinesWithChroma(layout.chroma, height);
        if (bytes <= file.size() && HeaderPenalty(file.size() - bytes) <= 3) Add(stride);
    }

    File file;
    const NameHints& hints;
    std::vector<LinePeriod> periods;
    std::set<std::size_t> strides;
};

std::vector<LineGrid> GridsOfStride(std::size_t fileSize, std::size_t stride) {
    const std::size_t rest = fileSize % stride, lines = fileSize / stride;
    std::vector<LineGrid> grids = {{rest, stride, lines}};
    if (rest != 0) grids.push_back({0, stride, lines});
    return grids;
}

/// The hypotheses of all layouts, those that are cheapest to code first.
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

/// What the name says, against the guess.
double HintPoints(const NameHints& hints, const FrameGuess& guess, std::uint32_t bits) {
    double points = 0;
    if (hints.width == guess.width && hints.height == guess.height) points -= 12;
    if (std::ranges::find(hints.types, guess.type) != hints.types.end()) points -= 10;
    if (hints.bits == bits) points -= 2;
    return points;
}

/// An OR of all samples of words, from the first line on.
std::uint32_t UsedBits(File file, const SampleFormat& format, const LineGrid& grid) {
    std::uint8_t used[2] = {};
    const std::size_t end = grid.begin + grid.lines * grid.stride;
    for (std::size_t i = grid.begin; i + 1 < end; i += 2) {
        used[0] |= file[i];
        used[1] |= file[i + 1];
    }
    const bool isBigEndian = format.type != 0;
    return static_cast<std::uint32_t>(isBigEndian ? used[0] << 8 | used[1] : used[1] << 8 | used[0]);
}

/// The name of a type and a Bayer pattern that `--type` takes for just these; the ID where there is none.
std::string NameOfType(std::int64_t type, std::uint32_t bayerFlags) {
    for (std::uint32_t convention = KY_NAMES_PFNC; convention <= KY_NAMES_FFMPEG; ++convention) {
        char name[128];
        std::int64_t found = 0;
        std::uint32_t flags = 0;
        if (KyPixelFormat::GetName(type, bayerFlags, convention, name, sizeof name) == KY_STATUS_SUCCESS &&
            KyPixelFormat::Find(name, found, &flags) == KY_STATUS_SUCCESS && found == type && flags == bayerFlags)
            return name;
    }
    return fmt::format("0x{:08X}", type);
}

std::vector<MosaicCell> ReadCells(File file, const SampleFormat& format, const LineGrid& grid) {
    constexpr std::size_t kWindows = 48;
    std::vector<MosaicCell> cells;
    for (const SampleWindow& window : ReadSpread(file, format, grid, kWindows))
        for (std::size_t y = 0; y + 1 < window.lines; y += 2)
            for (std::size_t x = 0; x + 1 < window.width; x += 2) {
                const std::uint16_t* const above = window.GetLine(y) + x;
                const std::uint16_t* const below = window.GetLine(y + 1) + x;
                cells.push_back({{above[0], above[1], below[0], below[1]}});
            }
    return cells;
}

std::vector<ColourCell> ReadColours(File file, const SampleLayout& layout, const LineGrid& grid) {
    constexpr std::size_t kWindows = 24;
    const std::size_t period = std::strlen(layout.components);
    const std::size_t red = std::string_view(layout.components).find('R');
    std::vector<ColourCell> cells;
    for (const SampleWindow& window : ReadSpread(file, *layout.format, grid, kWindows))
        for (std::size_t x = 0; x + period <= window.samples.size(); x += period) {
            const std::uint16_t* const pixel = window.samples.data() + x + red;
            cells.push_back({pixel[0], pixel[1], pixel[2]});
        }
    return cells;
}

/// Whether the samples called X are all alike.
bool HasConstantX(File file, const SampleLayout& layout, const LineGrid& grid) {
    const std::size_t period = std::strlen(layout.components);
    const std::size_t x = std::string_view(layout.components).find('X');
    std::set<std::uint16_t> values;
    for (const SampleWindow& window : ReadSpread(file, *layout.format, grid, 24))
        for (std::size_t i = x; i < window.samples.size(); i += period) values.insert(window.samples[i]);
    return values.size() <= 1;
}

/// Makes guesses of candidates: one for each Bayer pattern, or order of colours, that is not ruled out.
class Guesses {
public:
    Guesses(File givenFile, const NameHints& givenHints, const Strides& givenStrides)
        : file(givenFile), hints(givenHints), strides(givenStrides) {}

    void Add(const Candidate& candidate) {
        const SampleLayout& layout = *candidate.hypothesis.layout;
        const Geometry& geometry = candidate.geometry;
        std::uint32_t bits = 0;
        const std::uint32_t used = IsWords(*layout.format) ? UsedBits(file, *layout.format, geometry.grid) : 0;
        FrameGuess guess;
        guess.type = TypeOfDepth(layout, used, bits);
        guess.width = geometry.width;
        guess.height = geometry.height;
        guess.stride = geometry.grid.stride;
        guess.isPadded = geometry.paddingBytes != 0;
        guess.headerBytes = geometry.grid.begin;
        guess.trailerBytes = geometry.trailerBytes;
        guess.frames = geometry.frames;
        guess.bitsPerByte = candidate.hypothesis.bitsPerByte;
        Explain(candidate, used, guess);
        const double points = candidate.points + HintPoints(hints, guess, bits);
        if (layout.isMosaic)
            AddPatterns(candidate, guess, points);
        else
            AddColours(candidate, guess, points);
    }

    std::vector<FrameGuess> Take(std::size_t most) {
        std::ranges::stable_sort(scored, std::less(), &Scored::points);
        std::vector<FrameGuess> best;
        double sum = 0;
        for (Scored& one : scored) {
            one.guess.likelihood = std::exp((scored.front().points - one.points) / kPointsOfChance);
            sum += one.guess.likelihood;
        }
        for (Scored& one : scored) {
            if (best.size() == most) break;
            one.guess.likelihood /= sum;
            best.push_back(std::move(one.guess));
        }
        return best;
    }

private:
    struct Scored {
        FrameGuess guess;
        double points;
    };

    void Explain(const Candidate& candidate, std::uint32_t used, FrameGuess& guess) const {
        auto& evidence = guess.evidence;
        const double correlation = strides.GetCorrelation(guess.stride);
        if (correlation > 0)
            evidence.push_back(
                fmt::format("lines repeat after {} bytes (correlation {:.2f})", guess.stride, correlation));
        evidence.push_back(
            fmt::format("neighbours of the same colour predict all but {:.2f} of 8 bits", guess.bitsPerByte));
        if (used != 0) evidence.push_back(fmt::format("samples use the bits 0x{:04X}", used));
        if (guess.isPadded)
            evidence.push_back(fmt::format("the last {} bytes of each line are all the same, or complete a group",
                                           candidate.geometry.paddingBytes));
    }

    void AddPatterns(const Candidate& candidate, const FrameGuess& guess, double points) {
        const SampleFormat& format = *candidate.hypothesis.layout->format;
        const PatternCues cues = FindPatternCues(ReadCells(file, format, candidate.geometry.grid));
        for (const std::uint32_t flag : {KyPixelConverter::FLAG_BAYER_GRBG, KyPixelConverter::FLAG_BAYER_RGGB,
                                         KyPixelConverter::FLAG_BAYER_GBRG, KyPixelConverter::FLAG_BAYER_BGGR}) {
            FrameGuess one = guess;
            one.bayerFlags = flag;
            one.typeName = NameOfType(guess.type, flag);
            const bool isGreenFirst =
                flag == KyPixelConverter::FLAG_BAYER_GRBG || flag == KyPixelConverter::FLAG_BAYER_GBRG;
            const std::size_t diagonal = isGreenFirst ? 0 : 1;
            one.evidence.push_back(fmt::format("samples of green differ by {:.1f} %, of red and blue by {:.1f} %",
                                               100 * cues.differences[diagonal], 100 * cues.differences[1 - diagonal]));
            one.evidence.push_back(hints.bayerFlags == flag
                                       ? "the name says the Bayer pattern"
                                       : "no byte tells red from blue: this order is ranked by likelihood only");
            const double likelihood = hints.bayerFlags == 0      ? cues.GetLikelihood(flag)
                                      : hints.bayerFlags == flag ? 0.97
                                                                 : 0.01;
            scored.push_back({one, points - kPointsOfChance * std::log(std::max(likelihood, 1e-6))});
        }
    }

    void AddColours(const Candidate& candidate, FrameGuess guess, double points) {
        const SampleLayout& layout = *candidate.hypothesis.layout;
        const bool isRGB = std::strchr(layout.components, 'R') != nullptr;
        double ofFirst = 0.93;  // YUYV before YVYU
        std::int64_t swapped = layout.swappedType;
        if (isRGB && swapped != 0) {
            ofFirst = LikelihoodOfRedFirst(ReadColours(file, layout, candidate.geometry.grid));
            guess.evidence.push_back("no byte tells red from blue: this order is ranked by likelihood only");
        }
        if (std::strchr(layout.components, 'X') != nullptr && !HasConstantX(file, layout, candidate.geometry.grid)) {
            points += kOfAlpha;
            if (guess.type == KY_TYPE_RGB32) {
                guess.type = 0x100020020;
                swapped = 0x100020021;
            }
        }
        const double ofOrder = swapped == 0 ? 0 : -kPointsOfChance * std::log(std::max(ofFirst, 1e-6));
        guess.typeName = NameOfType(guess.type, 0);
        scored.push_back({guess, points + ofOrder});
        if (swapped == 0) return;
        guess.type = swapped;
        guess.typeName = NameOfType(guess.type, 0);
        const double named = std::ranges::find(hints.types, swapped) != hints.types.end() ? -10 : 0;
        scored.push_back({guess, points + named - kPointsOfChance * std::log(std::max(1 - ofFirst, 1e-6))});
    }

    File file;
    const NameHints& hints;
    const Strides& strides;
    std::vector<Scored> scored;
};

/// The images of the best hypotheses.
std::vector<Candidate> FindCandidates(File file, std::vector<Hypothesis> hypotheses) {
    constexpr std::size_t kWindows = 32;
    std::vector<Candidate> candidates;
    for (Hypothesis& hypothesis : hypotheses) {
        const SampleLayout& layout = *hypothesis.layout;
        hypothesis.penalty = layout.penalty;
        Measure(file, ReadSpread(file, *layout.format, hypothesis.grid, kWindows), kWindows / 2, hypothesis);
        const double seam = SeamContrast(file, layout, hypothesis.grid);
        const double ofSeam = -4 * std::clamp(std::log2(seam), -1.0, 2.0);
        for (const Geometry& geometry : FindGeometries(file, layout, hypothesis.grid))
            candidates.push_back({hypothesis, geometry, hypothesis.GetPoints() + ofSeam + geometry.penalty});
    }
    std::ranges::sort(candidates, std::less(), &Candidate::points);
    return candidates;
}

}  // namespace

std::vector<FrameGuess> GuessFrame(File file, std::string_view fileName, std::size_t most) {
    constexpr std::size_t kHypotheses = 40, kCandidates = 24;
    const NameHints hints = ReadNameHints(fileName);
    const Strides strides(file, hints);
    std::vector<Candidate> candidates = FindCandidates(file, MeasureAll(file, strides, kHypotheses));
    if (candidates.size() > kCandidates) candidates.resize(kCandidates);
    Guesses guesses(file, hints, strides);
    for (const Candidate& candidate : candidates) guesses.Add(candidate);
    return guesses.Take(most);
}

}  // namespace kyimg
