// The walk of vectors over a row: the one place that handles row ends, streaming stores and prefetching. Needs Lanes-inl.h
// before it.

#if !KY_SCALAR

/// Where a walk reads and writes: the first column of each input and output.
template <std::size_t kInputs, std::size_t kOutputs>
struct StepRows {
    const std::uint8_t* in[kInputs];
    std::uint8_t* out[kOutputs];

    /// All but the above, which a class derived from this one may have. (A copy of the whole record would be loaded as vectors,
    /// and wait for the single numbers that were just stored there.)
    HWY_INLINE void CopyOthers(const StepRows&) {}
};

/// What a walk covers.
struct WalkColumns {
    std::size_t begin, end;
    std::size_t width;  ///< of a row: columns before `begin` and from `end` on may be read as neighbours
    ReadableBytes readable;
    bool streams;
};

/// What the steps over a row prefetch: each a part of what the tile says, for every row that the walk takes at once.
template <std::size_t kRows>
class Prefetcher {
public:
    /// Where there is nothing to prefetch, it is what is in the cache anyway: cheaper than a branch per step.
    HWY_INLINE Prefetcher(const Prefetch& prefetch, std::size_t y, std::size_t steps, const void* cached)
        : at(0), part(prefetch.bytes == 0 ? 0 : (prefetch.bytes + steps - 1) / steps) {
        for (std::size_t i = 0; i < kRows; ++i)
            from[i] = part == 0 ? reinterpret_cast<std::uintptr_t>(cached)
                                : prefetch.rows->Address(y + prefetch.ahead + i) + prefetch.begin;
    }

    HWY_INLINE void Step() {
        if constexpr (kRows == 0) return;
        Touch(0);
        if (HWY_UNLIKELY(part > kCacheLine))
            for (std::size_t offset = kCacheLine; offset < part; offset += kCacheLine) Touch(offset);
        at += part;
    }

private:
    static constexpr std::size_t kCacheLine = 64;

    HWY_INLINE void Touch(std::size_t offset) const {
        for (const std::uintptr_t address : from)
            hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(address + at + offset));
    }

    std::uintptr_t from[std::max(kRows, std::size_t{1})];
    std::size_t at, part;
};

/// What the loop around a step has to save.
enum class StepCost {
    kManyInstructions,  ///< code: the step is compiled once
    kFewInstructions,   ///< its own instructions: the last step is compiled apart
    kManyRows,          ///< registers: one column counts for all rows, which do not move
};

/// Runs a step of vectors over columns of one or more rows. A step is a class with
///     kInputs, kOutputs              rows that it reads, and rows, planes or taps that it writes
///     Rows                           StepRows of as many, or derived from that
///     State                          what it knows beside its rows; copied to registers for each row
///     kPixels                        columns that it takes at a time
///     kGroup                         columns that belong together; the walk begins with a group
///     kMargin                        columns that it reads beyond those, on both sides; whole groups
///     kPixelBytes                    bytes of a column in each output
///     kPrefetchRows                  rows that it prefetches for at a time
///     kCost                          see StepCost
///     kStreamsApart                  whether steps that stream are compiled apart, because to ask at every store would cost
///     InputBytes(columns)            bytes of the first columns of an input
///     PlaneBytes(i, columns)         the same of input i, where inputs differ; no margin then
///     Output(state, rows, i, x, n)   the lowest address of n columns from x on in output i
///     Advance(rows, columns)         moves the rows on: column 0 is then that one; not of many rows
///     Run(state, rows, x, streams)   converts the columns from x on, and reads and writes not a byte more
template <class Step>
class RowWalk {
public:
    using Rows = typename Step::Rows;
    using State = typename Step::State;

    /// \param y  of the first row, which the prefetch goes by
    HWY_INLINE RowWalk(const State& known, const Rows& on, const WalkColumns& over, const Prefetch& toPrefetch,
                       std::size_t y)
        : state(known), rows(on), columns(over), prefetch(toPrefetch), firstRow(y) {}

