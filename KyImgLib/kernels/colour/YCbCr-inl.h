// Kernels between YCbCr and RGB at one instruction-set level.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/RowWalk-inl.h>
#include <KyImgLib/kernels/Filter8-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
#include <KyImgLib/kernels/colour/Samples-inl.h>
#include <KyImgLib/kernels/colour/YCbCrArithmetic-inl.h>
#include <KyImgLib/kernels/colour/YCbCrReaders-inl.h>
#include <KyImgLib/kernels/colour/ToYCbCr-inl.h>
// clang-format on

inline YCbCrLayout LayoutOf(const YCbCrSettings& settings) {
    YCbCrLayout layout = {};
    std::memcpy(layout.places, settings.places, sizeof layout.places);
    layout.wordShift = settings.wordShift;
    layout.crFirst = settings.crFirst;
    return layout;
}

/// The rows of an image's planes that row y is made of.
template <std::size_t kPlanes>
void FindRows(const Tile& tile, std::uint32_t y, std::uint32_t linesPerCbCrRow, bool crFirst,
              const std::uint8_t* (&rows)[kPlanes]) {
    rows[0] = tile.source[y];
    for (std::size_t i = 1; i < kPlanes; ++i) {
        // Of three planes the last two may change places.
        const std::size_t plane = kPlanes == 3 && crFirst ? 2 - i : i - 1;
        rows[i] = tile.sourcePlanes[plane][y / linesPerCbCrRow];
    }
}

#if KY_SCALAR

template <class Reader, class Arithmetic, class Writer>
void ConvertYCbCr(const RowKernel& kernel, const Tile& tile) {
    const auto& settings = kernel.Get<YCbCrSettings>();
    const YCbCrLayout layout = LayoutOf(settings);
    const YCbCrOfPixel rule(settings.colours, settings.bits);
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const std::uint8_t* rows[Reader::kPlanes];
        FindRows(tile, y, settings.linesPerCbCrRow, settings.crFirst, rows);
        std::uint8_t* const row = tile.destination[y];
        for (std::size_t x = tile.begin; x < tile.end; ++x) {
            auto pixel = rule.RGBOf(Reader::ReadPixel(rows, x, layout));
            if (settings.isExchanged) std::swap(pixel.first, pixel.third);
            std::uint8_t* const to[] = {row + x * Writer::kPixelBytes};
            Writer::StorePixel(static_cast<std::uint8_t>(settings.filter.Value(0, pixel.first)),
                               static_cast<std::uint8_t>(settings.filter.Value(1, pixel.second)),
                               static_cast<std::uint8_t>(settings.filter.Value(2, pixel.third)), to);
        }
    }
}

template <class Reader, class Arithmetic, class Writer>
void SetYCbCr(const RowKernel::Needs& needs, const YCbCrSettings& settings, RowKernel& kernel) {
    kernel.Set(needs, &ConvertYCbCr<Reader, Arithmetic, Writer>, settings);
}

#else

/// What a step knows beside its rows.
template <class Arithmetic, bool kIsIdentity>
struct YCbCrState {
    explicit YCbCrState(const YCbCrSettings& settings)
        : rule(MakeRule(settings)), layout(LayoutOf(settings)), filter(settings.filter),
          linesPerCbCrRow(settings.linesPerCbCrRow), isExchanged(settings.isExchanged) {
        // Of Y, Cb, Y, Cr of two pixels; of Cb and Cr in turn, where a plane has these.
        static constexpr std::uint8_t kSwapped[] = {1, 0, 3, 2}, kInOrder[] = {0, 1, 2, 3};
        const bool hasPlaces = settings.places[1] != settings.places[3];
        const std::uint8_t* const from = hasPlaces ? settings.places : settings.crFirst ? kSwapped : kInOrder;
        for (std::uint8_t i = 0; i < 16; ++i)
            layout.order.bytes[i] = static_cast<std::uint8_t>(i / 4 * 4 + from[i % 4]);
    }

    Arithmetic rule;
    YCbCrLayout layout;
    FilterStage<Filter8, kIsIdentity> filter;
    std::uint8_t linesPerCbCrRow;
    bool isExchanged;

private:
    static Arithmetic MakeRule(const YCbCrSettings& settings) {
        if constexpr (std::is_same_v<Arithmetic, YCbCrOfPairs>)
            return YCbCrOfPairs(settings.colours);
        else
            return YCbCrOfWords(settings.colours, settings.bits);
    }
};

template <class Reader>
HWY_INLINE Planes8 ReadRGB(const std::uint8_t* const* rows, const YCbCrLayout& layout, const YCbCrOfPairs& rule) {
    const auto samples = Reader::ReadVector(rows, layout);
    const Planes16 lower = rule.RGBOf(samples.lower), upper = rule.RGBOf(samples.upper);
    return {PackBytes(lower.first, upper.first), PackBytes(lower.second, upper.second),
            PackBytes(lower.third, upper.third)};
}

HWY_INLINE V16 LowWords(VI32 first, VI32 second) {
    return hn::ConcatEven(D16(), hn::BitCast(D16(), second), hn::BitCast(D16(), first));
}

