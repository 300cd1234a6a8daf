// Vectors of bytes: the few operations that every kernel builds on. For inclusion by kernel files (EveryLevel.h).

#if !KY_SCALAR

template <typename T>
using TagOf = hn::ScalableTag<T>;
template <typename T>
using VectorOf = hn::Vec<TagOf<T>>;

using D8 = TagOf<std::uint8_t>;
using D16 = TagOf<std::uint16_t>;
using V8 = VectorOf<std::uint8_t>;
using V16 = VectorOf<std::uint16_t>;

/// Bytes of a vector, and its number of 16-byte blocks.
constexpr std::size_t kLanes = HWY_LANES(std::uint8_t);
constexpr std::size_t kBlocks = kLanes / 16;

HWY_INLINE V16 Words(V8 v) { return hn::BitCast(D16(), v); }
HWY_INLINE V8 Bytes(V16 v) { return hn::BitCast(D8(), v); }

HWY_INLINE V8 Load(const std::uint8_t* from) { return hn::LoadU(D8(), from); }

/// Writes a vector; streaming writes go around the caches and need an address that is a multiple of kLanes.
HWY_INLINE void Put(V8 v, std::uint8_t* to, bool streams) {
    if (HWY_UNLIKELY(streams)) {
        hn::Stream(v, D8(), to);
    } else {
        hn::StoreU(v, D8(), to);
    }
}

/// Whether streaming stores may go there.
HWY_INLINE bool IsAligned(const std::uint8_t* address) {
    return reinterpret_cast<std::uintptr_t>(address) % kLanes == 0;
}

/// VZEROUPPER: clears the upper halves of the vector registers, as the last thing that a kernel does. With upper halves in
/// use, the caller's SSE code would run at half its speed or less, and compilers do not clear them on every way out.
HWY_INLINE void ClearUpperHalves() {
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
    _mm256_zeroupper();
#endif
}

/// 16 bytes, repeated in every block of a vector.
struct BlockBytes {
    alignas(16) std::uint8_t bytes[16];
};
HWY_INLINE V8 LoadBlock(const BlockBytes& block) { return hn::LoadDup128(D8(), block.bytes); }

// In-block operations leave N vectors. Together, blocks b of these are bytes 16 * N * b to 16 * N * (b + 1) of the result.
// These functions put the blocks into that order.
#if HWY_TARGET == HWY_AVX3
HWY_INLINE V8 Blocks2(V8 a, V8 b, __m512i index) { return V8{_mm512_permutex2var_epi64(a.raw, index, b.raw)}; }
HWY_INLINE V8 InsertBlock2(V8 into, __m512i index, V8 from) {
    return V8{_mm512_mask_permutexvar_epi64(into.raw, 0x30, index, from.raw)};
}

