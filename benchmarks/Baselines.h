#ifndef KYBENCH_LIMITS_H
#define KYBENCH_LIMITS_H

#include "Conversions.h"
#include "LimitKernels.h"

#include <string>
#include <vector>

namespace kybench {

/// What a conversion is measured against: the fastest of the kernels that only move as many bytes.
struct Limit {
    Size size;
    std::size_t sourceBytes;
    std::size_t destinationBytes;
    std::vector<LimitKernel> kernels;
};

Limit LimitOf(const Conversion& conversion);

/// The limits of all conversions, each once.
std::vector<Limit> LimitsOf(const std::vector<Conversion>& conversions);

/// "Limit/1:3/1920x1080/avx2", with the bytes of a source and a destination pixel.
std::string BenchmarkName(const Limit& limit, const LimitKernel& kernel);

void RegisterBenchmarks(const Limit& limit, const Frames& frames);

}  // namespace kybench

#endif
