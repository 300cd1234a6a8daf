// The walk over lines of pixels that need no neighbours. Needs Streaming-inl.h before it.

#if !KY_PLAIN

/// Takes a step of vectors over all pixels of a band. A step is an object with
///     kPixels, kGroup            pixels of a step; pixels that share samples, which no step tears apart
///     kGroupBytes, kPixelBytes   bytes of a group in the source, of a pixel in each plane of the destination
///     kPlanes                    planes of the destination; the others follow the first at step.planes[]
///     Run<kStream>(from, to)     converts kPixels pixels, and reads and writes not a byte more
template <class Step>
class PixelLines {
public:
    PixelLines(const PixelBand& toDo, const Step& toTake) : band(toDo), step(toTake) {}

    void Run() const {
        if (band.joint != nullptr) {
            if (band.joint->asked != nullptr)
                Answer(*band.joint);
            else
                RunJoined(*band.joint->before);
            return;
        }
        PixelBand left = band;
        // Lines that follow one another without a gap are one line.
        if (left.sourceLine == static_cast<std::ptrdiff_t>(SourceBytes(left.width)) &&
            left.destinationLine == static_cast<std::ptrdiff_t>(DestinationBytes(left.width)) &&
            left.ahead.line == static_cast<std::ptrdiff_t>(left.ahead.bytes) && left.width % Step::kGroup == 0) {
            left.width *= left.lines;
            left.ahead.bytes *= left.lines;
            left.lines = 1;
        }
        if (left.width == 0) return;
        const bool stream = MayStream(left);
        for (std::uint32_t line = 0; line < left.lines; ++line) {
            if (stream) {
                AskForEnd(left.destination, left.width);
                Stream(left.source, left.destination, left.width, left.ahead.At(line));
            } else
                Cover(left.source, left.destination, left.width, left.ahead.At(line));
            left.source += left.sourceLine;
            left.destination += left.destinationLine;
        }
    }

private:
    static constexpr std::size_t kPixels = Step::kPixels;

    /// Pixels that are taken from the stage before at a time. With fewer bytes, the calls count; with more, the memory has
    /// nothing to write for too long.
    static constexpr std::size_t kStretch = [] {
        std::size_t pixels = 4096;
        while (pixels * Step::kPixelBytes * Step::kPlanes > 4096) pixels /= 2;
        return pixels;
    }();
    static_assert(kStretch % kPixels == 0);

    static constexpr std::size_t SourceBytes(std::size_t pixels) { return pixels / Step::kGroup * Step::kGroupBytes; }
    static constexpr std::size_t DestinationBytes(std::size_t pixels) { return pixels * Step::kPixelBytes; }

    struct StageState {
        Step step;
        std::size_t width;
    };

    void Answer(LineJoint& joint) const {
        joint.takesLines = Step::kGroup == 1;
        if constexpr (Step::kPlanes == 1) joint.asked->Keep(StageState{step, band.width}, &RunAsStage);
    }

    static void RunAsStage(const LineStage& stage, const std::uint8_t* from, std::uint8_t* to, std::size_t first,
                           std::size_t end, const FetchAhead& ahead) {
        const auto& kept = stage.Kept<StageState>();
        end = std::min((end + Step::kGroup - 1) / Step::kGroup * Step::kGroup, kept.width);
        if (first >= end) return;
        from += SourceBytes(first);
        to += DestinationBytes(first);
        const std::size_t pixels = end - first;
        if (pixels >= kPixels)
            Steps<false>(kept.step, from, to, pixels, ahead);
        else
            Staged(kept.step, from, to, pixels);
    }

    void RunJoined(LineStage& before) const {
        const bool stream = MayStream(band);
        std::uint8_t* to = band.destination;
        for (std::uint32_t line = 0; line < band.lines; ++line, to += band.destinationLine) {
            const std::uint8_t* const row = before.Row(band.lineIndex + line);
            if (stream) AskForEnd(to, band.width);
            for (std::size_t x = 0, pixels; x < band.width; x += pixels) {
                std::uint8_t* const out = to + DestinationBytes(x);
                pixels = kStretch;
                if (x == 0 && stream) pixels += AlignedPixels<Step::kPixelBytes, Step::kGroup>(out, kPixels) % kPixels;
                // Nothing less than a step is left over.
                if (x + pixels + kPixels > band.width) pixels = band.width - x;
                before.Reach(x + pixels);
                const FetchAhead ahead = AheadOf(band, line, x, x + pixels);
                if (stream)
                    Stream(row + SourceBytes(x), out, pixels, ahead);
                else
                    Cover(row + SourceBytes(x), out, pixels, ahead);
            }
        }
    }

