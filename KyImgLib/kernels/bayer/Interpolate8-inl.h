// Bilinear interpolation of 8-bit Bayer lines with vectors. Needs SourceLines-inl.h before it.
//
// A vector of bytes is taken as words, each with an even pixel in its lower and the odd one after it in its upper byte.
// Of the three values of a pixel, those that are averages are computed for even and odd pixels apart and then merged.
// Two lines are done at a time, because they share most of their neighbours.
//
// The rule for border pixels differs from that for the others only in what the first and the last pixel of a line use:
// vectors run over these too, and the two are written again by the general rule. The first and the last line have one
// neighbouring line instead of two, which makes an average over three of the one over four.

/// A vector of pixels of one line, and the vectors two pixels to the left and to the right.
struct PixelsAround {
    V16 left, here, right;

    explicit HWY_INLINE PixelsAround(const std::uint8_t* at)
        : left(Words(Load(at - 2))), here(Words(Load(at))), right(Words(Load(at + 2))) {}
};

struct SitePlanes {
    V8 own, green, opposite;
};

HWY_INLINE V16 Even(V16 v) { return hn::And(v, hn::Set(D16(), 0x00FF)); }
HWY_INLINE V16 Odd(V16 v) { return hn::ShiftRight<8>(v); }

/// Values of even pixels in the lower bytes (the upper ones clear) and of odd pixels in the upper bytes (the lower ones
/// anything).
HWY_INLINE V8 MergeClean(V16 even, V16 odd) { return Bytes(hn::OrAnd(even, odd, hn::Set(D16(), 0xFF00))); }
/// The same with anything in the upper bytes of `even`.
HWY_INLINE V8 Merge(V16 even, V16 odd) { return Bytes(hn::IfVecThenElse(hn::Set(D16(), 0x00FF), even, odd)); }

/// Divides sums of four bytes, or of three, in words. The multiplier is 65536 / 3 rounded up, exact for sums of bytes.
template <bool kOneNeighbour>
HWY_INLINE V16 CrossAverage(V16 sum) {
    return kOneNeighbour ? hn::MulHigh(sum, hn::Set(D16(), 21846)) : hn::ShiftRight<2>(sum);
}
template <bool kOneNeighbour>
HWY_INLINE V16 CrossAverageUpper(V16 sum) {
    return kOneNeighbour ? hn::ShiftLeft<8>(CrossAverage<true>(sum)) : hn::ShiftLeft<6>(sum);
}

/// With one neighbouring line, `above` and `below` are both that line: what is averaged over the two is then its value.
template <bool kGreenFirst, bool kOneNeighbour>
HWY_INLINE SitePlanes InterpolateVector(const PixelsAround& above, const PixelsAround& line,
                                        const PixelsAround& below) {
    if constexpr (kGreenFirst) {
        const V16 vertical = hn::Add(Even(above.here), Even(below.here));
        const V16 verticalRight = hn::Add(Even(above.right), Even(below.right));
        const V16 horizontal = hn::Add(Odd(line.left), Odd(line.here));
        const V16 aboveAndBelow = hn::Add(Odd(above.here), Odd(below.here));
        // With one neighbour both summands are the same sample: it must count once.
        const V16 cross =
            hn::Add(hn::Add(Even(line.here), Even(line.right)), kOneNeighbour ? Odd(above.here) : aboveAndBelow);
        return {MergeClean(hn::ShiftRight<1>(horizontal), line.here),
                Merge(line.here, CrossAverageUpper<kOneNeighbour>(cross)),
                MergeClean(hn::ShiftRight<1>(vertical), hn::ShiftLeft<6>(hn::Add(vertical, verticalRight)))};
    } else {
        const V16 vertical = hn::Add(Odd(above.here), Odd(below.here));
        const V16 verticalLeft = hn::Add(Odd(above.left), Odd(below.left));
        const V16 horizontal = hn::Add(Even(line.here), Even(line.right));
        const V16 aboveAndBelow = hn::Add(Even(above.here), Even(below.here));
        const V16 cross =
            hn::Add(hn::Add(Odd(line.left), Odd(line.here)), kOneNeighbour ? Even(above.here) : aboveAndBelow);
        return {Merge(line.here, hn::ShiftLeft<7>(horizontal)),
                MergeClean(CrossAverage<kOneNeighbour>(cross), line.here),
                MergeClean(hn::ShiftRight<2>(hn::Add(vertical, verticalLeft)), hn::ShiftLeft<7>(vertical))};
    }
}

