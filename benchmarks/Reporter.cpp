#include "Reporter.h"

#include "LoadTime.h"
#include "ParallelConversions.h"
#include "SmallConversions.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string_view>

namespace kybench {

bool Reporter::ReportContext(const Context& context) {
    std::printf("%d CPUs", context.cpu_info.num_cpus);
    for (const benchmark::CPUInfo::CacheInfo& cache : context.cpu_info.caches)
        if (cache.type != "Instruction") std::printf(", L%d cache %d KiB", cache.level, cache.size / 1024);
    if (!context.cpu_info.load_avg.empty()) std::printf(", load average %.1f", context.cpu_info.load_avg.front());
    std::printf("\nMeasuring %zu conversions, all repetitions in random order ...\n", conversions.size());
    std::fflush(stdout);
    return true;
}

void Reporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
        // The time that the thread had the CPU: waiting for it while other programs run is not the conversion's. Rows
        // with a type of time have only real time: what another process tells, and everything on Windows.
        const bool isRealTime = !run.run_name.time_type.empty();
        const double seconds = isRealTime ? run.real_accumulated_time : run.cpu_accumulated_time;
        repetitions[run.run_name.function_name].push_back(seconds * 1e9 / static_cast<double>(run.iterations));
    }
}

std::optional<Reporter::Times> Reporter::TimesOf(const std::string& benchmarkName) const {
    const auto found = repetitions.find(benchmarkName);
    if (found == repetitions.end()) return std::nullopt;
    std::vector<double> times = found->second;
    std::sort(times.begin(), times.end());
    return Times{(times[(times.size() - 1) / 2] + times[times.size() / 2]) / 2, times.front()};
}

Reporter::BaselineTimes Reporter::TimesOf(const Baseline& baseline) const {
    constexpr double never = std::numeric_limits<double>::infinity();
    BaselineTimes fastest{{never, never}, "not measured"};
    for (const BaselineKernel& kernel : baseline.kernels) {
        const auto times = TimesOf(BenchmarkName(baseline, kernel));
        if (!times) continue;
        fastest.times.minimum = std::min(fastest.times.minimum, times->minimum);
        if (times->median < fastest.times.median) {
            fastest.times.median = times->median;
            fastest.kernel = kernel.name;
        }
    }
    return fastest;
}

void Reporter::PrintConversion(const Conversion& conversion) const {
    const auto times = TimesOf(BenchmarkName(conversion.row, conversion.size, conversion.level));
    if (!times) return;
    const auto pixels = static_cast<double>(conversion.size.GetPixelCount());
    const auto [baseline, kernel] = TimesOf(BaselineOf(conversion));
    std::printf("%-39s %-10s %7.4f %7.4f   %7.4f  %-16s %7.2f %7.2f", NameOf(conversion.row, conversion.size).c_str(),
                KyCpuLevel::GetName(conversion.level), times->median / pixels, times->minimum / pixels,
                baseline.median / pixels, kernel, times->median / baseline.median, times->minimum / baseline.minimum);
    if (conversion.row.filter != Filter::kNone)
        if (const auto unfiltered =
                TimesOf(BenchmarkName(UnfilteredOf(conversion.row), conversion.size, conversion.level)))
            std::printf(" %10.2f", times->median / unfiltered->median);
    std::printf("\n");
}

/// Chains beside the slower of their stages.
void Reporter::PrintChains() const {
    bool isFirst = true;
    for (const Conversion& conversion : conversions)
        for (const Chain& chain : AllChains()) {
            if (conversion.row.conversion != std::string_view(chain.row)) continue;
            const auto times = TimesOf(BenchmarkName(conversion.row, conversion.size, conversion.level));
            Times slower = {0, 0};
            for (const char* const stage : chain.stages) {
                Row alone = conversion.row;
                alone.conversion = stage;
                const auto found = TimesOf(BenchmarkName(alone, conversion.size, conversion.level));
                if (found && found->median > slower.median) slower = *found;
            }
            if (!times || slower.median == 0) continue;
            if (isFirst) std::printf("\n%-54s %-10s %s\n", "chains", "", "times the slower stage: median minimum");
            std::printf("%-54s %-10s %30.2f %7.2f\n", NameOf(conversion.row, conversion.size).c_str(),
                        KyCpuLevel::GetName(conversion.level), times->median / slower.median,
                        times->minimum / slower.minimum);
            isFirst = false;
        }
}

void Reporter::Finalize() {
    if (!conversions.empty())
        std::printf(
            "\n%-39s %-10s %15s   %-25s %15s %10s\n"
            "%-39s %-10s %7s %7s   %7s  %-16s %7s %7s %10s\n",
            "", "", "ns per pixel", "baseline", "times baseline", "times", "row", "level", "median", "minimum",
            "median", "kernel", "median", "minimum", "unfiltered");
    for (const Conversion& conversion : conversions) PrintConversion(conversion);
    PrintChains();

    bool isFirst = true;
    for (const SmallRow& row : AllSmallRows()) {
        const auto times = TimesOf(row.name);
        if (!times) continue;
        if (isFirst) std::printf("\n%-39s %-10s %15s\n", "small conversions", "", "ns per call");
        std::printf("%-39s %-10s %7.0f %7.0f\n", row.name, KyCpuLevel::GetName(KyCpuLevel::GetActive()), times->median,
                    times->minimum);
        isFirst = false;
    }

    isFirst = true;
    for (const ParallelRow& row : AllParallelRows()) {
        const auto one = TimesOf(row.NameOf(Threads::kOne)), all = TimesOf(row.NameOf(Threads::kAll));
        const auto apart = TimesOf(row.NameOf(Threads::kApart));
        if (!one || !all || !apart) continue;
        if (isFirst)
            std::printf("\n%-46s %22s   %15s   %15s\n%-46s %10s %11s %9s %7s %9s %7s\n", "", "microseconds, median",
                        "times as fast", "an image each", "on one thread, on all", "one", "all", "median", "minimum",
                        "median", "minimum");
        std::printf("%-46s %10.1f %11.1f %9.2f %7.2f %9.2f %7.2f\n", row.name, one->median / 1e3, all->median / 1e3,
                    one->median / all->median, one->minimum / all->minimum, CoreCount() * one->median / apart->median,
                    CoreCount() * one->minimum / apart->minimum);
        isFirst = false;
    }

    isFirst = true;
    for (const LoadRow& row : kLoadRows) {
        const auto times = TimesOf(row.name);
        if (!times) continue;
        if (isFirst) std::printf("\n%-39s %-10s %15s\n", "", "", "milliseconds");
        std::printf("%-39s %-10s %7.4f %7.4f\n", row.name, "", times->median * 1e-6, times->minimum * 1e-6);
        isFirst = false;
    }
}

}  // namespace kybench
