// Bilinear interpolation of Bayer lines with vectors. Needs SourceLines-inl.h and Sites-inl.h before it.
//
// Two lines are done at a time, because they share most of their neighbours. The rule for border pixels differs from that
// for the others only in what the first and the last pixel of a line use: vectors run over these too, and the two are
// written again by the general rule. The first and the last line have one neighbouring line instead of two, which makes an
// average over three of the one over four.

/// Where one or two lines come from and go to.
struct InterpolatedLines {
    const std::uint8_t* rows[4];  ///< the line above, the line, (the second line,) the line below
    std::uint8_t* out[2];
};

/// Lines to be interpolated over some columns.
struct InterpolationJob : InterpolatedLines {
    ReadableBytes readable;
    MosaicLine line;         ///< the first of the lines
    std::size_t begin, end;  ///< columns
    std::size_t width;       ///< of the image
    FetchAhead ahead[2];     ///< with each of the lines
};

/// How many lines; a single one with two neighbouring lines, one, or none.
enum class Lines { kLone, kOneWithOneNeighbour, kOne, kTwo };

template <class Writer, class Band, bool kIsIdentity, bool kFewBits, Lines kLines, bool kGreenFirst>
class LineInterpolator {
public:
    HWY_INLINE LineInterpolator(const InterpolationJob& toDo, const typename Band::Filter& filter)
        : job(toDo), output(Stage(filter)), tables(filter) {}

    template <bool kStream>
    HWY_INLINE void Run() const {
        const std::size_t pixels = job.end - job.begin;
        const std::size_t evenEnd = job.end - pixels % 2;
        if (pixels < kPixels)
            Staged(job.begin, pixels);
        else if constexpr (kStream)
            Stream(evenEnd);
        else
            Cover(evenEnd);
        if (job.begin == 0) BorderPixel(0);
        if (job.end == job.width) BorderPixel(job.width - 1);
    }

private:
    using Sample = typename Band::Sample;
    using Stage = FilterStage<typename Band::Filter, kIsIdentity>;
    using Output = SiteOutput<Writer, Stage, Sample>;
    using Pixels = std::conditional_t<kFewBits && (kLines == Lines::kOne || kLines == Lines::kTwo), WordsAround,
                                      PixelsAround<Sample>>;

    // Of the rows, those that are read.
    static constexpr std::size_t kFirstRow = kLines == Lines::kLone ? 1 : 0;
    static constexpr std::size_t kRows = kLines == Lines::kTwo ? 4 : kLines == Lines::kLone ? 2 : 3;
    static constexpr std::size_t kOutputs = kLines == Lines::kTwo ? 2 : 1;
    static constexpr std::size_t kPixels = Output::kPixels;
    static constexpr std::size_t kMargin = Pixels::kMargin;
    static constexpr FetchAhead kNothing[kOutputs] = {};

    static HWY_INLINE const std::uint8_t* Row(const InterpolatedLines& of, std::size_t row, std::size_t x) {
        return of.rows[row] + x * sizeof(Sample);
    }
    static HWY_INLINE std::uint8_t* Out(const InterpolatedLines& of, std::size_t line, std::size_t x) {
        return of.out[line] + x * Writer::kPixelBytes;
    }

    /// Whether the step at column x reaches only what may be read. A single neighbouring line may lie on either side of
    /// the line itself.
    HWY_INLINE bool IsReadable(std::size_t x) const {
        constexpr std::size_t kBefore = kMargin * sizeof(Sample), kAfter = (kPixels + kMargin) * sizeof(Sample);
        const std::uint8_t* const upper = std::min(Row(job, kFirstRow, x), Row(job, 1, x));
        const std::uint8_t* const lower = std::max(Row(job, 1, x), Row(job, kRows - 1, x));
        return upper - kBefore >= job.readable.begin && lower + kAfter <= job.readable.end;
    }

    /// All columns up to `evenEnd`, at least a step of them. Steps overlap where their number does not divide.
    HWY_INLINE void Cover(std::size_t evenEnd) const {
        std::size_t x = job.begin;
        std::size_t last = evenEnd - kPixels;
        if (!IsReadable(x)) {
            Staged(x, kPixels);
            x += kPixels;
        }
        if (!IsReadable(last)) {
            if (x < evenEnd) Staged(last, kPixels);
            if (last < x + kMargin) return;
            last -= kMargin;
        }
        if (x < evenEnd) Steps<false>(job, std::min(x, last), last, job.ahead);
    }

    /// The same with streaming writes. They must not meet ordinary ones in a cache line, so the ends are cut to fit.
    HWY_INLINE void Stream(std::size_t evenEnd) const {
        std::size_t x = job.begin;
        const std::size_t head = AlignedBayerPixels<Writer>(Out(job, 0, x), kPixels);
        WholeOrPart(x, head);
        x += head;
        if (x + kPixels + kMargin <= evenEnd) {
            const std::size_t columns = (evenEnd - kMargin - x) / kPixels * kPixels;
            Steps<true>(job, x, x + columns - kPixels, job.ahead);
            x += columns;
        }
        if (x < evenEnd) WholeOrPart(x, evenEnd - x);
    }