/// One or two lines to be interpolated over some columns.
struct InterpolationJob {
    const std::uint8_t* rows[4];  ///< the line above, the line, (the second line,) the line below
    std::uint8_t* out[2];
    ReadableBytes readable;
    MosaicLine line;         ///< the first of the lines
    std::size_t begin, end;  ///< columns
    std::size_t width;       ///< of the image
};

enum class Lines { kOneWithOneNeighbour, kOne, kTwo };

template <class Writer, class Filter, Lines kLines, bool kGreenFirst>
class LineInterpolator {
public:
    HWY_INLINE LineInterpolator(const InterpolationJob& toDo, const Filter8& tables)
        : job(toDo), filter(tables), filterTables(tables) {}

    template <bool kStream>
    HWY_INLINE void Run() const {
        const std::size_t pixels = job.end - job.begin;
        if (pixels < kLanes) {
            Staged(job.begin, pixels);
        } else {
            const std::size_t evenEnd = job.end - pixels % 2;
            const std::size_t last = evenEnd - kLanes;
            std::size_t x = job.begin;
            // Streaming writes must not meet ordinary ones in a cache line, so there the ends are cut to fit.
            const std::size_t head =
                kStream ? AlignedPixels<Writer>(job.out[0] + job.begin * Writer::kPixelBytes) : kLanes;
            if (!IsReadable(x) || head < kLanes) {
                Staged(x, head);
                x += head;
            } else if (kStream) {
                Vector<false>(job, x);
                x += head;
            }
            x = Vectors<kStream>(x, last);
            if (x < evenEnd) {
                const std::size_t tail = kStream ? x : last;
                if (tail == last && IsReadable(last))
                    Vector<false>(job, last);
                else
                    Staged(tail, evenEnd - tail);
            }
            if (evenEnd != job.end && job.end != job.width) BorderPixel(job.end - 1);
        }
        if (job.begin == 0) BorderPixel(0);
        if (job.end == job.width) BorderPixel(job.width - 1);
    }

private:
    static constexpr int kRows = kLines == Lines::kTwo ? 4 : 3;
    static constexpr int kOutputs = kLines == Lines::kTwo ? 2 : 1;
    /// Columns that a vector reaches beyond its own on both sides.
    static constexpr std::size_t kMargin = 2;

    /// Whether the vector at column x reaches only what may be read.
    HWY_INLINE bool IsReadable(std::size_t x) const {
        const std::uint8_t* const first = job.rows[0] + x;
        const std::uint8_t* const last = job.rows[kRows - 1] + x;
        return first - kMargin >= job.readable.begin && last + kLanes + kMargin <= job.readable.end;
    }

    /// Whole vectors from column x on while they start before `last`; returns the column after them.
    template <bool kStream>
    HWY_INLINE std::size_t Vectors(std::size_t x, std::size_t last) const {
        // Local, so that no write to the destination can be taken for a change of them.
        const InterpolationJob local = job;
        const Filter localFilter = filter;
        for (; x < last; x += kLanes) VectorOf<kStream>(local, localFilter, x);
        return x;
    }

    template <bool kStream>
    HWY_INLINE void Vector(const InterpolationJob& of, std::size_t x) const {
        VectorOf<kStream>(of, filter, x);
    }

    /// The vector at column x.
    template <bool kStream>
    static HWY_INLINE void VectorOf(const InterpolationJob& of, const Filter& tables, std::size_t x) {
        const PixelsAround above(of.rows[0] + x), line(of.rows[1] + x), below(of.rows[2] + x);
        if constexpr (kLines == Lines::kTwo) {
            const PixelsAround further(of.rows[3] + x);
            const SitePlanes first = InterpolateVector<kGreenFirst, false>(above, line, below);
            const SitePlanes second = InterpolateVector<!kGreenFirst, false>(line, below, further);
            Write<kStream>(tables, first, of.line.ownIsBlue, of.out[0] + x * Writer::kPixelBytes);
            Write<kStream>(tables, second, !of.line.ownIsBlue, of.out[1] + x * Writer::kPixelBytes);
        } else {
            constexpr bool kOneNeighbour = kLines == Lines::kOneWithOneNeighbour;
            const SitePlanes only = InterpolateVector<kGreenFirst, kOneNeighbour>(above, line, below);
            Write<kStream>(tables, only, of.line.ownIsBlue, of.out[0] + x * Writer::kPixelBytes);
        }
    }

    template <bool kStream>
    static HWY_INLINE void Write(const Filter& tables, const SitePlanes& site, bool ownIsBlue, std::uint8_t* to) {
        V8 first = site.own, third = site.opposite;
        if (ownIsBlue) {
            first = site.opposite;
            third = site.own;
        }
        Writer::template Store<kStream>(tables.template Apply<0>(first), tables.template Apply<1>(site.green),
                                        tables.template Apply<2>(third), to);
    }

