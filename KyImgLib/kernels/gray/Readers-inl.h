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

    explicit ReadBytes(const GraySettings&) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const { return line[i]; }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[1]) const { samples[0] = Load(from); }
#endif
};

/// The low byte of each word shifted right. With a shift of 8 that is the high byte.
struct ReadWordBytes {
    static constexpr std::size_t kSampleBytes = 1, kGroup = 1, kGroupBytes = 2;

    explicit ReadWordBytes(const GraySettings& settings) : shift(static_cast<int>(settings.shift)) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const {
        return static_cast<std::uint8_t>(WordAt(line + 2 * i) >> shift);
    }
#if !KY_SCALAR
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

    explicit ReadShiftedWords(const GraySettings& settings) : shift(static_cast<int>(settings.shift)) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const {
        const std::uint32_t word = WordAt(line + 2 * i);
        return static_cast<std::uint16_t>(kDirection == Shift::kLeft ? word << shift : word >> shift);
    }
#if !KY_SCALAR
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

#if !KY_SCALAR

// A vector of words from packed samples takes 3 / 4 of a vector of bytes.
constexpr std::size_t kPackedBytes = kLanes / 4 * 3;

/// Byte i of the words of packed samples: the sample's own byte in each lower half, the middle one in each upper half.
constexpr unsigned PackedByte(unsigned i) { return i / 4 * 3 + (i % 2 != 0 ? 1 : i % 4); }

#if KY_VBMI

constexpr VectorBytes PackedBytes(unsigned start) {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i) bytes.bytes[i] = static_cast<std::uint8_t>(start + PackedByte(i));
    return bytes;
}

/// Of kLanes packed samples, their own bytes in the lower and the middle bytes in the upper halves of words.
HWY_INLINE void PackedWords(const std::uint8_t* from, V16 (&high)[2], V16 (&middle)[2]) {
    // The second load ends with the last sample's byte, so the first of its bytes belong to samples of the first load.
    constexpr unsigned kSecond = 2 * kPackedBytes - kLanes;
    static constexpr VectorBytes kBytes[2] = {PackedBytes(0), PackedBytes(kPackedBytes - kSecond)};
    for (std::size_t i = 0; i < 2; ++i) {
        const __m512i packed = Load(from + i * kSecond).raw, bytes = _mm512_load_si512(kBytes[i].bytes);
        high[i] = V16{_mm512_maskz_permutexvar_epi8(0x5555555555555555, bytes, packed)};
        middle[i] = V16{_mm512_maskz_permutexvar_epi8(0xAAAAAAAAAAAAAAAA, bytes, packed)};
    }
}

constexpr VectorBytes PackedHighBytes() {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i) {
        const unsigned n = i / 2 * 3 + i % 2 * 2;
        bytes.bytes[i] = static_cast<std::uint8_t>(n < 64 ? n : n - (2 * kPackedBytes - kLanes) + 64);
    }
    return bytes;
}

/// The high bytes of kLanes packed samples.
HWY_INLINE V8 PackedHigh(const std::uint8_t* from) {
    static constexpr VectorBytes kBytes = PackedHighBytes();
    const V8 first = Load(from), second = Load(from + (2 * kPackedBytes - kLanes));
    return V8{_mm512_permutex2var_epi8(first.raw, _mm512_load_si512(kBytes.bytes), second.raw)};
}

#else

/// One of each two bytes; the other is 0.
constexpr BlockBytes PackedBytes(unsigned start, unsigned place) {
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i)
        bytes.bytes[i] = static_cast<std::uint8_t>(i % 2 == place ? start + PackedByte(i) : 0x80);
    return bytes;
}

/// Blocks that begin `distance` bytes after one another.
HWY_INLINE V8 LoadBlocks(const std::uint8_t* from, [[maybe_unused]] std::size_t distance) {
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

// A block of 16 bytes holds 8 packed samples in 12 bytes, and 4 bytes more. The last load begins 4 bytes early, so that it
// ends with the last sample.

/// Of kLanes packed samples, their own bytes in the lower and the middle bytes in the upper halves of words.
HWY_INLINE void PackedWords(const std::uint8_t* from, V16 (&high)[2], V16 (&middle)[2]) {
    static constexpr BlockBytes kHigh[2] = {PackedBytes(0, 0), PackedBytes(4, 0)};
    static constexpr BlockBytes kMiddle[2] = {PackedBytes(0, 1), PackedBytes(4, 1)};
    for (std::size_t i = 0; i < 2; ++i) {
        const V8 packed = LoadBlocks(from + i * (kPackedBytes - 4), 12);
        high[i] = Words(hn::TableLookupBytesOr0(packed, LoadBlock(kHigh[i])));
        middle[i] = Words(hn::TableLookupBytesOr0(packed, LoadBlock(kMiddle[i])));
    }
}

/// The high bytes of 8 samples from byte `start` on, in the half of a block that begins with byte `half`; 0 in the other.
constexpr BlockBytes PackedHighBytes(unsigned start, unsigned half) {
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i) bytes.bytes[i] = 0x80;
    for (unsigned i = 0; i < 8; ++i) bytes.bytes[half + i] = static_cast<std::uint8_t>(start + i / 2 * 3 + i % 2 * 2);
    return bytes;
}

/// The high bytes of kLanes packed samples.
HWY_INLINE V8 PackedHigh(const std::uint8_t* from) {
    static constexpr BlockBytes kFirst = PackedHighBytes(0, 0), kSecond = PackedHighBytes(4, 8);
    return hn::Or(hn::TableLookupBytesOr0(LoadBlocks(from, 24), LoadBlock(kFirst)),
                  hn::TableLookupBytesOr0(LoadBlocks(from + 8, 24), LoadBlock(kSecond)));
}

#endif

HWY_INLINE V16 Alternate(const std::uint16_t (&values)[2]) {
    return hn::OddEven(hn::Set(D16(), values[1]), hn::Set(D16(), values[0]));
}

#endif

struct ReadPacked {
    static constexpr std::size_t kSampleBytes = 2, kGroup = 2, kGroupBytes = 3;

    explicit ReadPacked(const GraySettings& settings) : layout(settings.packed) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const {
        const std::uint8_t* const at = line + i / 2 * 3;
        const std::size_t n = i % 2;
        const std::uint32_t high = std::uint32_t{at[2 * n]} * layout.highFactor;
        const std::uint32_t low = (std::uint32_t{at[1]} & layout.lowMask[n]) << 8;
        return static_cast<std::uint16_t>(high | low * layout.lowFactor[n] >> 16);
    }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        const V16 highFactor = hn::Set(D16(), layout.highFactor);
        // The middle bytes are in upper halves.
        const V16 lowMask = hn::ShiftLeft<8>(Alternate(layout.lowMask)), lowFactor = Alternate(layout.lowFactor);
        V16 high[2], middle[2];
        PackedWords(from, high, middle);
        for (std::size_t i = 0; i < 2; ++i) {
            const V16 low = hn::MulHigh(hn::And(middle[i], lowMask), lowFactor);
            samples[i] = Bytes(hn::Or(hn::Mul(high[i], highFactor), low));
        }
    }
#endif

    PackedLayout layout;
};

/// The high bytes of packed samples.
struct ReadPackedBytes {
    static constexpr std::size_t kSampleBytes = 1, kGroup = 2, kGroupBytes = 3;

    explicit ReadPackedBytes(const GraySettings&) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const { return line[i / 2 * 3 + i % 2 * 2]; }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[1]) const { samples[0] = PackedHigh(from); }
#endif
};
