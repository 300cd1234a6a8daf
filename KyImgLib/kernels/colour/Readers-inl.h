// Readers: pixels of a source layout to three channels of samples. Needs Samples-inl.h and YUVArithmetic-inl.h before it.
//
// A reader has kGroup pixels in kGroupBytes bytes. Sample is what it gives: bytes, or words that the filter makes bytes.
//     ReadPixel(group, n)  pixel n of a group, three samples
//     ReadVector(from)     a vector's worth of pixels

/// What readers are told, see ColourSettings.
struct ReaderSettings {
    std::uint8_t sampleShift;
    std::uint8_t places[3];
};

/// Groups of `kBytes` samples, all alike.
template <std::size_t kPixels, std::size_t kBytes>
struct ReadByteGroups {
    using Sample = std::uint8_t;
    static constexpr std::size_t kGroup = kPixels, kGroupBytes = kBytes;
};

/// Groups of words.
template <typename SampleType, std::size_t kPixels, std::size_t kWords>
struct ReadWordGroups {
    using Sample = SampleType;
    static constexpr std::size_t kGroup = kPixels, kGroupBytes = 2 * kWords;
};

/// Words 5-6-5, of which only green is read.
struct ReadRGB16 : ReadWordGroups<std::uint8_t, 1, 1> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings&) {
        return {0, static_cast<std::uint8_t>(WordAt(group) >> 5 & 63), 0};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        const V16 mask = hn::Set(D16(), 63);
        const V16 lower = hn::And(hn::ShiftRight<5>(Words(Load(from))), mask);
        const V16 upper = hn::And(hn::ShiftRight<5>(Words(Load(from + kLanes))), mask);
        const V8 zero = hn::Zero(D8());
        return {zero, LowBytes(lower, upper), zero};
    }
#endif
};

/// Bytes: three channels, or four of which the last is ignored.
template <unsigned kChannels>
struct ReadRGBBytes : ReadByteGroups<1, kChannels> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings&) {
        return {group[0], group[1], group[2]};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        return Deinterleave<kChannels>(from);
    }
#endif
};

/// The same with words.
template <unsigned kChannels>
struct ReadRGBWords : ReadWordGroups<std::uint16_t, 1, kChannels> {
    static PixelSamples<std::uint16_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings&) {
        return {WordAt(group), WordAt(group + 2), WordAt(group + 4)};
    }
#if !KY_SCALAR
    static HWY_INLINE Planes16 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        return DeinterleaveWords<kChannels>(from);
    }
#endif
};

inline PixelSamples<std::uint8_t> SamplesOfYUV(int y, int u, int v, int yOfRed) {
    const RGBBytes rgb = RGBOfYUV(y, u, v, yOfRed);
    return {rgb.red, rgb.green, rgb.blue};
}

/// Y0 U Y1 V.
struct ReadYUV422 : ReadByteGroups<2, 4> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned n, const ReaderSettings&) {
        return SamplesOfYUV(group[2 * n], group[1], group[3], group[2 * n]);
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        const WordPairs pairs = LoadWordPairs(from);
        const Chroma chroma = ChromaOf(UpperBytesAlone(pairs.even), UpperBytesAlone(pairs.odd));
        return InTurn(RGBOf(LumaOfLower(LowerBytesAlone(pairs.even)), chroma),
                      RGBOf(LumaOfLower(LowerBytesAlone(pairs.odd)), chroma));
    }
#endif
};

/// The same with words, shifted right to bytes.
struct ReadYUV422Words : ReadWordGroups<std::uint8_t, 2, 4> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned n, const ReaderSettings& settings) {
        std::uint8_t bytes[4];
        for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(WordAt(group + 2 * i) >> settings.sampleShift);
        return ReadYUV422::ReadPixel(bytes, n, settings);
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings& settings) {
        HWY_ALIGN std::uint8_t bytes[2 * kLanes];
        hn::Store(Narrow(from, settings), D8(), bytes);
        hn::Store(Narrow(from + 2 * kLanes, settings), D8(), bytes + kLanes);
        return ReadYUV422::ReadVector(bytes, settings);
    }

private:
    static HWY_INLINE V8 Narrow(const std::uint8_t* from, const ReaderSettings& settings) {
        return LowBytes(hn::ShiftRightSame(Words(Load(from)), settings.sampleShift),
                        hn::ShiftRightSame(Words(Load(from + kLanes)), settings.sampleShift));
    }
#endif
};

/// U Y0 Y1 V Y2 Y3, where the red of all pixels but the first is made of Y1.
struct ReadYUV411 : ReadByteGroups<4, 6> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned n, const ReaderSettings&) {
        return SamplesOfYUV(group[kLumaAt[n]], group[0], group[3], group[kLumaAt[n == 0 ? 0 : 1]]);
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings&) {
        const Groups groups(from);
        const Chroma chroma = ChromaOf(groups.Samples<0, 0>(), groups.Samples<3, 3>());
        RGBSums even = RGBOf(LumaOf(groups.Samples<1, 4>()), chroma);
        RGBSums odd = RGBOf(LumaOf(groups.Samples<2, 5>()), chroma);
        even.first = RedOf(LumaOf(groups.Samples<1, 2>()), chroma);
        odd.first = RedOf(LumaOf(groups.Samples<2, 2>()), chroma);
        return InTurn(even, odd);
    }

