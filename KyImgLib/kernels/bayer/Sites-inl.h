// The values of Bayer sites, a vector at a time. Needs Lanes-inl.h before it.
//
// A vector of samples is taken as pairs, lanes twice as wide, each with an even pixel in its lower half and the odd one
// after it in its upper half. That leaves room for sums, and even and odd pixels are sites of different kinds anyhow.

template <typename Sample>
struct PairOf;
template <>
struct PairOf<std::uint8_t> {
    using Type = std::uint16_t;
};
template <>
struct PairOf<std::uint16_t> {
    using Type = std::uint32_t;
};

/// Operations on pairs of samples.
template <typename Sample>
struct Pairs {
    using D = TagOf<typename PairOf<Sample>::Type>;
    using V = hn::Vec<D>;
    static constexpr int kBits = 8 * sizeof(Sample);
    static constexpr auto kLow = std::numeric_limits<Sample>::max();
    static constexpr auto kHigh = static_cast<typename PairOf<Sample>::Type>(~typename PairOf<Sample>::Type{kLow});

    static HWY_INLINE V Load(const std::uint8_t* at) { return hn::BitCast(D(), hn::LoadU(D8(), at)); }
    static HWY_INLINE V Even(V v) { return hn::And(v, hn::Set(D(), kLow)); }
    static HWY_INLINE V Odd(V v) { return hn::ShiftRight<kBits>(v); }

    /// Values of even pixels in the lower halves (the upper ones clear) and of odd pixels in the upper halves (the lower
    /// ones anything).
    static HWY_INLINE VectorOf<Sample> MergeClean(V even, V odd) {
        return hn::BitCast(TagOf<Sample>(), hn::OrAnd(even, odd, hn::Set(D(), kHigh)));
    }
    /// The same with anything in the upper halves of `even`.
    static HWY_INLINE VectorOf<Sample> Merge(V even, V odd) {
        return hn::BitCast(TagOf<Sample>(), hn::IfVecThenElse(hn::Set(D(), kLow), even, odd));
    }
    /// A lower half moved into the upper one, divided by 1 << kDivisorBits.
    template <int kDivisorBits>
    static HWY_INLINE V ToUpper(V v) {
        return hn::ShiftLeft<kBits - kDivisorBits>(v);
    }
};

/// A third of a sum of three samples. For bytes: times 65536 / 3 rounded up. For words: in floating point, where adding a half
/// keeps every quotient further from an integer than rounding errors reach.
HWY_INLINE V16 Third(V16 sum) { return hn::MulHigh(sum, hn::Set(D16(), 21846)); }
HWY_INLINE VectorOf<std::uint32_t> Third(VectorOf<std::uint32_t> sum) {
    const TagOf<std::int32_t> di;
    const TagOf<float> df;
    const auto value = hn::Add(hn::ConvertTo(df, hn::BitCast(di, sum)), hn::Set(df, 0.5f));
    return hn::BitCast(TagOf<std::uint32_t>(), hn::ConvertTo(di, hn::Mul(value, hn::Set(df, 1.0f / 3.0f))));
}

/// A vector of pixels of one line, and the vectors two pixels to the left and to the right.
template <typename Sample>
struct PixelsAround {
    /// Pixels that it reaches beyond its own on both sides.
    static constexpr std::size_t kMargin = 2;

    using P = Pairs<Sample>;
    typename P::V left, here, right;

    explicit HWY_INLINE PixelsAround(const std::uint8_t* at)
        : left(P::Load(at - kMargin * sizeof(Sample))), here(P::Load(at)),
          right(P::Load(at + kMargin * sizeof(Sample))) {}
};

template <typename Sample>
struct SitePlanes {
    VectorOf<Sample> own, green, opposite;
};

