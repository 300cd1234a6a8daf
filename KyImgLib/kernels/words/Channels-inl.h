// Three channels of bytes or words to words and floats: a reader and a writer. Needs Samples-inl.h before it.
//
// A reader has
//     kPixelBytes             bytes of a pixel
//     ReadPixel(from)         its samples
//     Read(from, halves)      those of kLanes pixels, as words
//     Full(state, sample)     a sample as what words are to hold
//     Plain(state, sample)    its number
//
// A writer has
//     kPixelBytes, kPlanes    of the destination
//     StorePixel(state, samples, to)
//     Store(state, half, to)  writes the n-th kLanes / 2 pixels

/// What a kernel of three channels knows.
struct ChannelState {
    WordScale scale;
    std::uint16_t highFactor;  ///< of bytes: 256, or 0
    std::uint16_t alpha;
    float largest;
};

struct ThreeSamples {
    std::uint16_t first, second, third;
};

/// Bytes.
struct ThreeBytes {
    static constexpr std::size_t kGroup = 1, kGroupBytes = 3;

    static ThreeSamples ReadPixel(const std::uint8_t* from) { return {from[0], from[1], from[2]}; }
    static std::uint16_t Full(const ChannelState& state, std::uint16_t sample) {
        return static_cast<std::uint16_t>(sample + sample * state.highFactor);
    }
    static std::uint16_t Plain(const ChannelState&, std::uint16_t sample) { return sample; }
#if !KY_SCALAR
    static HWY_INLINE void Read(const std::uint8_t* from, Planes16 (&halves)[2]) {
        const Planes8 pixels = Deinterleave<3>(from);
        halves[0] = {Lower(pixels.first), Lower(pixels.second), Lower(pixels.third)};
        halves[1] = {Upper(pixels.first), Upper(pixels.second), Upper(pixels.third)};
    }
    static HWY_INLINE V16 Full(const ChannelState& state, V16 samples) {
        return hn::Add(samples, hn::Mul(samples, hn::Set(D16(), state.highFactor)));
    }
    static HWY_INLINE V16 Plain(const ChannelState&, V16 samples) { return samples; }

private:
    static HWY_INLINE V16 Lower(V8 v) { return hn::PromoteTo(D16(), hn::LowerHalf(hn::Half<D8>(), v)); }
    static HWY_INLINE V16 Upper(V8 v) { return hn::PromoteTo(D16(), hn::UpperHalf(hn::Half<D8>(), v)); }
#endif
};

/// Words.
struct ThreeWords {
    static constexpr std::size_t kGroup = 1, kGroupBytes = 6;

    static ThreeSamples ReadPixel(const std::uint8_t* from) {
        return {WordAt(from), WordAt(from + 2), WordAt(from + 4)};
    }
    static std::uint16_t Full(const ChannelState& state, std::uint16_t sample) { return state.scale.Value(sample); }
    static std::uint16_t Plain(const ChannelState& state, std::uint16_t sample) { return sample & state.scale.mask; }
#if !KY_SCALAR
    static HWY_INLINE void Read(const std::uint8_t* from, Planes16 (&halves)[2]) {
        for (std::size_t i = 0; i < 2; ++i) halves[i] = DeinterleaveWords<3>(from + i * kLanes / 2 * kGroupBytes);
    }
    static HWY_INLINE V16 Full(const ChannelState& state, V16 samples) { return Scaled(state.scale, samples); }
    static HWY_INLINE V16 Plain(const ChannelState& state, V16 samples) { return Masked(state.scale, samples); }
#endif
};

/// Words and an alpha.
template <class Reader>
struct WriteRGBA64 {
    static constexpr std::size_t kPixelBytes = 8, kPlanes = 1;

