// RGB24 to planes of Y, Cb and Cr, see RGBToYCbCrFactors. Needs YCbCrArithmetic-inl.h before it.

/// The rule for single pixels, and the planes that two rows are written to.
class ToYCbCrPixels {
public:
    explicit ToYCbCrPixels(const YCbCrSettings& settings) : factors(settings.colours), crFirst(settings.crFirst) {}

    std::uint8_t LumaOf(const std::uint8_t* pixel) const {
        const int rgb[] = {pixel[0], pixel[1], pixel[2]};
        return Rounded(factors.luma, rgb, RGBToYCbCrFactors::kLumaBits, factors.black);
    }

    /// `sums` of red, green and blue of four pixels.
    void StoreColours(const int (&sums)[3], std::uint8_t* to) const {
        to[crFirst ? 1 : 0] = Rounded(factors.cb, sums, RGBToYCbCrFactors::kColourBits, kNoColour);
        to[crFirst ? 0 : 1] = Rounded(factors.cr, sums, RGBToYCbCrFactors::kColourBits, kNoColour);
    }

    /// Columns from `begin` on of two rows, which may be the same one. The last of an odd number counts twice.
    void Convert(const std::uint8_t* const (&from)[2], std::size_t begin, std::size_t end, std::uint8_t* const (&y)[2],
                 std::uint8_t* colours) const {
        for (std::size_t x = begin; x < end; x += 2) {
            const std::size_t columns[] = {x, std::min(x + 1, end - 1)};
            int sums[3] = {};
            for (std::size_t row = 0; row < 2; ++row)
                for (const std::size_t column : columns) {
                    const std::uint8_t* const pixel = from[row] + 3 * column;
                    y[row][column] = LumaOf(pixel);
                    for (int i = 0; i < 3; ++i) sums[i] += pixel[i];
                }
            StoreColours(sums, colours + (x - begin));
        }
    }

private:
    static constexpr int kNoColour = 128;

    static std::uint8_t Rounded(const std::int64_t (&of)[3], const int (&rgb)[3], int bits, int offset) {
        const std::int64_t half = (std::int64_t{1} << (bits - 1)) + RGBToYCbCrFactors::kBias;
        const std::int64_t value = (of[0] * rgb[0] + of[1] * rgb[1] + of[2] * rgb[2] + half) >> bits;
        return static_cast<std::uint8_t>(std::clamp(static_cast<int>(value) + offset, 0, 255));
    }

    RGBToYCbCrFactors factors;
    bool crFirst;
};

#if !KY_SCALAR

/// Factors for red and green, and for blue, in two parts.
struct RGBFactors {
    PairFactors<2> redGreen, blue;

    RGBFactors() = default;
    explicit RGBFactors(const std::int64_t (&factors)[3]) : redGreen(factors[0], factors[1]), blue(factors[2], 0) {}

    /// As PairFactors::SumOf; `blues` are in the lower words.
    HWY_INLINE VI32 SumOf(V16 redsGreens, V16 blues) const {
        const VI32 lower = hn::Add(hn::Add(redGreen.PartOfSum(1, redsGreens), blue.PartOfSum(1, blues)),
                                   hn::Set(DI32(), static_cast<std::int32_t>(RGBToYCbCrFactors::kBias)));
        return hn::Add(hn::Add(redGreen.PartOfSum(0, redsGreens), blue.PartOfSum(0, blues)), hn::ShiftRight<15>(lower));
    }
};

/// The same for vectors.
class ToYCbCr : public ToYCbCrPixels {
public:
    /// \param streamed  false: Cb and Cr are read again soon, and never streamed
    ToYCbCr(const YCbCrSettings& settings, bool streamed) : ToYCbCrPixels(settings), streamsColours(streamed) {
        const RGBToYCbCrFactors ofColours(settings.colours);
        luma = RGBFactors(ofColours.luma);
        first = RGBFactors(settings.crFirst ? ofColours.cr : ofColours.cb);
        second = RGBFactors(settings.crFirst ? ofColours.cb : ofColours.cr);
        black = ofColours.black;
    }

