// Readers: gray samples of any source format to vectors of bytes or of words. Needs Lanes-inl.h before it.
//
// A reader has
//     kSampleBytes         bytes of a sample as it is handed on, 1 or 2
//     kGroup, kGroupBytes  samples that share bytes, and those bytes
//     Sample(line, i)      sample i of a line
//     Read(from, samples)  the next kLanes samples, and not a byte more

inline std::uint16_t WordAt(const std::uint8_t* at) {
    std::uint16_t word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

struct ReadBytes {
    static constexpr std::size_t kSampleBytes = 1, kGroup = 1, kGroupBytes = 1;

    explicit ReadBytes(const GrayBand&) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const { return line[i]; }
#if !KY_PLAIN
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[1]) const { samples[0] = Load(from); }
#endif
};

/// The last byte of each pixel. Not worth vectors: pixels of one or two bytes have readers of their own.
struct ReadLastBytes {
    explicit ReadLastBytes(const GrayBand& band) : pixelBytes(band.pixelBytes) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const { return line[i * pixelBytes + pixelBytes - 1]; }

    std::size_t pixelBytes;
};

/// The low byte of each word shifted right. With a shift of 8 that is the high byte.
struct ReadWordBytes {
    static constexpr std::size_t kSampleBytes = 1, kGroup = 1, kGroupBytes = 2;

    explicit ReadWordBytes(const GrayBand& band) : shift(static_cast<int>(band.shift)) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const {
        return static_cast<std::uint8_t>(WordAt(line + 2 * i) >> shift);
    }
#if !KY_PLAIN
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[1]) const {
        samples[0] = LowBytes(hn::ShiftRightSame(Words(Load(from)), shift),
                              hn::ShiftRightSame(Words(Load(from + kLanes)), shift));
    }
#endif

    int shift;  // Vector shifts give 0 for counts of 16 and more, as they should.
};

enum class Shift { kLeft, kRight };

template <Shift kDirection>
struct ReadShiftedWords {
    static constexpr std::size_t kSampleBytes = 2, kGroup = 1, kGroupBytes = 2;

    explicit ReadShiftedWords(const GrayBand& band) : shift(static_cast<int>(band.shift)) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const {
        const std::uint32_t word = WordAt(line + 2 * i);
        return static_cast<std::uint16_t>(kDirection == Shift::kLeft ? word << shift : word >> shift);
    }
#if !KY_PLAIN
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        for (std::size_t i = 0; i < 2; ++i) {
            const V16 words = Words(Load(from + i * kLanes));
            samples[i] =
                Bytes(kDirection == Shift::kLeft ? hn::ShiftLeftSame(words, shift) : hn::ShiftRightSame(words, shift));
        }
    }
#endif

    int shift;
};

/// Bytes of three to the word of a sample: its own byte above the one in the middle.
constexpr std::uint8_t kPackedWordByte[4] = {1, 0, 1, 2};

#if !KY_PLAIN

// A vector of words from packed samples takes 3 / 4 of a vector of bytes.
constexpr std::size_t kPackedBytes = kLanes / 4 * 3;

#if KY_VBMI

constexpr VectorBytes PackedWordBytes(unsigned start) {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i)
        bytes.bytes[i] = static_cast<std::uint8_t>(start + i / 4 * 3 + kPackedWordByte[i % 4]);
    return bytes;
}

/// The words of kLanes packed samples.
HWY_INLINE void PackedWords(const std::uint8_t* from, V16 (&words)[2]) {
    // The second load ends with the last byte, so its samples do not start with its first one.
    constexpr unsigned kSecond = 2 * kPackedBytes - kLanes;
    static constexpr VectorBytes kBytes[2] = {PackedWordBytes(0), PackedWordBytes(kPackedBytes - kSecond)};
    words[0] = V16{_mm512_permutexvar_epi8(_mm512_load_si512(kBytes[0].bytes), Load(from).raw)};
    words[1] = V16{_mm512_permutexvar_epi8(_mm512_load_si512(kBytes[1].bytes), Load(from + kSecond).raw)};
}

constexpr VectorBytes PackedHighBytes() {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i) {
        const unsigned n = i / 2 * 3 + i % 2 * 2;
        bytes.bytes[i] = static_cast<std::uint8_t>(n < 64 ? n : n - (2 * kPackedBytes - kLanes) + 64);
    }
    return bytes;
}

/// Their high bytes.
HWY_INLINE V8 PackedHigh(const std::uint8_t* from) {
    static constexpr VectorBytes kBytes = PackedHighBytes();
    const V8 first = Load(from), second = Load(from + (2 * kPackedBytes - kLanes));
    return V8{_mm512_permutex2var_epi8(first.raw, _mm512_load_si512(kBytes.bytes), second.raw)};
}

