// YUV to RGB with vectors of words. Needs Lanes-inl.h before it.

#if !KY_SCALAR

// RGBOfYUV() in 16 bits. All its terms but 409 v are even, so half of a sum, shifted right by 7, is the same:
//
//     red   = (149 Y + floor(409 V / 2)  - 28496) >> 7
//     green = (149 Y + 17392 - 104 V - 50 U     ) >> 7
//     blue  = (149 Y + 258 U             - 35344) >> 7  =  (floor(149 Y / 2) + 129 U - 17672) >> 6
//
// A sum that saturates in unsigned words before the last subtraction is above 255 all the same, and one that would be less
// than 0 ends there. The shift, and the limit of 255, come last.
//
// Samples are taken in the upper bytes of words: the high half of a product is then sample * factor / 256, exactly.

/// What two samples, U and V, add to the luma of their pixels.
struct Chroma {
    V16 red, green, blue;
};

HWY_INLINE V16 Times(V16 upperBytes, std::uint16_t factor) { return hn::MulHigh(upperBytes, hn::Set(D16(), factor)); }

HWY_INLINE Chroma ChromaOf(V16 u, V16 v) {
    return {Times(v, 409 * 128), hn::Add(Times(v, 104 * 256), Times(u, 50 * 256)), Times(u, 129 * 256)};
}

/// Red, green and blue before the shift.
using RGBSums = Planes16;

HWY_INLINE V16 RedOf(V16 luma, const Chroma& chroma) {
    return hn::SaturatedSub(hn::SaturatedAdd(luma, chroma.red), hn::Set(D16(), 28496));
}

/// `luma` is 149 Y.
HWY_INLINE RGBSums RGBOf(V16 luma, const Chroma& chroma) {
    const D16 d;
    const V16 green = hn::SaturatedSub(hn::Add(luma, hn::Set(d, 17392)), chroma.green);
    const V16 blue = hn::SaturatedSub(hn::Add(hn::ShiftRight<1>(luma), chroma.blue), hn::Set(d, 17672));
    return {RedOf(luma, chroma), green, blue};
}

HWY_INLINE V16 LumaOf(V16 y) { return Times(y, 149 * 256); }
HWY_INLINE V16 LumaOfLower(V16 y) { return hn::Mul(y, hn::Set(D16(), 149)); }

HWY_INLINE V16 LowerBytesAlone(V16 v) { return hn::And(v, hn::Set(D16(), 0x00FF)); }
HWY_INLINE V16 UpperBytesAlone(V16 v) { return hn::And(v, hn::Set(D16(), 0xFF00)); }

HWY_INLINE Planes8 InTurn(const RGBSums& even, const RGBSums& odd) {
    return {LimitPairs<7>(even.first, odd.first), LimitPairs<7>(even.second, odd.second),
            LimitPairs<6>(even.third, odd.third)};
}

#endif
