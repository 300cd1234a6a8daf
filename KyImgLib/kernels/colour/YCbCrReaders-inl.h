// Readers: Y, Cb and Cr of pixels. Needs YCbCrArithmetic-inl.h before it.
//
// A reader has
//     kPlanes                       rows that it reads
//     kIsFrequent                   whether steps without a filter are worth code of their own
//     kGroup, kGroupBytes           pixels that share bytes, and those bytes, in the first plane
//     PlaneBytes(i, pixels)         bytes of so many pixels in plane i
//     ReadPixel(rows, x, layout)    the samples of pixel x
//     ReadVector(rows, layout)      the samples of a vector's worth of pixels, of bytes
//     ReadVector<n>(rows, layout)   those of its n-th quarter, of words

/// What readers are told, see YCbCrSettings.
struct YCbCrLayout {
    std::uint8_t places[4];
    std::uint8_t wordShift;
    bool crFirst;
#if !KY_SCALAR
    BlockBytes order;  ///< of bytes, to Y, Cb, Y, Cr or to Cb, Cr, Cb, Cr
#endif
};

template <std::size_t kPlanesOf, std::size_t kPixels, std::size_t kBytes>
struct YCbCrReader {
    static constexpr std::size_t kPlanes = kPlanesOf, kGroup = kPixels, kGroupBytes = kBytes;
    static constexpr bool kIsFrequent = false;

    static constexpr std::size_t PlaneBytes(std::size_t, std::size_t pixels) {
        return (pixels + kGroup - 1) / kGroup * kGroupBytes;
    }
};

/// Two planes, bytes or words. The second one has Cb and Cr, or Cr and Cb, of each pair of pixels.
template <std::size_t kSampleBytes>
struct ReadTwoPlanes : YCbCrReader<2, 2, 2 * kSampleBytes> {
    static YCbCrSample ReadPixel(const std::uint8_t* const* rows, std::size_t x, const YCbCrLayout& layout) {
        const std::uint8_t* const pair = rows[1] + x / 2 * 2 * kSampleBytes;
        const int first = Sample(pair, layout), second = Sample(pair + kSampleBytes, layout);
        return {Sample(rows[0] + x * kSampleBytes, layout), layout.crFirst ? second : first,
                layout.crFirst ? first : second};
    }

private:
    static int Sample(const std::uint8_t* at, const YCbCrLayout& layout) {
        return kSampleBytes == 1 ? *at : WordAt(at) >> layout.wordShift;
    }
};

#if !KY_SCALAR
/// Two vectors' worth of memory: every other block of 16 bytes, from the first on and from the second on.
struct BlocksInTurn {
    V8 even, odd;
};
HWY_INLINE BlocksInTurn LoadBlocksInTurn(const std::uint8_t* from) {
#if HWY_TARGET == HWY_AVX3
    const V8 lower = Load(from), upper = Load(from + kLanes);
    return {V8{_mm512_shuffle_i64x2(lower.raw, upper.raw, 0x88)}, V8{_mm512_shuffle_i64x2(lower.raw, upper.raw, 0xDD)}};
#elif HWY_TARGET == HWY_AVX2
    const __m128i* const blocks = reinterpret_cast<const __m128i*>(from);
    const auto pair = [&](std::size_t first) {
        return V8{_mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(blocks + first)),
                                          _mm_loadu_si128(blocks + first + 2), 1)};
    };
    return {pair(0), pair(1)};
#else
    return {Load(from), Load(from + kLanes)};
#endif
}

/// `y` of a vector's worth of pixels; `cbcr` of as many pixels, in turn.
HWY_INLINE SharedSampleHalves HalvesOf(V8 y, V8 cbcr) {
    return {{LowerAsWords(y), LowerAsWords(cbcr)}, {UpperAsWords(y), UpperAsWords(cbcr)}};
}
#endif

/// Y0 Cb Y1 Cr of two pixels, bytes in any order.
struct ReadPairs : YCbCrReader<1, 2, 4> {
    static constexpr bool kIsFrequent = true;