/// Bilinear demosaicing. With one neighbouring line, `above` and `below` are both that line: the average of the two is then
/// its value, and an average over three neighbours counts it once.
template <bool kGreenFirst, bool kOneNeighbour, typename Sample>
HWY_INLINE SitePlanes<Sample> InterpolateSites(const PixelsAround<Sample>& above, const PixelsAround<Sample>& line,
                                               const PixelsAround<Sample>& below) {
    using P = Pairs<Sample>;
    if constexpr (kGreenFirst) {
        const auto vertical = hn::Add(P::Even(above.here), P::Even(below.here));
        const auto verticalRight = hn::Add(P::Even(above.right), P::Even(below.right));
        const auto diagonals = hn::Add(vertical, verticalRight);
        const auto horizontal = hn::Add(P::Odd(line.left), P::Odd(line.here));
        const auto greens = hn::Add(P::Even(line.here), P::Even(line.right));
        typename P::V cross;
        if constexpr (kOneNeighbour)
            cross = P::template ToUpper<0>(Third(hn::Add(greens, P::Odd(above.here))));
        else
            cross = P::template ToUpper<2>(hn::Add(greens, hn::Add(P::Odd(above.here), P::Odd(below.here))));
        return {P::MergeClean(hn::ShiftRight<1>(horizontal), line.here), P::Merge(line.here, cross),
                P::MergeClean(hn::ShiftRight<1>(vertical), P::template ToUpper<2>(diagonals))};
    } else {
        const auto vertical = hn::Add(P::Odd(above.here), P::Odd(below.here));
        const auto verticalLeft = hn::Add(P::Odd(above.left), P::Odd(below.left));
        const auto diagonals = hn::Add(vertical, verticalLeft);
        const auto horizontal = hn::Add(P::Even(line.here), P::Even(line.right));
        const auto greens = hn::Add(P::Odd(line.left), P::Odd(line.here));
        typename P::V cross;
        if constexpr (kOneNeighbour)
            cross = Third(hn::Add(greens, P::Even(above.here)));
        else
            cross = hn::ShiftRight<2>(hn::Add(greens, hn::Add(P::Even(above.here), P::Even(below.here))));
        return {P::Merge(line.here, P::template ToUpper<1>(horizontal)), P::MergeClean(cross, line.here),
                P::MergeClean(hn::ShiftRight<2>(diagonals), P::template ToUpper<1>(vertical))};
    }
}

/// The same for a line without any neighbours: the opposite colour is 0.
template <bool kGreenFirst, typename Sample>
HWY_INLINE SitePlanes<Sample> InterpolateLoneSites(const PixelsAround<Sample>& line) {
    using P = Pairs<Sample>;
    const auto atEven = hn::ShiftRight<1>(hn::Add(P::Odd(line.left), P::Odd(line.here)));
    const auto atOdd = P::template ToUpper<1>(hn::Add(P::Even(line.here), P::Even(line.right)));
    const auto oddsOwn = P::MergeClean(atEven, line.here), evensOwn = P::Merge(line.here, atOdd);
    const auto none = hn::Zero(TagOf<Sample>());
    if constexpr (kGreenFirst) {
        return {oddsOwn, evensOwn, none};
    } else {
        return {evensOwn, oddsOwn, none};
    }
}

/// Words of which at most 14 bits count once they are averaged. Sums may then lose what does not fit into a word: a quarter
/// of a sum of four keeps its lower 14 bits. So there is no need of pairs, and the sums over lines are shared.
struct WordsAround {
    /// Even like all columns that vectors start at, although it reaches one pixel only.
    static constexpr std::size_t kMargin = 2;
    static constexpr std::uint16_t kLargestMask = 0x3FFF;

    V16 here, horizontal;

    explicit HWY_INLINE WordsAround(const std::uint8_t* at)
        : here(LoadWords(at)), horizontal(hn::Add(LoadWords(at - 2), LoadWords(at + 2))) {}

private:
    static HWY_INLINE V16 LoadWords(const std::uint8_t* at) { return Words(Load(at)); }
};

template <bool kGreenFirst, bool kOneNeighbour>
HWY_INLINE SitePlanes<std::uint16_t> InterpolateSites(const WordsAround& above, const WordsAround& line,
                                                      const WordsAround& below) {
    static_assert(!kOneNeighbour, "a third of a sum needs all of it");
    const V16 verticalSum = hn::Add(above.here, below.here);
    const V16 horizontal = hn::ShiftRight<1>(line.horizontal), vertical = hn::ShiftRight<1>(verticalSum);
    const V16 cross = hn::ShiftRight<2>(hn::Add(line.horizontal, verticalSum));
    const V16 diagonal = hn::ShiftRight<2>(hn::Add(above.horizontal, below.horizontal));
    if constexpr (kGreenFirst) {
        return {hn::OddEven(line.here, horizontal), hn::OddEven(cross, line.here), hn::OddEven(diagonal, vertical)};
    } else {
        return {hn::OddEven(horizontal, line.here), hn::OddEven(line.here, cross), hn::OddEven(vertical, diagonal)};
    }
}

