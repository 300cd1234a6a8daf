#include "Correction.h"

#include "ChannelStatistics.h"
#include "Errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace kyimg {

namespace {

constexpr double kSRGB = -1;

double ReadNumber(const std::string& text, const char* option, const char* example) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(number))
        throw UsageError(fmt::format("{}: \"{}\" is not like {}", option, text, example));
    return number;
}

double ReadGamma(const std::string& text) {
    if (text.empty()) return 0;
    if (text == "sRGB" || text == "srgb") return kSRGB;
    const double gamma = ReadNumber(text, "--gamma", "2.2 or sRGB");
    if (gamma < 0.1 || gamma > 10) throw UsageError(fmt::format("--gamma: {} is not from 0.1 to 10", gamma));
    return gamma;
}

/// One value for all channels, or three.
void Spread(const std::vector<double>& given, const char* option, double (&values)[3]) {
    if (given.empty()) return;
    if (given.size() != 1 && given.size() != 3)
        throw UsageError(fmt::format("{}: one value or three are needed, for red, green and blue", option));
    for (std::size_t channel = 0; channel < 3; ++channel) values[channel] = given[given.size() == 1 ? 0 : channel];
}

/// Lines of one number, or of three for red, green and blue; each channel's column.
std::vector<std::vector<std::uint16_t>> ReadTable(const std::string& path) {
    std::vector<std::vector<std::uint16_t>> columns;
    if (path.empty()) return columns;
    std::ifstream file(path);
    if (!file) throw Failure(fmt::format("--table: cannot read {}", path));
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        std::ranges::replace(line, ',', ' ');
        std::istringstream values(line.substr(0, line.find('#')));
        std::vector<std::uint16_t> entries;
        for (std::uint32_t value = 0; values >> value;)
            entries.push_back(static_cast<std::uint16_t>(std::min(value, 0xFFFFU)));
        if (!values.eof() || (!entries.empty() && entries.size() != 1 && entries.size() != 3))
            throw Failure(fmt::format("--table: line {} of {} is not one number, or three", number, path));
        if (entries.empty()) continue;
        if (entries.size() == 1) entries.resize(3, entries[0]);
        columns.resize(3);
        for (std::size_t channel = 0; channel < 3; ++channel) columns[channel].push_back(entries[channel]);
    }
    if (columns.empty()) throw Failure(fmt::format("--table: {} holds no numbers", path));
    return columns;
}

/// 0, 1 or 2 for red, green and blue.
std::size_t ColourOf(const std::string& channel) { return channel[0] == 'R' ? 0 : channel[0] == 'B' ? 2 : 1; }

}  // namespace

Correction::Correction(const ConvertOptions& options)
    : isNeeded(!options.gains.empty() || !options.offsets.empty() || !options.whiteBalance.empty() ||
               !options.black.empty() || !options.gamma.empty() || !options.levels.empty() || !options.table.empty()),
      seeksBlack(options.black == "auto"), seeksWhite(options.whiteBalance == "auto"), gamma(ReadGamma(options.gamma)),
      table(ReadTable(options.table)) {
    Spread(options.gains, "--gain", gains);
    Spread(options.offsets, "--offset", offsets);
    for (const double gain : gains)
        if (!std::isfinite(gain) || gain < 0)
            throw UsageError(fmt::format("--gain: {} is not a factor of 0 or more", gain));
    if (!options.black.empty() && !seeksBlack) blackSample = ReadNumber(options.black, "--black", "64 or auto");
    if (blackSample < 0) throw UsageError(fmt::format("--black: {} is below 0", blackSample));
    if (options.levels.empty()) return;
    const std::size_t comma = std::min(options.levels.find(','), options.levels.size());
    levels = Levels{
        ReadNumber(options.levels.substr(0, comma), "--auto-levels", "0.1,99.9"),
        ReadNumber(options.levels.substr(std::min(comma + 1, options.levels.size())), "--auto-levels", "0.1,99.9")};
    if (levels->low < 0 || levels->high > 100 || levels->low >= levels->high)
        throw UsageError(fmt::format("--auto-levels: \"{}\" is not two percentiles like 0.1,99.9", options.levels));
}

bool Correction::IsLinear() const {
    return !black && blackSample == 0 && lowest == 0 && highest == 1 && gamma == 0 && table.empty();
}

void Correction::Adapt(const SampleImage& image) {
    if (seeksWhite && image.channels.size() == 1) throw UsageError("--white-balance: gray has none");
    if (seeksBlack) FindBlack(image);
    if (!seeksBlack && blackSample > 0) black = std::min(blackSample / image.GetLargest(), 0.99);
    if (seeksWhite) FindWhite(image);
    if (levels) FindLevels(image);
}

/// The value that nearly no sample is below.
void Correction::FindBlack(const SampleImage& image) {
    constexpr double kBelow = 0.0005;
    std::uint32_t least = image.GetLargest();
    for (const ChannelStatistics& channel : CountSamples(image)) least = std::min(least, channel.GetPercentile(kBelow));
    black = std::min(least / static_cast<double>(image.GetLargest()), 0.99);
    notes.push_back(fmt::format("black level {} found", least));
}

