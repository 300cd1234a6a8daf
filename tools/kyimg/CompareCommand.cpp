#include "CompareCommand.h"

#include "Errors.h"
#include "Json.h"
#include "SampleImage.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

namespace kyimg {

namespace {

constexpr const char* kExamples =
    R"(PSNR is the peak signal-to-noise ratio in decibels, inf for equal samples. Raw files need --type and --size and
are both read so; PNGs and PNMs need neither, and compare with raw files as well.

Examples:
  kyimg compare before.png after.png
  kyimg compare a.raw b.raw --type BayerRG12p --size 2592x1536
  kyimg compare golden.png new.png --max-difference 1 --min-psnr 50 || echo changed)";

/// Of two channels, sample by sample.
struct Difference {
    std::string channel;
    std::uint64_t samples = 0, different = 0;
    std::uint32_t largest = 0;
    std::uint32_t x = 0, y = 0;  ///< pixel of the first largest one
    double sum = 0, squares = 0;

    void Add(std::uint32_t difference, std::size_t column, std::size_t line) {
        ++samples;
        if (difference == 0) return;
        ++different;
        sum += difference;
        squares += static_cast<double>(difference) * difference;
        if (difference <= largest) return;
        largest = difference;
        x = static_cast<std::uint32_t>(column);
        y = static_cast<std::uint32_t>(line);
    }

    void Add(const Difference& other) {
        if (other.largest > largest) {
            largest = other.largest;
            x = other.x;
            y = other.y;
        }
        samples += other.samples;
        different += other.different;
        sum += other.sum;
        squares += other.squares;
    }

    double GetMean() const { return sum / static_cast<double>(samples); }
    double GetPsnr(std::uint32_t peak) const {
        if (squares == 0) return std::numeric_limits<double>::infinity();
        return 10 * std::log10(static_cast<double>(peak) * peak * static_cast<double>(samples) / squares);
    }
};

void CheckAlike(const SampleImage& first, const SampleImage& second) {
    if (first.width != second.width || first.height != second.height)
        throw Failure(fmt::format("one picture is {}x{}, the other {}x{}", first.width, first.height, second.width,
                                  second.height));
    if (first.channels != second.channels)
        throw Failure(fmt::format("one picture has the channels {}, the other {}", fmt::join(first.channels, ", "),
                                  fmt::join(second.channels, ", ")));
    if (first.bits != second.bits)
        throw Failure(fmt::format("one picture has {} bits a sample, the other {}", first.bits, second.bits));
}

/// Channel by channel, and the last of all together.
std::vector<Difference> Compare(const SampleImage& first, const SampleImage& second) {
    std::vector<Difference> differences(first.channels.size());
    for (std::size_t i = 0; i < differences.size(); ++i) differences[i].channel = first.channels[i];
    const std::size_t lineSize = first.GetLineSize(), pixelSize = lineSize / std::max(first.width, 1U);
    for (std::size_t y = 0; y < first.height; ++y)
        for (std::size_t i = 0; i < lineSize; ++i) {
            const int difference = first.samples[y * lineSize + i] - second.samples[y * lineSize + i];
            differences[first.GetChannel(y, i)].Add(static_cast<std::uint32_t>(std::abs(difference)), i / pixelSize, y);
        }
    std::erase_if(differences, [](const Difference& difference) { return difference.samples == 0; });
    Difference all;
    all.channel = "all";
    for (const Difference& difference : differences) all.Add(difference);
    if (differences.size() > 1) differences.push_back(all);
    return differences;
}

void PrintText(const std::vector<Difference>& differences, std::uint32_t peak) {
    fmt::print("{:<7} {:>9}  {:<13} {:>9} {:>9}  {:>9}\n", "channel", "largest", "at", "mean", "different", "PSNR");
    for (const Difference& one : differences)
        fmt::print("{:<7} {:>9}  {:<13} {:>9.4f} {:>7.2f} %  {:>6.2f} dB\n", one.channel, one.largest,
                   one.largest == 0 ? "-" : fmt::format("{},{}", one.x, one.y), one.GetMean(),
                   100 * static_cast<double>(one.different) / static_cast<double>(one.samples), one.GetPsnr(peak));
}

Json ToJson(const std::vector<Difference>& differences, std::uint32_t peak) {
    Json list = Json::array();
    for (const Difference& one : differences) {
        const double psnr = one.GetPsnr(peak);
        list.push_back({{"channel", one.channel},
                        {"largest", one.largest},
                        {"x", one.x},
                        {"y", one.y},
                        {"mean", one.GetMean()},
                        {"different", one.different},
                        {"samples", one.samples},
                        {"psnr", std::isinf(psnr) ? Json() : Json(psnr)}});  // JSON has no infinity
    }
    return list;
}

void CheckLimits(const CompareOptions& options, const Difference& all, std::uint32_t peak) {
    if (options.maxDifference && all.largest > *options.maxDifference)
        throw Failure(fmt::format("the largest difference, {}, is above {}", all.largest, *options.maxDifference));
    if (options.minPsnr && all.GetPsnr(peak) < *options.minPsnr)
        throw Failure(fmt::format("the PSNR, {:.2f} dB, is below {:g}", all.GetPsnr(peak), *options.minPsnr));
}

}  // namespace

CLI::App* AddCompareCommand(CLI::App& app, CompareOptions& options) {
    CLI::App* const command =
        app.add_subcommand("compare", "Compare two pictures or raw frames: differences and PSNR of each channel");
    command->footer(kExamples);
    command->add_option("A", options.first, "PNG, PNM or raw file")->required()->type_name("");
    command->add_option("B", options.second, "PNG, PNM or raw file")->required()->type_name("");
    AddInputLayout(command, options.input);
    command->add_option("--max-difference", options.maxDifference, "Exit status 1 where any sample differs by more")
        ->type_name("N");
    command->add_option("--min-psnr", options.minPsnr, "Exit status 1 where the PSNR of all channels is less")
        ->type_name("DB");
    command->add_flag("--json", options.json, "As JSON, for programs");
    return command;
}

void RunCompare(const CompareOptions& options) {
    const SampleImage first = ReadSamples(options.input, options.first);
    const SampleImage second = ReadSamples(options.input, options.second);
    CheckAlike(first, second);
    const std::vector<Difference> differences = Compare(first, second);
    if (options.json)
        PrintJson(ToJson(differences, first.GetLargest()));
    else
        PrintText(differences, first.GetLargest());
    CheckLimits(options, differences.back(), first.GetLargest());
}

}  // namespace kyimg
