// Replication of Bayer cells with vectors. Needs SourceLines-inl.h and Sites-inl.h before it.

template <class Writer, class Band, bool kIsIdentity>
class Replication {
public:
    explicit Replication(const Band& toDo) : band(toDo) {}

    template <class Source>
    void Run(Source& source, std::uint32_t begin, std::uint32_t end) const {
        const bool stream = MayStream<Writer>(band, kPixels);
        for (std::uint32_t y = 0; y < band.lines; y += 2) {
            const std::ptrdiff_t line = y;
            LinePair pair = {};
            pair.rows[0] = source.Line(line);
            pair.rows[1] = source.Line(line + 1);
            pair.out[0] = band.destination + line * band.destinationLine;
            pair.out[1] = pair.out[0] + band.destinationLine;
            pair.ownIsBlue = band.firstLine.ownIsBlue;
            for (std::ptrdiff_t i = 0; i < 2; ++i) pair.ahead[i] = AheadOf(band, line + i, begin, end);
            if (band.firstLine.greenFirst)
                stream ? Convert<true, true>(pair, begin, end) : Convert<true, false>(pair, begin, end);
            else
                stream ? Convert<false, true>(pair, begin, end) : Convert<false, false>(pair, begin, end);
        }
    }

private:
    using Sample = typename Band::Sample;
    using Stage = FilterStage<typename Band::Filter, kIsIdentity>;
    using Output = SiteOutput<Writer, Stage, Sample>;
    static constexpr std::size_t kPixels = Output::kPixels;

    /// Two lines of cells and the two lines that both get what they give.
    struct LinePair {
        const std::uint8_t* rows[2];
        std::uint8_t* out[2];
        bool ownIsBlue;
        FetchAhead ahead[2];
    };

    template <bool kGreenFirst, bool kStream>
    void Convert(const LinePair& pair, std::size_t begin, std::size_t end) const {
        const Output output(Stage(band.filter));
        if (end - begin < kPixels) {
            Staged<kGreenFirst>(pair, output, begin, end);
        } else if constexpr (kStream) {
            // Streaming writes must not meet ordinary ones in a cache line, so the ends are cut to fit.
            std::size_t x =
                begin + AlignedBayerPixels<Writer>(pair.out[0] + begin * Writer::kPixelBytes, kPixels) % kPixels;
            Staged<kGreenFirst>(pair, output, begin, x);
            if (x + kPixels <= end) {
                const std::size_t columns = (end - x) / kPixels * kPixels;
                Steps<kGreenFirst, true>(pair, output, x, x + columns - kPixels, pair.ahead);
                x += columns;
            }
            Staged<kGreenFirst>(pair, output, x, end);
        } else {
            Steps<kGreenFirst, false>(pair, output, begin, end - kPixels, pair.ahead);
        }
    }

    /// Steps at column x and after it, the last one at `last`. The one place where the work is compiled.
    template <bool kGreenFirst, bool kStream>
    static HWY_NOINLINE void Steps(const LinePair& pair, const Output& output, std::size_t x, std::size_t last,
                                   const FetchAhead (&ahead)[2]) {
        // Local, so that no write to the destination can be taken for a change of them.
        const LinePair localPair = pair;
        const Output localOutput = output;
        Fetcher<2> fetcher(ahead, (last - x) / kPixels + 1);
        for (;;) {
            fetcher.Step();
            Step<kGreenFirst, kStream>(localPair, localOutput, x);
            if (x >= last) break;
            x = std::min(x + kPixels, last);
        }
        LeaveVectors();
    }

    template <bool kGreenFirst, bool kStream>
    static HWY_INLINE void Step(const LinePair& pair, const Output& output, std::size_t x) {
        std::uint8_t* const out[] = {pair.out[0] + x * Writer::kPixelBytes, pair.out[1] + x * Writer::kPixelBytes};
        if constexpr (Output::kVectors == 1) {
            const SitePlanes<Sample> sites[] = {Cells<kGreenFirst>(pair, x)};
            output.template Write<kStream>(sites, pair.ownIsBlue, out);
        } else {
            const SitePlanes<Sample> sites[] = {Cells<kGreenFirst>(pair, x),
                                                Cells<kGreenFirst>(pair, x + Output::kVectorPixels)};
            output.template Write<kStream>(sites, pair.ownIsBlue, out);
        }
    }

    template <bool kGreenFirst>
    static HWY_INLINE SitePlanes<Sample> Cells(const LinePair& pair, std::size_t x) {
        return ReplicateCells<kGreenFirst, Sample>(pair.rows[0] + x * sizeof(Sample),
                                                   pair.rows[1] + x * sizeof(Sample));
    }

    /// Less than a step of pixels.
    template <bool kGreenFirst>
    static HWY_NOINLINE void Staged(const LinePair& pair, const Output& output, std::size_t begin, std::size_t end) {
        if (begin == end) return;
        const std::size_t pixels = end - begin;
        std::uint8_t input[2][kPixels * sizeof(Sample)] = {};
        std::uint8_t result[2][kPixels * Writer::kPixelBytes];
        for (int row = 0; row < 2; ++row)
            std::memcpy(input[row], pair.rows[row] + begin * sizeof(Sample), pixels * sizeof(Sample));
        LinePair staged = {{input[0], input[1]}, {result[0], result[1]}, pair.ownIsBlue, {}};
        Steps<kGreenFirst, false>(staged, output, 0, 0, staged.ahead);
        for (int line = 0; line < 2; ++line)
            std::memcpy(pair.out[line] + begin * Writer::kPixelBytes, result[line], pixels * Writer::kPixelBytes);
    }

    const Band& band;
};

template <class Writer, class Band>
void Replicate(const Band& band) {
    if (band.filter.IsIdentity())
        OnLines(band, Replication<Writer, Band, true>(band));
    else
        OnLines(band, Replication<Writer, Band, false>(band));
}
