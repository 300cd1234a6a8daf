// Kernels from one colour layout to another at one instruction-set level: a reader, the filter stage and a writer.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/RowWalk-inl.h>
#include <KyImgLib/kernels/Filter8-inl.h>
#include <KyImgLib/kernels/Filter16-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
#include <KyImgLib/kernels/colour/Samples-inl.h>
#include <KyImgLib/kernels/colour/YUVArithmetic-inl.h>
#include <KyImgLib/kernels/colour/Readers-inl.h>
#include <KyImgLib/kernels/colour/Reorder-inl.h>
// clang-format on

template <class Settings>
ReaderSettings SettingsOfReader(const Settings& settings) {
    return {settings.sampleShift, {settings.places[0], settings.places[1], settings.places[2]}};
}

#if KY_SCALAR

template <class Reader, class Writer, class Settings>
void ConvertColours(const RowKernel& kernel, const Tile& tile) {
    const auto& settings = kernel.Get<Settings>();
    const ReaderSettings reader = SettingsOfReader(settings);
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const std::uint8_t* const from = tile.source[y];
        std::uint8_t* const rows[] = {tile.destination[y], Writer::kPlanes > 1 ? tile.destinationPlanes[0][y] : nullptr,
                                      Writer::kPlanes > 1 ? tile.destinationPlanes[1][y] : nullptr};
        for (std::size_t x = tile.begin; x < tile.end; ++x) {
            auto pixel = Reader::ReadPixel(from + x / Reader::kGroup * Reader::kGroupBytes,
                                           static_cast<unsigned>(x % Reader::kGroup), reader);
            if (settings.isExchanged) std::swap(pixel.first, pixel.third);
            std::uint8_t* to[Writer::kPlanes];
            for (std::size_t plane = 0; plane < Writer::kPlanes; ++plane)
                to[plane] = rows[plane] + x * Writer::kPixelBytes;
            Writer::StorePixel(static_cast<std::uint8_t>(settings.filter.Value(0, pixel.first)),
                               static_cast<std::uint8_t>(settings.filter.Value(1, pixel.second)),
                               static_cast<std::uint8_t>(settings.filter.Value(2, pixel.third)), to);
        }
    }
}

template <class Reader, class Writer, class Settings>
void SetColours(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    kernel.Set(needs, &ConvertColours<Reader, Writer, Settings>, settings);
}

#else

/// What a colour step knows: how to bring source channels to stored bytes.
template <class Reader, class Settings, bool kIsIdentity>
class ColourState {
public:
    explicit ColourState(const Settings& settings)
        : filter(settings.filter), reader(SettingsOfReader(settings)), isExchanged(settings.isExchanged) {}

    /// A vector of bytes for each channel, from the start of a group on.
    HWY_INLINE Planes8 Read(const std::uint8_t* from) const {
        if constexpr (sizeof(typename Reader::Sample) == 1) {
            Planes8 pixels = Exchanged(Reader::ReadVector(from, reader));
            filter.Apply(pixels.first, pixels.second, pixels.third);
            return pixels;
        } else {
            const Planes16 lower = Exchanged(Reader::ReadVector(from, reader));
            const Planes16 upper = Exchanged(Reader::ReadVector(from + kLanes / 2 * Reader::kGroupBytes, reader));
            return filter.Apply(lower, upper);
        }
    }

private:
    template <class V>
    HWY_INLINE Planes<V> Exchanged(const Planes<V>& pixels) const {
        // Red and blue of RGB16 are both 0 here. An exchange would go through memory and take a quarter longer.
        if constexpr (std::is_same_v<Reader, ReadRGB16>) return pixels;
        if (isExchanged) return {pixels.third, pixels.second, pixels.first};
        return pixels;
    }

    FilterStage<typename Settings::Filter, kIsIdentity> filter;
    ReaderSettings reader;
    bool isExchanged;
};

template <class Reader, class Writer, class Settings, bool kIsIdentity>
struct ColourStep : PixelStep<Reader, Writer::kPixelBytes, Writer::kPlanes> {
    using State = ColourState<Reader, Settings, kIsIdentity>;

    static HWY_INLINE void Run(const State& state, const typename ColourStep::Rows& rows, std::size_t, bool streams) {
        const Planes8 pixels = state.Read(rows.in[0]);
        Writer::Store(pixels.first, pixels.second, pixels.third, rows.out, streams);
    }
};

/// Whether a ReorderStep does it where there is no filter. Not three bytes to three with vectors of a cache line: two loads
/// for each, of which hardly one is aligned, take longer than planes.
template <class Reader, class Writer>
constexpr bool IsReordered() {
    const bool readsBytes = std::is_same_v<Reader, ReadRGBBytes<3>> || std::is_same_v<Reader, ReadRGBBytes<4>>;
    const bool writesBytes = std::is_same_v<Writer, Write24> || std::is_same_v<Writer, Write32>;
    return readsBytes && writesBytes && (kLanes < 64 || Reader::kGroupBytes + Writer::kPixelBytes > 6);
}

template <class Step>
void ConvertColours(const RowKernel& kernel, const Tile& tile) {
    WalkPixels<Step>(kernel.Get<typename Step::State>(), tile, tile.GetColumns());
}

template <class Reader, class Writer, class Settings>
void SetColours(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    using Identity = ColourStep<Reader, Writer, Settings, true>;
    using Filtered = ColourStep<Reader, Writer, Settings, false>;
    if (!settings.filter.IsIdentity()) {
        kernel.Set(needs, &ConvertColours<Filtered>, typename Filtered::State(settings));
    } else if constexpr (IsReordered<Reader, Writer>()) {
        using Step = ReorderStep<Reader::kGroupBytes, Writer::kPixelBytes>;
        kernel.Set(needs, &ConvertColours<Step>, typename Step::State(settings.isExchanged));
    } else if constexpr (std::is_same_v<Reader, ReadRGBWords<3>> && std::is_same_v<Writer, Write24>) {
        if (settings.isExchanged)
            kernel.Set(needs, &ConvertColours<Identity>, typename Identity::State(settings));
        else
            kernel.Set(needs, &ConvertColours<NarrowStep>, NarrowStep::State(settings.filter));
    } else {
        kernel.Set(needs, &ConvertColours<Identity>, typename Identity::State(settings));
    }
}

#endif

template <class Reader, class Writer, class Settings>
void MakeColours(const Settings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.group = Reader::kGroup;
    needs.groupBytes = Reader::kGroupBytes;
    needs.pixelBytes = Writer::kPixelBytes;
    needs.planes = Writer::kPlanes;
    needs.isComputeBound = true;
    SetColours<Reader, Writer>(needs, settings, kernel);
}

/// Only some sources have a planar destination.
template <class Reader, class Settings>
constexpr ColourKernels<Settings> KernelsFrom = {&MakeColours<Reader, Write565, Settings>,
                                                 &MakeColours<Reader, Write24, Settings>,
                                                 &MakeColours<Reader, Write32, Settings>, nullptr};
