#ifndef KYIMG_CPULEVELS_H
#define KYIMG_CPULEVELS_H

#include <string>

namespace kyimg {

/// Throws UsageError when the environment variable KYIMGLIB_CPU_LEVEL names no level. The library itself passes that over.
void CheckCpuLevelVariable();

/// Makes the level called `name` the one that conversions use. Throws UsageError when there is no such level, Failure
/// when this CPU cannot run it.
void ForceCpuLevel(const std::string& name);

/// A line "active NAME", and for each level of this build "level NAME available" or "level NAME unavailable".
void PrintCpuLevels();

}  // namespace kyimg

#endif
