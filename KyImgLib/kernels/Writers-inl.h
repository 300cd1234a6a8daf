// Writers: three channel values of each pixel to a destination format. For RGB the first channel is red, for BGR blue.
// Needs Lanes-inl.h before it.

#if !KY_PLAIN
template <bool kStream, std::size_t N>
HWY_INLINE void PutAll(const V8 (&vectors)[N], std::uint8_t* to) {
    for (std::size_t i = 0; i < N; ++i) Put<kStream>(vectors[i], to + i * kLanes);
}
#endif

/// 16-bit words, 5-6-5, the first channel in the high bits.
struct Write565 {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 2;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* to) {
        to[0] = static_cast<std::uint8_t>((second << 3 & 0xE0) | third >> 3);
        to[1] = static_cast<std::uint8_t>((first & 0xF8) | second >> 5);
    }
#if !KY_PLAIN
    /// One vector's worth of pixels.
    template <bool kStream>
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* to) {
        const D8 d;
        // Shifts of words, with the bits masked out that come over from the other byte.
        const V8 secondLow = hn::And(Bytes(hn::ShiftLeft<3>(Words(second))), hn::Set(d, 0xE0));
        const V8 secondHigh = hn::And(Bytes(hn::ShiftRight<5>(Words(second))), hn::Set(d, 0x07));
        const V8 low = hn::OrAnd(secondLow, Bytes(hn::ShiftRight<3>(Words(third))), hn::Set(d, 0x1F));
        const V8 high = hn::OrAnd(secondHigh, first, hn::Set(d, 0xF8));
        V8 out[2];
        Interleave2(low, high, out);
        PutAll<kStream>(out, to);
    }
#endif
};

/// Three bytes.
struct Write24 {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 3;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* to) {
        to[0] = first;
        to[1] = second;
        to[2] = third;
    }
#if !KY_PLAIN
    template <bool kStream>
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* to) {
        V8 out[3];
        Interleave3(first, second, third, out);
        PutAll<kStream>(out, to);
    }
#endif
};

/// Three bytes and a fourth that is 0.
struct Write32 {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 4;

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* to) {
        to[0] = first;
        to[1] = second;
        to[2] = third;
        to[3] = 0;
    }
#if !KY_PLAIN
    template <bool kStream>
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* to) {
        V8 out[4];
        Interleave3Zero(first, second, third, out);
        PutAll<kStream>(out, to);
    }
#endif
};

/// Three planes of bytes; the second and the third at their offsets from the first.
struct WritePlanes {
    using Value = std::uint8_t;
    static constexpr std::size_t kPixelBytes = 1;  // in each plane

    static void StorePixel(std::uint8_t first, std::uint8_t second, std::uint8_t third, std::uint8_t* to,
                           const std::ptrdiff_t (&planes)[2]) {
        to[0] = first;
        to[planes[0]] = second;
        to[planes[1]] = third;
    }
#if !KY_PLAIN
    template <bool kStream>
    static HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* to, const std::ptrdiff_t (&planes)[2]) {
        Put<kStream>(first, to);
        Put<kStream>(second, to + planes[0]);
        Put<kStream>(third, to + planes[1]);
    }
#endif
};

/// Three 16-bit words.
struct Write48 {
    using Value = std::uint16_t;
    static constexpr std::size_t kPixelBytes = 6;

    static void StorePixel(std::uint16_t first, std::uint16_t second, std::uint16_t third, std::uint8_t* to) {
        const std::uint16_t words[] = {first, second, third};
        std::memcpy(to, words, sizeof words);
    }
#if !KY_PLAIN
    template <bool kStream>
    static HWY_INLINE void Store(V16 first, V16 second, V16 third, std::uint8_t* to) {
        V8 out[3];
        InterleaveWords3(Bytes(first), Bytes(second), Bytes(third), out);
        PutAll<kStream>(out, to);
    }
#endif
};