    HWY_INLINE void Run() const {
        const std::size_t pixels = columns.end - columns.begin;
        const std::size_t end = columns.end - pixels % kGroup;  // of whole groups
        if (end - columns.begin < kPixels) {
            Padded(columns.begin, pixels);
            return;
        }
        const std::size_t head = columns.streams ? HeadBeforeAlignment() : kNoAlignment;
        if (head != kNoAlignment)
            Stream(head, end);
        else
            WalkOverlapping(end);
        Padded(end, columns.end - end);
    }

private:
    static constexpr std::size_t kPixels = Step::kPixels, kGroup = Step::kGroup, kMargin = Step::kMargin;
    static constexpr std::size_t kNoAlignment = kPixels;
    static_assert(kPixels % kGroup == 0 && kMargin % kGroup == 0);

    /// Columns until all outputs are aligned for streaming; kNoAlignment when they never are.
    HWY_INLINE std::size_t HeadBeforeAlignment() const {
        for (std::size_t head = 0; head < kPixels; head += kGroup)
            if (IsAligned(Step::Output(state, rows, 0, columns.begin + head, kPixels))) {
                for (std::size_t i = 1; i < Step::kOutputs; ++i)
                    if (!IsAligned(Step::Output(state, rows, i, columns.begin + head, kPixels))) return kNoAlignment;
                return head;
            }
        return kNoAlignment;
    }

    /// Whether the step at column x reaches only what may be read.
    HWY_INLINE bool IsReadable(std::size_t x) const {
        if constexpr (kMargin == 0) return true;
        for (const std::uint8_t* const row : rows.in)
            if (row + Step::InputBytes(x) - Step::InputBytes(kMargin) < columns.readable.begin ||
                row + Step::InputBytes(x + kPixels + kMargin) > columns.readable.end)
                return false;
        return true;
    }

    /// All columns up to `end`, at least a step of them. Steps overlap where their number does not divide.
    HWY_INLINE void WalkOverlapping(std::size_t end) const {
        std::size_t x = columns.begin, last = end - kPixels;
        if (!IsReadable(x)) {
            Padded(x, kPixels);
            x += kPixels;
        }
        if (!IsReadable(last)) {
            if (x < end) Padded(last, kPixels);
            if (last < x + kMargin) return;
            last -= kMargin;
        }
        if (x < end) Steps(state, rows, std::min(x, last), last, prefetch, firstRow, false);
    }

    /// The same with streaming stores. They must not meet ordinary ones in a cache line, so the ends are cut to fit.
    HWY_INLINE void Stream(std::size_t head, std::size_t end) const {
        PrefetchEnds();
        std::size_t x = columns.begin;
        if (head == 0 && !IsReadable(x)) head = kPixels;
        Padded(x, head);
        x += head;
        if (x + kPixels + kMargin <= end) {
            const std::size_t whole = (end - kMargin - x) / kPixels * kPixels;
            Steps(state, rows, x, x + whole - kPixels, prefetch, firstRow, true);
            x += whole;
        }
        Padded(x, end - x);
    }

    /// Prefetches the partial last cache line of each output: its read-for-ownership would stall the stores after it.
    HWY_INLINE void PrefetchEnds() const {
        for (std::size_t i = 0; i < Step::kOutputs; ++i) {
            std::uint8_t* const end = Step::Output(state, rows, i, columns.end, 0);
            if (!IsAligned(end)) hwy::Prefetch(end);
        }
    }

    /// Steps at column x and after it, the last one at `last`.
    static HWY_INLINE void Steps(const State& state, const Rows& rows, std::size_t x, std::size_t last,
                                 const Prefetch& prefetch, std::size_t firstRow, bool streams) {
        if constexpr (!Step::kStreamsApart)
            CompiledSteps(state, rows, x, last, prefetch, firstRow, streams);
        else if (streams)
            CompiledSteps(state, rows, x, last, prefetch, firstRow, std::true_type());
        else
            CompiledSteps(state, rows, x, last, prefetch, firstRow, std::false_type());
    }