    static void StorePixel(const ChannelState& state, const ThreeSamples& samples, std::uint8_t* const* to) {
        const std::uint16_t words[] = {Reader::Full(state, samples.first), Reader::Full(state, samples.second),
                                       Reader::Full(state, samples.third), state.alpha};
        std::memcpy(to[0], words, sizeof words);
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(const ChannelState& state, const Planes16& samples, std::size_t n,
                                 std::uint8_t* const* to, bool streams) {
        const D16 d;
        const TagOf<std::uint32_t> pairs;
        const V16 first = Reader::Full(state, samples.first), second = Reader::Full(state, samples.second);
        const V16 third = Reader::Full(state, samples.third), alpha = hn::Set(d, state.alpha);
        const auto lowerPairs = hn::BitCast(pairs, hn::InterleaveLower(d, first, second));
        const auto upperPairs = hn::BitCast(pairs, hn::InterleaveUpper(d, first, second));
        const auto lowerRest = hn::BitCast(pairs, hn::InterleaveLower(d, third, alpha));
        const auto upperRest = hn::BitCast(pairs, hn::InterleaveUpper(d, third, alpha));
        V8 out[4] = {hn::BitCast(D8(), hn::InterleaveLower(pairs, lowerPairs, lowerRest)),
                     hn::BitCast(D8(), hn::InterleaveUpper(pairs, lowerPairs, lowerRest)),
                     hn::BitCast(D8(), hn::InterleaveLower(pairs, upperPairs, upperRest)),
                     hn::BitCast(D8(), hn::InterleaveUpper(pairs, upperPairs, upperRest))};
        BlocksInOrder(out);
        PutAll(out, to[0] + n * sizeof out, streams);
    }
#endif
};

/// Three planes of words.
template <class Reader>
struct WriteWordPlanes {
    static constexpr std::size_t kPixelBytes = 2, kPlanes = 3;

    static void StorePixel(const ChannelState& state, const ThreeSamples& samples, std::uint8_t* const* to) {
        const std::uint16_t words[] = {Reader::Full(state, samples.first), Reader::Full(state, samples.second),
                                       Reader::Full(state, samples.third)};
        for (std::size_t i = 0; i < 3; ++i) std::memcpy(to[i], &words[i], sizeof words[i]);
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(const ChannelState& state, const Planes16& samples, std::size_t n,
                                 std::uint8_t* const* to, bool streams) {
        Put(Bytes(Reader::Full(state, samples.first)), to[0] + n * kLanes, streams);
        Put(Bytes(Reader::Full(state, samples.second)), to[1] + n * kLanes, streams);
        Put(Bytes(Reader::Full(state, samples.third)), to[2] + n * kLanes, streams);
    }
#endif
};

/// Three planes of floats: samples divided by the largest one. A division is rounded correctly, a product with the reciprocal
/// is not.
template <class Reader>
struct WriteFloatPlanes {
    static constexpr std::size_t kPixelBytes = 4, kPlanes = 3;

    static void StorePixel(const ChannelState& state, const ThreeSamples& samples, std::uint8_t* const* to) {
        const std::uint16_t words[] = {samples.first, samples.second, samples.third};
        for (std::size_t i = 0; i < 3; ++i) {
            const float value = static_cast<float>(Reader::Plain(state, words[i])) / state.largest;
            std::memcpy(to[i], &value, sizeof value);
        }
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(const ChannelState& state, const Planes16& samples, std::size_t n,
                                 std::uint8_t* const* to, bool streams) {
        StorePlane(state, Reader::Plain(state, samples.first), to[0] + n * 2 * kLanes, streams);
        StorePlane(state, Reader::Plain(state, samples.second), to[1] + n * 2 * kLanes, streams);
        StorePlane(state, Reader::Plain(state, samples.third), to[2] + n * 2 * kLanes, streams);
    }

private:
    static HWY_INLINE void StorePlane(const ChannelState& state, V16 samples, std::uint8_t* to, bool streams) {
        const hn::Half<D16> half;
        PutQuotients(state, hn::LowerHalf(half, samples), to, streams);
        PutQuotients(state, hn::UpperHalf(half, samples), to + kLanes, streams);
    }
    static HWY_INLINE void PutQuotients(const ChannelState& state, hn::Vec<hn::Half<D16>> samples, std::uint8_t* to,
                                        bool streams) {
        const TagOf<float> d;
        const auto numbers = hn::ConvertTo(d, hn::PromoteTo(TagOf<std::int32_t>(), samples));
        Put(hn::BitCast(D8(), hn::Div(numbers, hn::Set(d, state.largest))), to, streams);
    }
#endif
};

/// The luma of BT.601 as words of the full range, rounded to nearest:
///
///     (299 R + 587 G + 114 B) * 257 / 1000  =  77 R + 151 G + 29 B + (298 B - 157 R - 141 G) / 1000
template <class Reader>
struct WriteLuma {
    static constexpr std::size_t kPixelBytes = 2, kPlanes = 1;