HWY_INLINE void BlocksInOrder(V8 (&v)[2]) {
    const V8 a = v[0], b = v[1];
    v[0] = Blocks2(a, b, _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11));
    v[1] = Blocks2(a, b, _mm512_setr_epi64(4, 5, 12, 13, 6, 7, 14, 15));
}
HWY_INLINE void BlocksInOrder(V8 (&v)[3]) {
    const V8 a = v[0], b = v[1], c = v[2];
    v[0] = InsertBlock2(Blocks2(a, b, _mm512_setr_epi64(0, 1, 8, 9, 0, 0, 2, 3)),
                        _mm512_setr_epi64(0, 0, 0, 0, 0, 1, 0, 0), c);
    v[1] = InsertBlock2(Blocks2(b, c, _mm512_setr_epi64(2, 3, 10, 11, 0, 0, 4, 5)),
                        _mm512_setr_epi64(0, 0, 0, 0, 4, 5, 0, 0), a);
    v[2] = InsertBlock2(Blocks2(c, a, _mm512_setr_epi64(4, 5, 14, 15, 0, 0, 6, 7)),
                        _mm512_setr_epi64(0, 0, 0, 0, 6, 7, 0, 0), b);
}
HWY_INLINE void BlocksInOrder(V8 (&v)[4]) {
    const __m512i ab02 = _mm512_shuffle_i64x2(v[0].raw, v[1].raw, 0x44),
                  cd02 = _mm512_shuffle_i64x2(v[2].raw, v[3].raw, 0x44);
    const __m512i ab13 = _mm512_shuffle_i64x2(v[0].raw, v[1].raw, 0xEE),
                  cd13 = _mm512_shuffle_i64x2(v[2].raw, v[3].raw, 0xEE);
    v[0] = V8{_mm512_shuffle_i64x2(ab02, cd02, 0x88)};
    v[1] = V8{_mm512_shuffle_i64x2(ab02, cd02, 0xDD)};
    v[2] = V8{_mm512_shuffle_i64x2(ab13, cd13, 0x88)};
    v[3] = V8{_mm512_shuffle_i64x2(ab13, cd13, 0xDD)};
}
#elif HWY_TARGET == HWY_AVX2
HWY_INLINE void BlocksInOrder(V8 (&v)[2]) {
    const V8 a = v[0], b = v[1];
    v[0] = hn::ConcatLowerLower(D8(), b, a);
    v[1] = hn::ConcatUpperUpper(D8(), b, a);
}
HWY_INLINE void BlocksInOrder(V8 (&v)[3]) {
    const V8 a = v[0], b = v[1], c = v[2];
    v[0] = hn::ConcatLowerLower(D8(), b, a);
    v[1] = hn::ConcatUpperLower(D8(), a, c);
    v[2] = hn::ConcatUpperUpper(D8(), c, b);
}
HWY_INLINE void BlocksInOrder(V8 (&v)[4]) {
    const V8 a = v[0], b = v[1], c = v[2], d = v[3];
    v[0] = hn::ConcatLowerLower(D8(), b, a);
    v[1] = hn::ConcatLowerLower(D8(), d, c);
    v[2] = hn::ConcatUpperUpper(D8(), b, a);
    v[3] = hn::ConcatUpperUpper(D8(), d, c);
}
#else
template <std::size_t N>
HWY_INLINE void BlocksInOrder(V8 (&)[N]) {
    static_assert(kBlocks == 1, "vectors of one block are in order");
}
#endif

/// Two byte planes to pairs a b a b ... in two vectors.
HWY_INLINE void Interleave2(V8 a, V8 b, V8 (&out)[2]) {
    out[0] = hn::InterleaveLower(D8(), a, b);
    out[1] = hn::InterleaveUpper(D8(), a, b);
    BlocksInOrder(out);
}

#if KY_VBMI

struct VectorBytes {
    alignas(64) std::uint8_t bytes[64];
};

/// For byte i of output vector k of `channels` interleaved planes of values of `size` bytes: the byte of its plane that it
/// is; `second` is added where it comes from the second plane.
template <unsigned kChannels, unsigned kSize>
constexpr VectorBytes ByteOf(unsigned k, unsigned second) {
    VectorBytes lanes = {};
    for (unsigned i = 0; i < 64; ++i) {
        const unsigned n = (64 * k + i) / kSize;
        lanes.bytes[i] =
            static_cast<std::uint8_t>(n / kChannels * kSize + i % kSize + (n % kChannels == 1 ? second : 0));
    }
    return lanes;
}
template <unsigned kChannels, unsigned kSize>
constexpr std::uint64_t IsChannel(unsigned k, unsigned channel) {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < 64; ++i)
        if ((64 * k + i) / kSize % kChannels == channel) mask |= std::uint64_t{1} << i;
    return mask;
}

template <unsigned kChannels, unsigned k, unsigned kSize = 1>
HWY_INLINE V8 InterleavedVector(V8 a, V8 b, V8 c) {
    static constexpr VectorBytes kAB = ByteOf<kChannels, kSize>(k, 64);
    static constexpr VectorBytes kC = ByteOf<kChannels, kSize>(k, 0);
    constexpr std::uint64_t kIsAB = IsChannel<kChannels, kSize>(k, 0) | IsChannel<kChannels, kSize>(k, 1);
    constexpr std::uint64_t kIsC = IsChannel<kChannels, kSize>(k, 2);
    const __m512i indexAB = _mm512_load_si512(kAB.bytes), indexC = _mm512_load_si512(kC.bytes);
    const __m512i ab = kChannels == 3 ? _mm512_permutex2var_epi8(a.raw, indexAB, b.raw)
                                      : _mm512_maskz_permutex2var_epi8(kIsAB, a.raw, indexAB, b.raw);
    return V8{_mm512_mask_permutexvar_epi8(ab, kIsC, indexC, c.raw)};
}

