// Readers of gray samples that lie bit by bit. Needs Readers-inl.h before it, and is a reader in its sense.
//
// Which bytes hold a sample, and how far they must be shifted, is told by a layout:
//     kBits                of a sample
//     kGroup, kGroupBytes  samples that share bytes, and those bytes
//     kHasRest             whether a sample is made of two words
//     kRestMask            of the second one, in place
//     PlaceOf(i)           of sample i of a group

/// A sample is ((word << up) | ((rest * restFactor >> 16) & kRestMask)) >> (16 - kBits), in 16 bits: first its highest bit comes
/// to bit 15. Both words are made of two bytes of the group, of which kNoByte is 0.
struct SamplePlace {
    static constexpr std::uint8_t kNoByte = 0x80;

    std::uint8_t low = kNoByte, high = kNoByte;
    std::uint8_t up = 0;
    std::uint8_t restLow = kNoByte, restHigh = kNoByte;
    std::uint16_t restFactor = 0;
};

/// A stream of bits, from the lowest bit of each byte on.
template <unsigned kSampleBits, std::size_t kSamples>
struct LeastFirst {
    static constexpr unsigned kBits = kSampleBits;
    static constexpr std::size_t kGroup = kSamples, kGroupBytes = kSamples * kSampleBits / 8;
    static constexpr bool kHasRest =
        kSampleBits == 14;  // some of 14 bits begin in one byte and end in the next but one
    static constexpr std::uint16_t kRestMask = 0xFFFF;

    static constexpr SamplePlace PlaceOf(std::size_t i) {
        const auto byte = static_cast<std::uint8_t>(i * kBits / 8);
        const unsigned shift = i * kBits % 8;
        SamplePlace place;
        if (shift + kBits <= 8) {
            place.low = byte;
            place.up = static_cast<std::uint8_t>(16 - kBits - shift);
        } else if (shift + kBits <= 16) {
            place.low = byte;
            place.high = static_cast<std::uint8_t>(byte + 1);
            place.up = static_cast<std::uint8_t>(16 - kBits - shift);
        } else {
            place.low = static_cast<std::uint8_t>(byte + 1);
            place.high = static_cast<std::uint8_t>(byte + 2);
            place.up = static_cast<std::uint8_t>(24 - kBits - shift);
            place.restHigh = byte;
            place.restFactor = static_cast<std::uint16_t>(1u << place.up);
        }
        return place;
    }
};

/// The high byte of each, then the low bits of all as a stream.
template <unsigned kSampleBits, std::size_t kSamples>
struct HighBytesFirst {
    static constexpr unsigned kBits = kSampleBits, kLowBits = kSampleBits - 8;
    static constexpr std::size_t kGroup = kSamples, kGroupBytes = kSamples * kSampleBits / 8;
    static constexpr bool kHasRest = true;
    static constexpr std::uint16_t kRestMask = 0xFF & (0xFF << (8 - kLowBits));

    static constexpr SamplePlace PlaceOf(std::size_t i) {
        const auto byte = static_cast<std::uint8_t>(kGroup + i * kLowBits / 8);
        const unsigned shift = i * kLowBits % 8;
        SamplePlace place;
        place.high = static_cast<std::uint8_t>(i);
        // From bit `shift` to below bit 8.
        const unsigned up = 8 - kLowBits;
        if (shift + kLowBits <= 8) {
            place.restHigh = byte;
            place.restFactor = static_cast<std::uint16_t>(1u << (8 + up - shift));
        } else {
            place.restLow = byte;
            place.restHigh = static_cast<std::uint8_t>(byte + 1);
            place.restFactor = static_cast<std::uint16_t>(1u << (16 + up - shift));
        }
        return place;
    }
};

template <class Layout>
constexpr std::array<SamplePlace, Layout::kGroup> PlacesOf() {
    std::array<SamplePlace, Layout::kGroup> places = {};
    for (std::size_t i = 0; i < Layout::kGroup; ++i) places[i] = Layout::PlaceOf(i);
    return places;
}

template <class Layout>
std::uint16_t SampleAt(const std::uint8_t* line, std::size_t i) {
    static constexpr auto kPlaces = PlacesOf<Layout>();
    const std::uint8_t* const group = line + i / Layout::kGroup * Layout::kGroupBytes;
    const SamplePlace& place = kPlaces[i % Layout::kGroup];
    const auto word = [&](std::uint8_t low, std::uint8_t high) {
        const std::uint32_t lowByte = low == SamplePlace::kNoByte ? 0 : group[low];
        const std::uint32_t highByte = high == SamplePlace::kNoByte ? 0 : group[high];
        return lowByte | highByte << 8;
    };
    std::uint32_t bits = word(place.low, place.high) << place.up;
    if (Layout::kHasRest) bits |= word(place.restLow, place.restHigh) * place.restFactor >> 16 & Layout::kRestMask;
    return static_cast<std::uint16_t>((bits & 0xFFFF) >> (16 - Layout::kBits));
}

