#ifndef KYBENCH_REGISTRATION_H
#define KYBENCH_REGISTRATION_H

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

namespace kybench {

/// Registers something to be measured by the time that its thread has the CPU, which other programs do not prolong.
/// Windows counts that time in ticks of some 10 milliseconds, about a whole repetition; so there it is the wall clock.
template <typename Function>
void RegisterByCpuTime(const std::string& name, Function&& function) {
    [[maybe_unused]] auto* const registered =
        benchmark::RegisterBenchmark(name.c_str(), std::forward<Function>(function));
#if defined(_WIN32)
    registered->UseRealTime();
#endif
}

}  // namespace kybench

#endif
