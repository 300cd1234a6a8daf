// Bytes that lie apart, brought together. Needs Lanes-inl.h before it.

/// The last byte of each of `count` samples.
inline void GatherLastBytes(const std::uint8_t* from, std::size_t sampleBytes, std::size_t count, std::uint8_t* to) {
    std::size_t i = 0;
#if !KY_PLAIN
    if (sampleBytes == 2) {
        for (; i + kLanes <= count; i += kLanes) {
            const V16 lower = Words(Load(from + 2 * i)), upper = Words(Load(from + 2 * i + kLanes));
            hn::StoreU(LowBytes(hn::ShiftRight<8>(lower), hn::ShiftRight<8>(upper)), D8(), to + i);
        }
    }
#endif
    for (; i < count; ++i) to[i] = from[i * sampleBytes + sampleBytes - 1];
}
