// Kernels from RGB whose samples have other than 8 bits: to bytes, and to words.
#include <KyImgLib/kernels/colour/Colour-inl.h>

// Samples of few bits as bytes of the full range: v * 255 / largest, rounded to nearest.
template <class V>
struct FullByte;

template <>
struct FullByte<std::uint32_t> {
    static std::uint8_t Of5(std::uint32_t v) { return static_cast<std::uint8_t>((v * 527 + 23) >> 6); }
    static std::uint8_t Of6(std::uint32_t v) { return static_cast<std::uint8_t>((v * 259 + 33) >> 6); }
    /// v * 255 / 1023 is (v - v / 341) / 4.
    static std::uint8_t Of10(std::uint32_t v) {
        return static_cast<std::uint8_t>((v + 2 - ((3 * v + 1023) >> 10)) >> 2);
    }
};

#if !KY_SCALAR
template <>
struct FullByte<V16> {
    static HWY_INLINE V16 Of5(V16 v) { return hn::ShiftRight<6>(Linear(v, 527, 23)); }
    static HWY_INLINE V16 Of6(V16 v) { return hn::ShiftRight<6>(Linear(v, 259, 33)); }
    static HWY_INLINE V16 Of10(V16 v) {
        const V16 less = hn::ShiftRight<10>(Linear(v, 3, 1023));
        return hn::ShiftRight<2>(hn::Sub(hn::Add(v, hn::Set(D16(), 2)), less));
    }

private:
    static HWY_INLINE V16 Linear(V16 v, std::uint16_t factor, std::uint16_t addend) {
        return hn::Add(hn::Mul(v, hn::Set(D16(), factor)), hn::Set(D16(), addend));
    }
};

template <int kFirstBit, std::uint16_t kMask>
HWY_INLINE V16 BitsOf(V16 words) {
    return hn::And(hn::ShiftRight<kFirstBit>(words), hn::Set(D16(), kMask));
}
#endif

/// Words 5-6-5.
struct Read565 : ReadWordGroups<std::uint8_t, 1, 1> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings&) {
        using Byte = FullByte<std::uint32_t>;
        const std::uint32_t word = WordAt(group);
        return {Byte::Of5(word & 31), Byte::Of6(word >> 5 & 63), Byte::Of5(word >> 11)};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        using Byte = FullByte<V16>;
        const V16 lower = Words(Load(from)), upper = Words(Load(from + kLanes));
        return {LowBytes(Byte::Of5(BitsOf<0, 31>(lower)), Byte::Of5(BitsOf<0, 31>(upper))),
                LowBytes(Byte::Of6(BitsOf<5, 63>(lower)), Byte::Of6(BitsOf<5, 63>(upper))),
                LowBytes(Byte::Of5(hn::ShiftRight<11>(lower)), Byte::Of5(hn::ShiftRight<11>(upper)))};
    }
#endif
};

/// Words 5-5-5, whose highest bit is ignored.
struct Read555 : ReadWordGroups<std::uint8_t, 1, 1> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings&) {
        using Byte = FullByte<std::uint32_t>;
        const std::uint32_t word = WordAt(group);
        return {Byte::Of5(word & 31), Byte::Of5(word >> 5 & 31), Byte::Of5(word >> 10 & 31)};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        using Byte = FullByte<V16>;
        const V16 lower = Words(Load(from)), upper = Words(Load(from + kLanes));
        return {LowBytes(Byte::Of5(BitsOf<0, 31>(lower)), Byte::Of5(BitsOf<0, 31>(upper))),
                LowBytes(Byte::Of5(BitsOf<5, 31>(lower)), Byte::Of5(BitsOf<5, 31>(upper))),
                LowBytes(Byte::Of5(BitsOf<10, 31>(lower)), Byte::Of5(BitsOf<10, 31>(upper)))};
    }
#endif
};

