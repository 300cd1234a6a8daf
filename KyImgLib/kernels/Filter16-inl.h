// The filter stage of word kernels: passes three planes through three word tables. Needs Filter8-inl.h before it.

#if !KY_SCALAR

/// The stage of an identity filter: a sample modulo the entries of its table.
template <>
class FilterStage<Filter16, true> {
public:
    explicit HWY_INLINE FilterStage(const Filter16& filter) : mask(filter.indexMask), bits(filter.shift) {}

    template <int kChannel>
    HWY_INLINE V16 Apply(V16 v) const {
        return hn::And(v, hn::Set(D16(), mask));
    }
    int Shift() const { return bits; }

private:
    std::uint16_t mask;
    int bits;
};

/// Leaves identity channels alone, computes those whose table is linear and looks the others up one by one. Branches on the
/// kind of the channel once for each vector, always the same way, which branch prediction makes all but free.
template <>
class FilterStage<Filter16, false> {
public:
    explicit HWY_INLINE FilterStage(const Filter16& source) : filter(source) {}

    template <int kChannel>
    HWY_INLINE V16 Apply(V16 v) const {
        const FilterChannel16& channel = filter.channel[kChannel];
        const V16 index = hn::And(v, hn::Set(D16(), filter.indexMask));
        if (channel.isIdentity) return index;
        if (HWY_UNLIKELY(!channel.isLinear)) {
            HWY_ALIGN std::uint16_t words[kLanes / 2];
            hn::Store(index, D16(), words);
            LookUp(channel.table, words);
            return hn::Load(D16(), words);
        }
        return Compute(channel, index, filter.indexMask);
    }
    int Shift() const { return filter.shift; }

private:
    /// i * fraction >> 32 in words: with the fraction's halves as h and l, (i * h + (i * l >> 16)) >> 16, where the sum
    /// of the lower words may carry into the upper one.
    static HWY_INLINE V16 Compute(const FilterChannel16& channel, V16 index, std::uint16_t largest) {
        const D16 d;
        const V16 high = hn::Set(d, static_cast<std::uint16_t>(channel.fractionGain >> 16));
        const V16 low = hn::Set(d, static_cast<std::uint16_t>(channel.fractionGain & 0xFFFF));
        const V16 product = hn::Mul(index, high);
        const V16 sum = hn::Add(product, hn::MulHigh(index, low));
        const V16 carry = hn::VecFromMask(d, hn::Lt(sum, product));  // -1 where there is one
        V16 value = hn::Sub(hn::MulHigh(index, high), carry);
        if (channel.wholeGain != 0) value = hn::Add(value, hn::Mul(index, hn::Set(d, channel.wholeGain)));
        if (channel.offset != 0) value = hn::Add(value, hn::Set(d, channel.offset));
        return hn::IfThenElse(hn::Gt(index, hn::Set(d, channel.last)), hn::Set(d, largest), value);
    }
    /// Takes and returns samples in memory: with a vector as argument the caller would spill its other vectors.
    static HWY_NOINLINE void LookUp(const std::uint16_t* HWY_RESTRICT table, std::uint16_t* HWY_RESTRICT words) {
        for (std::size_t i = 0; i < kLanes / 2; ++i) words[i] = table[words[i]];
    }

    Filter16 filter;
};

#endif
