#include "LoadTime.h"

#if defined(KYBENCH_LOAD_PROGRAM)

#include <benchmark/benchmark.h>
#include <stdio.h>

#include <stdexcept>

namespace kybench {

namespace {

/// Seconds, as a fresh process tells them.
double TimeOneLoad(const char* argument) {
    const std::string command = std::string("'" KYBENCH_LOAD_PROGRAM "' '" KYBENCH_LIBRARY "' ") + argument;
    FILE* const output = ::popen(command.c_str(), "r");
    long long nanoseconds = 0;
    const bool isNumber = output != nullptr && std::fscanf(output, "%lld", &nanoseconds) == 1;
    const bool hasSucceeded = output != nullptr && ::pclose(output) == 0;
    if (!isNumber || !hasSucceeded) throw std::runtime_error("failed: " + command);
    return static_cast<double>(nanoseconds) * 1e-9;
}

}  // namespace

int RegisterLoadTimes(const Options& options) {
    int count = 0;
    for (const LoadRow& row : kLoadRows) {
        if (!std::regex_search(row.name, options.filter)) continue;
        const auto measure = [argument = row.argument](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) state.SetIterationTime(TimeOneLoad(argument));
        };
        benchmark::RegisterBenchmark(row.name, measure)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
        ++count;
    }
    return count;
}

}  // namespace kybench

#else

namespace kybench {

int RegisterLoadTimes(const Options&) { return 0; }

}  // namespace kybench

#endif
