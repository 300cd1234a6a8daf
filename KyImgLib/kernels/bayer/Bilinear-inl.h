// Bilinear demosaicing with vectors. Needs Sites-inl.h before it.
//
// Two rows are made at a time, because they share most of their neighbours. Vectors also run over the first and the last pixel
// of a row, which lack a neighbour; both pixels are then computed again, one by one. The first and the last row of an image
// have one neighbouring row instead of two, so averages over four samples are averages over three there.

/// One row without neighbouring rows, one row with one, one row with two, or two rows with two.
enum class RowKind { kLone, kOneWithOneNeighbour, kOne, kTwo };
template <RowKind kKind>
constexpr std::size_t kInputsOf = kKind == RowKind::kTwo    ? 4
                                  : kKind == RowKind::kLone ? 1
                                                            : 3;
template <RowKind kKind>
constexpr std::size_t kOutputsOf = kKind == RowKind::kTwo ? 2 : 1;

/// Inputs are the row above, the row, (the second row,) the row below. A lone row is its only input.
template <class Writer, class Settings, class Stage, bool kFewBits, RowKind kKind, bool kGreenFirst>
class BilinearStep : public SiteStep<Writer, Settings, Stage, kInputsOf<kKind>, kOutputsOf<kKind>> {
    using Base = SiteStep<Writer, Settings, Stage, kInputsOf<kKind>, kOutputsOf<kKind>>;

public:
    using Base::InputBytes, Base::kOutputs, Base::Output;
    using typename Base::Rows, typename Base::Sample, typename Base::State;
    using Pixels = std::conditional_t<kFewBits && (kKind == RowKind::kOne || kKind == RowKind::kTwo), WordsAround,
                                      PixelsAround<Sample>>;

    static constexpr std::size_t kMargin = Pixels::kMargin;

    /// As many vectors of samples as make one of the writer's values.
    template <bool kStream>
    static HWY_INLINE void Run(const State& output, const Rows& rows, std::size_t x) {
        const TwoRows sites = Vectors(rows, x);
        if constexpr (State::kVectors == 1) {
            Write<kStream>(output, {sites.first}, {sites.second}, rows, x);
        } else {
            const TwoRows next = Vectors(rows, x + State::kVectorPixels);
            Write<kStream>(output, {sites.first, next.first}, {sites.second, next.second}, rows, x);
        }
    }

private:
    struct TwoRows {
        SitePlanes<Sample> first, second;  ///< the same, where there is one row
    };

    template <bool kStream>
    static HWY_INLINE void Write(const State& output, const SitePlanes<Sample> (&first)[State::kVectors],
                                 const SitePlanes<Sample> (&second)[State::kVectors], const Rows& rows, std::size_t x) {
        std::uint8_t* const to[] = {Output(output, rows, 0, x, 0)};
        output.template Write<kStream>(first, rows.ownIsBlue, to);
        if constexpr (kOutputs == 2) {
            std::uint8_t* const toSecond[] = {Output(output, rows, 1, x, 0)};
            output.template Write<kStream>(second, !rows.ownIsBlue, toSecond);
        }
    }

    static HWY_INLINE TwoRows Vectors(const Rows& rows, std::size_t x) {
        const std::size_t at = InputBytes(x);
        if constexpr (kKind == RowKind::kLone) {
            const auto only = InterpolateLoneSites<kGreenFirst>(Pixels(rows.in[0] + at));
            return {only, only};
        } else {
            const Pixels above(rows.in[0] + at), row(rows.in[1] + at), below(rows.in[2] + at);
            constexpr bool kOneNeighbour = kKind == RowKind::kOneWithOneNeighbour;
            const auto first = InterpolateSites<kGreenFirst, kOneNeighbour>(above, row, below);
            if constexpr (kKind == RowKind::kTwo)
                return {first, InterpolateSites<!kGreenFirst, false>(row, below, Pixels(rows.in[3] + at))};
            else
                return {first, first};
        }
    }
};

/// `kFewBits`: samples are words of which at most 14 bits count, see WordsAround.
template <class Writer, class Settings, bool kIsIdentity, bool kFewBits>
class Bilinear {
public:
    explicit Bilinear(const Settings& toUse) : output(Stage(toUse.filter)), settings(toUse) {}

    static void Run(const RowKernel& kernel, const Tile& tile) {
        const auto& self = kernel.Get<Bilinear>();
        for (std::uint32_t y = tile.first; y < tile.last;) y += self.RunRows(tile, y);
    }

private:
    using Sample = typename Settings::Sample;
    using Stage = FilterStage<typename Settings::Filter, kIsIdentity>;

