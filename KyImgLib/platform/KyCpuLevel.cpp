#include <KyImgLib/platform/KyCpuLevel.h>

#include <KyImgLib/platform/KyStatus.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

struct Level {
    const char* name;
    bool (*isSupported)();
};

bool Always() { return true; }

// Each level checks for every instruction set that its kernels are compiled for, and so for those of the level below it.
#if defined(__x86_64__)
bool HasSse4() { return __builtin_cpu_supports("ssse3") && __builtin_cpu_supports("sse4.2"); }

bool HasAvx2() {
    return HasSse4() && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
           __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
}

bool HasAvx512() {
    return HasAvx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
}

bool HasAvx512Vbmi() {
    return HasAvx512() && __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512vbmi2");
}

constexpr Level kLevels[] = {
    {"scalar", Always}, {"sse4", HasSse4}, {"avx2", HasAvx2}, {"avx512", HasAvx512}, {"avx512vbmi", HasAvx512Vbmi},
};
#elif defined(__aarch64__)
constexpr Level kLevels[] = {{"scalar", Always}, {"neon", Always}};
#else
constexpr Level kLevels[] = {{"scalar", Always}};
#endif

constexpr std::uint32_t kLevelCount = std::size(kLevels);

std::uint32_t HighestAvailable() {
#if defined(__x86_64__)
    __builtin_cpu_init();
#endif
    std::uint32_t limit = kLevelCount - 1;
    if (const char* const name = std::getenv("KYIMGLIB_CPU_LEVEL")) KyCpuLevel::Find(name, limit);
    while (!kLevels[limit].isSupported()) --limit;
    return limit;
}

/// First called while the library is loaded.
std::uint32_t Highest() {
    static const std::uint32_t level = HighestAvailable();
    return level;
}

std::atomic<std::uint32_t>& Active() {
    static std::atomic<std::uint32_t> level(Highest());
    return level;
}

}  // namespace

std::uint32_t KyCpuLevel::GetCount() noexcept { return kLevelCount; }

const char* KyCpuLevel::GetName(std::uint32_t level) noexcept {
    return level < kLevelCount ? kLevels[level].name : nullptr;
}

bool KyCpuLevel::IsAvailable(std::uint32_t level) noexcept { return level <= Highest(); }

std::uint32_t KyCpuLevel::GetActive() noexcept { return Active().load(std::memory_order_relaxed); }

std::uint32_t KyCpuLevel::SetActive(std::uint32_t level) noexcept {
    if (!IsAvailable(level)) return KY_STATUS_BAD_ARGUMENT;
    Active().store(level, std::memory_order_relaxed);
    return KY_STATUS_SUCCESS;
}

bool KyCpuLevel::Find(const char* name, std::uint32_t& level) noexcept {
    for (std::uint32_t i = 0; i < kLevelCount; ++i) {
        if (std::strcmp(kLevels[i].name, name) != 0) continue;
        level = i;
        return true;
    }
    return false;
}
