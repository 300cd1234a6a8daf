#include "Baselines.h"
#include "Conversions.h"
#include "LoadTime.h"
#include "Options.h"
#include "ParallelConversions.h"
#include "Reporter.h"
#include "SmallConversions.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>

namespace kybench {

namespace {

/// Hands our own choice and the user's flags to Google Benchmark; the last one of a flag counts.
void InitializeGoogleBenchmark(char* program, std::vector<std::string> flags) {
    std::vector<char*> arguments{program};
    for (std::string& flag : flags) arguments.push_back(flag.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        throw std::runtime_error("unknown arguments; --help lists the known ones");
}

Frames MakeFrames(const std::vector<Conversion>& conversions) {
    std::size_t source = 0, destination = 0;
    for (const Conversion& conversion : conversions) {
        source = std::max(source, conversion.GetSourceBytes());
        destination = std::max(destination, conversion.GetDestinationBytes());
    }
    return Frames(source, destination);
}

void Run(char* program, const std::vector<std::string>& arguments) {
    const Options options = ParseOptions(arguments);
    if (options.help) {
        std::fputs(kHelp, stdout);
        return;
    }
    InitializeGoogleBenchmark(program, options.forGoogleBenchmark);

    const std::vector<Conversion> conversions = SelectConversions(options);
    const Frames frames = MakeFrames(conversions);
    for (const Conversion& conversion : conversions) RegisterBenchmark(conversion, frames);
    for (const Baseline& baseline : BaselinesOf(conversions)) RegisterBenchmarks(baseline, frames);
    const int otherRows =
        RegisterSmallConversions(options) + RegisterParallelConversions(options) + RegisterLoadTimes(options);
    if (conversions.empty() && otherRows == 0) throw std::runtime_error("the filter matches no row");

    Reporter table(conversions);
    benchmark::RunSpecifiedBenchmarks(options.wantsOtherFormat ? nullptr : &table);
    benchmark::Shutdown();
}

}  // namespace

}  // namespace kybench

int main(int argc, char** argv) {
    try {
        if (KyExtendedTypes::Register() != KY_STATUS_SUCCESS) throw std::bad_alloc();
        kybench::Run(argv[0], {argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        return 1;
    }
    return 0;
}
