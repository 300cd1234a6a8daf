// Replication of 8-bit Bayer cells with vectors. Needs SourceLines-inl.h before it.

/// Each 2 x 2 cell of two lines to the four pixels over it: its two colours to all, the upper line's green to the left
/// ones, the lower line's to the right ones.
template <bool kGreenFirst>
HWY_INLINE void ReplicateVector(V8 upper, V8 lower, V8& own, V8& green, V8& opposite) {
    const V16 low = hn::Set(D16(), 0x00FF);
    const V16 u = Words(upper), l = Words(lower);
    if constexpr (kGreenFirst) {  // green own / opposite green
        own = Bytes(hn::IfVecThenElse(low, hn::ShiftRight<8>(u), u));
        green = Bytes(hn::IfVecThenElse(low, u, l));
        opposite = Bytes(hn::IfVecThenElse(low, l, hn::ShiftLeft<8>(l)));
    } else {  // own green / green opposite
        own = Bytes(hn::IfVecThenElse(low, u, hn::ShiftLeft<8>(u)));
        green = Bytes(hn::Or(hn::ShiftRight<8>(u), hn::ShiftLeft<8>(l)));
        opposite = Bytes(hn::IfVecThenElse(low, hn::ShiftRight<8>(l), l));
    }
}

template <class Writer, class Filter>
class Replication {
public:
    explicit Replication(const BayerBand& toDo) : band(toDo) {}

    template <class Source>
    void Run(Source& source, std::uint32_t begin, std::uint32_t end) const {
        const bool stream = MayStream<Writer>(band);
        for (std::uint32_t y = 0; y < band.lines; y += 2) {
            const std::ptrdiff_t line = y;
            const std::uint8_t* const upper = source.Line(line);
            const std::uint8_t* const lower = source.Line(line + 1);
            std::uint8_t* const out = band.destination + line * band.destinationLine;
            if (band.firstLine.greenFirst)
                stream ? Pair<true, true>(upper, lower, out, begin, end)
                       : Pair<true, false>(upper, lower, out, begin, end);
            else
                stream ? Pair<false, true>(upper, lower, out, begin, end)
                       : Pair<false, false>(upper, lower, out, begin, end);
        }
        if (stream) hwy::FlushStream();
    }

private:
    template <bool kGreenFirst, bool kStream>
    HWY_NOINLINE void Pair(const std::uint8_t* upper, const std::uint8_t* lower, std::uint8_t* out, std::size_t begin,
                           std::size_t end) const {
        const Filter filter(band.filter);
        if (end - begin < kLanes) {
            Staged<kGreenFirst>(filter, upper, lower, out, begin, end);
            return;
        }
        std::size_t x = begin;
        if constexpr (kStream) {
            // Streaming writes must not meet ordinary ones in a cache line, so the ends are cut to fit.
            x += AlignedPixels<Writer>(out + begin * Writer::kPixelBytes) % kLanes;
            Staged<kGreenFirst>(filter, upper, lower, out, begin, x);
        }
        for (; x + kLanes <= end; x += kLanes) Vector<kGreenFirst, kStream>(filter, upper, lower, out, x);
        if (kStream)
            Staged<kGreenFirst>(filter, upper, lower, out, x, end);
        else if (x != end)
            Vector<kGreenFirst, false>(filter, upper, lower, out, end - kLanes);
    }

    template <bool kGreenFirst, bool kStream>
    HWY_INLINE void Vector(const Filter& filter, const std::uint8_t* upper, const std::uint8_t* lower,
                           std::uint8_t* out, std::size_t x) const {
        VectorTo<kGreenFirst, kStream>(filter, Load(upper + x), Load(lower + x), out + x * Writer::kPixelBytes,
                                       out + band.destinationLine + x * Writer::kPixelBytes);
    }

    template <bool kGreenFirst, bool kStream>
    HWY_INLINE void VectorTo(const Filter& filter, V8 upper, V8 lower, std::uint8_t* out, std::uint8_t* nextOut) const {
        V8 own, green, opposite;
        ReplicateVector<kGreenFirst>(upper, lower, own, green, opposite);
        if (band.firstLine.ownIsBlue) std::swap(own, opposite);
        own = filter.template Apply<0>(own);
        green = filter.template Apply<1>(green);
        opposite = filter.template Apply<2>(opposite);
        Writer::template Store<kStream>(own, green, opposite, out);
        Writer::template Store<kStream>(own, green, opposite, nextOut);
    }

    /// Less than a vector of pixels.
    template <bool kGreenFirst>
    HWY_NOINLINE void Staged(const Filter& filter, const std::uint8_t* upper, const std::uint8_t* lower,
                             std::uint8_t* out, std::size_t begin, std::size_t end) const {
        const std::size_t pixels = end - begin;
        std::uint8_t input[2][kLanes] = {};
        std::uint8_t output[2][kLanes * Writer::kPixelBytes];
        std::memcpy(input[0], upper + begin, pixels);
        std::memcpy(input[1], lower + begin, pixels);
        VectorTo<kGreenFirst, false>(filter, Load(input[0]), Load(input[1]), output[0], output[1]);
        out += begin * Writer::kPixelBytes;
        std::memcpy(out, output[0], pixels * Writer::kPixelBytes);
        std::memcpy(out + band.destinationLine, output[1], pixels * Writer::kPixelBytes);
    }

    const BayerBand& band;
};

template <class Writer>
void Replicate(const BayerBand& band) {
    if (band.filter.IsIdentity())
        OnLines(band, Replication<Writer, NoFilter8>(band));
    else
        OnLines(band, Replication<Writer, TableFilter8>(band));
    LeaveVectors();
}
