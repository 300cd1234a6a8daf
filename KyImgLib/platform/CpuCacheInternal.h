#ifndef KYIMGLIB_PLATFORM_CPUCACHEINTERNAL_H
#define KYIMGLIB_PLATFORM_CPUCACHEINTERNAL_H

#include <cstddef>

namespace ky {

/// Bytes of the last-level cache; an estimate where the system does not tell.
std::size_t LastLevelCacheSize();

/// Whether a conversion should use streaming stores. Measured between a quarter and one and a half times the last-level cache,
/// they win once the source, counted twice, and the destination together are seven eighths of it: streaming keeps the cache for
/// the source. Well below that they take up to twice as long.
inline bool ShouldStream(std::size_t sourceBytes, std::size_t destinationBytes) {
    return 2 * sourceBytes + destinationBytes > LastLevelCacheSize() / 8 * 7;
}

/// SFENCE: makes streaming stores visible to other threads before any later store. Once for each conversion, at its end: the
/// CPU does nothing else while it waits for them.
void FinishStreaming();

}  // namespace ky

#endif