/// Three byte planes to triples a b c a b c ... in three vectors.
HWY_INLINE void Interleave3(V8 a, V8 b, V8 c, V8 (&out)[3]) {
    out[0] = InterleavedVector<3, 0>(a, b, c);
    out[1] = InterleavedVector<3, 1>(a, b, c);
    out[2] = InterleavedVector<3, 2>(a, b, c);
}

/// The same with planes of words.
HWY_INLINE void InterleaveWords3(V8 a, V8 b, V8 c, V8 (&out)[3]) {
    out[0] = InterleavedVector<3, 0, 2>(a, b, c);
    out[1] = InterleavedVector<3, 1, 2>(a, b, c);
    out[2] = InterleavedVector<3, 2, 2>(a, b, c);
}

/// Three byte planes to quadruples a b c 0 ... in four vectors.
HWY_INLINE void Interleave3Zero(V8 a, V8 b, V8 c, V8 (&out)[4]) {
    out[0] = InterleavedVector<4, 0>(a, b, c);
    out[1] = InterleavedVector<4, 1>(a, b, c);
    out[2] = InterleavedVector<4, 2>(a, b, c);
    out[3] = InterleavedVector<4, 3>(a, b, c);
}

#else

/// Where in its plane's block the bytes of one channel come from, in three interleaved blocks at once: value i of block k
/// belongs to channel (i + k * values) % 3, so each channel has its own places in each of the three.
template <unsigned kSize>
constexpr BlockBytes ByteOf(unsigned channel) {
    BlockBytes bytes = {};
    for (unsigned i = 0; i < 16; ++i)
        for (unsigned k = 0; k < 3; ++k)
            if (const unsigned n = (i + 16 * k) / kSize; n % 3 == channel)
                bytes.bytes[i] = static_cast<std::uint8_t>(n / 3 * kSize + i % kSize);
    return bytes;
}
template <unsigned kSize>
constexpr BlockBytes IsChannel(unsigned k, unsigned channel) {
    BlockBytes mask = {};
    for (unsigned i = 0; i < 16; ++i) mask.bytes[i] = (i + 16 * k) / kSize % 3 == channel ? 0xFF : 0;
    return mask;
}

template <unsigned kSize>
HWY_INLINE void InterleaveBlocks3(V8 a, V8 b, V8 c, V8 (&out)[3]) {
    static constexpr BlockBytes kByteOf[3] = {ByteOf<kSize>(0), ByteOf<kSize>(1), ByteOf<kSize>(2)};
    // The places of channels 0 and 1 in the first block; in the others the three channels change places in turn.
    static constexpr BlockBytes kPlaces[2] = {IsChannel<kSize>(0, 0), IsChannel<kSize>(0, 1)};
    a = hn::TableLookupBytes(a, LoadBlock(kByteOf[0]));
    b = hn::TableLookupBytes(b, LoadBlock(kByteOf[1]));
    c = hn::TableLookupBytes(c, LoadBlock(kByteOf[2]));
    const auto is0 = hn::MaskFromVec(LoadBlock(kPlaces[0]));
    const auto is1 = hn::MaskFromVec(LoadBlock(kPlaces[1]));
    out[0] = hn::IfThenElse(is0, a, hn::IfThenElse(is1, b, c));
    if constexpr (16 / kSize % 3 == 1) {  // the next block goes on with the next channel
        out[1] = hn::IfThenElse(is0, b, hn::IfThenElse(is1, c, a));
        out[2] = hn::IfThenElse(is0, c, hn::IfThenElse(is1, a, b));
    } else {  // with the one before
        out[1] = hn::IfThenElse(is0, c, hn::IfThenElse(is1, a, b));
        out[2] = hn::IfThenElse(is0, b, hn::IfThenElse(is1, c, a));
    }
    BlocksInOrder(out);
}

/// Three byte planes to triples a b c a b c ... in three vectors.
HWY_INLINE void Interleave3(V8 a, V8 b, V8 c, V8 (&out)[3]) { InterleaveBlocks3<1>(a, b, c, out); }

/// The same with planes of words.
HWY_INLINE void InterleaveWords3(V8 a, V8 b, V8 c, V8 (&out)[3]) { InterleaveBlocks3<2>(a, b, c, out); }