/// Nearest-neighbour demosaicing. All four pixels of a 2 x 2 cell get its red and its blue; the left two get the upper line's
/// green, the right two the lower line's. `own` is the upper line's colour.
template <bool kGreenFirst, typename Sample>
HWY_INLINE SitePlanes<Sample> ReplicateCells(const std::uint8_t* upperAt, const std::uint8_t* lowerAt) {
    using P = Pairs<Sample>;
    const auto upper = P::Load(upperAt), lower = P::Load(lowerAt);
    if constexpr (kGreenFirst) {  // green own / opposite green
        return {P::Merge(P::Odd(upper), upper), P::Merge(upper, lower), P::Merge(lower, P::template ToUpper<0>(lower))};
    } else {  // own green / green opposite
        return {P::Merge(upper, P::template ToUpper<0>(upper)),
                P::MergeClean(P::Odd(upper), P::template ToUpper<0>(lower)), P::Merge(P::Odd(lower), lower)};
    }
}

/// Passes planes of sites through the filter stage and to the writer: one vector of the writer's values at a time, which
/// takes two vectors of samples where words become bytes.
template <class Writer, class Filter, typename Sample>
class SiteOutput {
public:
    static constexpr std::size_t kVectors = sizeof(Sample) / sizeof(typename Writer::Value);
    static constexpr std::size_t kVectorPixels = kLanes / sizeof(Sample);
    static constexpr std::size_t kPixels = kVectors * kVectorPixels;

    explicit HWY_INLINE SiteOutput(const Filter& stage) : filter(stage) {}

    /// Writes the same pixels to each address of `to`.
    template <std::size_t kCopies>
    HWY_INLINE void Write(const SitePlanes<Sample> (&sites)[kVectors], bool ownIsBlue,
                          std::uint8_t* const (&to)[kCopies], bool streams) const {
        // Vector by vector: records that meet behind a branch go through memory.
        auto first = sites[0].own, second = sites[0].green, third = sites[0].opposite;
        auto nextFirst = sites[kVectors - 1].own, nextThird = sites[kVectors - 1].opposite;
        if (ownIsBlue) {
            first = sites[0].opposite;
            third = sites[0].own;
            nextFirst = sites[kVectors - 1].opposite;
            nextThird = sites[kVectors - 1].own;
        }
        if constexpr (kVectors == 1) {
            filter.Apply(first, second, third);
            for (std::uint8_t* const copy : to) Writer::Store(first, second, third, &copy, streams);
        } else {
            const Planes8 pixels = filter.Apply({first, second, third}, {nextFirst, sites[1].green, nextThird});
            for (std::uint8_t* const copy : to)
                Writer::Store(pixels.first, pixels.second, pixels.third, &copy, streams);
        }
    }

private:
    Filter filter;
};

/// What the steps of both demosaicings share: rows of sites as inputs, rows of pixels as outputs.
template <class Writer, class Settings, class Stage, std::size_t kRowsIn, std::size_t kRowsOut>
struct SiteStep {
    using Sample = typename Settings::Sample;
    using State = SiteOutput<Writer, Stage, Sample>;
    static constexpr std::size_t kInputs = kRowsIn, kOutputs = kRowsOut, kPrefetchRows = kRowsOut;
    static constexpr std::size_t kPixels = State::kPixels, kGroup = 2, kPixelBytes = Writer::kPixelBytes;
    static constexpr StepCost kCost = StepCost::kManyRows;
    /// Filters of words take so long that it does not matter.
    static constexpr bool kStreamsApart = !std::is_same_v<Stage, FilterStage<Filter16, false>>;

    struct Rows : StepRows<kInputs, kOutputs> {
        bool ownIsBlue;  ///< of the first of them

        HWY_INLINE void CopyOthers(const Rows& rows) { ownIsBlue = rows.ownIsBlue; }
    };

    static constexpr std::size_t InputBytes(std::size_t pixels) { return pixels * sizeof(Sample); }
    static HWY_INLINE std::uint8_t* Output(const State&, const Rows& rows, std::size_t i, std::size_t x, std::size_t) {
        return rows.out[i] + x * kPixelBytes;
    }
};
