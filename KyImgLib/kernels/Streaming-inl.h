// When writes may go around the caches, and what is read meanwhile. Needs Lanes-inl.h before it.

#if !KY_PLAIN

HWY_INLINE bool IsAligned(const std::uint8_t* address) {
    return reinterpret_cast<std::uintptr_t>(address) % kLanes == 0;
}

/// Pixels from `out` to the last one, among `most`, whose output is aligned for streaming; 0 when there is none. A whole
/// number of groups, so that a vector that starts there starts with one.
template <std::size_t kPixelBytes, std::size_t kGroup>
HWY_INLINE std::size_t AlignedPixels(const std::uint8_t* out, std::size_t most) {
    std::size_t pixels = most;
    while (pixels != 0 && !IsAligned(out + pixels * kPixelBytes)) pixels -= kGroup;
    return pixels;
}

/// Asks for what is read soon, a part with each of `steps` steps. A processor that finds nothing in the cache until a line is
/// written reads and writes in turn, where it could do both at once.
class Fetcher {
public:
    HWY_INLINE Fetcher(const FetchAhead& ahead, std::size_t steps)
        : next(reinterpret_cast<std::uintptr_t>(ahead.from) / kCacheLine * kCacheLine),
          end(reinterpret_cast<std::uintptr_t>(ahead.from)), part(ahead.bytes == 0 ? 0 : (ahead.bytes + steps - 1) / steps) {}

    HWY_INLINE void Step() {
        end += part;
        for (; next < end; next += kCacheLine) hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(next));
    }

private:
    static constexpr std::uintptr_t kCacheLine = 64;
    // Numbers, for the address may lie outside of all memory.
    std::uintptr_t next, end;
    std::size_t part;
};

#endif