/// The means of the channels are to be equal, those where the bright count more: a mean of high powers, without saturated
/// samples and their neighbours of other colours.
void Correction::FindWhite(const SampleImage& image) {
    constexpr int kPower = 5;
    const std::vector<ChannelStatistics> channels = CountSamples(image);
    const double darkest = black.value_or(0) * image.GetLargest();
    const double limit = 0.98 * FindSaturation(channels);
    double sums[3] = {}, counts[3] = {};
    const std::size_t lineSize = image.GetLineSize();
    const std::size_t cellLines = image.isMosaic ? 2 : 1, cellSize = image.isMosaic ? 2 : image.channels.size();
    for (std::size_t y = 0; y + cellLines <= image.height; y += cellLines)
        for (std::size_t x = 0; x + cellSize <= lineSize; x += cellSize) {
            double cell[3] = {}, samples[3] = {};
            bool isSaturated = false;
            for (std::size_t line = y; line < y + cellLines; ++line)
                for (std::size_t i = x; i < x + cellSize; ++i) {
                    const double sample = image.samples[line * lineSize + i];
                    const std::size_t colour = ColourOf(image.channels[image.GetChannel(line, i)]);
                    isSaturated |= sample >= limit;
                    cell[colour] += std::max(sample - darkest, 0.0);
                    ++samples[colour];
                }
            for (std::size_t colour = 0; colour < 3 && !isSaturated; ++colour) {
                sums[colour] += std::pow(cell[colour] / samples[colour] / image.GetLargest(), kPower);
                ++counts[colour];
            }
        }
    double means[3];
    for (std::size_t i = 0; i < 3; ++i) means[i] = std::pow(sums[i] / std::max(counts[i], 1.0), 1.0 / kPower);
    const double brightest = *std::ranges::max_element(means);
    constexpr double kMost = 16;
    for (std::size_t i = 0; i < 3; ++i) {
        // Rounded, so that the gains told do the same.
        const double gain = std::round(100 * std::min(brightest / std::max(means[i], 1e-9), kMost)) / 100;
        gains[i] *= gain;
        means[i] = gain;
    }
    notes.push_back(fmt::format("white balance: --gain {:.2f},{:.2f},{:.2f}", means[0], means[1], means[2]));
}

void Correction::FindLevels(const SampleImage& image) {
    std::vector<double> lows, highs;
    double low = 1, high = 0;
    for (const ChannelStatistics& channel : CountSamples(image)) {
        const std::size_t colour = ColourOf(channel.GetName());
        const auto find = [&](double percent) {
            return Light(channel.GetPercentile(percent / 100) / static_cast<double>(image.GetLargest()), colour, 0);
        };
        low = std::min(low, find(levels->low));
        high = std::max(high, find(levels->high));
    }
    low = std::max(low, 0.0);
    high = std::min(high, 1.0);  // what is saturated in one channel is to be white, and not of the others' colour
    if (high <= low) return;     // a frame of one value
    lowest = low;
    highest = high;
    notes.push_back(fmt::format("levels from {:.4g} to {:.4g} of the full range", low, high));
}

double Correction::Encode(double light) const {
    if (gamma == 0) return light;
    if (gamma > 0) return std::pow(light, 1 / gamma);
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

/// Of a sample from 0 to 1, before levels and gamma.
double Correction::Light(double sample, std::size_t channel, double offset) const {
    const double darkest = black.value_or(0);
    return (sample - darkest) / (1 - darkest) * gains[channel] + offset;
}

double Correction::Correct(double sample, std::size_t channel, double offset) const {
    const double light = Light(sample, channel, offset);
    return Encode(std::clamp((light - lowest) / (highest - lowest), 0.0, 1.0));
}

void Correction::Fill(KyRGBFilter& filter, std::uint32_t sampleBits, bool isGray) const {
    const double largest = filter.GetEntryCount() - 1;
    for (const double offset : offsets)
        if (!(offset >= 0 && offset <= largest) || offset != std::floor(offset))
            throw UsageError(fmt::format("--offset: {} is not a whole number from 0 to {}", offset, largest));
    if (isGray &&
        (gains[0] != gains[1] || gains[1] != gains[2] || offsets[0] != offsets[1] || offsets[1] != offsets[2]))
        throw UsageError("--gain and --offset: gray takes one value");
    if (!table.empty() && table[0].size() != filter.GetEntryCount())
        throw UsageError(fmt::format("--table: {} entries, one for each value of a sample, are needed; there are {}",
                                     filter.GetEntryCount(), table[0].size()));
    if (IsLinear()) {
        const auto whole = [this](std::size_t channel) { return static_cast<std::uint16_t>(offsets[channel]); };
        filter.SetMultipliers(gains[0], gains[1], gains[2], whole(0), whole(1), whole(2));
        return;
    }
    Correction scaled = *this;
    if (!black) scaled.black = std::min(blackSample / ((1U << sampleBits) - 1), 0.99);
    for (std::uint32_t i = 0; i < filter.GetEntryCount(); ++i) {
        std::uint16_t entries[3];
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double corrected = scaled.Correct(i / largest, channel, offsets[channel] / largest);
            const auto entry = static_cast<std::size_t>(std::lround(corrected * largest));
            entries[channel] = table.empty() ? static_cast<std::uint16_t>(entry) : table[channel][entry];
            if (entries[channel] > largest)
                throw UsageError(fmt::format("--table: {} is above {}", entries[channel], largest));
        }
        filter.SetRedValue(i, entries[0]);
        filter.SetGreenValue(i, entries[1]);
        filter.SetBlueValue(i, entries[2]);
    }
}

}  // namespace kyimg
