// The filter stage of word kernels: passes three planes through three word tables. Needs Filter8-inl.h before it.

#if !KY_SCALAR

/// The stage of an identity filter: a sample modulo the entries of its table.
template <>
class FilterStage<Filter16, true> {
public:
    explicit HWY_INLINE FilterStage(const Filter16& filter) : mask(filter.indexMask), bits(filter.shift) {}

    HWY_INLINE void Apply(V16& first, V16& second, V16& third) const {
        const V16 largest = hn::Set(D16(), mask);
        first = hn::And(first, largest);
        second = hn::And(second, largest);
        third = hn::And(third, largest);
    }
    /// The same as bytes, of two vectors each. Channel by channel: that is all that fits into the registers.
    HWY_INLINE Planes8 Apply(const Planes16& lower, const Planes16& upper) const {
        return {Narrow(lower.first, upper.first), Narrow(lower.second, upper.second), Narrow(lower.third, upper.third)};
    }

private:
    HWY_INLINE V8 Narrow(V16 first, V16 second) const {
        const V16 largest = hn::Set(D16(), mask);
        return LowBytes(hn::ShiftRightSame(hn::And(first, largest), bits),
                        hn::ShiftRightSame(hn::And(second, largest), bits));
    }

    std::uint16_t mask;
    int bits;
};

/// Computes what the tables would give where all are linear, or else looks all three up. Branches on what is known of them
/// for each vector, always the same way, which branch prediction makes all but free.
template <>
class FilterStage<Filter16, false> {
public:
    explicit HWY_INLINE FilterStage(const Filter16& source) : filter(source), looksUp(false) {
        for (const FilterChannel16& channel : filter.channel)
            if (!channel.isIdentity && !channel.isLinear) looksUp = true;
    }

    HWY_INLINE void Apply(V16& first, V16& second, V16& third) const {
        if (HWY_UNLIKELY(looksUp)) {
            V16 planes[] = {first, second, third};
            LookUp(filter, planes);
            first = planes[0];
            second = planes[1];
            third = planes[2];
        } else {
            first = Compute<0>(first);
            second = Compute<1>(second);
            third = Compute<2>(third);
        }
    }

    /// The same as bytes, of two vectors each. Channel by channel: that is all that fits into the registers.
    HWY_INLINE Planes8 Apply(const Planes16& lower, const Planes16& upper) const {
        V8 first, second, third;
        if (HWY_UNLIKELY(looksUp)) {
            V16 planes[] = {lower.first, lower.second, lower.third}, rest[] = {upper.first, upper.second, upper.third};
            LookUp(filter, planes);
            LookUp(filter, rest);
            first = Narrow(planes[0], rest[0]);
            second = Narrow(planes[1], rest[1]);
            third = Narrow(planes[2], rest[2]);
        } else {
            first = Narrow(Compute<0>(lower.first), Compute<0>(upper.first));
            second = Narrow(Compute<1>(lower.second), Compute<1>(upper.second));
            third = Narrow(Compute<2>(lower.third), Compute<2>(upper.third));
        }
        return {first, second, third};
    }

private:
    /// i * fraction >> 32 in words: with the fraction's halves as h and l, (i * h + (i * l >> 16)) >> 16, where the sum
    /// of the lower words may carry into the upper one.
    template <int kChannel>
    HWY_INLINE V16 Compute(V16 sample) const {
        const D16 d;
        const FilterChannel16& channel = filter.channel[kChannel];
        const V16 largest = hn::Set(d, filter.indexMask), index = hn::And(sample, largest);
        if (channel.isIdentity) return index;
        const V16 high = hn::Set(d, static_cast<std::uint16_t>(channel.fractionGain >> 16));
        const V16 low = hn::Set(d, static_cast<std::uint16_t>(channel.fractionGain & 0xFFFF));
        const V16 product = hn::Mul(index, high);
        const V16 sum = hn::Add(product, hn::MulHigh(index, low));
        const V16 carry = hn::VecFromMask(d, hn::Lt(sum, product));  // -1 where there is one
        V16 value = hn::Sub(hn::MulHigh(index, high), carry);
        if (channel.wholeGain != 0) value = hn::Add(value, hn::Mul(index, hn::Set(d, channel.wholeGain)));
        if (channel.offset != 0) value = hn::Add(value, hn::Set(d, channel.offset));
        return hn::IfThenElse(hn::Gt(index, hn::Set(d, channel.last)), largest, value);
    }
    HWY_INLINE V8 Narrow(V16 first, V16 second) const {
        return LowBytes(hn::ShiftRightSame(first, filter.shift), hn::ShiftRightSame(second, filter.shift));
    }
    /// In memory: as arguments, the planes would have the caller spill its other vectors also where nothing is looked up.
    static HWY_NOINLINE void LookUp(const Filter16& filter, V16 (&planes)[3]) {
        for (int channel = 0; channel < 3; ++channel) {
            HWY_ALIGN std::uint16_t indices[kLanes / 2];
            hn::Store(hn::And(planes[channel], hn::Set(D16(), filter.indexMask)), D16(), indices);
            planes[channel] = Entries(D16(), filter.channel[channel].table, indices);
        }
    }
#if HWY_ARCH_X86
    /// Put together in registers: a vector that was stored word by word is slow to load.
    template <class D>
    static HWY_INLINE hn::Vec<D> Entries(D d, const std::uint16_t* table, const std::uint16_t* indices) {
        if constexpr (hn::MaxLanes(D()) > 8) {
            const hn::Half<D> half;
            return hn::Combine(d, Entries(half, table, indices + hn::MaxLanes(half)), Entries(half, table, indices));
        } else {
            __m128i entries = _mm_cvtsi32_si128(table[indices[0]]);
            entries = _mm_insert_epi16(entries, table[indices[1]], 1);
            entries = _mm_insert_epi16(entries, table[indices[2]], 2);
            entries = _mm_insert_epi16(entries, table[indices[3]], 3);
            entries = _mm_insert_epi16(entries, table[indices[4]], 4);
            entries = _mm_insert_epi16(entries, table[indices[5]], 5);
            entries = _mm_insert_epi16(entries, table[indices[6]], 6);
            return hn::Vec<D>{_mm_insert_epi16(entries, table[indices[7]], 7)};
        }
    }
#else
    static HWY_INLINE V16 Entries(D16 d, const std::uint16_t* table, std::uint16_t* indices) {
        for (std::size_t i = 0; i < kLanes / 2; ++i) indices[i] = table[indices[i]];
        return hn::Load(d, indices);
    }
#endif

    Filter16 filter;
    bool looksUp;
};

#endif
