// When writes may go around the caches, and what is read meanwhile. Needs Lanes-inl.h before it.

#if !KY_PLAIN

/// Of streaming writes: a cache line. One that is filled in two goes may leave for memory twice.
constexpr std::size_t kStreamAlignment = 64;

HWY_INLINE bool IsAligned(std::ptrdiff_t bytes) { return bytes % static_cast<std::ptrdiff_t>(kStreamAlignment) == 0; }
HWY_INLINE bool IsAligned(const std::uint8_t* address) { return IsAligned(reinterpret_cast<std::intptr_t>(address)); }

/// Pixels from `out` to the first one whose output is aligned, in whole groups; kNeverAligned when there is none. As many
/// again as kNeverAligned, the next one is.
constexpr std::size_t kNeverAligned = kStreamAlignment;
template <std::size_t kPixelBytes, std::size_t kGroup>
HWY_INLINE std::size_t PixelsToAligned(const std::uint8_t* out) {
    std::size_t pixels = 0;
    while (pixels < kNeverAligned && !IsAligned(out + pixels * kPixelBytes)) pixels += kGroup;
    return pixels;
}

/// Asks for what is read soon, a part with each of `steps` steps. A processor that finds nothing in the cache until a line is
/// written reads and writes in turn, where it could do both at once.
class Fetcher {
public:
    HWY_INLINE Fetcher(const FetchAhead& ahead, std::size_t steps)
        : next(reinterpret_cast<std::uintptr_t>(ahead.from) / kCacheLine * kCacheLine),
          end(reinterpret_cast<std::uintptr_t>(ahead.from)),
          part(ahead.bytes == 0 ? 0 : (ahead.bytes + steps - 1) / steps) {}

    HWY_INLINE void Step() {
        end += part;
        for (; next < end; next += kCacheLine) hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(next));
    }

private:
    static constexpr std::uintptr_t kCacheLine = kStreamAlignment;
    // Numbers, for the address may lie outside of all memory.
    std::uintptr_t next, end;
    std::size_t part;
};

#endif