#if !KY_SCALAR

/// Words for the samples of a block, the same for all blocks.
struct BlockWords {
    alignas(16) std::uint16_t words[8];
};
HWY_INLINE V16 LoadBlock(const BlockWords& block) { return hn::LoadDup128(D16(), block.words); }

template <class Layout>
constexpr BlockWords FactorsOf(bool ofRest) {
    BlockWords factors = {};
    for (std::size_t i = 0; i < 8; ++i) {
        const SamplePlace place = Layout::PlaceOf(i % Layout::kGroup);
        factors.words[i] = ofRest ? place.restFactor : static_cast<std::uint16_t>(1u << place.up);
    }
    return factors;
}

/// The bytes that a vector's words are made of, counted from byte `start` of the first sample on; 0x80 makes a 0.
template <class Layout, std::size_t kCount>
struct WordBytes {
    alignas(kCount < 16 ? 16 : kCount) std::uint8_t bytes[kCount];

    static constexpr WordBytes Of(unsigned start, bool ofRest) {
        WordBytes all = {};
        for (std::size_t i = 0; i < kCount; ++i) {
            const std::size_t sample = i / 2;
            const SamplePlace place = Layout::PlaceOf(sample % Layout::kGroup);
            const std::uint8_t byte =
                ofRest ? (i % 2 == 0 ? place.restLow : place.restHigh) : (i % 2 == 0 ? place.low : place.high);
            const std::size_t group = sample / Layout::kGroup * Layout::kGroupBytes;
            all.bytes[i] = static_cast<std::uint8_t>(byte == SamplePlace::kNoByte ? 0x80 : start + group + byte);
        }
        return all;
    }
};

/// kLanes samples of 10 to 14 bits, of which each block of 16 bytes holds 8 and some bytes more.
template <class Layout, bool kOfRest>
HWY_INLINE void LoadSampleWords(const std::uint8_t* from, V16 (&words)[2]) {
#if KY_VBMI
    // The second load ends with the last sample, so the first of its bytes belong to samples of the first load.
    constexpr std::size_t kVectorBytes = kLanes / 2 * Layout::kBits / 8, kSecond = 2 * kVectorBytes - kLanes;
    using Table = WordBytes<Layout, kLanes>;
    static constexpr Table kTables[2] = {Table::Of(0, kOfRest), Table::Of(kVectorBytes - kSecond, kOfRest)};
    for (std::size_t i = 0; i < 2; ++i) {
        const __m512i places = _mm512_load_si512(kTables[i].bytes);
        words[i] = V16{_mm512_maskz_permutexvar_epi8(_knot_mask64(_mm512_movepi8_mask(places)), places,
                                                     Load(from + i * kSecond).raw)};
    }
#else
    // The second load begins early, so that its last block ends with the last sample.
    constexpr std::size_t kBlockBytes = Layout::kBits, kVectorBytes = kBlocks * kBlockBytes, kEarly = 16 - kBlockBytes;
    using Table = WordBytes<Layout, 16>;
    static constexpr Table kTables[2] = {Table::Of(0, kOfRest), Table::Of(kEarly, kOfRest)};
    for (std::size_t i = 0; i < 2; ++i)
        words[i] = Words(hn::TableLookupBytesOr0(LoadBlocks(from + i * (kVectorBytes - kEarly), kBlockBytes),
                                                 hn::LoadDup128(D8(), kTables[i].bytes)));
#endif
}

#endif

/// Samples of 10, 12 or 14 bits as words.
template <class Layout>
struct ReadBits {
    static constexpr std::size_t kSampleBytes = 2, kGroup = Layout::kGroup, kGroupBytes = Layout::kGroupBytes;

    explicit ReadBits(const GraySettings&) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const { return SampleAt<Layout>(line, i); }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        static constexpr BlockWords kUp = FactorsOf<Layout>(false), kRest = FactorsOf<Layout>(true);
        V16 words[2];
        LoadSampleWords<Layout, false>(from, words);
        for (V16& word : words) word = hn::Mul(word, LoadBlock(kUp));
        if constexpr (Layout::kHasRest) {
            V16 rest[2];
            LoadSampleWords<Layout, true>(from, rest);
            for (std::size_t i = 0; i < 2; ++i)
                words[i] =
                    hn::OrAnd(words[i], hn::MulHigh(rest[i], LoadBlock(kRest)), hn::Set(D16(), Layout::kRestMask));
        }
        for (std::size_t i = 0; i < 2; ++i) samples[i] = Bytes(hn::ShiftRight<16 - Layout::kBits>(words[i]));
    }
