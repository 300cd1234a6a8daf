// YCbCr to RGB, see YCbCrRule.h. Needs Lanes-inl.h before it.

struct YCbCrSample {
    int y, cb, cr;
};

/// The rule for one pixel.
class YCbCrOfPixel {
public:
    YCbCrOfPixel(YCbCrColours colours, unsigned bits) : factors(colours, bits) {}

    PixelSamples<std::uint8_t> RGBOf(const YCbCrSample& sample) const {
        const std::int64_t cb = sample.cb - factors.noColour, cr = sample.cr - factors.noColour;
        const int luma = YCbCrFactors::kLuma * (sample.y - factors.black);
        return {Rounded(luma, factors.redOfCr * cr), Rounded(luma, factors.greenOfCb * cb + factors.greenOfCr * cr),
                Rounded(luma, factors.blueOfCb * cb)};
    }

private:
    std::uint8_t Rounded(int luma, std::int64_t colour) const {
        constexpr int kBits = YCbCrFactors::kFractionBits;
        const std::int64_t half = (std::int64_t{factors.divisor} << (kBits - 1)) + YCbCrFactors::kBias;
        const int sum = luma + static_cast<int>((colour + half) >> kBits);
        return static_cast<std::uint8_t>(std::clamp(sum, 0, 256 * factors.divisor - 1) / factors.divisor);
    }

    YCbCrFactors factors;
};

#if !KY_SCALAR

using D32 = TagOf<std::uint32_t>;
using V32 = VectorOf<std::uint32_t>;
using DI16 = TagOf<std::int16_t>;
using VI16 = VectorOf<std::int16_t>;
using DI32 = TagOf<std::int32_t>;
using VI32 = VectorOf<std::int32_t>;

/// Two words, for every pair of words of a vector.
struct WordPair {
    std::int16_t first, second;

    HWY_INLINE V16 Words() const {
        const auto lower = static_cast<std::uint16_t>(first), upper = static_cast<std::uint16_t>(second);
        return hn::BitCast(D16(), hn::Set(D32(), lower | static_cast<std::uint32_t>(upper) << 16));
    }
};

