#include "Limits.h"

#include "Registration.h"

#include <algorithm>
#include <sstream>

namespace kybench {

Limit LimitOf(const Conversion& conversion) {
    const std::size_t source = conversion.GetSourceBytes(), destination = conversion.GetDestinationBytes();
    return {conversion.size, source, destination, LimitKernelsFor(source, destination)};
}

std::vector<Limit> LimitsOf(const std::vector<Conversion>& conversions) {
    std::vector<Limit> limits;
    for (const Conversion& conversion : conversions) {
        const Limit limit = LimitOf(conversion);
        const bool isThere = std::any_of(limits.begin(), limits.end(), [&](const Limit& other) {
            return other.sourceBytes == limit.sourceBytes && other.destinationBytes == limit.destinationBytes &&
                   other.size.width == limit.size.width;
        });
        if (!isThere) limits.push_back(limit);
    }
    return limits;
}

std::string BenchmarkName(const Limit& limit, const LimitKernel& kernel) {
    const auto pixels = static_cast<double>(limit.size.GetPixelCount());
    std::ostringstream name;
    name << "Limit/" << static_cast<double>(limit.sourceBytes) / pixels << ':'
         << static_cast<double>(limit.destinationBytes) / pixels << '/' << limit.size.width << 'x' << limit.size.height
         << '/' << kernel.name;
    return name.str();
}

void RegisterBenchmarks(const Limit& limit, const Frames& frames) {
    for (const LimitKernel& kernel : limit.kernels)
        RegisterByCpuTime(BenchmarkName(limit, kernel), [limit, kernel, &frames](benchmark::State& state) {
            for ([[maybe_unused]] auto _ : state) {
                kernel.move(frames.GetSource(), frames.GetDestination(), limit.sourceBytes);
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(limit.size.GetPixelCount()));
        });
}

}  // namespace kybench