    /// Up to a vector of pixels, through buffers on the stack where a whole vector would reach outside the image.
    HWY_NOINLINE void Staged(std::size_t x, std::size_t pixels) const {
        std::uint8_t input[kRows][kLanes + 2 * kMargin] = {};
        std::uint8_t output[kOutputs][kLanes * Writer::kPixelBytes];
        InterpolationJob staged = job;
        const std::size_t from = x < kMargin ? 0 : x - kMargin;
        const std::size_t to = std::min(x + pixels + kMargin, std::min(job.end + 1, job.width));
        for (int row = 0; row < kRows; ++row) {
            std::memcpy(input[row] + kMargin - (x - from), job.rows[row] + from, to - from);
            staged.rows[row] = input[row] + kMargin;
        }
        for (int line = 0; line < kOutputs; ++line) staged.out[line] = output[line];
        Vector<false>(staged, 0);
        for (int line = 0; line < kOutputs; ++line)
            std::memcpy(job.out[line] + x * Writer::kPixelBytes, output[line], pixels * Writer::kPixelBytes);
    }

    /// The pixel at column x by the general rule: the first or the last of the image, or one that no vector at an even
    /// column ends with.
    HWY_INLINE void BorderPixel(std::size_t x) const {
        MosaicLine line = job.line;
        for (int output = 0; output < kOutputs; ++output, line = line.Next()) {
            const std::uint8_t* const below =
                kLines == Lines::kOneWithOneNeighbour ? nullptr : job.rows[output + 2] + x;
            const SiteColours<std::uint8_t> site = InterpolateSite(
                job.rows[output] + x, job.rows[output + 1] + x, below, x > 0, x + 1 < job.width, line.IsGreenSite(x));
            StoreSite<Writer>(filterTables, site, line.ownIsBlue, job.out[output] + x * Writer::kPixelBytes);
        }
    }

    const InterpolationJob& job;
    const Filter filter;
    const Filter8& filterTables;
};

template <class Writer, class Filter>
class Interpolation {
public:
    explicit Interpolation(const BayerBand& toDo) : band(toDo) {}

    template <class Source>
    void Run(Source& source, std::uint32_t begin, std::uint32_t end) const {
        const bool stream = MayStream<Writer>(band);
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
                                                        : Lines::kOneWithOneNeighbour;
            job.out[0] = band.destination + y * band.destinationLine;
            job.out[1] = job.out[0] + band.destinationLine;
            const std::ptrdiff_t line = y;
            if (!hasAbove && !hasBelow) {
                LoneLine(source.Line(line), job);
            } else {
                job.rows[0] = source.Line(hasAbove ? line - 1 : line + 1);
                job.rows[1] = source.Line(line);
                job.rows[2] = source.Line(hasBelow ? line + 1 : line - 1);
                if (lines == Lines::kTwo) job.rows[3] = source.Line(line + 2);
                Convert(job, lines, stream);
            }
            const std::uint32_t done = lines == Lines::kTwo ? 2 : 1;
            if (done == 1) job.line = job.line.Next();
            y += done;
        }
        if (stream) hwy::FlushStream();
    }

private:
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
        else
            ConvertLines<Lines::kOneWithOneNeighbour, kGreenFirst, false>(job);
    }

    template <Lines kLines, bool kGreenFirst, bool kStream>
    HWY_NOINLINE void ConvertLines(const InterpolationJob& job) const {
        LineInterpolator<Writer, Filter, kLines, kGreenFirst>(job, band.filter).template Run<kStream>();
    }

    HWY_NOINLINE void LoneLine(const std::uint8_t* here, const InterpolationJob& job) const {
        for (std::size_t x = job.begin; x < job.end; ++x) {
            const SiteColours<std::uint8_t> site = InterpolateSite<std::uint8_t>(
                nullptr, here + x, nullptr, x > 0, x + 1 < job.width, job.line.IsGreenSite(x));
            StoreSite<Writer>(band.filter, site, job.line.ownIsBlue, job.out[0] + x * Writer::kPixelBytes);
        }
    }

    const BayerBand& band;
};

template <class Writer>
void Interpolate(const BayerBand& band) {
    if (band.filter.IsIdentity())
        OnLines(band, Interpolation<Writer, NoFilter8>(band));
    else
        OnLines(band, Interpolation<Writer, TableFilter8>(band));
    LeaveVectors();
}