    /// Y of a vector of pixels.
    HWY_INLINE V8 LumaOf(const Planes8& rgb) const {
        static constexpr BlockBytes kInOrder = {{0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}};
        const D8 d;
        const V8 zero = hn::Zero(d);
        const V8 rgLower = hn::InterleaveLower(d, rgb.first, rgb.second),
                 rgUpper = hn::InterleaveUpper(d, rgb.first, rgb.second);
        const V16 bLower = Words(hn::InterleaveLower(d, rgb.third, zero)),
                  bUpper = Words(hn::InterleaveUpper(d, rgb.third, zero));
        const D16 d16;
        const V16 none = hn::Zero(d16);
        const VI32 y0 = Luma(Words(hn::InterleaveLower(d, rgLower, zero)), hn::InterleaveLower(d16, bLower, none)),
                   y1 = Luma(Words(hn::InterleaveUpper(d, rgLower, zero)), hn::InterleaveUpper(d16, bLower, none)),
                   y2 = Luma(Words(hn::InterleaveLower(d, rgUpper, zero)), hn::InterleaveLower(d16, bUpper, none)),
                   y3 = Luma(Words(hn::InterleaveUpper(d, rgUpper, zero)), hn::InterleaveUpper(d16, bUpper, none));
        const VI32 all = hn::Or(hn::Or(y0, hn::ShiftLeft<8>(y1)), hn::Or(hn::ShiftLeft<16>(y2), hn::ShiftLeft<24>(y3)));
        return hn::TableLookupBytes(hn::BitCast(d, all), LoadBlock(kInOrder));
    }

    /// Cb and Cr in turn, of two vectors of pixels, one below the other.
    HWY_INLINE V8 ColoursOf(const Planes8& above, const Planes8& below) const {
        static constexpr BlockBytes kInOrder = {{0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15}};
        const D16 d;
        const V16 zero = hn::Zero(d);
        const V16 red = SumsOfFour(above.first, below.first), green = SumsOfFour(above.second, below.second),
                  blue = SumsOfFour(above.third, below.third);
        const VI32 lower = Colours(hn::InterleaveLower(d, red, green), hn::InterleaveLower(d, blue, zero)),
                   upper = Colours(hn::InterleaveUpper(d, red, green), hn::InterleaveUpper(d, blue, zero));
        return hn::TableLookupBytes(hn::BitCast(D8(), hn::Or(lower, hn::ShiftLeft<16>(upper))), LoadBlock(kInOrder));
    }

private:
    static HWY_INLINE V16 SumsOfFour(V8 above, V8 below) {
        const V16 low = hn::Set(D16(), 0x00FF);
        return hn::Add(hn::Add(hn::And(Words(above), low), hn::ShiftRight<8>(Words(above))),
                       hn::Add(hn::And(Words(below), low), hn::ShiftRight<8>(Words(below))));
    }

    template <int kShift>
    static HWY_INLINE VI32 Rounded(const RGBFactors& factors, V16 redGreen, V16 blue, int offset) {
        const VI32 half = hn::Set(DI32(), (1 << (kShift - 1)) + (offset << kShift));
        return hn::ShiftRight<kShift>(hn::Add(factors.SumOf(redGreen, blue), half));
    }

    HWY_INLINE VI32 Luma(V16 redGreen, V16 blue) const {
        return Rounded<RGBToYCbCrFactors::kLumaBits - 15>(luma, redGreen, blue, black);
    }

    HWY_INLINE VI32 Colours(V16 redGreen, V16 blue) const {
        constexpr int kShift = RGBToYCbCrFactors::kColourBits - 15;
        const VI32 most = hn::Set(DI32(), 255);
        const VI32 lower = hn::Min(Rounded<kShift>(first, redGreen, blue, 128), most),
                   upper = hn::Min(Rounded<kShift>(second, redGreen, blue, 128), most);
        return hn::Or(lower, hn::ShiftLeft<8>(upper));
    }

    RGBFactors luma, first, second;
    int black;

public:
    bool streamsColours;
};

struct RGBPairs {
    static constexpr std::size_t kGroup = 2, kGroupBytes = 6;
};

/// Two rows to their Y and to what they share of Cb and Cr, in turn.
struct ToYCbCrStep : PixelStep<RGBPairs, 1, 3, 2> {
    static constexpr std::size_t kPrefetchRows = 2;
    static constexpr bool kStreamsApart = true;
    using State = ToYCbCr;

    static HWY_INLINE void Run(const State& rule, const Rows& rows, std::size_t, bool streams) {
        const Planes8 above = Deinterleave<3>(rows.in[0]), below = Deinterleave<3>(rows.in[1]);
        Put(rule.LumaOf(above), rows.out[0], streams);
        Put(rule.LumaOf(below), rows.out[1], streams);
        Put(rule.ColoursOf(above, below), rows.out[2], streams && rule.streamsColours);
    }
};

#endif

