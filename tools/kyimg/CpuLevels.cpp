#include "CpuLevels.h"

#include "Errors.h"

#include <KyImgLib/platform/KyCpuLevel.h>
#include <KyImgLib/platform/KyStatus.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstdlib>
#include <vector>

namespace kyimg {

namespace {

/// \param origin  what names the level, like "--cpu-level"
std::uint32_t FindLevel(const char* name, const char* origin) {
    std::uint32_t level = 0;
    if (KyCpuLevel::Find(name, level)) return level;
    std::vector<const char*> names;
    for (std::uint32_t i = 0; i < KyCpuLevel::GetCount(); ++i) names.push_back(KyCpuLevel::GetName(i));
    throw UsageError(fmt::format("{}: \"{}\" is none of {}", origin, name, fmt::join(names, ", ")));
}

}  // namespace

void CheckCpuLevelVariable() {
    constexpr const char* kVariable = "KYIMGLIB_CPU_LEVEL";
    const char* const name = std::getenv(kVariable);
    if (name != nullptr && *name != '\0') FindLevel(name, kVariable);
}

void ForceCpuLevel(const std::string& name) {
    const std::uint32_t level = FindLevel(name.c_str(), "--cpu-level");
    if (KyCpuLevel::SetActive(level) != KY_STATUS_SUCCESS)
        throw Failure(fmt::format("CPU level {} is not available here; `kyimg --version` tells which are", name));
}

void PrintCpuLevels() {
    fmt::print("active {}\n", KyCpuLevel::GetName(KyCpuLevel::GetActive()));
    for (std::uint32_t level = 0; level < KyCpuLevel::GetCount(); ++level)
        fmt::print("level {} {}\n", KyCpuLevel::GetName(level),
                   KyCpuLevel::IsAvailable(level) ? "available" : "unavailable");
}

}  // namespace kyimg
