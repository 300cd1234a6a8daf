#include "Histogram.h"

#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace kyimg {

namespace {

constexpr std::uint32_t kWidth = 512, kHeight = 200;

/// Red, green and blue of a channel's area.
std::array<std::uint8_t, 3> ColourOf(const std::string& channel) {
    switch (channel[0]) {
        case 'R': return {235, 40, 40};
        case 'G': return {40, 200, 40};
        case 'B': return {50, 70, 255};
        default: return {200, 200, 200};
    }
}

/// Heights of the columns, the highest of all channels is kHeight.
std::vector<std::vector<std::uint32_t>> ColumnHeights(std::span<const ChannelStatistics> channels) {
    std::vector<std::vector<double>> logs;
    double highest = 1e-9;
    for (const ChannelStatistics& channel : channels) {
        std::vector<std::uint64_t> sums(kWidth);
        const std::uint32_t values = 1U << channel.GetBits();
        for (std::uint32_t value = 0; value < values; ++value)
            sums[std::uint64_t{value} * kWidth / values] += channel.GetCount(value);
        std::vector<double>& columns = logs.emplace_back();
        for (const std::uint64_t sum : sums) columns.push_back(std::log1p(static_cast<double>(sum)));
        highest = std::max(highest, *std::ranges::max_element(columns));
    }
    std::vector<std::vector<std::uint32_t>> heights;
    for (const std::vector<double>& columns : logs) {
        std::vector<std::uint32_t>& ofChannel = heights.emplace_back();
        for (const double column : columns)
            ofChannel.push_back(static_cast<std::uint32_t>(std::lround(column / highest * kHeight)));
    }
    return heights;
}

}  // namespace

ConvertedFrame DrawHistogram(std::span<const ChannelStatistics> channels) {
    ConvertedFrame picture;
    picture.type = KY_TYPE_RGB24;
    picture.width = kWidth;
    picture.height = kHeight;
    picture.bytes.assign(std::size_t{3} * kWidth * kHeight, 16);
    const auto heights = ColumnHeights(channels);
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        const auto colour = ColourOf(channels[channel].GetName());
        for (std::uint32_t x = 0; x < kWidth; ++x)
            for (std::uint32_t y = kHeight - heights[channel][x]; y < kHeight; ++y) {
                std::uint8_t* const pixel = picture.bytes.data() + 3 * (std::size_t{y} * kWidth + x);
                for (std::size_t i = 0; i < 3; ++i) pixel[i] = std::max(pixel[i], colour[i]);
            }
    }
    return picture;
}

std::string DrawHistogramAsSvg(std::span<const ChannelStatistics> channels) {
    std::string svg = fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" viewBox=\"0 0 {0} {1}\">\n"
        "<rect width=\"{0}\" height=\"{1}\" fill=\"#101010\"/>\n",
        kWidth, kHeight);
    const auto heights = ColumnHeights(channels);
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        const auto colour = ColourOf(channels[channel].GetName());
        std::string points = fmt::format("0,{}", kHeight);
        for (std::uint32_t x = 0; x < kWidth; ++x) points += fmt::format(" {},{}", x, kHeight - heights[channel][x]);
        svg += fmt::format(
            "<polygon points=\"{} {},{}\" fill=\"#{:02x}{:02x}{:02x}\" style=\"mix-blend-mode:lighten\">"
            "<title>{}</title></polygon>\n",
            points, kWidth, kHeight, colour[0], colour[1], colour[2], channels[channel].GetName());
    }
    return svg + "</svg>\n";
}

}  // namespace kyimg