    HWY_INLINE void WholeOrPart(std::size_t x, std::size_t pixels) const {
        if (pixels == kPixels && IsReadable(x))
            Steps<false>(job, x, x, kNothing);
        else
            Staged(x, pixels);
    }

    /// Steps at column x and after it, the last one at `last`. The one place where the work is compiled.
    template <bool kStream>
    HWY_NOINLINE void Steps(const InterpolatedLines& of, std::size_t x, std::size_t last,
                            const FetchAhead* ahead) const {
        // Local, so that no write to the destination can be taken for a change of them.
        const InterpolatedLines lines = of;
        const bool ownIsBlue = job.line.ownIsBlue;
        const Output to = output;
        Fetcher<kOutputs> fetcher(ahead, (last - x) / kPixels + 1);
        for (;;) {
            fetcher.Step();
            Step<kStream>(lines, ownIsBlue, to, x);
            if (x >= last) break;
            x = std::min(x + kPixels, last);
        }
        LeaveVectors();
    }

    /// The vectors at column x: as many as make one of the writer's.
    template <bool kStream>
    static HWY_INLINE void Step(const InterpolatedLines& of, bool ownIsBlue, const Output& to, std::size_t x) {
        if constexpr (Output::kVectors == 1) {
            const TwoLines sites = Vectors(of, x);
            const SitePlanes<Sample> first[] = {sites.first}, second[] = {sites.second};
            to.template Write<kStream>(first, ownIsBlue, {Out(of, 0, x)});
            if constexpr (kOutputs == 2) to.template Write<kStream>(second, !ownIsBlue, {Out(of, 1, x)});
        } else {
            const TwoLines sites = Vectors(of, x), next = Vectors(of, x + Output::kVectorPixels);
            const SitePlanes<Sample> first[] = {sites.first, next.first}, second[] = {sites.second, next.second};
            to.template Write<kStream>(first, ownIsBlue, {Out(of, 0, x)});
            if constexpr (kOutputs == 2) to.template Write<kStream>(second, !ownIsBlue, {Out(of, 1, x)});
        }
    }

    struct TwoLines {
        SitePlanes<Sample> first, second;  ///< the same, where there is one line
    };
    static HWY_INLINE TwoLines Vectors(const InterpolatedLines& of, std::size_t x) {
        const Pixels line(Row(of, 1, x));
        if constexpr (kLines == Lines::kLone) {
            const auto only = InterpolateLoneSites<kGreenFirst>(line);
            return {only, only};
        } else if constexpr (kLines == Lines::kTwo) {
            const Pixels above(Row(of, 0, x)), below(Row(of, 2, x)), further(Row(of, 3, x));
            return {InterpolateSites<kGreenFirst, false>(above, line, below),
                    InterpolateSites<!kGreenFirst, false>(line, below, further)};
        } else {
            const Pixels above(Row(of, 0, x)), below(Row(of, 2, x));
            constexpr bool kOneNeighbour = kLines == Lines::kOneWithOneNeighbour;
            const auto only = InterpolateSites<kGreenFirst, kOneNeighbour>(above, line, below);
            return {only, only};
        }
    }

    /// Up to a step of pixels, through buffers on the stack where a whole step would reach outside the image.
    HWY_NOINLINE void Staged(std::size_t x, std::size_t pixels) const {
        std::uint8_t input[kRows][(kPixels + 2 * kMargin) * sizeof(Sample)] = {};
        std::uint8_t result[kOutputs][kPixels * Writer::kPixelBytes];
        InterpolatedLines staged = {};
        const std::size_t from = x < kMargin ? 0 : x - kMargin;
        const std::size_t to = std::min(x + pixels + kMargin, std::min(job.end + 1, job.width));
        for (std::size_t row = kFirstRow; row < kRows; ++row) {
            std::memcpy(input[row] + (kMargin - (x - from)) * sizeof(Sample), Row(job, row, from),
                        (to - from) * sizeof(Sample));
            staged.rows[row] = input[row] + kMargin * sizeof(Sample);
        }
        for (std::size_t line = 0; line < kOutputs; ++line) staged.out[line] = result[line];
        Steps<false>(staged, 0, 0, kNothing);
        for (std::size_t line = 0; line < kOutputs; ++line)
            std::memcpy(Out(job, line, x), result[line], pixels * Writer::kPixelBytes);
    }

