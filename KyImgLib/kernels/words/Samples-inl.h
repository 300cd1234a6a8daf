// Samples to 16-bit words in the order of the source, one or three a pixel. Needs gray/InOrder-inl.h before it; readers are
// those of gray/Readers-inl.h.

#if !KY_SCALAR
HWY_INLINE V16 Masked(const WordScale& scale, V16 words) { return hn::And(words, hn::Set(D16(), scale.mask)); }

/// WordScale::Value of each word.
HWY_INLINE V16 Scaled(const WordScale& scale, V16 words) {
    const D16 d;
    const V16 value = Masked(scale, words);
    const V16 numerator = hn::Add(hn::Mul(value, hn::Set(d, scale.factor)), hn::Set(d, scale.addend));
    return hn::Add(hn::ShiftLeftSame(value, scale.shift),
                   hn::ShiftRightSame(hn::MulHigh(numerator, hn::Set(d, scale.multiplier)), scale.down));
}
#endif

/// Bytes, as the low byte of a word or as both.
struct ReadWidened {
    static constexpr std::size_t kSampleBytes = 2, kGroup = 1, kGroupBytes = 1;

    explicit ReadWidened(const WordSettings& settings) : highMask(settings.repeatsBytes ? 0xFF : 0) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const {
        return static_cast<std::uint16_t>(line[i] | (line[i] & highMask) << 8);
    }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        const V8 bytes = Load(from);
        Interleave2(bytes, hn::And(bytes, hn::Set(D8(), highMask)), samples);
    }
#endif

    std::uint8_t highMask;
};

struct ReadScaled {
    static constexpr std::size_t kSampleBytes = 2, kGroup = 1, kGroupBytes = 2;

    explicit ReadScaled(const WordSettings& settings) : scale(settings.scale) {}

    std::uint16_t Sample(const std::uint8_t* line, std::size_t i) const { return scale.Value(WordAt(line + 2 * i)); }
#if !KY_SCALAR
    HWY_INLINE void Read(const std::uint8_t* from, V8 (&samples)[2]) const {
        for (std::size_t i = 0; i < 2; ++i) samples[i] = Bytes(Scaled(scale, Words(Load(from + i * kLanes))));
    }
#endif

    WordScale scale;
};

/// A stream of samples of 10 bits.
struct ReadStream : ReadBits<LeastFirst<10, 4>> {
    explicit ReadStream(const WordSettings&) : ReadBits(GraySettings{}) {}
};

template <class Reader>
struct SampleState {
    Reader reader;
    std::size_t samples;  ///< of a pixel
};

template <class Reader>
void ConvertSamples(const RowKernel& kernel, const Tile& tile) {
    const auto& state = kernel.Get<SampleState<Reader>>();
    const std::size_t samples = state.samples;
    ConvertInOrder<Reader, WriteGray16>(state.reader, tile,
                                        {tile.begin * samples, tile.end * samples, tile.width * samples});
}

/// `kGroup`: pixels that begin with a byte.
template <class Reader, std::uint32_t kGroup>
void MakeSamples(const WordSettings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.group = kGroup;
    needs.groupBytes = settings.samples * kGroup / std::uint32_t{Reader::kGroup} * std::uint32_t{Reader::kGroupBytes};
    needs.pixelBytes = 2 * settings.samples;
    // Of single samples as everywhere; pixels of three are all made, as where a filter follows.
    needs.areaPartialGroup =
        settings.samples == 1 ? RowKernel::PartialGroup::kLeftOut : RowKernel::PartialGroup::kConverted;
    kernel.Set(needs, &ConvertSamples<Reader>, SampleState<Reader>{Reader(settings), settings.samples});
}