private:
    /// Samples of whole groups in the upper bytes of words, one for each pair of pixels.
    class Groups {
    public:
#if KY_VBMI
        explicit HWY_INLINE Groups(const std::uint8_t* from) : lower(Load(from)), upper(Load(from + 32)) {}

        /// Byte `kFirst` of a group for its first pair, byte `kSecond` for its second.
        template <unsigned kFirst, unsigned kSecond>
        HWY_INLINE V16 Samples() const {
            static constexpr VectorBytes kPlaces = Places(kFirst, kSecond);
            const __m512i places = _mm512_load_si512(kPlaces.bytes);
            return V16{_mm512_maskz_permutex2var_epi8(0xAAAAAAAAAAAAAAAA, lower.raw, places, upper.raw)};
        }

    private:
        static constexpr VectorBytes Places(unsigned first, unsigned second) {
            VectorBytes places = {};
            for (unsigned pair = 0; pair < 32; ++pair) {
                const unsigned at = pair / 2 * 6 + (pair % 2 == 0 ? first : second);
                places.bytes[2 * pair + 1] = static_cast<std::uint8_t>(at < 64 ? at : at - 32 + 64);
            }
            return places;
        }
#else
        // A block of 8 words comes from 24 bytes: its first 16, and its last 16.
        explicit HWY_INLINE Groups(const std::uint8_t* from) : lower(Blocks(from)), upper(Blocks(from + 8)) {}

        template <unsigned kFirst, unsigned kSecond>
        HWY_INLINE V16 Samples() const {
            static constexpr BlockBytes kLower = Places(kFirst, kSecond, 0), kUpper = Places(kFirst, kSecond, 8);
            return Words(hn::Or(hn::TableLookupBytesOr0(lower, LoadBlock(kLower)),
                                hn::TableLookupBytesOr0(upper, LoadBlock(kUpper))));
        }

    private:
        static constexpr unsigned kBlockBytes = 24;

        /// 0x80 makes a 0. The bytes that both loads have are taken from the lower.
        static constexpr BlockBytes Places(unsigned first, unsigned second, unsigned base) {
            BlockBytes places = {};
            for (unsigned pair = 0; pair < 8; ++pair) {
                const unsigned at = pair / 2 * 6 + (pair % 2 == 0 ? first : second);
                const bool isHere = base == 0 ? at < 16 : at >= 16;
                places.bytes[2 * pair] = 0x80;
                places.bytes[2 * pair + 1] = static_cast<std::uint8_t>(isHere ? at - base : 0x80);
            }
            return places;
        }

        static HWY_INLINE V8 Blocks(const std::uint8_t* from) {
#if HWY_TARGET == HWY_AVX3
            __m512i blocks = _mm512_castsi128_si512(Block(from));
            blocks = _mm512_inserti32x4(blocks, Block(from + kBlockBytes), 1);
            blocks = _mm512_inserti32x4(blocks, Block(from + 2 * kBlockBytes), 2);
            return V8{_mm512_inserti32x4(blocks, Block(from + 3 * kBlockBytes), 3)};
#elif HWY_TARGET == HWY_AVX2
            return V8{_mm256_inserti128_si256(_mm256_castsi128_si256(Block(from)), Block(from + kBlockBytes), 1)};
#else
            return Load(from);
#endif
        }
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX2
        static HWY_INLINE __m128i Block(const std::uint8_t* from) {
            return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        }
#endif
#endif
        V8 lower, upper;
    };
#endif

private:
    static constexpr std::uint8_t kLumaAt[4] = {1, 2, 4, 5};
};

/// Y, U and V, in an order that the settings tell.
struct ReadYUV444 : ReadByteGroups<1, 3> {
    static PixelSamples<std::uint8_t> ReadPixel(const std::uint8_t* group, unsigned, const ReaderSettings& settings) {
        const int y = group[settings.places[0]];
        return SamplesOfYUV(y, group[settings.places[1]], group[settings.places[2]], y);
    }
#if !KY_SCALAR
    static HWY_INLINE Planes8 ReadVector(const std::uint8_t* from, const ReaderSettings& settings) {
        const Planes8 samples = InOrder(from, settings.places);
        const V8 y = samples.first, u = samples.second, v = samples.third;
        return InTurn(
            RGBOf(LumaOf(Even(y)), ChromaOf(Even(u), Even(v))),
            RGBOf(LumaOf(UpperBytesAlone(Words(y))), ChromaOf(UpperBytesAlone(Words(u)), UpperBytesAlone(Words(v)))));
    }

private:
    static HWY_INLINE V16 Even(V8 v) { return hn::ShiftLeft<8>(Words(v)); }

    /// The samples at these places of each pixel.
#if KY_VBMI
    static HWY_INLINE Planes8 InOrder(const std::uint8_t* from, const std::uint8_t (&places)[3]) {
        return {At(from, places[0]), At(from, places[1]), At(from, places[2])};
    }
    static HWY_INLINE V8 At(const std::uint8_t* from, std::uint8_t place) {
        static constexpr VectorBytes kFirst = PlaceOf<3, 1>(0);
        const __m512i at = _mm512_add_epi8(_mm512_load_si512(kFirst.bytes), _mm512_set1_epi8(static_cast<char>(place)));
        const __m512i lower = _mm512_permutex2var_epi8(Load(from).raw, at, Load(from + 64).raw);
        return V8{_mm512_mask_permutexvar_epi8(lower, _mm512_movepi8_mask(at), at, Load(from + 128).raw)};
    }
#else
    static HWY_INLINE Planes8 InOrder(const std::uint8_t* from, const std::uint8_t (&places)[3]) {
        const Planes8 planes = Deinterleave<3>(from);
        return {At(planes, places[0]), At(planes, places[1]), At(planes, places[2])};
    }
    static HWY_INLINE V8 At(const Planes8& planes, std::uint8_t place) {
        return place == 0 ? planes.first : place == 1 ? planes.second : planes.third;
    }
#endif
#endif
};
