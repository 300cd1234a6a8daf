// Bilinear demosaicing with vectors. Needs Sites-inl.h before it.
//
// Two rows are made at a time, because they share most of their neighbours; only around the first and the last row of an image
// or a band a row is made alone. Vectors also run over the first and the last pixel of a row, which lack a neighbour; both
// pixels are then computed again, one by one. The first and the last row of an image have one neighbouring row instead of two,
// so averages over four samples are averages over three there.

/// What both steps share. `kFewBits`: samples are words of which at most 14 bits count, see WordsAround.
template <class Writer, class Settings, class Stage, bool kFewBits, std::size_t kRows>
struct BilinearStep : SiteStep<Writer, Settings, Stage, kRows + 2, kRows> {
    using typename BilinearStep::SiteStep::Sample;
    using Pixels = std::conditional_t<kFewBits, WordsAround, PixelsAround<Sample>>;
    static constexpr std::size_t kMargin = Pixels::kMargin;
    static_assert(kMargin == PixelsAround<Sample>::kMargin);
};

/// Two rows, each with two neighbours. The first is the one whose first pixel is not green, be it above or below the second:
/// averages do not tell above from below. Inputs are the row beyond the first, both rows, the row beyond the second.
template <class Writer, class Settings, class Stage, bool kFewBits>
class TwoRowsStep : public BilinearStep<Writer, Settings, Stage, kFewBits, 2> {
    using Base = BilinearStep<Writer, Settings, Stage, kFewBits, 2>;

public:
    using Base::InputBytes, Base::Output;
    using typename Base::Rows, typename Base::Sample, typename Base::State, typename Base::Pixels;

    /// As many vectors of samples as make one of the writer's values.
    static HWY_INLINE void Run(const State& output, const Rows& rows, std::size_t x, bool streams) {
        const TwoRows sites = Vectors(rows, x);
        if constexpr (State::kVectors == 1) {
            Write(output, {sites.first}, {sites.second}, rows, x, streams);
        } else {
            const TwoRows next = Vectors(rows, x + State::kVectorPixels);
            Write(output, {sites.first, next.first}, {sites.second, next.second}, rows, x, streams);
        }
    }

private:
    struct TwoRows {
        SitePlanes<Sample> first, second;
    };

    static HWY_INLINE void Write(const State& output, const SitePlanes<Sample> (&first)[State::kVectors],
                                 const SitePlanes<Sample> (&second)[State::kVectors], const Rows& rows, std::size_t x,
                                 bool streams) {
        std::uint8_t *const to[] = {Output(output, rows, 0, x, 0)}, *const toSecond[] = {Output(output, rows, 1, x, 0)};
        output.Write(first, rows.ownIsBlue, to, streams);
        output.Write(second, !rows.ownIsBlue, toSecond, streams);
    }

    static HWY_INLINE TwoRows Vectors(const Rows& rows, std::size_t x) {
        const std::size_t at = InputBytes(x);
        const Pixels before(rows.in[0] + at), first(rows.in[1] + at), second(rows.in[2] + at);
        const auto sites = InterpolateSites<false, false>(before, first, second);
        return {sites, InterpolateSites<true, false>(first, second, Pixels(rows.in[3] + at))};
    }
};

/// One row with any neighbours. Inputs are the row above, the row, the row below; in place of one that does not exist stands
/// the other, or else the row itself.
template <class Writer, class Settings, class Stage, bool kFewBits>
class OneRowStep : public BilinearStep<Writer, Settings, Stage, kFewBits, 1> {
    using Base = BilinearStep<Writer, Settings, Stage, kFewBits, 1>;

public:
    using Base::InputBytes, Base::Output;
    using typename Base::Sample, typename Base::State, typename Base::Pixels;

    struct Rows : Base::Rows {
        bool greenFirst;
        int neighbours;  ///< that exist

        HWY_INLINE void CopyOthers(const Rows& rows) {
            Base::Rows::CopyOthers(rows);
            greenFirst = rows.greenFirst;
            neighbours = rows.neighbours;
        }
    };

    static constexpr bool kStreamsApart = false;  // there are few such rows

    static HWY_INLINE void Run(const State& output, const Rows& rows, std::size_t x, bool streams) {
        std::uint8_t* const to[] = {Output(output, rows, 0, x, 0)};
        if constexpr (State::kVectors == 1)
            output.Write({Vector(rows, x)}, rows.ownIsBlue, to, streams);
        else
            output.Write({Vector(rows, x), Vector(rows, x + State::kVectorPixels)}, rows.ownIsBlue, to, streams);
    }

private:
    static HWY_INLINE SitePlanes<Sample> Vector(const Rows& rows, std::size_t x) {
        return rows.greenFirst ? Vector<true>(rows, InputBytes(x)) : Vector<false>(rows, InputBytes(x));
    }

    template <bool kGreenFirst>
    static HWY_INLINE SitePlanes<Sample> Vector(const Rows& rows, std::size_t at) {
        if (rows.neighbours == 2) return Interpolate<kGreenFirst, false, Pixels>(rows, at);
        if (rows.neighbours == 1) return Interpolate<kGreenFirst, true, PixelsAround<Sample>>(rows, at);
        return InterpolateLoneSites<kGreenFirst>(PixelsAround<Sample>(rows.in[1] + at));
    }

