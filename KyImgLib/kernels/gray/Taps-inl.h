// Samples of several taps that alternate in a row, each tap's to a run of pixels of its own. Needs InOrder-inl.h before it.

/// Where the samples of one tap go.
struct TapRun {
    std::uint8_t* first;  ///< the pixel of the first sample
    bool descends;        ///< the following samples go to the pixels before it, not after it
};

template <class Reader>
struct TapState {
    Reader reader;
    TapLayout layout;
};

#if !KY_PLAIN

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

/// A column is a sample of each tap.
template <class Reader, class Writer, std::size_t kTaps>
struct TapStep : PixelStep {
    static constexpr std::size_t kOutputs = kTaps, kPixelBytes = Writer::kPixelBytes;
    static constexpr std::size_t kSampleBytes = Reader::kSampleBytes;
    using Rows = StepRows<TapStep>;

    static constexpr std::size_t InputBytes(std::size_t columns) {
        return columns * kTaps / Reader::kGroup * Reader::kGroupBytes;
    }
    HWY_INLINE std::uint8_t* Output(const Rows& rows, std::size_t tap, std::size_t x, std::size_t columns) const {
        if (descends[tap]) return rows.out[tap] - (x + columns - 1) * kPixelBytes;
        return AscendingOutput<TapStep>(rows, tap, x);
    }

    template <bool kStream>
    HWY_INLINE void Run(const Rows& rows, std::size_t x) const {
        const std::uint8_t* const from = rows.in[0] + InputBytes(x);
        V8 in[kTaps * kSampleBytes];
        for (std::size_t i = 0; i < kTaps; ++i) {
            V8 samples[kSampleBytes];
            reader.Read(from + i * (InputBytes(kPixels) / kTaps), samples);
            for (std::size_t k = 0; k < kSampleBytes; ++k) in[i * kSampleBytes + k] = samples[k];
        }
        V8 taps[kTaps][kSampleBytes];
        if constexpr (kTaps == 2) {
            Split<kSampleBytes>(in, taps[0], taps[1]);
        } else {
            V8 even[2 * kSampleBytes], odd[2 * kSampleBytes];
            Split<kSampleBytes>(in, even, odd);
            Split<kSampleBytes>(even, taps[0], taps[2]);
            Split<kSampleBytes>(odd, taps[1], taps[3]);
        }
        for (std::size_t tap = 0; tap < kTaps; ++tap) {
            if (descends[tap]) Reverse(taps[tap]);
            Writer::template Store<kStream>(taps[tap], Output(rows, tap, x, kPixels));
        }
    }

    Reader reader;
    bool descends[kTaps];
};

#endif

/// `width` samples of a row. Taps that come first have the samples more where their number does not divide.
template <class Reader, class Writer, std::size_t kTaps>
void ConvertTapRow(const Reader& reader, [[maybe_unused]] const Tile& tile, [[maybe_unused]] std::uint32_t y,
                   const std::uint8_t* from, std::size_t width, const TapRun (&runs)[4]) {
    std::size_t columns = 0;  // that are done
#if !KY_PLAIN
    using Step = TapStep<Reader, Writer, kTaps>;
    columns = width / kTaps;
    Step step = {{}, reader, {}};
    StepRows<Step> rows;
    rows.in[0] = from;
    for (std::size_t tap = 0; tap < kTaps; ++tap) {
        rows.out[tap] = runs[tap].first;
        step.descends[tap] = runs[tap].descends;
    }
    RowWalk<Step>(step, rows, {0, columns, columns, {}, tile.streams}, {tile.prefetch, y}).Run();
#endif
    for (std::size_t tap = 0; tap < kTaps; ++tap) {
        const auto size = static_cast<std::ptrdiff_t>(Writer::kPixelBytes);
        const std::ptrdiff_t step = runs[tap].descends ? -size : size;
        std::uint8_t* pixel = runs[tap].first + step * static_cast<std::ptrdiff_t>(columns);
        for (std::size_t i = columns * kTaps + tap; i < width; i += kTaps, pixel += step)
            Writer::StorePixel(reader.Sample(from, i), pixel);
    }
}

/// A row of two halves.
template <class Reader, class Writer>
void ConvertHalves(const Reader& reader, const TapLayout& layout, const Tile& tile, std::uint32_t y) {
    constexpr std::size_t kPixel = Writer::kPixelBytes;
    std::size_t width = tile.width;
    const std::uint8_t* from = tile.source[y];
    std::uint8_t* const right = tile.destination[y] + (width + 1) / 2 * kPixel;
    TapRun runs[4] = {
        {layout.leftInverted ? right - kPixel : tile.destination[y], layout.leftInverted},
        {layout.rightInverted ? tile.destination[y] + (width - 1) * kPixel : right, layout.rightInverted}};
    if (Reader::kGroup == 2 && width % 2 != 0 && layout.rightInverted) {
        // Packed samples fill their last pair, so the right half is as long as the left one. Its first sample belongs to a
        // pixel beyond the row.
        Writer::StorePixel(reader.Sample(from, 0), runs[0].first);
        runs[0].first += layout.leftInverted ? -static_cast<std::ptrdiff_t>(kPixel) : std::ptrdiff_t{kPixel};
        from += Reader::kGroupBytes;
        --width;
    }
    ConvertTapRow<Reader, Writer, 2>(reader, tile, y, from, width, runs);
}

/// The first or the second line of a pair: the second goes on where the first ends, with the tap whose turn it is.
template <class Reader, class Writer>
void ConvertLineOfPair(const Reader& reader, const TapLayout& layout, const Tile& tile, std::uint32_t y) {
    constexpr std::size_t kPixel = Writer::kPixelBytes;
    const std::size_t width = tile.width;
    const bool isSecond = y % 2 != 0;
    std::uint8_t *first = tile.destination[isSecond ? y - 1 : y], *second = tile.destination[isSecond ? y : y + 1];
    const std::uint8_t* from = tile.source[y];
    if (isSecond) {
        if (layout.pairsAreContiguous) from = tile.source[y - 1] + width / Reader::kGroup * Reader::kGroupBytes;
        if (width % 2 != 0) std::swap(first, second);
        first += width / 2 * kPixel;
        second += (width + 1) / 2 * kPixel;
    }
    ConvertTapRow<Reader, Writer, 2>(reader, tile, y, from, width, {{first, false}, {second, false}});
}

/// A row of two halves, each read from both its ends.
template <class Reader, class Writer>
void ConvertQuarters(const Reader& reader, const Tile& tile, std::uint32_t y) {
    constexpr std::size_t kPixel = Writer::kPixelBytes;
    const std::size_t width = tile.width;
    std::uint8_t *const row = tile.destination[y], *const end = row + (width - 1) * kPixel;
    std::uint8_t* const right = row + ((width + 3) / 4 + (width + 2) / 4) * kPixel;
    ConvertTapRow<Reader, Writer, 4>(reader, tile, y, tile.source[y], width,
                                     {{row, false}, {right - kPixel, true}, {right, false}, {end, true}});
}

template <class Reader, class Writer, std::size_t kTaps>
void ConvertTaps(const RowKernel& kernel, const Tile& tile) {
    const auto& [reader, layout] = kernel.Get<TapState<Reader>>();
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        if constexpr (kTaps == 4)
            ConvertQuarters<Reader, Writer>(reader, tile, y);
        else if (layout.order == TapLayout::kHalves)
            ConvertHalves<Reader, Writer>(reader, layout, tile, y);
        else
            ConvertLineOfPair<Reader, Writer>(reader, layout, tile, y);
    }
}
