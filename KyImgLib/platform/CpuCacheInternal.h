#ifndef KYIMGLIB_PLATFORM_CPUCACHEINTERNAL_H
#define KYIMGLIB_PLATFORM_CPUCACHEINTERNAL_H

#include <cstddef>

namespace ky {

/// Bytes of the last-level cache; an estimate where the system does not tell.
std::size_t LastLevelCacheSize();

/// Whether a conversion that reads and writes this many bytes should write around the caches. Streaming stores win once
/// source and destination together fill about half of the last level; below that they lose up to 2.5 times.
inline bool ExceedsCache(std::size_t bytes) { return bytes > LastLevelCacheSize() / 2; }

/// Makes streamed writes visible to other threads in the order of the program. Kernels leave it to the end of an area, for
/// what waits for them cannot do anything else meanwhile.
void FinishStreaming();

}  // namespace ky

#endif
