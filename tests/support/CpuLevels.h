#ifndef KYIMGLIB_TESTS_SUPPORT_CPULEVELS_H
#define KYIMGLIB_TESTS_SUPPORT_CPULEVELS_H

#include <KyImgLib/platform/KyCpuLevel.h>

#include <cstdint>
#include <vector>

namespace support {

inline std::vector<std::uint32_t> AvailableLevels() {
    std::vector<std::uint32_t> levels;
    for (std::uint32_t level = 0; level < KyCpuLevel::GetCount(); ++level)
        if (KyCpuLevel::IsAvailable(level)) levels.push_back(level);
    return levels;
}

/// Makes a level the active one until the end of the scope.
class ScopedCpuLevel {
public:
    explicit ScopedCpuLevel(std::uint32_t level) : previous(KyCpuLevel::GetActive()) { KyCpuLevel::SetActive(level); }
    ~ScopedCpuLevel() { KyCpuLevel::SetActive(previous); }
    ScopedCpuLevel(const ScopedCpuLevel&) = delete;
    ScopedCpuLevel& operator=(const ScopedCpuLevel&) = delete;

private:
    std::uint32_t previous;
};

}  // namespace support

#endif
