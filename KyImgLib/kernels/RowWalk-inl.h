// The walk of vectors over a row: the one place that knows ends of rows, streaming stores and prefetching. Needs Lanes-inl.h
// before it.

#if !KY_PLAIN

/// Where a walk reads and writes: the first column of each input and output.
template <class Step>
struct StepRows {
    const std::uint8_t* in[Step::kInputs];
    std::uint8_t* out[Step::kOutputs];
};

/// What a walk covers.
struct WalkColumns {
    std::size_t begin, end;
    std::size_t width;  ///< of a row: columns before `begin` and from `end` on may be read as neighbours
    ReadableBytes readable;
    bool streams;
};

/// What a step of a row prefetches: a part of what each of its rows is to.
template <std::size_t kRows>
class Prefetcher {
public:
    HWY_INLINE Prefetcher() : from{}, bytes(0) {}
    /// For the rows from y on.
    HWY_INLINE Prefetcher(const Prefetch& prefetch, std::size_t y)
        : bytes(prefetch.rows == nullptr ? 0 : prefetch.bytes) {
        for (std::size_t i = 0; i < kRows; ++i)
            from[i] = bytes == 0 ? 0 : prefetch.rows->Address(y + prefetch.ahead + i) + prefetch.begin;
    }

    /// Gets ready for so many steps. Where there is nothing to prefetch, it is what is in the cache anyway: cheaper than to
    /// choose for each step.
    HWY_INLINE void Begin(std::size_t steps, const void* cached) {
        part = bytes == 0 ? 0 : (bytes + steps - 1) / steps;
        if (bytes == 0)
            for (std::uintptr_t& address : from) address = reinterpret_cast<std::uintptr_t>(cached);
    }
    HWY_INLINE void Step() {
        for (std::uintptr_t& address : from) {
            Touch(address);
            if (HWY_UNLIKELY(part > kCacheLine))
                for (std::size_t offset = kCacheLine; offset < part; offset += kCacheLine) Touch(address + offset);
            address += part;
        }
    }

private:
    static constexpr std::size_t kCacheLine = 64;

    static HWY_INLINE void Touch(std::uintptr_t address) {
        hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(address));
    }

    std::uintptr_t from[kRows];
    std::size_t bytes, part;
};

/// Takes a step of vectors over columns of one or more rows. A step is an object with
///     kInputs, kOutputs       rows that it reads, and rows, planes or taps that it writes
///     kPixels                 columns that it takes at a time
///     kGroup                  columns that belong together; the walk begins with a group
///     kMargin                 columns that it reads beyond those, on both sides; whole groups
///     kPixelBytes             bytes of a column in each output
///     kPrefetchRows           rows that it prefetches for at a time
///     InputBytes(columns)     bytes of the first columns of an input
///     Output(rows, i, x, n)   the lowest address of n columns from x on in output i
///     Run<kStream>(rows, x)   converts the columns from x on, and reads and writes not a byte more
template <class Step>
class RowWalk {
public:
    using Rows = StepRows<Step>;
    static constexpr std::size_t kPrefetchRows = Step::kPrefetchRows;
    using Ahead = Prefetcher<kPrefetchRows>;

    HWY_INLINE RowWalk(const Step& toTake, const Rows& on, const WalkColumns& over, const Ahead& prefetch)
        : step(toTake), rows(on), columns(over), ahead(prefetch) {}

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
            Cover(end);
        Padded(end, columns.end - end);
    }

