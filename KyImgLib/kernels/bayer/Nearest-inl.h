// Nearest-neighbour demosaicing with vectors. Needs Sites-inl.h and Bilinear-inl.h before it.

/// Inputs are the two rows of the cells. Both outputs get the same pixels.
template <class Writer, class Settings, class Stage, bool kGreenFirst>
class NearestStep : public SiteStep<Writer, Settings, Stage, 2, 2> {
    using Base = SiteStep<Writer, Settings, Stage, 2, 2>;

public:
    using Base::InputBytes, Base::Output;
    using typename Base::Rows, typename Base::Sample, typename Base::State;
    static constexpr std::size_t kMargin = 0;

    static HWY_INLINE void Run(const State& output, const Rows& rows, std::size_t x, bool streams) {
        std::uint8_t* const to[] = {Output(output, rows, 0, x, 0), Output(output, rows, 1, x, 0)};
        if constexpr (State::kVectors == 1)
            output.Write({Cells(rows, x)}, rows.ownIsBlue, to, streams);
        else
            output.Write({Cells(rows, x), Cells(rows, x + State::kVectorPixels)}, rows.ownIsBlue, to, streams);
    }

private:
    static HWY_INLINE SitePlanes<Sample> Cells(const Rows& rows, std::size_t x) {
        return ReplicateCells<kGreenFirst, Sample>(rows.in[0] + InputBytes(x), rows.in[1] + InputBytes(x));
    }
};

template <class Writer, class Settings, bool kIsIdentity>
class Nearest {
public:
    explicit Nearest(const Settings& toUse) : output(Stage(toUse.filter)), firstLine(toUse.firstLine) {}

    static void Run(const RowKernel& kernel, const Tile& tile) {
        const auto& self = kernel.Get<Nearest>();
        std::uint32_t cells = 0;
        for (std::uint32_t y = tile.first; y < tile.last; y += 2) {
            if (!HasCells<Writer>(tile, y, cells)) continue;
            self.firstLine.greenFirst ? self.template RunRows<true>(tile, y, cells)
                                      : self.template RunRows<false>(tile, y, cells);
        }
    }

private:
    using Stage = FilterStage<typename Settings::Filter, kIsIdentity>;

    template <bool kGreenFirst>
    HWY_NOINLINE void RunRows(const Tile& tile, std::uint32_t y, std::uint32_t cells) const {
        using Step = NearestStep<Writer, Settings, Stage, kGreenFirst>;
        std::uint8_t* const upper = tile.destination[y];
        std::uint8_t* const lower = y + 1 < tile.last ? tile.destination[y + 1] : upper;
        WalkColumns columns = ColumnsOf(tile);
        columns.end -= columns.end % 2;
        typename Step::Rows rows;
        rows.in[0] = tile.source[cells];
        rows.in[1] = tile.source[cells + 1];
        rows.out[0] = upper;
        rows.out[1] = lower;
        rows.ownIsBlue = firstLine.ownIsBlue;
        RowWalk<Step>(output, rows, columns, tile.prefetch, y).Run();
        RepeatLastPixel<Writer>(tile, upper);
        if (lower != upper) RepeatLastPixel<Writer>(tile, lower);
    }

    SiteOutput<Writer, Stage, typename Settings::Sample> output;
    MosaicLine firstLine;
};

template <class Writer, class Settings>
void SetNearest(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    if (settings.filter.IsIdentity())
        SetBayer<Nearest<Writer, Settings, true>>(needs, settings, kernel);
    else
        SetBayer<Nearest<Writer, Settings, false>>(needs, settings, kernel);
}