    /// Returns the rows that are done.
    std::uint32_t RunRows(const Tile& tile, std::uint32_t y) const {
        const bool hasAbove = y > 0, hasBelow = y + 1 < tile.height, hasTwoBelow = y + 2 < tile.height;
        if (hasAbove && hasTwoBelow && y + 1 < tile.last) return RunRows<RowKind::kTwo>(tile, y);
        if (hasAbove && hasBelow) return RunRows<RowKind::kOne>(tile, y);
        if (hasAbove || hasBelow) return RunRows<RowKind::kOneWithOneNeighbour>(tile, y);
        return RunRows<RowKind::kLone>(tile, y);
    }

    template <RowKind kKind>
    std::uint32_t RunRows(const Tile& tile, std::uint32_t y) const {
        return LineOf(settings, y).greenFirst ? RunRows<kKind, true>(tile, y) : RunRows<kKind, false>(tile, y);
    }

    template <RowKind kKind, bool kGreenFirst>
    HWY_NOINLINE std::uint32_t RunRows(const Tile& tile, std::uint32_t y) const {
        using Step = BilinearStep<Writer, Settings, Stage, kFewBits, kKind, kGreenFirst>;
        typename Step::Rows rows;
        rows.ownIsBlue = LineOf(settings, y).ownIsBlue;
        if constexpr (kKind == RowKind::kLone) {
            rows.in[0] = tile.source[y];
        } else {
            // The existing neighbour takes the place of a missing one.
            const bool hasAbove = y > 0, hasBelow = y + 1 < tile.height;
            rows.in[0] = tile.source[hasAbove ? y - 1 : y + 1];
            rows.in[1] = tile.source[y];
            rows.in[2] = tile.source[hasBelow ? y + 1 : y - 1];
            if constexpr (kKind == RowKind::kTwo) rows.in[3] = tile.source[y + 2];
        }
        for (std::uint32_t i = 0; i < Step::kOutputs; ++i) rows.out[i] = tile.destination[y + i];
        const WalkColumns columns = ColumnsOf(tile);
        RowWalk<Step>(output, rows, columns, tile.prefetch, y).Run();
        for (std::uint32_t i = 0; i < Step::kOutputs; ++i) {
            const MosaicLine line = LineOf(settings, y + i);
            if (tile.begin == 0) BorderPixel<kKind, true>(rows.in + i, tile.width, line, rows.out[i]);
            if (tile.end == tile.width) BorderPixel<kKind, false>(rows.in + i, tile.width, line, rows.out[i]);
        }
        return Step::kOutputs;
    }

    /// Computes the first or the last pixel of a row. (Of an odd number of pixels no vector reaches the last.)
    template <RowKind kKind, bool kIsFirst>
    HWY_INLINE void BorderPixel(const std::uint8_t* const* in, std::size_t width, const MosaicLine& line,
                                std::uint8_t* to) const {
        constexpr bool kIsLone = kKind == RowKind::kLone;
        const bool hasNeighbour = width > 1;
        const std::size_t x = kIsFirst ? 0 : width - 1, at = x * sizeof(Sample);
        const std::uint8_t* const above = kIsLone ? nullptr : in[0] + at;
        const std::uint8_t* const below = kIsLone || kKind == RowKind::kOneWithOneNeighbour ? nullptr : in[2] + at;
        const SiteColours<Sample> site =
            InterpolateSite<Sample>(above, in[kIsLone ? 0 : 1] + at, below, !kIsFirst && hasNeighbour,
                                    kIsFirst && hasNeighbour, line.IsGreenSite(x));
        StoreSite<Writer>(settings.filter, site, line.ownIsBlue, to + x * Writer::kPixelBytes);
    }

    SiteOutput<Writer, Stage, Sample> output;
    Settings settings;
};

template <class Kernel, class Settings>
void SetBayer(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    kernel.Set(needs, &Kernel::Run, Kernel(settings));
}

template <class Writer, class Settings>
void SetBilinear(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    constexpr bool kIsWords = sizeof(typename Settings::Sample) == 2;
    if constexpr (kIsWords) {
        // Rare enough not to be compiled apart for an identity filter.
        if (settings.filter.indexMask > WordsAround::kLargestMask)
            return SetBayer<Bilinear<Writer, Settings, false, false>>(needs, settings, kernel);
    }
    if (settings.filter.IsIdentity())
        SetBayer<Bilinear<Writer, Settings, true, kIsWords>>(needs, settings, kernel);
    else
        SetBayer<Bilinear<Writer, Settings, false, kIsWords>>(needs, settings, kernel);
}