/// Double words of three samples of 10 bits, whose highest two bits are ignored: to words.
struct Read10Bits32 : ReadWordGroups<std::uint16_t, 1, 2> {
    static PixelSamples<std::uint16_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings&) {
        const std::uint32_t bits = WordAt(group) | std::uint32_t{WordAt(group + 2)} << 16;
        return {Sample(bits, 0), Sample(bits, 10), Sample(bits, 20)};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes16 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        const WordPairs pairs = LoadWordPairs(from);  // the lower and the upper half of each double word
        const V16 second = hn::Or(hn::ShiftRight<10>(pairs.even), hn::ShiftLeft<6>(BitsOf<0, 15>(pairs.odd)));
        return {BitsOf<0, 1023>(pairs.even), second, BitsOf<4, 1023>(pairs.odd)};
    }
#endif

private:
    static std::uint16_t Sample(std::uint32_t bits, unsigned first) {
        return static_cast<std::uint16_t>(bits >> first & 1023);
    }
};

/// Words shifted right, so that samples are LSB-aligned.
template <unsigned kChannels>
struct ReadAlignedWords : ReadWordGroups<std::uint16_t, 1, kChannels> {
    static PixelSamples<std::uint16_t> ReadPixel(const std::uint8_t* group, unsigned n,
                                                 const ReaderSettings& settings) {
        const auto pixel = ReadRGBWords<kChannels>::ReadPixel(group, n, settings);
        return {static_cast<std::uint16_t>(pixel.first >> settings.sampleShift),
                static_cast<std::uint16_t>(pixel.second >> settings.sampleShift),
                static_cast<std::uint16_t>(pixel.third >> settings.sampleShift)};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes16 ReadVector(const std::uint8_t* from, const ReaderSettings& settings) {
        const Planes16 pixels = ReadRGBWords<kChannels>::ReadVector(from, settings);
        return {hn::ShiftRightSame(pixels.first, settings.sampleShift),
                hn::ShiftRightSame(pixels.second, settings.sampleShift),
                hn::ShiftRightSame(pixels.third, settings.sampleShift)};
    }
#endif
};

/// Samples of 10 bits that another reader has in words: as bytes.
template <class WordReader>
struct ReadBytesOf10 {
    using Sample = std::uint8_t;
    static constexpr std::size_t kGroup = WordReader::kGroup, kGroupBytes = WordReader::kGroupBytes;

    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned n, const ReaderSettings& settings) {
        using Byte = FullByte<std::uint32_t>;
        const auto pixel = WordReader::ReadPixel(group, n, settings);
        return {Byte::Of10(pixel.first & 1023u), Byte::Of10(pixel.second & 1023u), Byte::Of10(pixel.third & 1023u)};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings& settings) {
        const Planes16 lower = WordReader::ReadVector(from, settings);
        const Planes16 upper = WordReader::ReadVector(from + kLanes / 2 * kGroupBytes, settings);
        return {Byte(lower.first, upper.first), Byte(lower.second, upper.second), Byte(lower.third, upper.third)};
    }

private:
    static HWY_INLINE V8 Byte(V16 lower, V16 upper) {
        return LowBytes(FullByte<V16>::Of10(BitsOf<0, 1023>(lower)), FullByte<V16>::Of10(BitsOf<0, 1023>(upper)));
    }
#endif
};

#if KY_SCALAR

template <class Reader>
void FilterWords(const RowKernel& kernel, const Tile& tile) {
    const auto& settings = kernel.Get<Colour16Settings>();
    const ReaderSettings reader = SettingsOfReader(settings);
    for (std::uint32_t y = tile.first; y < tile.last; ++y)
        for (std::size_t x = tile.begin; x < tile.end; ++x) {
            auto pixel = Reader::ReadPixel(tile.source[y] + x * Reader::kGroupBytes, 0, reader);
            if (settings.isExchanged) std::swap(pixel.first, pixel.third);
            std::uint8_t* const to = tile.destination[y] + x * Write48::kPixelBytes;
            Write48::StorePixel(settings.filter.Value(0, pixel.first), settings.filter.Value(1, pixel.second),
                                settings.filter.Value(2, pixel.third), &to);
        }
}

