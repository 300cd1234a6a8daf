#include "CpuLevels.h"

#include "Errors.h"

#include <KyImgLib/platform/KyCpuLevel.h>
#include <KyImgLib/platform/KyStatus.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

namespace kyimg {

void ForceCpuLevel(const std::string& name) {
    std::uint32_t level = 0;
    if (!KyCpuLevel::Find(name.c_str(), level)) {
        std::vector<const char*> names;
        for (std::uint32_t i = 0; i < KyCpuLevel::GetCount(); ++i) names.push_back(KyCpuLevel::GetName(i));
        throw UsageError(fmt::format("--cpu-level: \"{}\" is none of {}", name, fmt::join(names, ", ")));
    }
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