/// Two rows of a tile, which are the same one where a last one has no partner.
struct RowsToYCbCr {
    const std::uint8_t* from[2];
    std::uint8_t* y[2];

    RowsToYCbCr(const Tile& tile, std::uint32_t row) {
        const std::uint32_t below = row + 1 < tile.last ? row + 1 : row;
        from[0] = tile.source[row];
        from[1] = tile.source[below];
        y[0] = tile.destination[row];
        y[1] = tile.destination[below];
    }
};

/// Converts some columns of two rows, the first one even. `colours`: of the first column.
inline void ConvertToYCbCr(const RowKernel& kernel, const Tile& tile, std::uint32_t row, std::size_t begin,
                           std::size_t end, std::uint8_t* colours) {
    const RowsToYCbCr rows(tile, row);
#if KY_SCALAR
    kernel.Get<ToYCbCrPixels>().Convert(rows.from, begin, end, rows.y, colours);
#else
    const auto& rule = kernel.Get<ToYCbCr>();
    const std::size_t whole = (end - begin) / 2 * 2;
    ToYCbCrStep::Rows here;
    for (int i = 0; i < 2; ++i) {
        here.in[i] = rows.from[i] + 3 * begin;
        here.out[i] = rows.y[i] + begin;
    }
    here.out[2] = colours;
    const WalkColumns columns = {0, whole, whole, tile.readable, tile.streams};
    Prefetch prefetch = {tile.prefetch.rows, tile.prefetch.ahead, 0, 0};
    if (tile.prefetch.bytes != 0) {
        // The part of these columns, in whatever the pipeline's source is.
        const std::size_t columnsOfTile = tile.end - tile.begin;
        prefetch.begin = tile.prefetch.begin + tile.prefetch.bytes * (begin - tile.begin) / columnsOfTile;
        prefetch.bytes = tile.prefetch.bytes * (end - begin) / columnsOfTile;
    }
    RowWalk<ToYCbCrStep>(rule, here, columns, prefetch, row).Run();
    if (begin + whole < end) rule.Convert(rows.from, begin + whole, end, rows.y, colours + whole);
#endif
}

inline void ConvertToTwoPlanes(const RowKernel& kernel, const Tile& tile) {
    for (std::uint32_t y = tile.first; y < tile.last; y += 2)
        ConvertToYCbCr(kernel, tile, y, tile.begin, tile.end, tile.destinationPlanes[0][y / 2] + tile.begin);
}

/// Cb and Cr in turn to a plane each.
inline void SplitColours(const std::uint8_t* from, std::size_t pairs, std::uint8_t* first, std::uint8_t* second) {
    for (std::size_t i = 0; i < pairs; ++i) {
        first[i] = from[2 * i];
        second[i] = from[2 * i + 1];
    }
}

/// Some columns at a time, whose Cb and Cr stay in the cache until they are split.
inline void ConvertToThreePlanes(const RowKernel& kernel, const Tile& tile) {
    constexpr std::size_t kColumns = 2048;
    alignas(64) std::uint8_t colours[kColumns];
    for (std::uint32_t y = tile.first; y < tile.last; y += 2)
        for (std::size_t begin = tile.begin; begin < tile.end; begin += kColumns) {
            const std::size_t end = std::min(begin + kColumns, tile.end);
            ConvertToYCbCr(kernel, tile, y, begin, end, colours);
            SplitColours(colours, (end - begin + 1) / 2, tile.destinationPlanes[0][y / 2] + begin / 2,
                         tile.destinationPlanes[1][y / 2] + begin / 2);
        }
}

inline void SetToYCbCr(const YCbCrSettings& settings, RowKernel::Run run, bool streamsColours, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.group = 2;
    needs.groupBytes = 6;
    needs.planes = 2;  // for the bytes that are written: Cb and Cr together are half of a plane
    needs.rowStep = 2;
    needs.rowsAtOnce = 2;
    needs.isComputeBound = true;
#if KY_SCALAR
    static_cast<void>(streamsColours);
    kernel.Set(needs, run, ToYCbCrPixels(settings));
#else
    kernel.Set(needs, run, ToYCbCr(settings, streamsColours));
#endif
}

inline void MakeToTwoPlanes(const YCbCrSettings& settings, RowKernel& kernel) {
    SetToYCbCr(settings, &ConvertToTwoPlanes, true, kernel);
}

inline void MakeToThreePlanes(const YCbCrSettings& settings, RowKernel& kernel) {
    SetToYCbCr(settings, &ConvertToThreePlanes, false, kernel);
}