    /// The one place where the work is compiled. `Streams` is bool, or a constant. It begins at a cache line: where in one a
    /// short loop begins may cost half its speed, and would otherwise change with whatever else is in the library.
    template <class Streams>
    [[gnu::aligned(64)]] static HWY_NOINLINE void CompiledSteps(const State& known, const Rows& on, std::size_t x,
                                                                std::size_t last, const Prefetch& prefetch,
                                                                std::size_t firstRow, Streams streams) {
        // Local, so that no store to the destination can be taken for a change of them.
        const State localState = known;
        Rows here = on;
        Prefetcher<Step::kPrefetchRows> prefetcher(prefetch, firstRow, (last - x) / kPixels + 1, &on);
        if constexpr (Step::kCost == StepCost::kManyRows) {
            for (;;) {
                prefetcher.Step();
                Step::Run(localState, here, x, streams);
                if (x >= last) break;
                x = std::min(x + kPixels, last);
            }
        } else if constexpr (Step::kCost == StepCost::kFewInstructions) {
            Step::Advance(here, static_cast<std::ptrdiff_t>(x));
            for (; x < last; x += kPixels) {
                prefetcher.Step();
                Step::Run(localState, here, 0, streams);
                Step::Advance(here, kPixels);
            }
            Step::Advance(here, static_cast<std::ptrdiff_t>(last) - static_cast<std::ptrdiff_t>(x));
            Step::Run(localState, here, 0, streams);
        } else {
            Step::Advance(here, static_cast<std::ptrdiff_t>(x));
            for (std::size_t left = last - x;;) {
                prefetcher.Step();
                Step::Run(localState, here, 0, streams);
                if (left == 0) break;
                const std::size_t step = std::min(kPixels, left);
                left -= step;
                Step::Advance(here, static_cast<std::ptrdiff_t>(step));
            }
        }
        ClearUpperHalves();
    }

    HWY_INLINE void Padded(std::size_t x, std::size_t pixels) const {
        if (pixels != 0) PadSteps(state, rows, x, pixels, columns.width);
    }

    /// Up to a step of columns, through buffers on the stack: a whole step would reach outside the row.
    static HWY_NOINLINE void PadSteps(const State& state, const Rows& rows, std::size_t x, std::size_t pixels,
                                      std::size_t width) {
        std::uint8_t input[Step::kInputs][Step::InputBytes(kPixels + 2 * kMargin)] = {};
        std::uint8_t output[Step::kOutputs][kPixels * Step::kPixelBytes];
        const std::size_t margin = std::min(x, kMargin);
        const std::size_t from = Step::InputBytes(x - margin);
        const std::size_t to = Step::InputBytes(std::min(x + pixels + kMargin, width));
        Rows padded;
        padded.CopyOthers(rows);
        for (std::size_t i = 0; i < Step::kInputs; ++i) {
            if constexpr (requires { Step::PlaneBytes(i, x); }) {
                const std::size_t begin = Step::PlaneBytes(i, x);
                std::memcpy(input[i], rows.in[i] + begin, Step::PlaneBytes(i, x + pixels) - begin);
            } else {
                std::memcpy(input[i] + Step::InputBytes(kMargin - margin), rows.in[i] + from, to - from);
            }
            padded.in[i] = input[i] + Step::InputBytes(kMargin);
        }
        for (std::size_t i = 0; i < Step::kOutputs; ++i) {
            padded.out[i] = output[i];
            padded.out[i] += padded.out[i] - Step::Output(state, padded, i, 0, kPixels);
        }
        Steps(state, padded, 0, 0, Prefetch{}, 0, false);
        for (std::size_t i = 0; i < Step::kOutputs; ++i)
            std::memcpy(Step::Output(state, rows, i, x, pixels), Step::Output(state, padded, i, 0, pixels),
                        pixels * Step::kPixelBytes);
    }