#endif
};

/// Samples of 1, 2 or 4 bits as bytes of the full range.
template <class Layout>
struct ReadFewBits {
    static constexpr std::size_t kSampleBytes = 1, kGroup = Layout::kGroup, kGroupBytes = Layout::kGroupBytes;
    static constexpr unsigned kScale = 255 / ((1u << Layout::kBits) - 1);

    explicit ReadFewBits(const GraySettings&) {}

    std::uint8_t Sample(const std::uint8_t* line, std::size_t i) const {
        return static_cast<std::uint8_t>(SampleAt<Layout>(line, i) * kScale);
    }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[1]) const {
        constexpr std::size_t kVectorBytes = kLanes / 2 * Layout::kBits / 8;
        using Table = WordBytes<Layout, kLanes>;
        static constexpr Table kTable = Table::Of(0, false);
        static constexpr BlockWords kUp = FactorsOf<Layout>(false);
        V16 words[2];
        for (std::size_t i = 0; i < 2; ++i) {
            const V8 bytes = Repeat<kVectorBytes>(from + i * kVectorBytes);
            const V8 word = hn::TableLookupBytesOr0(bytes, hn::Load(D8(), kTable.bytes));
            const V16 sample = hn::ShiftRight<16 - Layout::kBits>(hn::Mul(Words(word), LoadBlock(kUp)));
            words[i] = hn::Mul(sample, hn::Set(D16(), kScale));
        }
        samples[0] = LowBytes(words[0], words[1]);
    }

private:
    /// A vector of words takes 16 bytes at most: every block has them all.
    template <std::size_t kBytes>
    static HWY_INLINE V8 Repeat(const std::uint8_t* from) {
        if constexpr (kBytes == 16) {
            return hn::LoadDup128(D8(), from);
        } else {
            hwy::UnsignedFromSize<kBytes> number;
            std::memcpy(&number, from, kBytes);
            return hn::BitCast(D8(), hn::Set(TagOf<decltype(number)>(), number));
        }
    }
#endif
};

/// Words with the high byte first.
struct ReadBigEndianWords {
    static constexpr std::size_t kSampleBytes = 2, kGroup = 1, kGroupBytes = 2;

    explicit ReadBigEndianWords(const GraySettings&) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const {
        return static_cast<std::uint16_t>(line[2 * i] << 8 | line[2 * i + 1]);
    }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        for (std::size_t i = 0; i < 2; ++i) {
            const V16 words = Words(Load(from + i * kLanes));
            samples[i] = Bytes(hn::Or(hn::ShiftLeft<8>(words), hn::ShiftRight<8>(words)));
        }
    }
#endif
};

/// Pixels of four bytes as numbers, their bytes in another order.
class ReadReordered {
public:
    static constexpr std::size_t kSampleBytes = 4, kGroup = 1, kGroupBytes = 4;

    explicit ReadReordered(const GraySettings& settings) {
        for (std::size_t i = 0; i < 16; ++i) {
            const std::uint8_t from = settings.order.from[i % 4];
            const bool isConstant = from == ByteOrder::kZero || from == ByteOrder::kFull;
            place[i] = static_cast<std::uint8_t>(isConstant ? 0x80 : i / 4 * 4 + from);
            constant[i] = from == ByteOrder::kFull ? 0xFF : 0;
        }
    }

    std::uint32_t Sample(const std::uint8_t* line, std::size_t i) const {
        std::uint32_t pixel = 0;
        for (std::size_t k = 0; k < 4; ++k)
            pixel |= std::uint32_t{place[k] == 0x80 ? constant[k] : line[4 * i + place[k]]} << 8 * k;
        return pixel;
    }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[4]) const {
        const V8 places = hn::LoadDup128(D8(), place), constants = hn::LoadDup128(D8(), constant);
        for (std::size_t i = 0; i < 4; ++i)
            samples[i] = hn::Or(hn::TableLookupBytesOr0(Load(from + i * kLanes), places), constants);
    }
#endif

private:
    alignas(16) std::uint8_t place[16];     ///< of a byte in a block of four pixels
    alignas(16) std::uint8_t constant[16];  ///< 0 where there is a place
};