/// Three byte planes to quadruples a b c 0 ... in four vectors.
HWY_INLINE void Interleave3Zero(V8 a, V8 b, V8 c, V8 (&out)[4]) {
    const D8 d;
    const V8 zero = hn::Zero(d);
    const V16 abLower = Words(hn::InterleaveLower(d, a, b)), c0Lower = Words(hn::InterleaveLower(d, c, zero));
    const V16 abUpper = Words(hn::InterleaveUpper(d, a, b)), c0Upper = Words(hn::InterleaveUpper(d, c, zero));
    out[0] = Bytes(hn::InterleaveLower(D16(), abLower, c0Lower));
    out[1] = Bytes(hn::InterleaveUpper(D16(), abLower, c0Lower));
    out[2] = Bytes(hn::InterleaveLower(D16(), abUpper, c0Upper));
    out[3] = Bytes(hn::InterleaveUpper(D16(), abUpper, c0Upper));
    BlocksInOrder(out);
}

#endif

#if KY_VBMI
constexpr VectorBytes EvenBytes() {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i) bytes.bytes[i] = static_cast<std::uint8_t>(2 * i);
    return bytes;
}
#endif

/// The low bytes of two vectors of words, in order.
HWY_INLINE V8 LowBytes(V16 first, V16 second) {
#if KY_VBMI
    static constexpr VectorBytes kEven = EvenBytes();
    return V8{_mm512_permutex2var_epi8(first.raw, _mm512_load_si512(kEven.bytes), second.raw)};
#else
    return hn::ConcatEven(D8(), Bytes(second), Bytes(first));
#endif
}

#if KY_VBMI
constexpr VectorBytes UpperBytesInTurn() {
    VectorBytes bytes = {};
    for (unsigned i = 0; i < 64; ++i) bytes.bytes[i] = static_cast<std::uint8_t>(i / 2 * 2 + 1 + i % 2 * 64);
    return bytes;
}
#endif

/// Words shifted right by `kShift` and saturated to bytes, those of `even` and of `odd` in turn. Shifted words must be less
/// than 32768.
template <int kShift>
HWY_INLINE V8 LimitPairs(V16 even, V16 odd) {
#if KY_VBMI
    // Doubling with saturation leaves the results in the upper bytes, which one permute picks.
    static constexpr VectorBytes kInTurn = UpperBytesInTurn();
    for (int shift = kShift; shift < 8; ++shift) {
        even = hn::SaturatedAdd(even, even);
        odd = hn::SaturatedAdd(odd, odd);
    }
    return V8{_mm512_permutex2var_epi8(even.raw, _mm512_load_si512(kInTurn.bytes), odd.raw)};
#elif HWY_TARGET == HWY_NEON
    const uint8x8_t evenBytes = vqshrn_n_u16(even.raw, kShift), oddBytes = vqshrn_n_u16(odd.raw, kShift);
    return V8{vcombine_u8(vzip1_u8(evenBytes, oddBytes), vzip2_u8(evenBytes, oddBytes))};
#else
    even = hn::ShiftRight<kShift>(even);
    odd = hn::ShiftRight<kShift>(odd);
#if HWY_TARGET == HWY_AVX3
    const V8 halves{_mm512_packus_epi16(even.raw, odd.raw)};
#elif HWY_TARGET == HWY_AVX2
    const V8 halves{_mm256_packus_epi16(even.raw, odd.raw)};
#else
    const V8 halves{_mm_packus_epi16(even.raw, odd.raw)};
#endif
    static constexpr BlockBytes kInTurn = {{0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15}};
    return hn::TableLookupBytes(halves, LoadBlock(kInTurn));
#endif
}

/// The words of even and of odd index of two vectors' worth of memory.
struct WordPairs {
    V16 even, odd;
};
HWY_INLINE WordPairs LoadWordPairs(const std::uint8_t* from) {
#if HWY_TARGET == HWY_AVX3
    const V16 lower = Words(Load(from)), upper = Words(Load(from + kLanes));
    return {hn::ConcatEven(D16(), upper, lower), hn::ConcatOdd(D16(), upper, lower)};
#else
    // Within blocks; with more than one in a vector, the even ones of memory in the first vector, the odd ones in the second.
#if HWY_TARGET == HWY_AVX2
    const __m128i* const blocks = reinterpret_cast<const __m128i*>(from);
    const V8 first{
        _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(blocks)), _mm_loadu_si128(blocks + 2), 1)};
    const V8 second{
        _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(blocks + 1)), _mm_loadu_si128(blocks + 3), 1)};
#else
    const V8 first = Load(from), second = Load(from + kLanes);
