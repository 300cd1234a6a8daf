// The filter stage of byte kernels: passes three planes through three byte tables. Needs Lanes-inl.h before it.

#if !KY_SCALAR

template <typename Filter, bool kIsIdentity>
class FilterStage;

/// The stage of an identity filter: nothing at all.
template <>
class FilterStage<Filter8, true> {
public:
    explicit HWY_INLINE FilterStage(const Filter8&) {}
    HWY_INLINE void Apply(V8&, V8&, V8&) const {}
};

#if KY_VBMI

/// Looks bytes up in tables held in registers: four for each channel.
template <>
class FilterStage<Filter8, false> {
public:
    explicit HWY_INLINE FilterStage(const Filter8& filter) {
        for (int channel = 0; channel < 3; ++channel)
            for (int quarter = 0; quarter < 4; ++quarter)
                tables[channel][quarter] = _mm512_loadu_si512(filter.channel[channel].table + 64 * quarter);
    }
    HWY_INLINE void Apply(V8& first, V8& second, V8& third) const {
        first = LookUp(tables[0], first);
        second = LookUp(tables[1], second);
        third = LookUp(tables[2], third);
    }

private:
    static HWY_INLINE V8 LookUp(const __m512i (&table)[4], V8 v) {
        const __m512i lower = _mm512_permutex2var_epi8(table[0], v.raw, table[1]);
        const __m512i upper = _mm512_permutex2var_epi8(table[2], v.raw, table[3]);
        return V8{_mm512_mask_blend_epi8(_mm512_movepi8_mask(v.raw), lower, upper)};
    }

    __m512i tables[3][4];
};

#else

/// A table of 256 bytes for looking up vectors, with shuffles that look up in 16 entries, on ARM in 64.
class ByteTable {
public:
    HWY_INLINE void Set(const std::uint8_t* table) { std::memcpy(entries, table, sizeof(entries)); }

    HWY_INLINE V8 LookUp(V8 v) const {
#if HWY_TARGET == HWY_NEON
        // An index that is not below 64 gives 0, or leaves what is there.
        uint8x16_t index = v.raw, value = vqtbl4q_u8(vld1q_u8_x4(entries), index);
        for (std::size_t i = 64; i < sizeof(entries); i += 64) {
            index = vsubq_u8(index, vdupq_n_u8(64));
            value = vqtbx4q_u8(value, vld1q_u8_x4(entries + i), index);
        }
        return V8{value};
#else
        // The lower four bits are the place in a block, and the top bit makes the shuffle give 0. The other three choose.
        const V8 lower = hn::And(v, hn::Set(D8(), 0x8F)), upper = hn::Xor(lower, hn::Set(D8(), 0x80));
        const auto bit4 = TopBits<3>(v), bit5 = TopBits<2>(v), bit6 = TopBits<1>(v);
        V8 halves[2];
        for (std::size_t half = 0; half < 2; ++half) {
            V8 quarters[2];
            for (std::size_t quarter = 0; quarter < 2; ++quarter) {
                const std::size_t block = 4 * half + 2 * quarter;
                quarters[quarter] =
                    hn::IfThenElse(bit4, InBlocks(block + 1, lower, upper), InBlocks(block, lower, upper));
            }
            halves[half] = hn::IfThenElse(bit5, quarters[1], quarters[0]);
        }
        return hn::IfThenElse(bit6, halves[1], halves[0]);
#endif
    }

private:
#if HWY_TARGET != HWY_NEON
    /// Which bytes have a top bit, after a shift to the left.
    template <int kShift>
    static HWY_INLINE hn::Mask<D8> TopBits(V8 v) {
        return hn::MaskFromVec(Bytes(hn::ShiftLeft<kShift>(Words(v))));
    }
    /// Looks up in this block, or 128 entries after it.
    HWY_INLINE V8 InBlocks(std::size_t block, V8 lower, V8 upper) const {
        return hn::Or(hn::TableLookupBytes(hn::LoadDup128(D8(), entries + 16 * block), lower),
                      hn::TableLookupBytes(hn::LoadDup128(D8(), entries + 16 * block + 128), upper));
    }
#endif

    alignas(16) std::uint8_t entries[256];
};

/// Computes what the tables would give where all are linear, or else looks all three up. Branches on what is known of them
/// for each vector, always the same way, which branch prediction makes all but free.
template <>
class FilterStage<Filter8, false> {
public:
    explicit HWY_INLINE FilterStage(const Filter8& source) : filter(source), looksUp(false) {
        for (const FilterChannel8& channel : filter.channel)
            if (!channel.isIdentity && !channel.isLinear) looksUp = true;
        if (!looksUp) return;
        for (int channel = 0; channel < 3; ++channel) tables[channel].Set(filter.channel[channel].table);
    }

    HWY_INLINE void Apply(V8& first, V8& second, V8& third) const {
        if (HWY_UNLIKELY(looksUp)) {
            V8 planes[] = {first, second, third};
            LookUp(tables, planes);
            first = planes[0];
            second = planes[1];
            third = planes[2];
        } else {
            first = Compute(filter.channel[0], first);
            second = Compute(filter.channel[1], second);
            third = Compute(filter.channel[2], third);
        }
    }

private:
    /// Even and odd bytes apart, as the upper bytes of words: the high half of a product is then value * multiplier / 256.
    static HWY_INLINE V8 Compute(const FilterChannel8& channel, V8 v) {
        if (channel.isIdentity) return v;
        const D16 d;
        const V16 words = Words(v);
        const V16 even = ComputeUpper(channel, hn::ShiftLeft<8>(words));
        const V16 odd = ComputeUpper(channel, hn::And(words, hn::Set(d, 0xFF00)));
        V8 values = Bytes(hn::Or(even, hn::ShiftLeft<8>(odd)));
        for (int i = 0; i < channel.exceptionCount; ++i) {
            const auto isException = hn::Eq(v, hn::Set(D8(), channel.exceptions[i]));
            values = hn::Add(values, hn::VecFromMask(D8(), isException));  // -1 where it is one
        }
        return values;
    }
    static HWY_INLINE V16 ComputeUpper(const FilterChannel8& channel, V16 upper) {
        const D16 d;
        V16 value = hn::ShiftRightSame(hn::MulHigh(upper, hn::Set(d, channel.multiplier)), channel.shift - 8);
        if (channel.addsIndex) value = hn::Add(value, hn::ShiftRight<8>(upper));
        if (channel.offset != 0) value = hn::Add(value, hn::Set(d, channel.offset));
        return hn::Min(value, hn::Set(d, 255));
    }
    /// In memory: as arguments, the planes would have the caller spill its other vectors also where nothing is looked up.
    static HWY_NOINLINE void LookUp(const ByteTable (&tables)[3], V8 (&planes)[3]) {
        for (int channel = 0; channel < 3; ++channel) planes[channel] = tables[channel].LookUp(planes[channel]);
    }

    Filter8 filter;
    ByteTable tables[3];  ///< only where they are looked up
    bool looksUp;
};

#endif

#endif
