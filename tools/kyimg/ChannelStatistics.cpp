#include "ChannelStatistics.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace kyimg {

ChannelStatistics::ChannelStatistics(std::string channel, std::uint32_t sampleBits)
    : name(std::move(channel)), bits(sampleBits), counts(std::size_t{1} << 16) {}

std::uint64_t ChannelStatistics::GetSamples() const {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

double ChannelStatistics::GetMean() const {
    double sum = 0;
    for (std::size_t value = 0; value < counts.size(); ++value)
        sum += static_cast<double>(value) * static_cast<double>(counts[value]);
    return sum / static_cast<double>(std::max<std::uint64_t>(GetSamples(), 1));
}

double ChannelStatistics::GetDeviation() const {
    const double mean = GetMean();
    double sum = 0;
    for (std::size_t value = 0; value < counts.size(); ++value)
        sum += std::pow(static_cast<double>(value) - mean, 2) * static_cast<double>(counts[value]);
    return std::sqrt(sum / static_cast<double>(std::max<std::uint64_t>(GetSamples(), 1)));
}

std::uint32_t ChannelStatistics::GetPercentile(double part) const {
    const auto samples = static_cast<double>(GetSamples());
    const auto wanted = static_cast<std::uint64_t>(std::max(1.0, std::ceil(part * samples)));
    std::uint64_t seen = 0;
    for (std::size_t value = 0; value < counts.size(); ++value) {
        seen += counts[value];
        if (seen >= wanted) return static_cast<std::uint32_t>(value);
    }
    return 0;
}

std::uint32_t ChannelStatistics::GetUsedBits() const {
    std::uint32_t used = 0;
    for (std::size_t value = 0; value < counts.size(); ++value)
        if (counts[value] != 0) used |= static_cast<std::uint32_t>(value);
    return used;
}

std::vector<ChannelStatistics> CountSamples(const SampleImage& image) {
    std::vector<ChannelStatistics> channels;
    for (const std::string& name : image.channels) channels.emplace_back(name, image.bits);
    const std::size_t lineSize = image.GetLineSize();
    for (std::size_t y = 0; y < image.height; ++y)
        for (std::size_t i = 0; i < lineSize; ++i)
            channels[image.GetChannel(y, i)].Add(image.samples[y * lineSize + i]);
    return channels;
}

std::uint32_t FindSaturation(const std::vector<ChannelStatistics>& channels) {
    const std::uint32_t largest = (1U << channels.front().GetBits()) - 1;
    std::uint32_t found = 0;
    for (const ChannelStatistics& channel : channels) found = std::max(found, channel.GetMaximum());
    return found >= largest - largest / 50 ? found : largest;
}

}  // namespace kyimg