template <class Reader>
void SetFilterWords(const RowKernel::Needs& needs, const Colour16Settings& settings, RowKernel& kernel) {
    kernel.Set(needs, &FilterWords<Reader>, settings);
}

#else

template <bool kIsIdentity>
struct FilterWordsState {
    explicit FilterWordsState(const Colour16Settings& settings)
        : filter(settings.filter), reader(SettingsOfReader(settings)), isExchanged(settings.isExchanged) {}

    FilterStage<Filter16, kIsIdentity> filter;
    ReaderSettings reader;
    bool isExchanged;
};

template <class Reader, bool kIsIdentity>
struct FilterWordsStep : PixelStep<Reader, Write48::kPixelBytes> {
    using State = FilterWordsState<kIsIdentity>;

    static HWY_INLINE void Run(const State& state, const typename FilterWordsStep::Rows& rows, std::size_t,
                               bool streams) {
        for (std::size_t i = 0; i < 2; ++i) {
            Planes16 pixels = Reader::ReadVector(rows.in[0] + i * kLanes / 2 * Reader::kGroupBytes, state.reader);
            if (state.isExchanged) std::swap(pixels.first, pixels.third);
            std::uint8_t* const to = rows.out[0] + i * kLanes / 2 * Write48::kPixelBytes;
            state.filter.Apply(pixels.first, pixels.second, pixels.third);
            Write48::Store(pixels.first, pixels.second, pixels.third, &to, streams);
        }
    }
};

template <class Step>
void FilterWords(const RowKernel& kernel, const Tile& tile) {
    WalkPixels<Step>(kernel.Get<typename Step::State>(), tile, tile.GetColumns());
}

template <class Reader>
void SetFilterWords(const RowKernel::Needs& needs, const Colour16Settings& settings, RowKernel& kernel) {
    using Identity = FilterWordsStep<Reader, true>;
    using Filtered = FilterWordsStep<Reader, false>;
    if (settings.filter.IsIdentity())
        kernel.Set(needs, &FilterWords<Identity>, typename Identity::State(settings));
    else
        kernel.Set(needs, &FilterWords<Filtered>, typename Filtered::State(settings));
}

#endif

template <class Reader>
void MakeFilterWords(const Colour16Settings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.groupBytes = Reader::kGroupBytes;
    needs.pixelBytes = Write48::kPixelBytes;
    needs.isComputeBound = true;
    SetFilterWords<Reader>(needs, settings, kernel);
}

// Three planes, to pixels of three samples as large.

/// The row of each channel.
template <class Settings>
void FindPlanes(const Tile& tile, std::uint32_t y, const Settings& settings, const std::uint8_t* (&rows)[3]) {
    for (std::size_t i = 0; i < 3; ++i)
        rows[i] = settings.places[i] == 0 ? tile.source[y] : tile.sourcePlanes[settings.places[i] - 1][y];
}

template <class Settings>
using PlaneSample = std::conditional_t<std::is_same_v<Settings, Colour8Settings>, std::uint8_t, std::uint16_t>;

#if KY_SCALAR

template <class Settings>
void ConvertPlanes(const RowKernel& kernel, const Tile& tile) {
    const auto& settings = kernel.Get<Settings>();
    using Sample = PlaneSample<Settings>;
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const std::uint8_t* rows[3];
        FindPlanes(tile, y, settings, rows);
        std::uint8_t* to = tile.destination[y] + 3 * sizeof(Sample) * tile.begin;
        for (std::size_t x = tile.begin; x < tile.end; ++x)
            for (int i = 0; i < 3; ++i, to += sizeof(Sample)) {
                Sample sample;
                std::memcpy(&sample, rows[i] + sizeof sample * x, sizeof sample);
                sample = static_cast<Sample>(settings.filter.Value(i, sample));
                std::memcpy(to, &sample, sizeof sample);
            }
    }
}

