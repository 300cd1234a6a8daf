// When writes may go around the caches. Needs Lanes-inl.h before it.

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

#endif