    template <bool kGreenFirst, bool kOneNeighbour, class PixelsOf>
    static HWY_INLINE SitePlanes<Sample> Interpolate(const Rows& rows, std::size_t at) {
        return InterpolateSites<kGreenFirst, kOneNeighbour>(PixelsOf(rows.in[0] + at), PixelsOf(rows.in[1] + at),
                                                            PixelsOf(rows.in[2] + at));
    }
};

/// Computes the first or the last pixel of a row. `above` and `below` are null where there is no such row.
template <class Writer, bool kIsFirst, class Settings>
HWY_INLINE void BorderPixel(const Settings& settings, std::size_t width, MosaicLine line, const std::uint8_t* above,
                            const std::uint8_t* row, const std::uint8_t* below, std::uint8_t* to) {
    using Sample = typename Settings::Sample;
    const bool hasNeighbour = width > 1;
    const std::size_t x = kIsFirst ? 0 : width - 1, at = x * sizeof(Sample);
    const SiteColours<Sample> site = InterpolateSite<Sample>(
        above == nullptr ? nullptr : above + at, row + at, below == nullptr ? nullptr : below + at,
        !kIsFirst && hasNeighbour, kIsFirst && hasNeighbour, line.IsGreenSite(x));
    StoreSite<Writer>(settings.filter, site, line.ownIsBlue, to + x * Writer::kPixelBytes);
}

/// Computes the first and the last pixel of a row, as far as they are in the tile. (Of an odd number of pixels no vector
/// reaches the last.)
template <class Writer, class Settings>
HWY_NOINLINE void BorderPixels(const Settings& settings, const Tile& tile, MosaicLine line, const std::uint8_t* above,
                               const std::uint8_t* row, const std::uint8_t* below, std::uint8_t* to) {
    if (tile.begin == 0) BorderPixel<Writer, true>(settings, tile.width, line, above, row, below, to);
    if (tile.end == tile.width) BorderPixel<Writer, false>(settings, tile.width, line, above, row, below, to);
}

template <class Writer, class Settings, bool kIsIdentity, bool kFewBits>
class Bilinear {
public:
    explicit Bilinear(const Settings& toUse) : output(Stage(toUse.filter)), settings(toUse) {}

    static void Run(const RowKernel& kernel, const Tile& tile) {
        const auto& self = kernel.Get<Bilinear>();
        for (std::uint32_t y = tile.first; y < tile.last;) {
            if (y > 0 && y + 2 < tile.height && y + 1 < tile.last) {
                self.RunTwoRows(tile, y);
                y += 2;
            } else {
                self.RunOneRow(tile, y);
                y += 1;
            }
        }
    }

private:
    using Stage = FilterStage<typename Settings::Filter, kIsIdentity>;

    void RunTwoRows(const Tile& tile, std::uint32_t y) const {
        using Step = TwoRowsStep<Writer, Settings, Stage, kFewBits>;
        typename Step::Rows rows;
        MosaicLine line = LineOf(settings, y);
        const bool isUpsideDown = line.greenFirst;
        if (isUpsideDown) line = line.Next();
        rows.ownIsBlue = line.ownIsBlue;
        // One by one: of a loop, compilers make vectors of addresses, and large images take a tenth longer.
        rows.in[0] = tile.source[isUpsideDown ? y + 2 : y - 1];
        rows.in[1] = tile.source[isUpsideDown ? y + 1 : y];
        rows.in[2] = tile.source[isUpsideDown ? y : y + 1];
        rows.in[3] = tile.source[isUpsideDown ? y - 1 : y + 2];
        rows.out[0] = tile.destination[isUpsideDown ? y + 1 : y];
        rows.out[1] = tile.destination[isUpsideDown ? y : y + 1];
        RowWalk<Step>(output, rows, ColumnsOf(tile), tile.prefetch, y).Run();
        BorderPixels<Writer>(settings, tile, line, rows.in[0], rows.in[1], rows.in[2], rows.out[0]);
        BorderPixels<Writer>(settings, tile, line.Next(), rows.in[1], rows.in[2], rows.in[3], rows.out[1]);
    }

    HWY_NOINLINE void RunOneRow(const Tile& tile, std::uint32_t y) const {
        using Step = OneRowStep<Writer, Settings, Stage, kFewBits>;
        const std::uint8_t* const above = y > 0 ? tile.source[y - 1] : nullptr;
        const std::uint8_t* const row = tile.source[y];
        const std::uint8_t* const below = y + 1 < tile.height ? tile.source[y + 1] : nullptr;
        typename Step::Rows rows;
        const MosaicLine line = LineOf(settings, y);
        rows.ownIsBlue = line.ownIsBlue;
        rows.greenFirst = line.greenFirst;
        rows.neighbours = (above != nullptr) + (below != nullptr);
        rows.in[0] = above != nullptr ? above : below != nullptr ? below : row;
        rows.in[1] = row;
        rows.in[2] = below != nullptr ? below : rows.in[0];
        rows.out[0] = tile.destination[y];
        RowWalk<Step>(output, rows, ColumnsOf(tile), tile.prefetch, y).Run();
        BorderPixels<Writer>(settings, tile, line, above, row, below, rows.out[0]);
    }

    SiteOutput<Writer, Stage, typename Settings::Sample> output;
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
