// YUV to RGB with vectors of words. Needs Lanes-inl.h before it.

#if !KY_PLAIN

// RGBOfYUV() in 16 bits. All its terms but 409 v are even, so half of a sum, shifted right by 7, is the same:
//
//     red   = (luma + 204 v + (v >> 1)   ) >> 7        luma = 149 Y - 149 * 16 + 64
//     green = (luma - 104 v - 50 u       ) >> 7
//     blue  = (luma + 258 u              ) >> 7
//
// What does not fit into 16 bits is above 255 in the end, and additions that saturate at 32767 = 255.99 * 128 say so. That
// needs both summands to fit. 149 Y goes to 37995, so for red and green it is lowered by kShare, which is added to the other
// summand. The summand of blue has no room for that: it is added to 149 Y where it is positive, and subtracted where it is
// not, in unsigned words, which leaves at most 511 after the shift.
constexpr int kYUVOffset = 149 * 16 - 64;
constexpr int kShare = 149 * 255 - kYUVOffset - 32767;

/// What two numbers, U and V, add to the luma of their pixels.
struct Chroma {
    VectorOf<std::int16_t> red, green;
    V16 bluePlus, blueMinus;  ///< one of them is 0
};

HWY_INLINE Chroma ChromaOf(V16 u, V16 v) {
    const TagOf<std::int16_t> d;
    const D16 du;
    const auto half = hn::Set(d, 128);
    const auto signedV = hn::Sub(hn::BitCast(d, v), half);
    const auto red =
        hn::Add(hn::Add(hn::Mul(signedV, hn::Set(d, 204)), hn::ShiftRight<1>(signedV)), hn::Set(d, kShare));
    // With the 128s of u and v in the constant.
    constexpr std::int16_t kGreen = kShare + (50 + 104) * 128;
    const auto green = hn::Sub(hn::Set(d, kGreen), hn::Add(hn::Mul(hn::BitCast(d, u), hn::Set(d, 50)),
                                                           hn::Mul(hn::BitCast(d, v), hn::Set(d, 104))));
    // Halves, because 258 U does not fit.
    constexpr std::uint16_t kBlue = 129 * 128 + kYUVOffset / 2;
    const V16 blue = hn::Mul(u, hn::Set(du, 129)), offset = hn::Set(du, kBlue);
    const V16 plus = hn::SaturatedSub(blue, offset), minus = hn::SaturatedSub(offset, blue);
    return {red, green, hn::Add(plus, plus), hn::Add(minus, minus)};
}

/// Red, green and blue of a vector's worth of pixels as words that limiting to 0 to 255 makes bytes.
struct RGBWords {
    V16 red, green, blue;
};

HWY_INLINE V16 Luma(V16 y) { return hn::Mul(y, hn::Set(D16(), 149)); }

HWY_INLINE RGBWords RGBOf(V16 luma, const Chroma& chroma) {
    const TagOf<std::int16_t> d;
    const auto lowered = hn::BitCast(d, hn::Sub(luma, hn::Set(D16(), kYUVOffset + kShare)));
    const auto red = hn::ShiftRight<7>(hn::SaturatedAdd(lowered, chroma.red));
    const auto green = hn::ShiftRight<7>(hn::SaturatedAdd(lowered, chroma.green));
    const V16 blue = hn::ShiftRight<7>(hn::SaturatedSub(hn::SaturatedAdd(luma, chroma.bluePlus), chroma.blueMinus));
    return {hn::BitCast(D16(), red), hn::BitCast(D16(), green), blue};
}

HWY_INLINE Planes8 LimitPairs(const RGBWords& even, const RGBWords& odd) {
    return {LimitPairs(even.red, odd.red), LimitPairs(even.green, odd.green), LimitPairs(even.blue, odd.blue)};
}

HWY_INLINE V16 EvenBytesOf(V8 v) { return hn::And(Words(v), hn::Set(D16(), 255)); }
HWY_INLINE V16 OddBytesOf(V8 v) { return hn::ShiftRight<8>(Words(v)); }

#endif