    /// The first or the last pixel of the image, by the general rule. (No vector ends with the last one of an odd number.)
    HWY_INLINE void BorderPixel(std::size_t x) const {
        MosaicLine line = job.line;
        for (std::size_t i = 0; i < kOutputs; ++i, line = line.Next()) {
            constexpr bool kHasAbove = kLines != Lines::kLone;
            constexpr bool kHasBelow = kHasAbove && kLines != Lines::kOneWithOneNeighbour;
            const auto site = InterpolateSite<Sample>(kHasAbove ? Row(job, i, x) : nullptr, Row(job, i + 1, x),
                                                      kHasBelow ? Row(job, i + 2, x) : nullptr, x > 0,
                                                      x + 1 < job.width, line.IsGreenSite(x));
            StoreSite<Writer>(tables, site, line.ownIsBlue, Out(job, i, x));
        }
    }

    const InterpolationJob& job;
    const Output output;
    const typename Band::Filter& tables;
};

/// `kFewBits`: samples are words of which at most 14 bits count, see WordsAround.
template <class Writer, class Band, bool kIsIdentity, bool kFewBits>
class Interpolation {
public:
    explicit Interpolation(const Band& toDo) : band(toDo) {}

    template <class Source>
    void Run(Source& source, std::uint32_t begin, std::uint32_t end) const {
        const bool stream = MayStream<Writer>(band, kPixels);
        InterpolationJob job = {};
        job.readable = source.Readable();
        job.line = band.firstLine;
        job.begin = begin;
        job.end = end;
        job.width = band.width;
        for (std::uint32_t y = 0; y < band.lines;) {
            const bool hasAbove = y > 0 || band.hasLineAbove;
            const bool hasBelow = y + 1 < band.lines || band.hasLineBelow;
            const bool hasTwoBelow = y + 2 < band.lines || (y + 2 == band.lines && band.hasLineBelow);
            const Lines lines = hasAbove && hasTwoBelow ? Lines::kTwo
                                : hasAbove && hasBelow  ? Lines::kOne
                                : hasAbove || hasBelow  ? Lines::kOneWithOneNeighbour
                                                        : Lines::kLone;
            job.out[0] = band.destination + y * band.destinationLine;
            job.out[1] = job.out[0] + band.destinationLine;
            const std::ptrdiff_t line = y;
            for (std::ptrdiff_t i = 0; i < 2; ++i) job.ahead[i] = AheadOf(band, line + i, begin, end);
            // A neighbour that is missing is the other one's double, or the line's own.
            const std::ptrdiff_t above = hasAbove ? -1 : hasBelow ? 1 : 0;
            job.rows[0] = source.Line(line + above);
            job.rows[1] = source.Line(line);
            job.rows[2] = source.Line(hasBelow ? line + 1 : line + above);
            if (lines == Lines::kTwo) job.rows[3] = source.Line(line + 2);
            Convert(job, lines, stream);
            const std::uint32_t done = lines == Lines::kTwo ? 2 : 1;
            if (done == 1) job.line = job.line.Next();
            y += done;
        }
    }

private:
    using Sample = typename Band::Sample;
    static constexpr std::size_t kPixels = kLanes / sizeof(typename Writer::Value);

    void Convert(const InterpolationJob& job, Lines lines, bool stream) const {
        if (job.line.greenFirst)
            Convert<true>(job, lines, stream);
        else
            Convert<false>(job, lines, stream);
    }

    template <bool kGreenFirst>
    void Convert(const InterpolationJob& job, Lines lines, bool stream) const {
        if (lines == Lines::kTwo && stream)
            ConvertLines<Lines::kTwo, kGreenFirst, true>(job);
        else if (lines == Lines::kTwo)
            ConvertLines<Lines::kTwo, kGreenFirst, false>(job);
        else if (lines == Lines::kOne)
            ConvertLines<Lines::kOne, kGreenFirst, false>(job);
        else if (lines == Lines::kOneWithOneNeighbour)
            ConvertLines<Lines::kOneWithOneNeighbour, kGreenFirst, false>(job);
        else
            ConvertLines<Lines::kLone, kGreenFirst, false>(job);
    }

    template <Lines kLines, bool kGreenFirst, bool kStream>
    HWY_NOINLINE void ConvertLines(const InterpolationJob& job) const {
        LineInterpolator<Writer, Band, kIsIdentity, kFewBits, kLines, kGreenFirst>(job, band.filter)
            .template Run<kStream>();
    }

    const Band& band;
};

template <class Writer, class Band>
void Interpolate(const Band& band) {
    constexpr bool kIsWords = sizeof(typename Band::Sample) == 2;
    if constexpr (kIsWords) {
        // Rare enough not to be compiled apart for an identity filter.
        if (band.filter.indexMask > WordsAround::kLargestMask) {
            OnLines(band, Interpolation<Writer, Band, false, false>(band));
            return;
        }
    }
    if (band.filter.IsIdentity())
        OnLines(band, Interpolation<Writer, Band, true, kIsWords>(band));
    else
        OnLines(band, Interpolation<Writer, Band, false, kIsWords>(band));
}