    static YCbCrSample ReadPixel(const std::uint8_t* const* rows, std::size_t x, const YCbCrLayout& layout) {
        const std::uint8_t* const group = rows[0] + x / 2 * 4;
        return {group[layout.places[x % 2 * 2]], group[layout.places[1]], group[layout.places[3]]};
    }
#if !KY_SCALAR
    static HWY_INLINE SharedSampleHalves ReadVector(const std::uint8_t* const* rows, const YCbCrLayout& layout) {
        const BlocksInTurn blocks = LoadBlocksInTurn(rows[0]);
        return {Half(blocks.even, layout), Half(blocks.odd, layout)};
    }

private:
    static HWY_INLINE SharedSamples Half(V8 groups, const YCbCrLayout& layout) {
        const V16 words = Words(hn::TableLookupBytes(groups, LoadBlock(layout.order)));
        return {hn::And(words, hn::Set(D16(), 0x00FF)), hn::ShiftRight<8>(words)};
    }
#endif
};

/// The same of four pixels that share Cb and Cr, in six bytes: `places` of Y, Cb, Y, Cr, where the others are Y, too.
struct ReadFours : YCbCrReader<1, 4, 6> {
    static YCbCrSample ReadPixel(const std::uint8_t* const* rows, std::size_t x, const YCbCrLayout& layout) {
        const std::uint8_t* const group = rows[0] + x / 4 * 6;
        return {group[LumaAt(x % 4, layout)], group[layout.places[1]], group[layout.places[3]]};
    }
#if !KY_SCALAR
    static HWY_INLINE SharedSampleHalves ReadVector(const std::uint8_t* const* rows, const YCbCrLayout& layout) {
        // Rare enough to be put in order one by one.
        HWY_ALIGN std::uint8_t y[kLanes], cbcr[kLanes];
        const std::uint8_t* group = rows[0];
        for (std::size_t x = 0; x < kLanes; x += 4, group += 6) {
            for (std::size_t i = 0; i < 4; ++i) y[x + i] = group[LumaAt(i, layout)];
            cbcr[x] = cbcr[x + 2] = group[layout.places[1]];
            cbcr[x + 1] = cbcr[x + 3] = group[layout.places[3]];
        }
        return HalvesOf(hn::Load(D8(), y), hn::Load(D8(), cbcr));
    }
#endif

private:
    static std::size_t LumaAt(std::size_t i, const YCbCrLayout& layout) {
        // Cb comes first and Cr after two Y, or each after two Y.
        return layout.places[1] == 0 ? i + 1 + i / 2 : i + i / 2;
    }
};

struct ReadTwoBytePlanes : ReadTwoPlanes<1> {
    static constexpr bool kIsFrequent = true;

#if !KY_SCALAR
    static HWY_INLINE SharedSampleHalves ReadVector(const std::uint8_t* const* rows, const YCbCrLayout& layout) {
        return HalvesOf(Load(rows[0]), hn::TableLookupBytes(Load(rows[1]), LoadBlock(layout.order)));
    }
#endif
};

/// Three planes of bytes; those of Cb and Cr have one for two pixels. Which is which is known where the rows are given.
struct ReadThreePlanes : YCbCrReader<3, 2, 2> {
    static constexpr bool kIsFrequent = true;

    static constexpr std::size_t PlaneBytes(std::size_t i, std::size_t pixels) {
        return i == 0 ? pixels : (pixels + 1) / 2;
    }

    static YCbCrSample ReadPixel(const std::uint8_t* const* rows, std::size_t x, const YCbCrLayout&) {
        return {rows[0][x], rows[1][x / 2], rows[2][x / 2]};
    }
#if !KY_SCALAR
    static HWY_INLINE SharedSampleHalves ReadVector(const std::uint8_t* const* rows, const YCbCrLayout&) {
        const hn::Rebind<std::uint8_t, D16> d8;
        const V16 cb = hn::PromoteTo(D16(), hn::LoadU(d8, rows[1])), cr = hn::PromoteTo(D16(), hn::LoadU(d8, rows[2]));
        return HalvesOf(Load(rows[0]), Bytes(hn::Or(cb, hn::ShiftLeft<8>(cr))));
    }
#endif
};

