// RGB to RGB where no filter needs channels of their own: the same bytes, or words as bytes, in another order. Needs
// Readers-inl.h and the writers before it.

#if !KY_SCALAR

/// What shuffles make pixels of three or four bytes of such pixels: the first three channels, in the same order or with the
/// first and the third exchanged, and zeros. Each part of the destination is made of at most two loads.
template <std::size_t kFrom, std::size_t kTo>
class PixelShuffle {
public:
    static constexpr std::size_t kVectors = kTo;  ///< of kLanes pixels

    explicit PixelShuffle(bool isExchanged) {
        for (std::size_t part = 0; part < kParts; ++part)
            for (std::size_t i = 0; i < kPart; ++i) {
                const std::size_t byte = part * kPart + i, channel = byte % kTo;
                const std::size_t at = byte / kTo * kFrom + (isExchanged ? 2 - channel : channel);
                const std::size_t inFirst = at - First(part), inSecond = at - Second(part);
                std::uint8_t& first = indices[0][byte];
                std::uint8_t& second = indices[kLoads - 1][byte];
                first = second = kNone;
                if (channel > 2) continue;
                if (inFirst < kPart)
                    first = static_cast<std::uint8_t>(inFirst);
                else
                    second = static_cast<std::uint8_t>(inSecond + kOfSecond);
            }
    }

    /// Vector k of the destination.
    template <std::size_t k>
    HWY_INLINE V8 Vector(const std::uint8_t* from) const {
        constexpr std::size_t kAt = k * kVectorParts;
        const V8 first = LoadParts<kAt, false>(D8(), from), index = Load(indices[0] + k * kLanes);
#if KY_VBMI
        if constexpr (kLoads == 1) return V8{_mm512_maskz_permutexvar_epi8(NotNone(index), index.raw, first.raw)};
        const V8 second = LoadParts<kAt, true>(D8(), from),
                 both = hn::Min(index, Load(indices[kLoads - 1] + k * kLanes));
        return V8{_mm512_maskz_permutex2var_epi8(NotNone(both), first.raw, both.raw, second.raw)};
#else
        const V8 pixels = hn::TableLookupBytesOr0(first, index);
        if constexpr (kLoads == 1) return pixels;
        const V8 second = LoadParts<kAt, true>(D8(), from), indexOfSecond = Load(indices[kLoads - 1] + k * kLanes);
        return hn::Or(pixels, hn::TableLookupBytesOr0(second, indexOfSecond));
#endif
    }

private:
    // What one shuffle reaches.
    static constexpr std::size_t kPart = KY_VBMI ? 64 : 16, kVectorParts = kLanes / kPart;
    static constexpr std::size_t kParts = kVectors * kVectorParts, kSourceBytes = kLanes * kFrom;
    static constexpr std::size_t kLoads = kTo == 4 ? 1 : 2;
    static constexpr std::uint8_t kNone = 0x80, kOfSecond = KY_VBMI ? kPart : 0;

    /// Where the two loads of a part begin.
    static constexpr std::size_t First(std::size_t part) {
        return std::min(part * kPart / kTo * kFrom, kSourceBytes - kPart);
    }
    static constexpr std::size_t Second(std::size_t part) {
        const std::size_t end = (part * kPart + kPart - 1) / kTo * kFrom + 3;
        return std::max(end, kPart) - kPart;
    }

    template <std::size_t kAt, bool kSecond, class D>
    static HWY_INLINE hn::Vec<D> LoadParts(D d, const std::uint8_t* from) {
        if constexpr (hn::MaxLanes(D()) == kPart || kFrom * kLoads == 4) {  // four bytes of four are where they were
            return hn::LoadU(d, from + (kSecond ? Second(kAt) : First(kAt)));
        } else {
            const hn::Half<D> half;
            constexpr std::size_t kUpper = kAt + hn::MaxLanes(hn::Half<D>()) / kPart;
            return hn::Combine(d, LoadParts<kUpper, kSecond>(half, from), LoadParts<kAt, kSecond>(half, from));
        }
    }

#if KY_VBMI
    static HWY_INLINE __mmask64 NotNone(V8 index) { return _knot_mask64(_mm512_movepi8_mask(index.raw)); }
#endif

    std::uint8_t indices[kLoads][kVectors * kLanes];
};

template <std::size_t kFrom, std::size_t kTo>
struct ReorderStep : PixelStep<ReadRGBBytes<kFrom>, kTo> {
    static constexpr StepCost kCost = StepCost::kFewInstructions;
    static constexpr bool kStreamsApart = true;
    using State = PixelShuffle<kFrom, kTo>;

    static HWY_INLINE void Run(const State& state, const typename ReorderStep::Rows& rows, std::size_t, bool streams) {
        V8 out[State::kVectors] = {state.template Vector<0>(rows.in[0]), state.template Vector<1>(rows.in[0]),
                                   state.template Vector<2>(rows.in[0])};
        if constexpr (kTo == 4) out[3] = state.template Vector<3>(rows.in[0]);
        PutAll(out, rows.out[0], streams);
    }
};

/// Three words to three bytes.
struct NarrowStep : PixelStep<ReadRGBWords<3>, 3> {
    using State = FilterStage<Filter16, true>;

    static HWY_INLINE void Run(const State& filter, const NarrowStep::Rows& rows, std::size_t, bool streams) {
        V16 words[6];
        for (std::size_t i = 0; i < 6; ++i) words[i] = Words(Load(rows.in[0] + i * kLanes));
        const Planes8 bytes = filter.Apply({words[0], words[2], words[4]}, {words[1], words[3], words[5]});
        PutAll({bytes.first, bytes.second, bytes.third}, rows.out[0], streams);
    }
};

#endif