    const State& state;
    const Rows& rows;
    const WalkColumns& columns;
    const Prefetch& prefetch;
    const std::size_t firstRow;
};

/// What most steps are: inputs of groups as the reader takes them, no margin, outputs in the order of their addresses.
template <class Reader, std::size_t kPixelBytesOf, std::size_t kOutputsOf = 1, std::size_t kInputsOf = 1>
struct PixelStep {
    static constexpr std::size_t kInputs = kInputsOf, kOutputs = kOutputsOf;
    static constexpr std::size_t kPixels = kLanes, kGroup = Reader::kGroup, kMargin = 0;
    static constexpr std::size_t kPixelBytes = kPixelBytesOf, kPrefetchRows = 1;
    static constexpr StepCost kCost = StepCost::kManyInstructions;
    static constexpr bool kStreamsApart = false;
    using Rows = StepRows<kInputs, kOutputs>;

    static constexpr std::size_t InputBytes(std::size_t pixels) {
        return (pixels + kGroup - 1) / kGroup * Reader::kGroupBytes;
    }

    template <class State>
    static HWY_INLINE std::uint8_t* Output(const State&, const Rows& rows, std::size_t i, std::size_t x, std::size_t) {
        return rows.out[i] + x * kPixelBytes;
    }

    static HWY_INLINE void Advance(Rows& rows, std::ptrdiff_t pixels) {
        constexpr std::ptrdiff_t group = kGroup, inputBytes = Reader::kGroupBytes, outputBytes = group * kPixelBytes;
        for (auto& in : rows.in) in += pixels / group * inputBytes;
        for (auto& out : rows.out) out += pixels / group * outputBytes;
    }
};

/// Columns of a tile, as a walk takes them.
HWY_INLINE WalkColumns ColumnsOf(const Tile& tile) {
    return {tile.begin, tile.end, tile.width, tile.readable, tile.streams};
}

/// Whether the rows of a tile's destination, in all planes, follow one another without a gap.
template <std::size_t kPlanes>
HWY_INLINE bool AreContiguous(const Tile& tile, std::size_t rowBytes) {
    for (std::size_t plane = 1; plane < kPlanes; ++plane)
        if (!tile.destinationPlanes[plane - 1].AreContiguous(rowBytes)) return false;
    return tile.destination.AreContiguous(rowBytes);
}

/// Runs a step with one input over all rows of a tile. Its outputs are the planes of the destination.
///
/// Nothing that the tile says is copied as a record: it would be loaded as a vector, and wait for the single numbers that the
/// pipeline has just stored there.
///
/// \param of  the tile's columns, counted as the step does
template <class Step>
HWY_INLINE void WalkPixels(const typename Step::State& state, const Tile& tile, const Columns& of) {
    WalkColumns columns = {of.begin, of.end, of.width, tile.readable, tile.streams};
    const Prefetch* prefetch = &tile.prefetch;
    Prefetch ofAllRows;
    std::uint32_t last = tile.last;
    // Rows that follow one another without a gap are one row.
    if (columns.begin == 0 && columns.end == columns.width && columns.width % Step::kGroup == 0 &&
        tile.source.AreContiguous(Step::InputBytes(columns.width)) &&
        AreContiguous<Step::kOutputs>(tile, columns.width * Step::kPixelBytes)) {
        const std::size_t rows = tile.last - tile.first;
        columns.width *= rows;
        columns.end = columns.width;
        ofAllRows = tile.prefetch;
        ofAllRows.bytes *= rows;
        prefetch = &ofAllRows;
        last = tile.first + 1;
    }
    for (std::uint32_t y = tile.first; y < last; ++y) {
        typename Step::Rows rows;
        rows.in[0] = tile.source[y];
        rows.out[0] = tile.destination[y];
        for (std::size_t plane = 1; plane < Step::kOutputs; ++plane)
            rows.out[plane] = tile.destinationPlanes[plane - 1][y];
        RowWalk<Step>(state, rows, columns, *prefetch, y).Run();
    }
}

#endif
