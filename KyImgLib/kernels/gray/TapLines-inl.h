// The walks over gray samples. Needs the readers and writers before it.

/// Samples one by one, from the first of group `firstGroup` on: a group has a sample of each output.
template <class Reader, class Writer>
void OneByOne(const Reader& toUse, const GrayBand& band, const std::uint8_t* from, std::uint8_t* to,
              std::size_t firstGroup) {
    const Reader reader = toUse;
    const std::size_t taps = band.taps, width = band.width;
    for (std::size_t tap = 0; tap < taps; ++tap) {
        const TapRun run = band.runs[tap];
        const auto size = static_cast<std::ptrdiff_t>(Writer::kPixelBytes);
        const std::ptrdiff_t step = run.descends ? -size : size;
        std::uint8_t* pixel = to + run.first + step * static_cast<std::ptrdiff_t>(firstGroup);
        for (std::size_t i = firstGroup * taps + tap; i < width; i += taps) {
            Writer::StorePixel(reader.Sample(from, i), pixel);
            pixel += step;
        }
    }
}

template <class Reader, class Writer>
void OneByOne(const GrayBand& band) {
    const Reader reader(band);
    std::uint8_t* to = band.destination;
    for (std::uint32_t line = 0; line < band.lines; ++line) {
        OneByOne<Reader, Writer>(reader, band, SourceLineOf(band, line), to, 0);
        to += band.destinationLine;
    }
}

#if !KY_PLAIN

/// Samples in the order of their pixels, as PixelLines takes them.
template <class Reader, class Writer>
struct InOrderStep {
    static constexpr std::size_t kPixels = kLanes, kGroup = Reader::kGroup, kGroupBytes = Reader::kGroupBytes;
    static constexpr std::size_t kPixelBytes = Writer::kPixelBytes, kPlanes = 1;

    template <bool kStream>
    HWY_INLINE void Run(const std::uint8_t* from, std::uint8_t* to) const {
        V8 samples[Reader::kSampleBytes];
        reader.Read(from, samples);
        Writer::template Store<kStream>(samples, to);
    }

    Reader reader;
};

// The even and the odd samples of two vectors; of N vectors, to N / 2 each.

#if KY_VBMI
constexpr VectorBytes EverySecondByte(unsigned first) {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i) bytes.bytes[i] = static_cast<std::uint8_t>(2 * i + first);
    return bytes;
}
#endif

#if HWY_TARGET == HWY_AVX2
/// In a block, the samples with an even number, then the others.
template <std::size_t kSampleBytes>
constexpr BlockBytes EvenThenOdd() {
    constexpr unsigned kSize = kSampleBytes;
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i)
        bytes.bytes[i] = static_cast<std::uint8_t>((i % 8 / kSize * 2 + i / 8) * kSize + i % kSize);
    return bytes;
}
#endif

template <std::size_t kSampleBytes>
HWY_INLINE void SplitTwo(V8 first, V8 second, V8& even, V8& odd) {
#if HWY_TARGET == HWY_AVX2
    // Highway's two operations below would be eight.
    static constexpr BlockBytes kEvenThenOdd = EvenThenOdd<kSampleBytes>();
    first = hn::TableLookupBytes(first, LoadBlock(kEvenThenOdd));
    second = hn::TableLookupBytes(second, LoadBlock(kEvenThenOdd));
    even = V8{_mm256_permute4x64_epi64(_mm256_unpacklo_epi64(first.raw, second.raw), 0xD8)};
    odd = V8{_mm256_permute4x64_epi64(_mm256_unpackhi_epi64(first.raw, second.raw), 0xD8)};
#else
#if KY_VBMI
    if constexpr (kSampleBytes == 1) {
        static constexpr VectorBytes kEven = EverySecondByte(0), kOdd = EverySecondByte(1);
        even = V8{_mm512_permutex2var_epi8(first.raw, _mm512_load_si512(kEven.bytes), second.raw)};
        odd = V8{_mm512_permutex2var_epi8(first.raw, _mm512_load_si512(kOdd.bytes), second.raw)};
        return;
    }
#endif
    using D = std::conditional_t<kSampleBytes == 2, D16, D8>;
    const auto a = hn::BitCast(D(), first), b = hn::BitCast(D(), second);
    even = hn::BitCast(D8(), hn::ConcatEven(D(), b, a));
    odd = hn::BitCast(D8(), hn::ConcatOdd(D(), b, a));
#endif
}

template <std::size_t kSampleBytes, std::size_t N>
HWY_INLINE void Split(const V8 (&in)[N], V8 (&even)[N / 2], V8 (&odd)[N / 2]) {
    for (std::size_t i = 0; i < N / 2; ++i) SplitTwo<kSampleBytes>(in[2 * i], in[2 * i + 1], even[i], odd[i]);
}

/// The last sample first. N vectors hold kLanes samples of N bytes each.
template <std::size_t N>
constexpr BlockBytes Backwards() {
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i) bytes.bytes[i] = static_cast<std::uint8_t>(16 - N - i / N * N + i % N);
    return bytes;
}
template <std::size_t N>
HWY_INLINE void Reverse(V8 (&samples)[N]) {
    static constexpr BlockBytes kBackwards = Backwards<N>();
    for (V8& vector : samples) vector = hn::ReverseBlocks(D8(), hn::TableLookupBytes(vector, LoadBlock(kBackwards)));
    if constexpr (N == 2) {
        const V8 first = samples[0];
        samples[0] = samples[1];
        samples[1] = first;
    }
}

