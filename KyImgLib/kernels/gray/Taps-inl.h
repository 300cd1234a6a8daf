// Sorts the samples of a camera's taps, which alternate in a row: each tap fills a run of pixels. Needs InOrder-inl.h before
// it.

template <class Reader>
struct TapState {
    Reader reader;
    TapLayout layout;
};

/// A set of taps whose samples go backwards: bit i is tap i.
using Taps = unsigned;
constexpr bool Descends(Taps backwards, std::size_t tap) { return (backwards >> tap & 1) != 0; }

#if !KY_SCALAR

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
template <class Reader, class Writer, std::size_t kTaps, Taps kBackwards>
struct TapStep : PixelStep<Reader, Writer::kPixelBytes, kTaps> {
    static constexpr std::size_t kGroup = 1;
    static constexpr std::size_t kPixelBytes = Writer::kPixelBytes, kSampleBytes = Reader::kSampleBytes;
    static constexpr std::size_t kPrefetchRows = 0;  // as many streams as taps leave none for it
    using State = Reader;
    using Rows = StepRows<1, kTaps>;

    static constexpr std::size_t InputBytes(std::size_t columns) {
        return columns * kTaps / Reader::kGroup * Reader::kGroupBytes;
    }
    static HWY_INLINE std::uint8_t* Output(const Reader&, const Rows& rows, std::size_t tap, std::size_t x,
                                           std::size_t columns) {
        if (Descends(kBackwards, tap)) return rows.out[tap] - (x + columns - 1) * kPixelBytes;
        return rows.out[tap] + x * kPixelBytes;
    }

    static HWY_INLINE void Advance(Rows& rows, std::ptrdiff_t columns) {
        const std::ptrdiff_t samples = columns * static_cast<std::ptrdiff_t>(kTaps);
        const std::ptrdiff_t bytes = columns * static_cast<std::ptrdiff_t>(kPixelBytes);
        rows.in[0] +=
            samples / static_cast<std::ptrdiff_t>(Reader::kGroup) * static_cast<std::ptrdiff_t>(Reader::kGroupBytes);
        for (std::size_t tap = 0; tap < kTaps; ++tap) rows.out[tap] += Descends(kBackwards, tap) ? -bytes : bytes;
    }

    static HWY_INLINE void Run(const Reader& reader, const Rows& rows, std::size_t, bool streams) {
        const std::uint8_t* const from = rows.in[0];
        V8 in[kTaps * kSampleBytes];
        for (std::size_t i = 0; i < kTaps; ++i) {
            V8 samples[kSampleBytes];
            reader.Read(from + i * (InputBytes(kLanes) / kTaps), samples);
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
            if (Descends(kBackwards, tap)) Reverse(taps[tap]);
            Writer::Store(taps[tap], Output(reader, rows, tap, 0, kLanes), streams);
        }
    }
};

#endif

/// `width` samples of a row, those of each tap from the pixel `first` of its own on. Where the width is not a multiple of the
/// taps, the first ones have a sample more.
template <class Writer, std::size_t kTaps, Taps kBackwards, class Reader>
HWY_INLINE void ConvertTapRow(const Reader& reader, [[maybe_unused]] const Tile& tile, [[maybe_unused]] std::uint32_t y,
                              const std::uint8_t* from, std::size_t width, std::uint8_t* const (&first)[kTaps]) {
    std::size_t columns = 0;  // that are done
#if !KY_SCALAR
    using Step = TapStep<Reader, Writer, kTaps, kBackwards>;
    constexpr std::size_t kWorthVectors = 32;  // samples
    columns = width < kWorthVectors ? 0 : width / kTaps;
    typename Step::Rows rows;
    rows.in[0] = from;
    for (std::size_t tap = 0; tap < kTaps; ++tap) rows.out[tap] = first[tap];
    const WalkColumns all = {0, columns, columns, {}, tile.streams};
    RowWalk<Step>(reader, rows, all, tile.prefetch, y).Run();
#endif
    for (std::size_t i = columns * kTaps; i < width; ++i) {
        const std::size_t tap = i % kTaps, pixels = i / kTaps * Writer::kPixelBytes;
        Writer::StorePixel(reader.Sample(from, i),
                           Descends(kBackwards, tap) ? first[tap] - pixels : first[tap] + pixels);
    }
}

