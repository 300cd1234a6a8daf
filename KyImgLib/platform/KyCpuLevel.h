#ifndef KYIMGLIB_PLATFORM_KYCPULEVEL_H
#define KYIMGLIB_PLATFORM_KYCPULEVEL_H

#include <KyImgLib/platform/KyExport.h>

#include <cstdint>

/// The instruction-set levels that the library carries kernels for.
///
/// Levels are numbered from 0, the scalar level that every CPU runs, upward; a higher level is faster and gives
/// the same bytes. On x86-64 they are "scalar", "sse4" (SSE4.2), "avx2", "avx512" (F, BW, DQ, VL) and
/// "avx512vbmi" (with VBMI and VBMI2); on 64-bit ARM "scalar" and "neon"; elsewhere "scalar" alone.
///
/// The highest available level is active from load time. The environment variable KYIMGLIB_CPU_LEVEL, read
/// once at load, holds the name of the highest level that may be used; it only lowers, and an unknown name
/// changes nothing.
///
/// Every function may be called from any thread. A conversion reads the active level as it begins, a chain may read it for
/// each stage; all levels give the same bytes.
class KYIMGLIB_API KyCpuLevel {
public:
    /// Number of levels that this build of the library carries.
    static std::uint32_t GetCount() noexcept;

    /// Name of a level; null when `level` is not below GetCount(). The text lives as long as the library.
    static const char* GetName(std::uint32_t level) noexcept;

    /// Whether this CPU and operating system run the level and KYIMGLIB_CPU_LEVEL allows it; false for an unknown level.
    static bool IsAvailable(std::uint32_t level) noexcept;

    /// The level that conversions started now will use.
    static std::uint32_t GetActive() noexcept;

    /// Makes `level` the active one for the whole process: KY_STATUS_SUCCESS, or KY_STATUS_BAD_ARGUMENT when it
    /// is not available (the active level then stays).
    static std::uint32_t SetActive(std::uint32_t level) noexcept;

    /// Writes the number of the level called `name` (lower case, as GetName tells) to `level`; false, and nothing
    /// written, when there is none. `name` must not be null.
    static bool Find(const char* name, std::uint32_t& level) noexcept;
};

#endif
