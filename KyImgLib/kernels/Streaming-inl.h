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
template <std::size_t kLines>
class Fetcher {
public:
    /// What comes with `kLines` lines that are converted together, as much of each.
    HWY_INLINE Fetcher(const FetchAhead* ahead, std::size_t steps)
        : at(0), part(ahead[0].bytes == 0 ? 0 : (ahead[0].bytes + steps - 1) / steps) {
        // Rather than not to ask, for nothing: what is in the cache anyway.
        for (std::size_t i = 0; i < kLines; ++i)
            from[i] = part == 0 ? reinterpret_cast<std::uintptr_t>(ahead) : ahead[i].from;
    }

    HWY_INLINE void Step() {
        Ask(0);
        if (HWY_UNLIKELY(part > kCacheLine))
            for (std::size_t offset = kCacheLine; offset < part; offset += kCacheLine) Ask(offset);
        at += part;
    }

private:
    static constexpr std::size_t kCacheLine = 64;

    HWY_INLINE void Ask(std::size_t offset) const {
        for (const std::uintptr_t address : from)
            hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(address + at + offset));
    }

    std::uintptr_t from[kLines];
    std::size_t at, part;
};

#endif
