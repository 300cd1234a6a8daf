#include "ColourCues.h"

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kyimg {

namespace {

double Logistic(double x) { return 1 / (1 + std::exp(-x)); }

/// The value that this part of all is not above. Sorts in part.
double Percentile(std::vector<double>& values, double part) {
    const auto index = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::ranges::nth_element(values, values.begin() + index);
    return values[static_cast<std::size_t>(index)];
}

/// Of the logarithms of a colour over green.
struct Ratios {
    double mean = 0;
    double skew = 0;  ///< cube root of the third moment: above 0 where few high ones are far from the mean

    Ratios(std::span<const ColourCell> cells, std::uint16_t ColourCell::*colour, double black, double white) {
        const double least = 0.004 * (white - black) + 1;
        const auto light = [=](std::uint16_t sample) { return std::max(sample - black, 0.0) + least; };
        const auto count = static_cast<double>(cells.size());
        std::vector<double> logs;
        for (const ColourCell& cell : cells) logs.push_back(std::log(light(cell.*colour) / light(cell.green)));
        for (const double value : logs) mean += value / count;
        for (const double value : logs) skew += std::pow(value - mean, 3) / count;
        skew = std::cbrt(skew);
    }
};

}  // namespace

double LikelihoodOfRedFirst(std::span<const ColourCell> cells) {
    if (cells.empty()) return 0.5;
    std::vector<double> values;
    for (const ColourCell& cell : cells)
        for (const std::uint16_t sample : {cell.first, cell.green, cell.second}) values.push_back(sample);
    const double black = Percentile(values, 0.001), white = Percentile(values, 0.999);
    const Ratios first(cells, &ColourCell::first, black, white), second(cells, &ColourCell::second, black, white);
    // Fitted to two dozen scenes, of which it then tells 85 in 100 right that it was not fitted to.
    constexpr double kOfSkew = 2.6, kOfMean = 1.7;
    return Logistic(kOfSkew * (first.skew - second.skew) + kOfMean * (first.mean - second.mean));
}

double PatternCues::GetLikelihood(std::uint32_t bayerFlag) const {
    switch (bayerFlag) {
        case KyPixelConverter::FLAG_BAYER_GRBG: return greenFirst * redFirst[0];
        case KyPixelConverter::FLAG_BAYER_GBRG: return greenFirst * (1 - redFirst[0]);
        case KyPixelConverter::FLAG_BAYER_RGGB: return (1 - greenFirst) * redFirst[1];
        case KyPixelConverter::FLAG_BAYER_BGGR: return (1 - greenFirst) * (1 - redFirst[1]);
        default: return 0;
    }
}

PatternCues FindPatternCues(std::span<const MosaicCell> cells) {
    double differences[2] = {}, sums[2] = {};
    std::vector<ColourCell> byDiagonal[2];  // with green on the first diagonal, and on the second
    for (const MosaicCell& cell : cells) {
        const auto& s = cell.samples;
        differences[0] += std::abs(s[0] - s[3]);
        differences[1] += std::abs(s[1] - s[2]);
        sums[0] += s[0] + s[3];
        sums[1] += s[1] + s[2];
        byDiagonal[0].push_back({s[1], static_cast<std::uint16_t>((s[0] + s[3]) / 2), s[2]});
        byDiagonal[1].push_back({s[0], static_cast<std::uint16_t>((s[1] + s[2]) / 2), s[3]});
    }
    const double mean = std::max((sums[0] + sums[1]) / 4, 1.0);
    PatternCues cues = {};
    // Two samples of green agree; and green is mostly the brightest.
    const double agreement = std::log((differences[1] + 1) / (differences[0] + 1));
    const double brightness = std::log((sums[0] + 1) / (sums[1] + 1));
    cues.greenFirst = Logistic(8 * agreement + 2 * brightness);
    for (std::size_t i = 0; i < 2; ++i) {
        cues.differences[i] = differences[i] / mean;
        cues.redFirst[i] = LikelihoodOfRedFirst(byDiagonal[i]);
    }
    return cues;
}

}  // namespace kyimg