#else

constexpr BlockBytes PackedWordBytes(unsigned start) {
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i)
        bytes.bytes[i] = static_cast<std::uint8_t>(start + i / 4 * 3 + kPackedWordByte[i % 4]);
    return bytes;
}

/// Blocks that begin `distance` bytes after one another.
HWY_INLINE V8 LoadBlocks(const std::uint8_t* from, std::size_t distance) {
    const hn::CappedTag<std::uint8_t, 16> block;
#if HWY_TARGET == HWY_AVX3
    const hn::Half<D8> half;
    const auto lower = hn::Combine(half, hn::LoadU(block, from + distance), hn::LoadU(block, from));
    from += 2 * distance;
    return hn::Combine(D8(), hn::Combine(half, hn::LoadU(block, from + distance), hn::LoadU(block, from)), lower);
#elif HWY_TARGET == HWY_AVX2
    return hn::Combine(D8(), hn::LoadU(block, from + distance), hn::LoadU(block, from));
#else
    return hn::LoadU(block, from);
#endif
}

// A block's worth of bytes holds 8 packed samples in 12 bytes, and 4 bytes more. What is read last begins 4 bytes early, so
// that it ends with the last sample.

/// The words of kLanes packed samples.
HWY_INLINE void PackedWords(const std::uint8_t* from, V16 (&words)[2]) {
    static constexpr BlockBytes kBytes[2] = {PackedWordBytes(0), PackedWordBytes(4)};
    words[0] = Words(hn::TableLookupBytes(LoadBlocks(from, 12), LoadBlock(kBytes[0])));
    words[1] = Words(hn::TableLookupBytes(LoadBlocks(from + kPackedBytes - 4, 12), LoadBlock(kBytes[1])));
}

/// The high bytes of 8 samples from byte `start` on, in the half of a block that begins with byte `half`; 0 in the other.
constexpr BlockBytes PackedHighBytes(unsigned start, unsigned half) {
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i) bytes.bytes[i] = 0x80;
    for (unsigned i = 0; i < 8; ++i) bytes.bytes[half + i] = static_cast<std::uint8_t>(start + i / 2 * 3 + i % 2 * 2);
    return bytes;
}

/// Their high bytes.
HWY_INLINE V8 PackedHigh(const std::uint8_t* from) {
    static constexpr BlockBytes kFirst = PackedHighBytes(0, 0), kSecond = PackedHighBytes(4, 8);
    return hn::Or(hn::TableLookupBytesOr0(LoadBlocks(from, 24), LoadBlock(kFirst)),
                  hn::TableLookupBytesOr0(LoadBlocks(from + 8, 24), LoadBlock(kSecond)));
}

#endif

#endif

struct ReadPacked {
    static constexpr std::size_t kSampleBytes = 2, kGroup = 2, kGroupBytes = 3;

    explicit ReadPacked(const GrayBand& band) : layout(band.packed) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const {
        const std::uint8_t* const at = line + i / 2 * 3;
        const bool isSecond = i % 2 != 0;
        const std::uint32_t word = std::uint32_t{at[isSecond ? 2 : 0]} << 8 | at[1];
        const std::uint32_t high = word >> layout.highShift & layout.highMask;
        const std::uint32_t low = word >> (isSecond ? layout.lowShift : 0) & layout.lowMask[isSecond ? 1 : 0];
        return static_cast<std::uint16_t>((high | low) << layout.align);
    }
#if !KY_PLAIN
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        const D16 d;
        const V16 highMask = hn::Set(d, layout.highMask);
        const V16 lowMask = hn::OddEven(hn::Set(d, layout.lowMask[1]), hn::Set(d, layout.lowMask[0]));
        V16 words[2];
        PackedWords(from, words);
        for (std::size_t i = 0; i < 2; ++i) {
            const V16 high = hn::And(hn::ShiftRightSame(words[i], static_cast<int>(layout.highShift)), highMask);
            const V16 low = hn::OddEven(hn::ShiftRightSame(words[i], static_cast<int>(layout.lowShift)), words[i]);
            const V16 sample = hn::OrAnd(high, low, lowMask);
            samples[i] = Bytes(hn::ShiftLeftSame(sample, static_cast<int>(layout.align)));
        }
    }
#endif

    PackedLayout layout;
};

/// The high bytes of packed samples.
struct ReadPackedBytes {
    static constexpr std::size_t kSampleBytes = 1, kGroup = 2, kGroupBytes = 3;

    explicit ReadPackedBytes(const GrayBand&) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const { return line[i / 2 * 3 + i % 2 * 2]; }
#if !KY_PLAIN
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[1]) const { samples[0] = PackedHigh(from); }
#endif
};