template <class Reader>
HWY_INLINE Planes8 ReadRGB(const std::uint8_t* const* rows, const YCbCrLayout& layout, const YCbCrOfWords& rule) {
    const Planes<VI32> a = rule.RGBOf(Reader::template ReadVector<0>(rows, layout));
    const Planes<VI32> b = rule.RGBOf(Reader::template ReadVector<1>(rows, layout));
    const Planes16 lower = {LowWords(a.first, b.first), LowWords(a.second, b.second), LowWords(a.third, b.third)};
    const Planes<VI32> c = rule.RGBOf(Reader::template ReadVector<2>(rows, layout));
    const Planes<VI32> d = rule.RGBOf(Reader::template ReadVector<3>(rows, layout));
    const Planes16 upper = {LowWords(c.first, d.first), LowWords(c.second, d.second), LowWords(c.third, d.third)};
    return {LowBytes(lower.first, upper.first), LowBytes(lower.second, upper.second),
            LowBytes(lower.third, upper.third)};
}

template <class Reader, class Arithmetic, class Writer, bool kIsIdentity>
struct YCbCrStep : PixelStep<Reader, Writer::kPixelBytes, 1, Reader::kPlanes> {
    using typename PixelStep<Reader, Writer::kPixelBytes, 1, Reader::kPlanes>::Rows;
    using State = YCbCrState<Arithmetic, kIsIdentity>;

    static constexpr std::size_t PlaneBytes(std::size_t i, std::size_t pixels) { return Reader::PlaneBytes(i, pixels); }

    static HWY_INLINE void Advance(Rows& rows, std::ptrdiff_t pixels) {
        constexpr std::ptrdiff_t group = Reader::kGroup;
        for (std::size_t i = 0; i < Reader::kPlanes; ++i)
            rows.in[i] += pixels / group * static_cast<std::ptrdiff_t>(PlaneBytes(i, Reader::kGroup));
        rows.out[0] += pixels * static_cast<std::ptrdiff_t>(Writer::kPixelBytes);
    }

    static HWY_INLINE void Run(const State& state, const Rows& rows, std::size_t, bool streams) {
        const Planes8 rgb = ReadRGB<Reader>(rows.in, state.layout, state.rule);
        Planes8 pixels = state.isExchanged ? Planes8{rgb.third, rgb.second, rgb.first} : rgb;
        state.filter.Apply(pixels.first, pixels.second, pixels.third);
        Writer::Store(pixels.first, pixels.second, pixels.third, rows.out, streams);
    }
};

template <class Step>
void ConvertYCbCr(const RowKernel& kernel, const Tile& tile) {
    const auto& state = kernel.Get<typename Step::State>();
    if constexpr (Step::kInputs == 1) {
        WalkPixels<Step>(state, tile, tile.GetColumns());
    } else {
        const WalkColumns columns = ColumnsOf(tile);
        for (std::uint32_t y = tile.first; y < tile.last; ++y) {
            typename Step::Rows rows;
            FindRows(tile, y, state.linesPerCbCrRow, state.layout.crFirst, rows.in);
            rows.out[0] = tile.destination[y];
            RowWalk<Step>(state, rows, columns, tile.prefetch, y).Run();
        }
    }
}

template <class Reader, class Arithmetic, class Writer>
void SetYCbCr(const RowKernel::Needs& needs, const YCbCrSettings& settings, RowKernel& kernel) {
    using Filtered = YCbCrStep<Reader, Arithmetic, Writer, false>;
    if constexpr (Reader::kIsFrequent) {
        using Identity = YCbCrStep<Reader, Arithmetic, Writer, true>;
        if (settings.filter.IsIdentity())
            return kernel.Set(needs, &ConvertYCbCr<Identity>, typename Identity::State(settings));
    }
    kernel.Set(needs, &ConvertYCbCr<Filtered>, typename Filtered::State(settings));
}

#endif

template <class Reader, class Arithmetic, class Writer>
void MakeFromYCbCr(const YCbCrSettings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.group = Reader::kGroup;
    needs.groupBytes = Reader::kGroupBytes;
    needs.pixelBytes = Writer::kPixelBytes;
    needs.isComputeBound = true;
    SetYCbCr<Reader, Arithmetic, Writer>(needs, settings, kernel);
}

#if KY_SCALAR
using YCbCrOfPairs = YCbCrOfPixel;
using YCbCrOfWords = YCbCrOfPixel;
#endif

template <class Reader, class Arithmetic>
constexpr YCbCrToRGB kFrom = {&MakeFromYCbCr<Reader, Arithmetic, Write24>, &MakeFromYCbCr<Reader, Arithmetic, Write32>};

extern const YCbCrKernels kYCbCr;
const YCbCrKernels kYCbCr = {
    kFrom<ReadPairs, YCbCrOfPairs>,
    kFrom<ReadFours, YCbCrOfPairs>,
    kFrom<ReadPixels, YCbCrOfPairs>,
    kFrom<ReadWordPairs, YCbCrOfWords>,
    kFrom<ReadTwoBytePlanes, YCbCrOfPairs>,
    kFrom<ReadThreePlanes, YCbCrOfPairs>,
    kFrom<ReadTwoWordPlanes, YCbCrOfWords>,
    &MakeToTwoPlanes,
    &MakeToThreePlanes,
};