/// The sum of the products of each pair of words.
HWY_INLINE VI32 SumOfProducts(V16 pairs, const WordPair& factors) {
    const VI16 a = hn::BitCast(DI16(), pairs), b = hn::BitCast(DI16(), factors.Words());
#if HWY_TARGET == HWY_AVX3
    return VI32{_mm512_madd_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_AVX2
    return VI32{_mm256_madd_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_NEON
    return VI32{vpaddq_s32(vmull_s16(vget_low_s16(a.raw), vget_low_s16(b.raw)), vmull_high_s16(a.raw, b.raw))};
#else
    return VI32{_mm_madd_epi16(a.raw, b.raw)};
#endif
}

/// A factor for each word of a pair, in parts of 15 bits of which the last have `kFractionBits` after the point together.
template <int kParts>
class PairFactors {
public:
    PairFactors() = default;
    PairFactors(std::int64_t first, std::int64_t second) {
        for (int i = 0; i < kParts; ++i) {
            const int shift = 15 * (kParts - 1 - i);
            // The first part has the sign, the others are what is left.
            parts[i] = {Part(first >> shift, i), Part(second >> shift, i)};
        }
    }

    /// The sum of the products, in units of the first part and rounded down; `bias` is in units of the last one.
    HWY_INLINE VI32 SumOf(V16 pairs, std::int32_t bias) const {
        VI32 sum = hn::Add(PartOfSum(kParts - 1, pairs), hn::Set(DI32(), bias));
        for (int i = kParts - 2; i >= 0; --i) sum = hn::Add(PartOfSum(i, pairs), hn::ShiftRight<15>(sum));
        return sum;
    }

    HWY_INLINE VI32 PartOfSum(int index, V16 pairs) const { return SumOfProducts(pairs, parts[index]); }

private:
    static std::int16_t Part(std::int64_t shifted, int index) {
        return static_cast<std::int16_t>(index == 0 ? shifted : shifted & 0x7FFF);
    }

    WordPair parts[kParts];
};

/// Words of Y, one for each pixel, and of Cb and Cr in turn, one pair for two pixels: half a vector's worth. The lower half has
/// the lower half of every 16 pixels, so that PackBytes() puts both in order.
struct SharedSamples {
    V16 y, cbcr;
};
struct SharedSampleHalves {
    SharedSamples lower, upper;
};
/// The same where every pixel has its own Cb and Cr: those of the first pixel of each pair, and those of the second.
struct OwnSamples {
    V16 y, cbcrOfEven, cbcrOfOdd;
};
struct OwnSampleHalves {
    OwnSamples lower, upper;
};

/// The bytes of a vector as words.
HWY_INLINE V16 LowerAsWords(V8 v) { return Words(hn::InterleaveLower(D8(), v, hn::Zero(D8()))); }
HWY_INLINE V16 UpperAsWords(V8 v) { return Words(hn::InterleaveUpper(D8(), v, hn::Zero(D8()))); }

/// Words less than 32768, limited to bytes.
HWY_INLINE V8 PackBytes(V16 lower, V16 upper) {
#if HWY_TARGET == HWY_AVX3
    return V8{_mm512_packus_epi16(lower.raw, upper.raw)};
#elif HWY_TARGET == HWY_AVX2
    return V8{_mm256_packus_epi16(lower.raw, upper.raw)};
#elif HWY_TARGET == HWY_NEON
    return V8{vqmovn_high_u16(vqmovn_u16(lower.raw), upper.raw)};
#else
    return V8{_mm_packus_epi16(lower.raw, upper.raw)};
#endif
}

/// The rule for 8-bit samples, in words: all but the last floor of green fits.
class YCbCrOfPairs {
public:
    explicit YCbCrOfPairs(YCbCrColours colours) {
        const YCbCrFactors factors(colours, 8);
        const Fit& fit = kFits[colours.isBT709 ? 1 : 0][colours.isFullRange ? 1 : 0];
        whole = {Bits(fit.blue.whole), Bits(fit.red.whole)};
        fraction = {Bits(fit.blue.fraction), Bits(fit.red.fraction)};
        ahead = {Bits(fit.blue.ahead), Bits(fit.red.ahead)};
        const int black = YCbCrFactors::kLuma * factors.black;
        excess[0] = static_cast<std::uint16_t>(fit.red.excess + black);
        excess[1] = static_cast<std::uint16_t>(kGreenExcess + black);
        excess[2] = static_cast<std::uint16_t>(fit.blue.excess + black);
        constexpr int kDropped = YCbCrFactors::kFractionBits - kGreenBits;
        green = {(factors.greenOfCb + (1 << (kDropped - 1))) >> kDropped,
                 (factors.greenOfCr + (1 << (kDropped - 1))) >> kDropped};
        greenOffset = (factors.divisor << (kGreenShift - 1)) + (kGreenExcess << kGreenShift);
        inverse = static_cast<std::uint16_t>(((1 << 22) + factors.divisor - 1) / factors.divisor);
    }

    HWY_INLINE Planes16 RGBOf(const SharedSamples& samples) const {
        static constexpr BlockBytes kFirst = {{0, 1, 0, 1, 4, 5, 4, 5, 8, 9, 8, 9, 12, 13, 12, 13}};
        static constexpr BlockBytes kSecond = {{2, 3, 2, 3, 6, 7, 6, 7, 10, 11, 10, 11, 14, 15, 14, 15}};
        const Colours colours = ColoursOf(samples.cbcr);
        const V8 blueAndRed = hn::BitCast(D8(), colours.blueAndRed), greens = hn::BitCast(D8(), colours.green);
        return Rounded(samples.y, Words(hn::TableLookupBytes(blueAndRed, LoadBlock(kSecond))),
                       Words(hn::TableLookupBytes(greens, LoadBlock(kFirst))),
                       Words(hn::TableLookupBytes(blueAndRed, LoadBlock(kFirst))));
    }

    HWY_INLINE Planes16 RGBOf(const OwnSamples& samples) const {
        const Colours even = ColoursOf(samples.cbcrOfEven), odd = ColoursOf(samples.cbcrOfOdd);
        return Rounded(samples.y, InTurn(hn::ShiftRight<16>(even.blueAndRed), odd.blueAndRed),
                       InTurn(even.green, hn::ShiftLeft<16>(odd.green)),
                       InTurn(even.blueAndRed, hn::ShiftLeft<16>(odd.blueAndRed)));
    }

private:
    static constexpr int kGreenShift = 8, kGreenBits = kGreenShift + 15, kGreenBias = 60, kGreenExcess = 1 << 14;

    /// floor(factor (c - 128) + divisor / 2) = whole c + floor((c + ahead) fraction / 65536) - excess for every byte c. They were
    /// found by search: several do, and the nearest fraction is not always among them.
    struct Channel {
        int whole, fraction, ahead, excess;
    };
    struct Fit {
        Channel red, blue;
    };
    static constexpr Fit kFits[2][2] = {
        {{{116, 33420, 73, 14914}, {147, 16906, 29, 18820}}, {{119, 11142, 22, 15215}, {150, 40631, 18, 19248}}},
        {{{130, 57023, 76, 16781}, {154, 13456, 79, 19718}}, {{133, 56230, 122, 17196}, {157, 47578, 49, 20182}}},
    };

    static std::int16_t Bits(int word) { return static_cast<std::int16_t>(static_cast<std::uint16_t>(word)); }

    /// What a pair of Cb and Cr adds, with the excess: two words, and a double word of which the lower one counts.
    struct Colours {
        V32 blueAndRed, green;
    };
    HWY_INLINE Colours ColoursOf(V16 cbcr) const {
        const V16 fractions = hn::MulHigh(hn::Add(cbcr, ahead.Words()), fraction.Words());
        const V16 blueAndRed = hn::Add(hn::Mul(cbcr, whole.Words()), fractions);
        const VI32 sum = green.SumOf(hn::Sub(cbcr, hn::Set(D16(), 128)), kGreenBias);
        const VI32 greens = hn::ShiftRight<kGreenShift>(hn::Add(sum, hn::Set(DI32(), greenOffset)));
        return {hn::BitCast(D32(), blueAndRed), hn::BitCast(D32(), greens)};
    }

    /// The lower words of one, the upper words of the other.
    static HWY_INLINE V16 InTurn(V32 lower, V32 upper) {
        return hn::OddEven(hn::BitCast(D16(), upper), hn::BitCast(D16(), lower));
    }

    HWY_INLINE Planes16 Rounded(V16 y, V16 ofRed, V16 ofGreen, V16 ofBlue) const {
        const V16 luma = hn::Mul(y, hn::Set(D16(), YCbCrFactors::kLuma));
        return {Rounded<0>(luma, ofRed), Rounded<1>(luma, ofGreen), Rounded<2>(luma, ofBlue)};
    }
    /// What is left of luma and colour above the excess, divided: not yet limited to a byte. No sum is beyond a word.
    template <int kChannel>
    HWY_INLINE V16 Rounded(V16 luma, V16 colour) const {
        const D16 d;
        const V16 sum = hn::SaturatedSub(hn::Add(luma, colour), hn::Set(d, excess[kChannel]));
        return hn::ShiftRight<6>(hn::MulHigh(sum, hn::Set(d, inverse)));
    }

    WordPair whole, fraction, ahead;  ///< of Cb, then of Cr
    std::uint16_t excess[3];          ///< of red, green and blue, so that no sum is negative
    PairFactors<2> green;
    std::int32_t greenOffset;
    std::uint16_t inverse;  ///< 2 to the power of 22 divided by the divisor
};

/// Double words of Y, and of Cb in the lower and Cr in the upper word: one for each pixel.
struct WideSamples {
    V32 y, cbcr;
};

/// The rule for samples of up to 12 bits.
class YCbCrOfWords {
public:
    YCbCrOfWords(YCbCrColours colours, unsigned bits) {
        const YCbCrFactors factors(colours, bits);
        red = {0, factors.redOfCr};
        green = {factors.greenOfCb, factors.greenOfCr};
        blue = {factors.blueOfCb, 0};
        noColour = static_cast<std::int16_t>(factors.noColour);
        offset = (factors.divisor << (kShift - 1)) - (YCbCrFactors::kLuma * factors.black << kShift);
        inverse = 1.0f / static_cast<float>(factors.divisor);
    }

    /// Of each pixel, a double word less than 256.
    HWY_INLINE Planes<VI32> RGBOf(const WideSamples& samples) const {
        const V16 cbcr =
            hn::Sub(hn::BitCast(D16(), samples.cbcr), hn::Set(D16(), static_cast<std::uint16_t>(noColour)));
        const VI32 luma = SumOfProducts(hn::BitCast(D16(), samples.y), {YCbCrFactors::kLuma, 0});
        return {Rounded(luma, red, cbcr), Rounded(luma, green, cbcr), Rounded(luma, blue, cbcr)};
    }

private:
    static constexpr int kShift = YCbCrFactors::kFractionBits - 30;

    HWY_INLINE VI32 Rounded(VI32 luma, const PairFactors<3>& factors, V16 cbcr) const {
        const DI32 d;
        const TagOf<float> df;
        const VI32 sum = factors.SumOf(cbcr, static_cast<std::int32_t>(YCbCrFactors::kBias));
        const VI32 colour = hn::ShiftRight<kShift>(hn::Add(sum, hn::Set(d, offset)));
        const VI32 whole = hn::Max(hn::Add(luma, colour), hn::Zero(d));
        // Half a unit keeps quotients away from whole numbers by more than floats are off.
        const auto scale = hn::Set(df, inverse), half = hn::Set(df, 0.5f);
        const VI32 quotient = hn::ConvertTo(d, hn::Mul(hn::Add(hn::ConvertTo(df, whole), half), scale));
        return hn::Min(quotient, hn::Set(d, 255));
    }

    PairFactors<3> red, green, blue;
    std::int32_t offset;
    float inverse;
    std::int16_t noColour;
};

#endif
