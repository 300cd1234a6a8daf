#ifndef KYBENCH_BASELINES_H
#define KYBENCH_BASELINES_H

#include "BaselineKernels.h"
#include "Conversions.h"

#include <string>
#include <vector>

namespace kybench {

/// The memory-bound baseline of a conversion: the fastest of the kernels that only copy as many bytes.
struct Baseline {
    Size size;
    std::size_t sourceBytes;
    std::size_t destinationBytes;
    std::vector<BaselineKernel> kernels;
};

Baseline BaselineOf(const Conversion& conversion);

/// The baselines of all conversions, each once.
std::vector<Baseline> BaselinesOf(const std::vector<Conversion>& conversions);

/// "Baseline/1:3/1920x1080/avx2", with the bytes of a source and a destination pixel.
std::string BenchmarkName(const Baseline& baseline, const BaselineKernel& kernel);

void RegisterBenchmarks(const Baseline& baseline, const Frames& frames);

}  // namespace kybench

#endif
