#ifndef KYIMGLIB_PLATFORM_CPUCACHEINTERNAL_H
#define KYIMGLIB_PLATFORM_CPUCACHEINTERNAL_H

#include <cstddef>

namespace ky {

/// Bytes of the last-level cache; an estimate where the system does not tell.
std::size_t LastLevelCacheSize();

/// Whether a conversion that reads and writes this many bytes should use streaming stores. They win once
/// source and destination together fill about half of the last level; below that they lose up to 2.5 times.
inline bool ExceedsCache(std::size_t bytes) { return bytes > LastLevelCacheSize() / 2; }

/// SFENCE: makes streaming stores visible to other threads before any later store. Once for each conversion, at its end: the
/// CPU does nothing else while it waits for them.
void FinishStreaming();

}  // namespace ky

#endif
