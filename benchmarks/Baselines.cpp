#include "Baselines.h"

#include "Registration.h"

#include <algorithm>
#include <sstream>

namespace kybench {

Baseline BaselineOf(const Conversion& conversion) {
    const std::size_t source = conversion.GetSourceBytes(), destination = conversion.GetDestinationBytes();
    return {conversion.size, source, destination, BaselineKernelsFor(source, destination)};
}

std::vector<Baseline> BaselinesOf(const std::vector<Conversion>& conversions) {
    std::vector<Baseline> baselines;
    for (const Conversion& conversion : conversions) {
        const Baseline baseline = BaselineOf(conversion);
        const bool isThere = std::any_of(baselines.begin(), baselines.end(), [&](const Baseline& other) {
            return other.sourceBytes == baseline.sourceBytes && other.destinationBytes == baseline.destinationBytes &&
                   other.size.width == baseline.size.width;
        });
        if (!isThere) baselines.push_back(baseline);
    }
    return baselines;
}

std::string BenchmarkName(const Baseline& baseline, const BaselineKernel& kernel) {
    const auto pixels = static_cast<double>(baseline.size.GetPixelCount());
    std::ostringstream name;
    name << "Baseline/" << static_cast<double>(baseline.sourceBytes) / pixels << ':'
         << static_cast<double>(baseline.destinationBytes) / pixels << '/' << baseline.size.width << 'x'
         << baseline.size.height << '/' << kernel.name;
    return name.str();
}

void RegisterBenchmarks(const Baseline& baseline, const Frames& frames) {
    for (const BaselineKernel& kernel : baseline.kernels)
        RegisterByCpuTime(BenchmarkName(baseline, kernel), [baseline, kernel, &frames](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) {
                kernel.move(frames.GetSource(), frames.GetDestination(), baseline.sourceBytes);
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(baseline.size.GetPixelCount()));
        });
}

}  // namespace kybench