private:
    static constexpr std::size_t kPixels = Step::kPixels, kGroup = Step::kGroup, kMargin = Step::kMargin;
    static constexpr std::size_t kNoAlignment = kPixels;
    static_assert(kPixels % kGroup == 0 && kMargin % kGroup == 0);

    /// Columns until all outputs are aligned for streaming; kNoAlignment when they never are.
    HWY_INLINE std::size_t HeadBeforeAlignment() const {
        for (std::size_t head = 0; head < kPixels; head += kGroup)
            if (IsAligned(step.Output(rows, 0, columns.begin + head, kPixels))) {
                for (std::size_t i = 1; i < Step::kOutputs; ++i)
                    if (!IsAligned(step.Output(rows, i, columns.begin + head, kPixels))) return kNoAlignment;
                return head;
            }
        return kNoAlignment;
    }

    /// Whether the step at column x reaches only what may be read.
    HWY_INLINE bool IsReadable(std::size_t x) const {
        if constexpr (kMargin == 0) return true;
        const std::uint8_t *lowest = rows.in[0], *highest = rows.in[0];
        for (const std::uint8_t* const row : rows.in) {
            lowest = std::min(lowest, row);
            highest = std::max(highest, row);
        }
        return lowest + Step::InputBytes(x) - Step::InputBytes(kMargin) >= columns.readable.begin &&
               highest + Step::InputBytes(x + kPixels + kMargin) <= columns.readable.end;
    }

    /// All columns up to `end`, at least a step of them. Steps overlap where their number does not divide.
    HWY_INLINE void Cover(std::size_t end) const {
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
        if (x < end) Steps<false>(step, rows, std::min(x, last), last, ahead);
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
            Steps<true>(step, rows, x, x + whole - kPixels, ahead);
            x += whole;
        }
        Padded(x, end - x);
    }

    /// Prefetches the partial last cache line of each output: its read-for-ownership would stall the stores after it.
    HWY_INLINE void PrefetchEnds() const {
        for (std::size_t i = 0; i < Step::kOutputs; ++i) {
            std::uint8_t* const end = step.Output(rows, i, columns.end, 0);
            if (!IsAligned(end)) hwy::Prefetch(end);
        }
    }

    /// Steps at column x and after it, the last one at `last`. The one place where the work is compiled.
    template <bool kStream>
    static HWY_NOINLINE void Steps(const Step& toTake, const Rows& on, std::size_t x, std::size_t last,
                                   const Ahead& prefetch) {
        // Local, so that no store to the destination can be taken for a change of them.
        const Step localStep = toTake;
        const Rows localRows = on;
        Ahead localAhead = prefetch;
        localAhead.Begin((last - x) / kPixels + 1, &toTake);
        for (;;) {
            localAhead.Step();
            localStep.template Run<kStream>(localRows, x);
            if (x >= last) break;
            x = std::min(x + kPixels, last);
        }
        LeaveVectors();
    }

    /// Up to a step of columns, through buffers on the stack: a whole step would reach outside the row.
    HWY_NOINLINE void Padded(std::size_t x, std::size_t pixels) const {
        if (pixels == 0) return;
        std::uint8_t input[Step::kInputs][Step::InputBytes(kPixels + 2 * kMargin)] = {};
        std::uint8_t output[Step::kOutputs][kPixels * Step::kPixelBytes];
        const std::size_t margin = std::min(x, kMargin);
        const std::size_t from = Step::InputBytes(x - margin);
        const std::size_t to = Step::InputBytes(std::min(x + pixels + kMargin, columns.width));
        Rows padded;
        for (std::size_t i = 0; i < Step::kInputs; ++i) {
            std::memcpy(input[i] + Step::InputBytes(kMargin - margin), rows.in[i] + from, to - from);
            padded.in[i] = input[i] + Step::InputBytes(kMargin);
        }
        for (std::size_t i = 0; i < Step::kOutputs; ++i) {
            padded.out[i] = output[i];
            padded.out[i] += padded.out[i] - step.Output(padded, i, 0, kPixels);
        }
        Steps<false>(step, padded, 0, 0, Ahead());
        for (std::size_t i = 0; i < Step::kOutputs; ++i)
            std::memcpy(step.Output(rows, i, x, pixels), step.Output(padded, i, 0, pixels), pixels * Step::kPixelBytes);
    }

    const Step& step;
    const Rows& rows;
    const WalkColumns& columns;
    const Ahead& ahead;
};

/// What most steps are: one input, one output, no margin.
struct PixelStep {
    static constexpr std::size_t kInputs = 1, kOutputs = 1, kPixels = kLanes, kGroup = 1, kMargin = 0;
    static constexpr std::size_t kPrefetchRows = 1;
};

/// Where a column is in outputs that are in the order of their addresses.
template <class Step>
HWY_INLINE std::uint8_t* AscendingOutput(const StepRows<Step>& rows, std::size_t i, std::size_t x) {
    return rows.out[i] + x * Step::kPixelBytes;
}

/// Columns of a tile, as a walk takes them.
HWY_INLINE WalkColumns ColumnsOf(const Tile& tile) {
    return {tile.begin, tile.end, tile.width, tile.readable, tile.streams};
}

/// Takes a step with one input over all rows of a tile. Its outputs are the planes of the destination.
template <class Step>
void WalkPixels(const Step& step, const Tile& tile) {
    WalkColumns columns = ColumnsOf(tile);
    Prefetch prefetch = tile.prefetch;
    std::uint32_t last = tile.last;
    // Rows that follow one another without a gap are one row.
    if (tile.begin == 0 && tile.end == tile.width && tile.width % Step::kGroup == 0 &&
        tile.source.AreContiguous(Step::InputBytes(tile.width)) &&
        tile.destination.AreContiguous(tile.width * Step::kPixelBytes)) {
        const std::size_t rows = tile.last - tile.first;
        columns.width *= rows;
        columns.end = columns.width;
        prefetch.bytes *= rows;
        last = tile.first + 1;
    }
    for (std::uint32_t y = tile.first; y < last; ++y) {
        StepRows<Step> rows;
        rows.in[0] = tile.source[y];
        rows.out[0] = tile.destination[y];
        for (std::size_t plane = 1; plane < Step::kOutputs; ++plane)
            rows.out[plane] = rows.out[0] + tile.planes[plane - 1];
        RowWalk<Step>(step, rows, columns, {prefetch, y}).Run();
    }
}

#endif
