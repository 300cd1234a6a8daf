#ifndef KYIMG_CHANNELSTATISTICS_H
#define KYIMG_CHANNELSTATISTICS_H

#include "SampleImage.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kyimg {

/// How often a channel has each value, and what follows from that.
class ChannelStatistics {
public:
    ChannelStatistics(std::string channel, std::uint32_t sampleBits);

    void Add(std::uint16_t sample) { ++counts[sample]; }

    const std::string& GetName() const { return name; }
    std::uint32_t GetBits() const { return bits; }
    std::uint64_t GetCount(std::uint32_t value) const { return counts[value]; }
    std::uint64_t GetSamples() const;
    double GetMean() const;
    double GetDeviation() const;
    /// The least value that this part of the samples, from 0 to 1, is not above.
    std::uint32_t GetPercentile(double part) const;
    std::uint32_t GetMinimum() const { return GetPercentile(0); }
    std::uint32_t GetMaximum() const { return GetPercentile(1); }
    /// An OR of all samples.
    std::uint32_t GetUsedBits() const;

private:
    std::string name;
    std::uint32_t bits;
    std::vector<std::uint64_t> counts;
};

/// Of each channel.
std::vector<ChannelStatistics> CountSamples(const SampleImage& image);

/// The value that saturated samples have: the largest of all channels where that is nearly the largest of the type (sensors
/// often stop a few below), otherwise the largest of the type.
std::uint32_t FindSaturation(const std::vector<ChannelStatistics>& channels);

}  // namespace kyimg

#endif
