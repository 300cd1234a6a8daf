#ifndef KYBENCH_REPORTER_H
#define KYBENCH_REPORTER_H

#include "Baselines.h"
#include "Conversions.h"

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kybench {

/// Collects the repetitions of everything and prints, at the end, a table of the conversions.
class Reporter : public benchmark::BenchmarkReporter {
public:
    explicit Reporter(std::vector<Conversion> conversionsToShow) : conversions(std::move(conversionsToShow)) {}

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    /// Nanoseconds of an iteration, over the repetitions.
    struct Times {
        double median;
        double minimum;
    };
    struct BaselineTimes {
        Times times;         ///< the smallest median and the smallest minimum of any kernel
        const char* kernel;  ///< the one with the smallest median
    };

    /// None when it was not measured.
    std::optional<Times> TimesOf(const std::string& benchmarkName) const;
    BaselineTimes TimesOf(const Baseline& baseline) const;
    void PrintConversion(const Conversion& conversion) const;
    void PrintChains() const;

    std::vector<Conversion> conversions;
    std::map<std::string, std::vector<double>> repetitions;  ///< by name of the benchmark
};

}  // namespace kybench

#endif
