#ifndef KYIMGLIB_PLATFORM_THREADPOOLINTERNAL_H
#define KYIMGLIB_PLATFORM_THREADPOOLINTERNAL_H

#include <cstdint>

namespace ky {

/// Cores that the calling thread may use, at least 1.
std::uint32_t CoreCount() noexcept;

/// Runs `work` on the calling thread and, at the same time, on up to `others` threads of the library, at least 1. Returns
/// when all runs have returned. Where no thread is to be had in time, there are fewer runs: whatever there is to do, each run
/// must take as much of it as it finds.
///
/// The threads wait for the next call, with all signals blocked but those of faults. The child of a fork has its own, and
/// unloading the library ends them. Any threads may call it at once.
void RunOnThreads(std::uint32_t others, void (*work)(void* context), void* context) noexcept;

}  // namespace ky

#endif