#endif
    static constexpr BlockBytes kEvenFirst = {{0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15}};
    const TagOf<std::uint64_t> d;
    const auto firstHalves = hn::BitCast(d, hn::TableLookupBytes(first, LoadBlock(kEvenFirst))),
               secondHalves = hn::BitCast(d, hn::TableLookupBytes(second, LoadBlock(kEvenFirst)));
    return {hn::BitCast(D16(), hn::InterleaveLower(d, firstHalves, secondHalves)),
            hn::BitCast(D16(), hn::InterleaveUpper(d, firstHalves, secondHalves))};
#endif
}

/// Three channels of the same pixels.
template <class V>
struct Planes {
    V first, second, third;
};
using Planes8 = Planes<V8>;
using Planes16 = Planes<V16>;

HWY_INLINE const std::uint16_t* AsWords(const std::uint8_t* bytes) {
    return reinterpret_cast<const std::uint16_t*>(bytes);  // for loads that need no alignment
}

// The first three of `kChannels` interleaved channels: a vector of each.
#if KY_VBMI

/// For byte i of a plane, where it is among the values of `kChannels` channels of `kSize` bytes.
template <unsigned kChannels, unsigned kSize>
constexpr VectorBytes PlaceOf(unsigned channel) {
    VectorBytes places = {};
    for (unsigned i = 0; i < 64; ++i)
        places.bytes[i] = static_cast<std::uint8_t>((i / kSize * kChannels + channel) * kSize + i % kSize);
    return places;
}
/// Whether it is behind the first two vectors.
template <unsigned kChannels, unsigned kSize>
constexpr std::uint64_t IsBehindTwo(unsigned channel) {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < 64; ++i)
        if ((i / kSize * kChannels + channel) * kSize + i % kSize >= 128) mask |= std::uint64_t{1} << i;
    return mask;
}

template <unsigned kChannels, unsigned kSize, unsigned kChannel>
HWY_INLINE V8 DeinterleavedVector(const std::uint8_t* from) {
    static constexpr VectorBytes kPlaces = PlaceOf<kChannels, kSize>(kChannel);
    constexpr std::uint64_t kBehind = IsBehindTwo<kChannels, kSize>(kChannel);
    const __m512i places = _mm512_load_si512(kPlaces.bytes);
    const __m512i lower = _mm512_permutex2var_epi8(Load(from).raw, places, Load(from + 64).raw);
    if constexpr (kChannels == 3)
        return V8{_mm512_mask_permutexvar_epi8(lower, kBehind, places, Load(from + 128).raw)};
    else
        return V8{_mm512_mask_blend_epi8(kBehind, lower,
                                         _mm512_permutex2var_epi8(Load(from + 128).raw, places, Load(from + 192).raw))};
}

template <unsigned kChannels, unsigned kSize>
HWY_INLINE Planes8 DeinterleavedVectors(const std::uint8_t* from) {
    return {DeinterleavedVector<kChannels, kSize, 0>(from), DeinterleavedVector<kChannels, kSize, 1>(from),
            DeinterleavedVector<kChannels, kSize, 2>(from)};
}

template <unsigned kChannels>
HWY_INLINE Planes8 Deinterleave(const std::uint8_t* from) {
    return DeinterleavedVectors<kChannels, 1>(from);
}
template <unsigned kChannels>
HWY_INLINE Planes16 DeinterleaveWords(const std::uint8_t* from) {
    const Planes8 planes = DeinterleavedVectors<kChannels, 2>(from);
    return {Words(planes.first), Words(planes.second), Words(planes.third)};
}

#else

template <class D, unsigned kChannels>
HWY_INLINE Planes<hn::Vec<D>> DeinterleaveValues(D d, const hn::TFromD<D>* from) {
    hn::Vec<D> first, second, third;
    if constexpr (kChannels == 3) {
        hn::LoadInterleaved3(d, from, first, second, third);
    } else {
        hn::Vec<D> fourth;
        hn::LoadInterleaved4(d, from, first, second, third, fourth);
    }
    return {first, second, third};
}
template <unsigned kChannels>
HWY_INLINE Planes8 Deinterleave(const std::uint8_t* from) {
    return DeinterleaveValues<D8, kChannels>(D8(), from);
}
template <unsigned kChannels>
HWY_INLINE Planes16 DeinterleaveWords(const std::uint8_t* from) {
    return DeinterleaveValues<D16, kChannels>(D16(), AsWords(from));
}

#endif

#endif
