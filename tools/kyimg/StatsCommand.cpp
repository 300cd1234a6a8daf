#include "StatsCommand.h"

#include "ChannelStatistics.h"
#include "Errors.h"
#include "FrameWriter.h"
#include "Histogram.h"
#include "Json.h"
#include "OutputFormat.h"
#include "SampleImage.h"

#include <fmt/format.h>

#include <bit>
#include <span>

namespace kyimg {

namespace {

constexpr const char* kExamples =
    R"(Saturated samples have the largest value of the frame, where that is within 2 % of the largest of the type.
Of YCbCr, these are statistics of the RGB that it becomes.

Examples:
  kyimg stats frame.raw --type BayerRG12 --size 1920x1080
  kyimg stats frame.raw --type BayerRG12 --size 1920x1080 --histogram histogram.svg
  kyimg stats picture.png --json)";

constexpr double kPercentiles[] = {1, 25, 50, 75, 99};

bool IsSvg(const std::string& path) { return path.ends_with(".svg"); }

double Share(std::uint64_t part, std::uint64_t all) {
    return 100 * static_cast<double>(part) / static_cast<double>(all);
}

void PrintText(const SampleImage& image, const std::vector<ChannelStatistics>& channels) {
    const std::uint32_t saturation = FindSaturation(channels);
    fmt::print("{}x{}, {} bits a sample\n\n", image.width, image.height, image.bits);
    fmt::print("{:<7} {:>5} {:>5} {:>5} {:>5} {:>5} {:>5} {:>5} {:>9} {:>9} {:>6}\n", "channel", "min", "1 %", "25 %",
               "50 %", "75 %", "99 %", "max", "mean", "saturated", "bits");
    for (const ChannelStatistics& channel : channels) {
        if (channel.GetSamples() == 0) continue;
        fmt::print("{:<7} {:>5}", channel.GetName(), channel.GetMinimum());
        for (const double percentile : kPercentiles) fmt::print(" {:>5}", channel.GetPercentile(percentile / 100));
        fmt::print(" {:>5} {:>9.1f} {:>7.2f} % {:>6}\n", channel.GetMaximum(), channel.GetMean(),
                   Share(channel.GetCount(saturation), channel.GetSamples()),
                   fmt::format("0x{:X}", channel.GetUsedBits()));
    }
}

Json ToJson(const ChannelStatistics& channel, std::uint32_t saturation) {
    Json percentiles = Json::object();
    for (const double percentile : kPercentiles)
        percentiles[fmt::format("{:g}", percentile)] = channel.GetPercentile(percentile / 100);
    return {{"name", channel.GetName()},         {"samples", channel.GetSamples()},
            {"minimum", channel.GetMinimum()},   {"maximum", channel.GetMaximum()},
            {"mean", channel.GetMean()},         {"deviation", channel.GetDeviation()},
            {"percentiles", percentiles},        {"saturated", channel.GetCount(saturation)},
            {"usedBits", channel.GetUsedBits()}, {"bitsUsed", std::bit_width(channel.GetUsedBits())}};
}

void WriteHistogram(const StatsOptions& options, std::span<const ChannelStatistics> channels) {
    const OutputLimits limits = {options.input.input};
    if (IsSvg(options.histogram)) {
        const std::string svg = DrawHistogramAsSvg(channels);
        WriteFile(options.histogram, limits, {reinterpret_cast<const std::uint8_t*>(svg.data()), svg.size()});
    } else {
        WritePicture(options.histogram, limits, DrawHistogram(channels));
    }
}

}  // namespace

CLI::App* AddStatsCommand(CLI::App& app, StatsOptions& options) {
    CLI::App* const command =
        app.add_subcommand("stats", "Tell minimum, maximum, mean, percentiles and saturation of each channel");
    command->footer(kExamples);
    AddInputOptions(command, options.input);
    command->add_option("--histogram", options.histogram, "Histogram to write (.svg, .png or .ppm)")->type_name("FILE");
    command->add_flag("--json", options.json, "As JSON, for programs");
    return command;
}

void RunStats(const StatsOptions& options) {
    const std::string& histogram = options.histogram;
    if (!histogram.empty() && !IsSvg(histogram) && FindOutputFormat(histogram, "") == OutputFormat::Raw)
        throw UsageError("--histogram: an svg or a picture can be written, not raw");
    const SampleImage image = ReadSamples(options.input, options.input.input);
    const std::vector<ChannelStatistics> channels = CountSamples(image);
    if (options.json) {
        Json json = {
            {"width", image.width}, {"height", image.height}, {"bits", image.bits}, {"channels", Json::array()}};
        for (const ChannelStatistics& channel : channels)
            if (channel.GetSamples() != 0) json["channels"].push_back(ToJson(channel, FindSaturation(channels)));
        PrintJson(json);
    } else {
        PrintText(image, channels);
    }
    if (!histogram.empty()) WriteHistogram(options, channels);
}

}  // namespace kyimg
