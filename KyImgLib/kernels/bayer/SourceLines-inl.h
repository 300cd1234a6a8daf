// Lines of a Bayer source as rows of samples. Kernels work on rows in which samples follow one another without gaps; these
// bring any source into that form. Rows are bytes, since samples need not be aligned.

/// The memory that may be read: the lines of a band and its neighbours. A kernel that reads a little over the end of a
/// line reads the next one, of which it uses nothing, but must not leave the image.
struct ReadableBytes {
    const std::uint8_t* begin;
    const std::uint8_t* end;
};

/// Rows that lie so in the source, or come so from the stage before in a chain.
template <class Band>
class ReadyLines {
public:
    explicit ReadyLines(const Band& source) : band(source) {}

    const std::uint8_t* Line(std::ptrdiff_t y) const { return SourceLineOf(band, y); }

    ReadableBytes Readable() const {
        // A stage's rows have margins that hold all that a kernel reaches from one.
        if (band.joint != nullptr) return {nullptr, reinterpret_cast<const std::uint8_t*>(UINTPTR_MAX)};
        return {band.source - (band.hasLineAbove ? band.sourceLine : 0),
                band.source + (band.lines - (band.hasLineBelow ? 0 : 1)) * band.sourceLine +
                    std::size_t{band.width} * band.sourceStep};
    }

private:
    const Band& band;
};

/// Rows of bytes gathered from a source with more than one byte for each sample: a stretch of columns of the four lines that
/// were asked for last, with room for whole vectors around.
class GatheredLines {
public:
    /// Pixels of a stretch: few enough for the first-level cache, many enough for the work at its ends not to count.
    static constexpr std::uint32_t kStretch = 2048;

    GatheredLines(const Bayer8Band& source, std::uint32_t begin, std::uint32_t end)
        : band(source),
          // One pixel more on each side, as a neighbour of the stretch's own.
          firstColumn(begin > 0 ? begin - 1 : 0), columns(std::min(end + 1, source.width) - firstColumn) {
        std::memset(rows, 0, sizeof rows);
        for (std::ptrdiff_t& y : held) y = -2;
    }

    const std::uint8_t* Line(std::ptrdiff_t y) {
        const std::size_t slot = static_cast<std::size_t>(y) % kRows;
        std::uint8_t* const row = rows[slot] + kMargin;
        if (held[slot] != y) {
            GatherLastBytes(band.source + y * band.sourceLine + std::size_t{firstColumn} * band.sourceStep,
                            band.sourceStep, columns, row);
            held[slot] = y;
        }
        return row - firstColumn;
    }

    /// All that a kernel reaches from a row, which the margins hold.
    ReadableBytes Readable() const { return {rows[0], rows[kRows - 1] + sizeof rows[0]}; }

private:
    static constexpr std::size_t kRows = 4;
    static constexpr std::size_t kMargin = 2 * kLanes;

    const Bayer8Band& band;
    std::uint32_t firstColumn;
    std::uint32_t columns;
    std::ptrdiff_t held[kRows];
    std::uint8_t rows[kRows][kMargin + kStretch + 2 + kMargin];
};

/// Pixels from `out` to the last one, among `most`, from which lines can be streamed; an even number, as cells are.
template <class Writer>
HWY_INLINE std::size_t AlignedBayerPixels(const std::uint8_t* out, std::size_t most) {
    return AlignedPixels<Writer::kPixelBytes, 2>(out, most);
}

/// Whether streaming writes of `pixels` at a time suit a band: it is large, and all its lines reach an aligned address
/// after the same number of pixels.
template <class Writer, class Band>
bool MayStream(const Band& band, std::size_t pixels) {
    return band.isLarge && band.destinationLine % static_cast<std::ptrdiff_t>(kLanes) == 0 &&
           AlignedBayerPixels<Writer>(band.destination, pixels) != 0;
}

/// Calls `work` (an object with a member template Run) on all columns of a band in the right form.
template <class Band, class Work>
void OnLines(const Band& band, const Work& work) {
    const bool liesReady = band.sourceStep == sizeof(typename Band::Sample);
    if (band.joint != nullptr && band.joint->asked != nullptr) {
        band.joint->takesLines = liesReady;
        return;
    }
    if (liesReady) {
        ReadyLines<Band> lines(band);
        work.Run(lines, 0, band.width);
        return;
    }
    if constexpr (sizeof(typename Band::Sample) == 1) {
        for (std::uint32_t begin = 0; begin < band.width; begin += GatheredLines::kStretch) {
            const std::uint32_t end = std::min(band.width, begin + GatheredLines::kStretch);
            GatheredLines lines(band, begin, end);
            work.Run(lines, begin, end);
        }
    }
}
