// The filter stage of byte kernels: passes three planes through three byte tables. Needs Lanes-inl.h before it.

#if !KY_SCALAR

template <typename Filter, bool kIsIdentity>
class FilterStage;

/// The stage of an identity filter: nothing at all.
template <>
class FilterStage<Filter8, true> {
public:
    explicit HWY_INLINE FilterStage(const Filter8&) {}
    template <int kChannel>
    HWY_INLINE V8 Apply(V8 v) const {
        return v;
    }
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
    template <int kChannel>
    HWY_INLINE V8 Apply(V8 v) const {
        const __m512i* const table = tables[kChannel];
        const __m512i lower = _mm512_permutex2var_epi8(table[0], v.raw, table[1]);
        const __m512i upper = _mm512_permutex2var_epi8(table[2], v.raw, table[3]);
        return V8{_mm512_mask_blend_epi8(_mm512_movepi8_mask(v.raw), lower, upper)};
    }

private:
    __m512i tables[3][4];
};

#else

/// Leaves identity channels alone, computes those whose table is linear and looks the others up one by one. Branches on the
/// kind of the channel once for each vector, always the same way, which branch prediction makes all but free.
template <>
class FilterStage<Filter8, false> {
public:
    explicit HWY_INLINE FilterStage(const Filter8& source) : filter(source) {}

    template <int kChannel>
    HWY_INLINE V8 Apply(V8 v) const {
        const FilterChannel8& channel = filter.channel[kChannel];
        if (channel.isIdentity) return v;
        if (channel.isLinear) return Compute(channel, v);
        return LookUp(channel.table, v);
    }

private:
    /// Even and odd bytes apart, as the upper bytes of words: the high half of a product is then value * multiplier / 256.
    static HWY_INLINE V8 Compute(const FilterChannel8& channel, V8 v) {
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
    static HWY_NOINLINE V8 LookUp(const std::uint8_t* table, V8 v) {
        HWY_ALIGN std::uint8_t bytes[kLanes];
        hn::Store(v, D8(), bytes);
        for (std::uint8_t& byte : bytes) byte = table[byte];
        return hn::Load(D8(), bytes);
    }

    Filter8 filter;
};

#endif

#endif