/// A row of two halves, the taps in `kBackwards` inverted.
template <class Writer, Taps kBackwards, class Reader>
void ConvertHalves(const Reader& reader, const Tile& tile, std::uint32_t y) {
    constexpr std::size_t kPixel = Writer::kPixelBytes;
    constexpr bool kLeftInverted = Descends(kBackwards, 0), kRightInverted = Descends(kBackwards, 1);
    std::size_t width = tile.width;
    const std::uint8_t* from = tile.source[y];
    std::uint8_t* const row = tile.destination[y];
    std::uint8_t* const right = row + (width + 1) / 2 * kPixel;
    std::uint8_t* first[] = {kLeftInverted ? right - kPixel : row, kRightInverted ? row + (width - 1) * kPixel : right};
    if (Reader::kGroup == 2 && width % 2 != 0 && kRightInverted) {
        // Packed samples fill their last pair, so the right half is as long as the left one. Its first sample belongs to a
        // pixel beyond the row.
        Writer::StorePixel(reader.Sample(from, 0), first[0]);
        first[0] = kLeftInverted ? first[0] - kPixel : first[0] + kPixel;
        from += Reader::kGroupBytes;
        --width;
    }
    ConvertTapRow<Writer, 2, kBackwards>(reader, tile, y, from, width, first);
}

/// Two lines from the samples of two rows. The second row continues the first one, with the tap whose turn it is.
template <class Writer, class Reader>
void ConvertLinePair(const Reader& reader, std::size_t rowSamples, const Tile& tile, std::uint32_t y) {
    constexpr std::size_t kPixel = Writer::kPixelBytes;
    const std::size_t samples = 2 * tile.width;
    const bool areContiguous =
        rowSamples == 0 || tile.source[y] + rowSamples / Reader::kGroup * Reader::kGroupBytes == tile.source[y + 1];
    const std::size_t inFirst = areContiguous ? samples : std::min(samples, rowSamples);
    std::uint8_t* first[] = {tile.destination[y], tile.destination[y + 1]};
    ConvertTapRow<Writer, 2, 0>(reader, tile, y, tile.source[y], inFirst, first);
    if (inFirst == samples) return;
    if (inFirst % 2 != 0) std::swap(first[0], first[1]);
    first[0] += inFirst / 2 * kPixel;
    first[1] += (inFirst + 1) / 2 * kPixel;
    ConvertTapRow<Writer, 2, 0>(reader, tile, y, tile.source[y + 1], samples - inFirst, first);
}

/// A row of two halves, each read from both its ends.
template <class Writer, class Reader>
void ConvertQuarters(const Reader& reader, const Tile& tile, std::uint32_t y) {
    constexpr Taps kSecondAndFourth = 0b1010;
    constexpr std::size_t kPixel = Writer::kPixelBytes;
    const std::size_t width = tile.width;
    std::uint8_t *const row = tile.destination[y], *const right = row + ((width + 3) / 4 + (width + 2) / 4) * kPixel;
    std::uint8_t* const first[] = {row, right - kPixel, right, row + (width - 1) * kPixel};
    ConvertTapRow<Writer, 4, kSecondAndFourth>(reader, tile, y, tile.source[y], width, first);
}

template <class Reader, class Writer, std::size_t kTaps>
void ConvertTaps(const RowKernel& kernel, const Tile& tile) {
    const auto& [reader, layout] = kernel.Get<TapState<Reader>>();
    for (std::uint32_t y = tile.first; y < tile.last; y += kernel.needs.rowStep) {
        if constexpr (kTaps == 4)
            ConvertQuarters<Writer>(reader, tile, y);
        else if (layout.order == TapLayout::kLinePairs)
            ConvertLinePair<Writer>(reader, layout.rowSamples, tile, y);
        else if (layout.leftInverted)
            layout.rightInverted ? ConvertHalves<Writer, 3>(reader, tile, y)
                                 : ConvertHalves<Writer, 1>(reader, tile, y);
        else
            layout.rightInverted ? ConvertHalves<Writer, 2>(reader, tile, y)
                                 : ConvertHalves<Writer, 0>(reader, tile, y);
    }
}