    static void StorePixel(const ChannelState&, const ThreeSamples& rgb, std::uint8_t* const* to) {
        const std::uint32_t thousands = 299u * rgb.first + 587u * rgb.second + 114u * rgb.third;
        const auto luma = static_cast<std::uint16_t>((thousands * 257 + 500) / 1000);
        std::memcpy(to[0], &luma, sizeof luma);
    }
#if !KY_SCALAR
    /// In 16 bits: the numerator, with 500 to round and 76000 to be positive, has 18 bits, but an eighth of it has 15. It is the
    /// sum of the coefficients' eighths and of an eighth of what remains of them; 125 then divides it.
    static HWY_INLINE void Store(const ChannelState&, const Planes16& rgb, std::size_t n, std::uint8_t* const* to,
                                 bool streams) {
        const D16 d;
        const auto times = [d](V16 v, int factor) {
            return hn::Mul(v, hn::Set(d, static_cast<std::uint16_t>(factor)));
        };
        const V16 rest = hn::Add(hn::Add(rgb.third, rgb.third),
                                 hn::Sub(hn::Set(d, kRest), times(hn::Add(rgb.first, rgb.second), 5)));
        const V16 eighths = hn::Add(hn::Add(times(rgb.third, 37), hn::Set(d, kEighths)),
                                    hn::Add(times(rgb.first, -19), times(rgb.second, -17)));
        const V16 eighth = hn::Add(eighths, hn::ShiftRight<3>(rest));
        const V16 fraction = hn::ShiftRight<6>(hn::MulHigh(eighth, hn::Set(d, kReciprocal)));
        const V16 whole = hn::Add(hn::Add(times(rgb.first, 77), times(rgb.second, 151)),
                                  hn::Sub(times(rgb.third, 29), hn::Set(d, kThousands)));
        Put(Bytes(hn::Add(whole, fraction)), to[0] + n * kLanes, streams);
    }

private:
    static constexpr std::uint16_t kThousands = 76;
    static constexpr std::uint16_t kRest = 8 * 319 + 4;  ///< with it, no sum of what remains is negative
    static constexpr std::uint16_t kEighths = (kThousands * 1000 + 500 - kRest) / 8;
    static constexpr std::uint16_t kReciprocal = (65536 * 64 + 124) / 125;
    static_assert(8 * kEighths + kRest == kThousands * 1000 + 500);
#endif
};

#if KY_SCALAR

template <class Reader, class Writer>
void ConvertChannels(const RowKernel& kernel, const Tile& tile) {
    const ChannelState& state = kernel.Get<ChannelState>();
    for (std::uint32_t y = tile.first; y < tile.last; ++y)
        for (std::size_t x = tile.begin; x < tile.end; ++x) {
            std::uint8_t* to[Writer::kPlanes] = {tile.destination[y] + x * Writer::kPixelBytes};
            for (std::size_t plane = 1; plane < Writer::kPlanes; ++plane)
                to[plane] = tile.destinationPlanes[plane - 1][y] + x * Writer::kPixelBytes;
            Writer::StorePixel(state, Reader::ReadPixel(tile.source[y] + x * Reader::kGroupBytes), to);
        }
}

#else

template <class Reader, class Writer>
struct ChannelStep : PixelStep<Reader, Writer::kPixelBytes, Writer::kPlanes> {
    using State = ChannelState;

    static HWY_INLINE void Run(const State& state, const typename ChannelStep::Rows& rows, std::size_t, bool streams) {
        Planes16 halves[2];
        Reader::Read(rows.in[0], halves);
        for (std::size_t i = 0; i < 2; ++i) Writer::Store(state, halves[i], i, rows.out, streams);
    }
};

template <class Reader, class Writer>
void ConvertChannels(const RowKernel& kernel, const Tile& tile) {
    WalkPixels<ChannelStep<Reader, Writer>>(kernel.Get<ChannelState>(), tile, tile.GetColumns());
}

#endif

template <class Reader, template <class> class WriterOf>
void MakeChannels(const WordSettings& settings, RowKernel& kernel) {
    using Writer = WriterOf<Reader>;
    RowKernel::Needs needs;
    needs.groupBytes = Reader::kGroupBytes;
    needs.pixelBytes = Writer::kPixelBytes;
    needs.planes = Writer::kPlanes;
    needs.isComputeBound = true;
    const ChannelState state = {settings.scale, static_cast<std::uint16_t>(settings.repeatsBytes ? 256 : 0),
                                settings.alpha, settings.largest};
    kernel.Set(needs, &ConvertChannels<Reader, Writer>, state);
}

template <class Reader>
constexpr ChannelKernels ChannelsFrom = {&MakeChannels<Reader, WriteRGBA64>, &MakeChannels<Reader, WriteWordPlanes>,
                                         &MakeChannels<Reader, WriteFloatPlanes>};
