#include "ColourCues.h"
#include "FrameGuess.h"
#include "Geometry.h"
#include "Hypotheses.h"
#include "NameHints.h"
#include "SampleLayouts.h"
#include "Strides.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/names/KyPixelFormat.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <set>

namespace kyimg {

namespace {

using File = std::span<const std::uint8_t>;

constexpr double kOfAlpha = 20;        ///< points for an alpha that is not the same everywhere: cameras send none
constexpr double kPointsOfChance = 4;  ///< that make a guess less likely by e

/// A hypothesis, and an image that its lines may be.
struct Candidate {
    Hypothesis hypothesis;
    Geometry geometry;
    double points = 0;
};

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
    std::vector<Candidate> candidates;
    for (Hypothesis& hypothesis : hypotheses) {
        const SampleLayout& layout = *hypothesis.layout;
        MeasureWell(file, hypothesis);
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