    /// Lines must not overlap, and each must reach an aligned address, in all planes after the same number of pixels. Groups
    /// of pixels lead to one from every so many bytes. If the first two lines begin there, all do: the distance between them
    /// is a whole number of those.
    bool MayStream(const PixelBand& lines) const {
        if (!lines.isLarge || lines.width < kPixels) return false;
        if (lines.lines > 1 && lines.destinationLine < static_cast<std::ptrdiff_t>(DestinationBytes(lines.width)))
            return false;
        if constexpr (Step::kPlanes > 1)
            for (const std::ptrdiff_t plane : step.planes)
                if (plane % static_cast<std::ptrdiff_t>(kLanes) != 0) return false;
        return ReachesAlignment(lines.destination) &&
               (lines.lines == 1 || ReachesAlignment(lines.destination + lines.destinationLine));
    }

    static bool ReachesAlignment(const std::uint8_t* to) {
        return AlignedPixels<Step::kPixelBytes, Step::kGroup>(to, kPixels) != 0;
    }

    /// Steps overlap where their number does not divide.
    void Cover(const std::uint8_t* from, std::uint8_t* to, std::size_t width, const FetchAhead& ahead) const {
        if (width < kPixels)
            Staged(step, from, to, width);
        else
            Steps<false>(step, from, to, width, ahead);
    }

    /// Where a streamed line ends within a line of the cache, that is read before it is written. All later writes would wait
    /// for it.
    void AskForEnd(std::uint8_t* to, std::size_t width) const {
        std::uint8_t* const end = to + DestinationBytes(width);
        if (IsAligned(end)) return;
        hwy::Prefetch(end);
        if constexpr (Step::kPlanes > 1)
            for (const std::ptrdiff_t plane : step.planes) hwy::Prefetch(end + plane);
    }

    /// Streaming writes must not meet ordinary ones in a cache line, so the ends are cut to fit.
    void Stream(const std::uint8_t* from, std::uint8_t* to, std::size_t width, const FetchAhead& ahead) const {
        const std::size_t head = AlignedPixels<Step::kPixelBytes, Step::kGroup>(to, kPixels) % kPixels;
        Staged(step, from, to, head);
        const std::size_t whole = (width - head) / kPixels * kPixels;
        if (whole != 0) Steps<true>(step, from + SourceBytes(head), to + DestinationBytes(head), whole, ahead);
        const std::size_t done = head + whole;
        Staged(step, from + SourceBytes(done), to + DestinationBytes(done), width - done);
    }

    /// The one place where the work is compiled.
    template <bool kStream>
    static HWY_NOINLINE void Steps(const Step& toTake, const std::uint8_t* from, std::uint8_t* to, std::size_t width,
                                   const FetchAhead& ahead = {}) {
        // Local, so that no write to the destination can be taken for a change of it.
        const Step localStep = toTake;
        std::size_t steps = width / kPixels;
        Fetcher<1> fetcher(&ahead, steps);
        for (; steps != 0; --steps) {
            fetcher.Step();
            localStep.template Run<kStream>(from, to);
            from += SourceBytes(kPixels);
            to += DestinationBytes(kPixels);
        }
        if (const std::size_t rest = width % kPixels; rest != 0)
            localStep.template Run<false>(from - SourceBytes(kPixels - rest), to - DestinationBytes(kPixels - rest));
        LeaveVectors();
    }

    /// Less than a step of pixels.
    static HWY_NOINLINE void Staged(const Step& toTake, const std::uint8_t* from, std::uint8_t* to,
                                    std::size_t pixels) {
        if (pixels == 0) return;
        std::uint8_t input[SourceBytes(kPixels)] = {};
        std::uint8_t result[Step::kPlanes][DestinationBytes(kPixels)];
        std::memcpy(input, from, SourceBytes(pixels));
        Step staged = toTake;
        if constexpr (Step::kPlanes > 1)
            for (std::size_t i = 0; i + 1 < Step::kPlanes; ++i) staged.planes[i] = result[i + 1] - result[0];
        Steps<false>(staged, input, result[0], kPixels);
        std::memcpy(to, result[0], DestinationBytes(pixels));
        if constexpr (Step::kPlanes > 1)
            for (std::size_t i = 0; i + 1 < Step::kPlanes; ++i)
                std::memcpy(to + toTake.planes[i], result[i + 1], DestinationBytes(pixels));
    }

    const PixelBand& band;
    const Step& step;
};

#endif