/// Y, Cb and Cr of each pixel, bytes in any order.
struct ReadPixels : YCbCrReader<1, 1, 3> {
    static YCbCrSample ReadPixel(const std::uint8_t* const* rows, std::size_t x, const YCbCrLayout& layout) {
        const std::uint8_t* const pixel = rows[0] + 3 * x;
        return {pixel[layout.places[0]], pixel[layout.places[1]], pixel[layout.places[2]]};
    }
#if !KY_SCALAR
    static HWY_INLINE OwnSampleHalves ReadVector(const std::uint8_t* const* rows, const YCbCrLayout& layout) {
        const Planes8 samples = Deinterleave<3>(rows[0]);
        const V8 y = At(samples, layout.places[0]), cb = At(samples, layout.places[1]),
                 cr = At(samples, layout.places[2]);
        const V16 low = hn::Set(D16(), 0x00FF);
        const V16 cbEven = hn::And(Words(cb), low), crEven = hn::And(Words(cr), low);
        const V16 cbOdd = hn::ShiftRight<8>(Words(cb)), crOdd = hn::ShiftRight<8>(Words(cr));
        const D16 d;
        return {{LowerAsWords(y), hn::InterleaveLower(d, cbEven, crEven), hn::InterleaveLower(d, cbOdd, crOdd)},
                {UpperAsWords(y), hn::InterleaveUpper(d, cbEven, crEven), hn::InterleaveUpper(d, cbOdd, crOdd)}};
    }

private:
    static HWY_INLINE V8 At(const Planes8& samples, std::uint8_t place) {
        return place == 0 ? samples.first : place == 1 ? samples.second : samples.third;
    }
#endif
};

#if !KY_SCALAR
using D64 = TagOf<std::uint64_t>;
using V64 = VectorOf<std::uint64_t>;

/// A pair of words for both pixels of each double word.
HWY_INLINE V32 ForBoth(V64 pairs) { return hn::BitCast(D32(), hn::Or(pairs, hn::ShiftLeft<32>(pairs))); }
#endif

/// Words Y0 Cb Y1 Cr of two pixels.
struct ReadWordPairs : YCbCrReader<1, 2, 8> {
    static YCbCrSample ReadPixel(const std::uint8_t* const* rows, std::size_t x, const YCbCrLayout& layout) {
        const std::uint8_t* const group = rows[0] + x / 2 * 8;
        const auto sample = [&](std::size_t i) { return WordAt(group + 2 * i) >> layout.wordShift; };
        return {sample(x % 2 * 2), sample(1), sample(3)};
    }
#if !KY_SCALAR
    template <std::size_t n>
    static HWY_INLINE WideSamples ReadVector(const std::uint8_t* const* rows, const YCbCrLayout& layout) {
        const V16 words = hn::ShiftRightSame(Words(Load(rows[0] + n * kLanes)), layout.wordShift);
        const V64 groups = hn::BitCast(D64(), words);
        const V64 cb = hn::And(hn::ShiftRight<16>(groups), hn::Set(D64(), 0xFFFF));
        const V64 cr = hn::ShiftLeft<16>(hn::ShiftRight<48>(groups));
        return {hn::And(hn::BitCast(D32(), words), hn::Set(D32(), 0xFFFF)), ForBoth(hn::Or(cb, cr))};
    }
#endif
};

struct ReadTwoWordPlanes : ReadTwoPlanes<2> {
#if !KY_SCALAR
    template <std::size_t n>
    static HWY_INLINE WideSamples ReadVector(const std::uint8_t* const* rows, const YCbCrLayout& layout) {
        const hn::Rebind<std::uint16_t, D32> d16;
        const hn::Rebind<std::uint32_t, D64> d32;
        const auto* const y = AsWords(rows[0]) + n * kLanes / 4;
        const auto* const pairs = reinterpret_cast<const std::uint32_t*>(rows[1]) + n * kLanes / 8;
        const V32 cbcr = ForBoth(hn::PromoteTo(D64(), hn::LoadU(d32, pairs)));
        return {hn::ShiftRightSame(hn::PromoteTo(D32(), hn::LoadU(d16, y)), layout.wordShift),
                hn::BitCast(D32(), hn::ShiftRightSame(hn::BitCast(D16(), cbcr), layout.wordShift))};
    }
#endif
};