template <class Settings>
void SetPlanes(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    kernel.Set(needs, &ConvertPlanes<Settings>, settings);
}

#else

template <class Settings, bool kIsIdentity>
struct PlaneState {
    explicit PlaneState(const Settings& settings) : filter(settings.filter) { std::copy_n(settings.places, 3, places); }

    FilterStage<typename Settings::Filter, kIsIdentity> filter;
    std::uint8_t places[3];
};

template <class Settings>
struct PlanePixels {
    static constexpr std::size_t kGroup = 1, kGroupBytes = sizeof(PlaneSample<Settings>);
};

template <class Settings, bool kIsIdentity>
struct PlaneStep : PixelStep<PlanePixels<Settings>, 3 * sizeof(PlaneSample<Settings>), 1, 3> {
    using State = PlaneState<Settings, kIsIdentity>;

    static HWY_INLINE void Run(const State& state, const typename PlaneStep::Rows& rows, std::size_t, bool streams) {
        const auto& [first, second, third] = rows.in;
        if constexpr (std::is_same_v<Settings, Colour8Settings>) {
            Planes8 pixels = {Load(first), Load(second), Load(third)};
            state.filter.Apply(pixels.first, pixels.second, pixels.third);
            Write24::Store(pixels.first, pixels.second, pixels.third, rows.out, streams);
        } else {
            for (std::size_t i = 0; i < 2; ++i) {
                std::uint8_t* const to = rows.out[0] + i * 3 * kLanes;
                const std::size_t at = i * kLanes;
                Planes16 pixels = {Words(Load(first + at)), Words(Load(second + at)), Words(Load(third + at))};
                state.filter.Apply(pixels.first, pixels.second, pixels.third);
                Write48::Store(pixels.first, pixels.second, pixels.third, &to, streams);
            }
        }
    }
};

template <class Step>
void ConvertPlanes(const RowKernel& kernel, const Tile& tile) {
    const auto& state = kernel.Get<typename Step::State>();
    const WalkColumns columns = ColumnsOf(tile);
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        typename Step::Rows rows;
        FindPlanes(tile, y, state, rows.in);
        rows.out[0] = tile.destination[y];
        RowWalk<Step>(state, rows, columns, tile.prefetch, y).Run();
    }
}

template <class Settings>
void SetPlanes(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    using Identity = PlaneStep<Settings, true>;
    using Filtered = PlaneStep<Settings, false>;
    if (settings.filter.IsIdentity())
        kernel.Set(needs, &ConvertPlanes<Identity>, typename Identity::State(settings));
    else
        kernel.Set(needs, &ConvertPlanes<Filtered>, typename Filtered::State(settings));
}

#endif

template <class Settings>
void MakePlanes(const Settings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.groupBytes = sizeof(PlaneSample<Settings>);
    needs.pixelBytes = 3 * sizeof(PlaneSample<Settings>);
    needs.isComputeBound = true;
    SetPlanes(needs, settings, kernel);
}

template <class Reader>
constexpr ColourKernels<Colour8Settings> ToAllFrom = {
    &MakeColours<Reader, Write565, Colour8Settings>, &MakeColours<Reader, Write24, Colour8Settings>,
    &MakeColours<Reader, Write32, Colour8Settings>, &MakeColours<Reader, WritePlanes, Colour8Settings>};

extern const RGBBitsTable kRGBBits;
const RGBBitsTable kRGBBits = {
    ToAllFrom<Read565>,
    ToAllFrom<Read555>,
    ToAllFrom<ReadBytesOf10<Read10Bits32>>,
    ToAllFrom<ReadBytesOf10<ReadRGBWords<3>>>,
    &MakeFilterWords<ReadAlignedWords<3>>,
    &MakeFilterWords<ReadAlignedWords<4>>,
    &MakeFilterWords<Read10Bits32>,
    &MakePlanes<Colour8Settings>,
    &MakePlanes<Colour16Settings>,
};
