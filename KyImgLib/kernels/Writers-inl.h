// Writers: three channel values of each pixel to a destination format. For RGB the first channel is red, for BGR blue.
// `to` has the address of the first pixel in each plane of the destination. Needs Lanes-inl.h before it.

#if !KY_SCALAR
template <std::size_t N>
HWY_INLINE void PutAll(const V8 (&vectors)[N], std::uint8_t* to, bool streams) {
    if (HWY_UNLIKELY(streams)) {
        for (std::size_t i = 0; i < N; ++i) Put(vectors[i], to + i * kLanes, true);
    } else {
        for (std::size_t i = 0; i < N; ++i) Put(vectors[i], to + i * kLanes, false);
    }
}
#endif

/// 16-bit words, 5-6-5, the first channel in the high bits.
struct Write565 {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 2, kPlanes = 1;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* const* to) {
        to[0][0] = static_cast<std::uint8_t>((second << 3 & 0xE0) | third >> 3);
        to[0][1] = static_cast<std::uint8_t>((first & 0xF8) | second >> 5);
    }
#if !KY_SCALAR
    /// One vector's worth of pixels.
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* const* to, bool streams) {
        const D8 d;
        // Shifts of words, with the bits masked out that come over from the other byte.
        const V8 secondLow = hn::And(Bytes(hn::ShiftLeft<3>(Words(second))), hn::Set(d, 0xE0));
        const V8 secondHigh = hn::And(Bytes(hn::ShiftRight<5>(Words(second))), hn::Set(d, 0x07));
        const V8 low = hn::OrAnd(secondLow, Bytes(hn::ShiftRight<3>(Words(third))), hn::Set(d, 0x1F));
        const V8 high = hn::OrAnd(secondHigh, first, hn::Set(d, 0xF8));
        V8 out[2];
        Interleave2(low, high, out);
        PutAll(out, to[0], streams);
    }
#endif
};

/// Three bytes.
struct Write24 {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 3, kPlanes = 1;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* const* to) {
        to[0][0] = first;
        to[0][1] = second;
        to[0][2] = third;
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* const* to, bool streams) {
        V8 out[3];
        Interleave3(first, second, third, out);
        PutAll(out, to[0], streams);
    }
#endif
};

/// Three bytes and a fourth that is 0.
struct Write32 {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 4, kPlanes = 1;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* const* to) {
        to[0][0] = first;
        to[0][1] = second;
        to[0][2] = third;
        to[0][3] = 0;
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* const* to, bool streams) {
        V8 out[4];
        Interleave3Zero(first, second, third, out);
        PutAll(out, to[0], streams);
    }
#endif
};

/// Three planes of bytes.
struct WritePlanes {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 1, kPlanes = 3;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* const* to) {
        *to[0] = first;
        *to[1] = second;
        *to[2] = third;
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* const* to, bool streams) {
        Put(first, to[0], streams);
        Put(second, to[1], streams);
        Put(third, to[2], streams);
    }
#endif
};

/// Three 16-bit words.
struct Write48 {
    using Value = std::uint16_t;
    static constexpr std::size_t kPixelBytes = 6, kPlanes = 1;

    static void StorePixel(std::uint16_t first, std::uint16_t second, std::uint16_t third, std::uint8_t* const* to) {
        const std::uint16_t words[] = {first, second, third};
        std::memcpy(to[0], words, sizeof words);
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(V16 first, V16 second, V16 third, std::uint8_t* const* to, bool streams) {
        V8 out[3];
        InterleaveWords3(Bytes(first), Bytes(second), Bytes(third), out);
        PutAll(out, to[0], streams);
    }
#endif
};