/// Samples of `kTaps` outputs in turn, each output's to a run of pixels of its own.
template <class Reader, class Writer, std::size_t kTaps>
class TapLines {
public:
    explicit TapLines(const GrayBand& toDo) : band(toDo), reader(toDo) {}

    void Run() const {
        if (band.joint != nullptr && band.joint->asked != nullptr) band.joint->asked->Keep(band, &RunAsStage, true);
        const std::size_t groups = band.width / kTaps;
        const bool stream = MayStream(groups);
        const std::uint8_t* from = band.source;
        std::uint8_t* to = band.destination;
        for (std::uint32_t line = 0; line < band.lines; ++line) {
            if (stream)
                Steps<true>(reader, from, to, band.runs, groups);
            else if (groups >= kLanes)
                Steps<false>(reader, from, to, band.runs, groups);
            OneByOne<Reader, Writer>(reader, band, from, to, groups >= kLanes ? groups : 0);
            from += band.sourceLine;
            to += band.destinationLine;
        }
    }

private:
    using Runs = std::array<TapRun, 4>;

    static void RunAsStage(const LineStage& stage, const std::uint8_t* from, std::uint8_t* to, std::size_t, std::size_t,
                           const FetchAhead&) {
        const auto& band = stage.Kept<GrayBand>();
        const Reader reader(band);
        const std::size_t groups = band.width / kTaps;
        if (groups >= kLanes) Steps<false>(reader, from, to, band.runs, groups);
        OneByOne<Reader, Writer>(reader, band, from, to, groups >= kLanes ? groups : 0);
    }

    /// In every line, each run must be whole vectors at aligned addresses.
    bool MayStream(std::size_t groups) const {
        if (!band.isLarge || groups == 0 || groups % kLanes != 0) return false;
        if (band.destinationLine % static_cast<std::ptrdiff_t>(kLanes) != 0) return false;
        for (std::size_t tap = 0; tap < kTaps; ++tap)
            if (!IsAligned(FirstVector(band.destination, band.runs[tap]))) return false;
        return true;
    }

    static std::uint8_t* FirstVector(std::uint8_t* line, const TapRun& run) {
        return line + run.first - (run.descends ? Bytes(kLanes - 1) : 0);
    }

    static constexpr std::ptrdiff_t Bytes(std::size_t pixels) {
        return static_cast<std::ptrdiff_t>(pixels * Writer::kPixelBytes);
    }
    static constexpr std::size_t SourceBytes(std::size_t groups) {
        return groups * kTaps / Reader::kGroup * Reader::kGroupBytes;
    }

    /// The one place where the work is compiled. The last step overlaps the one before where their number does not divide.
    template <bool kStream>
    static HWY_NOINLINE void Steps(const Reader& toUse, const std::uint8_t* from, std::uint8_t* line, const Runs& runs,
                                   std::size_t groups) {
        // Local, so that no write to the destination can be taken for a change of it.
        const Reader local = toUse;
        std::uint8_t* to[kTaps];
        bool descends[kTaps];
        for (std::size_t tap = 0; tap < kTaps; ++tap) {
            to[tap] = FirstVector(line, runs[tap]);
            descends[tap] = runs[tap].descends;
        }
        for (std::size_t steps = groups / kLanes; steps != 0; --steps) {
            Step<kStream>(local, from, to, descends);
            from += SourceBytes(kLanes);
            for (std::size_t tap = 0; tap < kTaps; ++tap) to[tap] += descends[tap] ? -Bytes(kLanes) : Bytes(kLanes);
        }
        if (const std::size_t rest = groups % kLanes; rest != 0) {
            const std::size_t back = kLanes - rest;
            for (std::size_t tap = 0; tap < kTaps; ++tap) to[tap] += descends[tap] ? Bytes(back) : -Bytes(back);
            Step<false>(local, from - SourceBytes(back), to, descends);
        }
        LeaveVectors();
    }

    /// kLanes samples of each output.
    template <bool kStream>
    static HWY_INLINE void Step(const Reader& local, const std::uint8_t* from, std::uint8_t* const (&to)[kTaps],
                                const bool (&descends)[kTaps]) {
        constexpr std::size_t kSampleBytes = Reader::kSampleBytes;
        V8 in[kTaps * kSampleBytes];
        for (std::size_t i = 0; i < kTaps; ++i) {
            V8 samples[kSampleBytes];
            local.Read(from + i * (SourceBytes(kLanes) / kTaps), samples);
            for (std::size_t k = 0; k < kSampleBytes; ++k) in[i * kSampleBytes + k] = samples[k];
        }
        if constexpr (kTaps == 2) {
            V8 left[kSampleBytes], right[kSampleBytes];
            Split<kSampleBytes>(in, left, right);
            Write<kStream>(left, to[0], descends[0]);
            Write<kStream>(right, to[1], descends[1]);
        } else {
            V8 even[2 * kSampleBytes], odd[2 * kSampleBytes];
            Split<kSampleBytes>(in, even, odd);
            V8 taps[4][kSampleBytes];
            Split<kSampleBytes>(even, taps[0], taps[2]);
            Split<kSampleBytes>(odd, taps[1], taps[3]);
            for (std::size_t tap = 0; tap < 4; ++tap) Write<kStream>(taps[tap], to[tap], descends[tap]);
        }
    }

    template <bool kStream>
    static HWY_INLINE void Write(V8 (&samples)[Reader::kSampleBytes], std::uint8_t* to, bool descends) {
        if (descends) Reverse(samples);
        Writer::template Store<kStream>(samples, to);
    }

    const GrayBand& band;
    const Reader reader;
};

#endif
