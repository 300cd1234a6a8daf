// Writers: gray samples to a destination format. Needs Writers-inl.h before it.
//
// A writer has
//     kPixelBytes            bytes of a destination pixel
//     StorePixel(gray, to)   writes one pixel
//     Store(samples, to)     writes kLanes pixels

/// Bytes or words as they are.
template <typename Value>
struct WriteSamples {
    static constexpr std::size_t kPixelBytes = sizeof(Value);

    static void StorePixel(Value gray, std::uint8_t* to) { std::memcpy(to, &gray, sizeof gray); }
#if !KY_SCALAR
    static HWY_INLINE void Store(const V8 (&samples)[kPixelBytes], std::uint8_t* to, bool streams) {
        PutAll(samples, to, streams);
    }
#endif
};
using WriteGray8 = WriteSamples<std::uint8_t>;
using WriteGray16 = WriteSamples<std::uint16_t>;

struct WriteGray565 {
    static constexpr std::size_t kPixelBytes = Write565::kPixelBytes;

    static void StorePixel(std::uint8_t gray, std::uint8_t* to) { Write565::StorePixel(gray, gray, gray, &to); }
#if !KY_SCALAR
    static HWY_INLINE void Store(const V8 (&samples)[1], std::uint8_t* to, bool streams) {
        Write565::Store(samples[0], samples[0], samples[0], &to, streams);
    }
#endif
};

#if !KY_SCALAR
#if KY_VBMI
using RepeatBytes = VectorBytes;
#else
using RepeatBytes = BlockBytes;
#endif

/// For the bytes of vector or block `k` of pixels of kSize bytes: the pixel of its own vector or block.
template <unsigned kSize>
constexpr RepeatBytes PixelOfByte(unsigned k) {
    RepeatBytes pixels = {};
    for (unsigned i = 0; i < sizeof pixels.bytes; ++i) {
        const unsigned n = static_cast<unsigned>(sizeof pixels.bytes) * k + i;
        // Where the fourth byte is to be 0, block look-ups want an index with the top bit set.
        pixels.bytes[i] = static_cast<std::uint8_t>(n % kSize == 3 ? 0x80 : n / kSize);
    }
    return pixels;
}
#endif

/// Three equal bytes; in pixels of four bytes, and a fourth that is 0.
template <unsigned kSize>
struct WriteGrayRGB {
    static constexpr std::size_t kPixelBytes = kSize;

    static void StorePixel(std::uint8_t gray, std::uint8_t* to) {
        to[0] = to[1] = to[2] = gray;
        if constexpr (kSize == 4) to[3] = 0;
    }
#if !KY_SCALAR
    static HWY_INLINE void Store(const V8 (&samples)[1], std::uint8_t* to, bool streams) {
        static constexpr RepeatBytes kPixels[4] = {PixelOfByte<kSize>(0), PixelOfByte<kSize>(1), PixelOfByte<kSize>(2),
                                                   PixelOfByte<kSize>(3)};
        V8 out[kSize];
        for (std::size_t k = 0; k < kSize; ++k) {
#if KY_VBMI
            constexpr __mmask64 kGray = kSize == 4 ? 0x7777777777777777 : ~__mmask64{0};
            out[k] = V8{_mm512_maskz_permutexvar_epi8(kGray, _mm512_load_si512(kPixels[k].bytes), samples[0].raw)};
#else
            out[k] = hn::TableLookupBytesOr0(samples[0], LoadBlock(kPixels[k]));
#endif
        }
#if !KY_VBMI
        BlocksInOrder(out);
#endif
        PutAll(out, to, streams);
    }
#endif
};
