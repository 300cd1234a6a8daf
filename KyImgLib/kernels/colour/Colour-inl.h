// Kernels from one colour layout to another at one instruction-set level: a reader, the filter stage and a writer.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/Gather-inl.h>
#include <KyImgLib/kernels/Streaming-inl.h>
#include <KyImgLib/kernels/PixelLines-inl.h>
#include <KyImgLib/kernels/Filter8-inl.h>
#include <KyImgLib/kernels/Filter16-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
#include <KyImgLib/kernels/colour/YUVArithmetic-inl.h>
#include <KyImgLib/kernels/colour/Readers-inl.h>
// clang-format on

template <class Band>
ReaderSettings SettingsOf(const Band& band) {
    return {band.sampleShift, {band.places[0], band.places[1], band.places[2]}};
}

/// Whether samples are bytes that follow one another, each pixel's among its own.
template <class Band>
bool LiesReady(const Band& band) {
    return band.sampleBytes == 1 && band.places[0] < 3 && band.places[1] < 3 && band.places[2] < 3;
}

#if KY_PLAIN

template <class Reader, class Writer, class Band>
void ConvertPixels(const Band& band) {
    const ReaderSettings settings = SettingsOf(band);
    for (std::uint32_t y = 0; y < band.lines; ++y) {
        const std::uint8_t* const from = SourceLineOf(band, y);
        std::uint8_t* const to = band.destination + y * band.destinationLine;
        for (std::size_t x = 0; x < band.width; ++x) {
            auto pixel = Reader::ReadPixel(from + x / Reader::kGroup * Reader::kGroupBytes,
                                           static_cast<unsigned>(x % Reader::kGroup), settings);
            if (band.isExchanged) std::swap(pixel.first, pixel.third);
            const auto first = static_cast<std::uint8_t>(band.filter.Value(0, pixel.first));
            const auto second = static_cast<std::uint8_t>(band.filter.Value(1, pixel.second));
            const auto third = static_cast<std::uint8_t>(band.filter.Value(2, pixel.third));
            if constexpr (std::is_same_v<Writer, WritePlanes>)
                Writer::StorePixel(first, second, third, to + x, band.planeOffsets);
            else
                Writer::StorePixel(first, second, third, to + x * Writer::kPixelBytes);
        }
    }
}

#else

/// A step of the walk over lines: a vector of bytes for each channel.
template <class Reader, class Writer, class Band, bool kIsIdentity>
class ColourStep {
public:
    static constexpr std::size_t kPixels = kLanes;
    static constexpr std::size_t kGroup = Reader::kGroup, kGroupBytes = Reader::kGroupBytes;
    static constexpr std::size_t kPixelBytes = Writer::kPixelBytes;
    static constexpr std::size_t kPlanes = std::is_same_v<Writer, WritePlanes> ? 3 : 1;

    explicit ColourStep(const Band& band)
        : planes{band.planeOffsets[0], band.planeOffsets[1]}, filter(band.filter), settings(SettingsOf(band)),
          isExchanged(band.isExchanged) {}

    template <bool kStream>
    HWY_INLINE void Run(const std::uint8_t* from, std::uint8_t* to) const {
        if constexpr (sizeof(typename Reader::Sample) == 1) {
            const Planes8 pixels = Exchanged(Reader::ReadVector(from, settings));
            Store<kStream>(filter.template Apply<0>(pixels.first), filter.template Apply<1>(pixels.second),
                           filter.template Apply<2>(pixels.third), to);
        } else {
            const Planes16 lower = Exchanged(Reader::ReadVector(from, settings));
            const Planes16 upper = Exchanged(Reader::ReadVector(from + kPixels / 2 * kGroupBytes, settings));
            Store<kStream>(Narrow<0>(lower.first, upper.first), Narrow<1>(lower.second, upper.second),
                           Narrow<2>(lower.third, upper.third), to);
        }
    }

    std::ptrdiff_t planes[2];

private:
    template <class V>
    HWY_INLINE Planes<V> Exchanged(const Planes<V>& pixels) const {
        // Its red and blue are the same. To exchange them all the same went through memory, and took a quarter longer.
        if constexpr (std::is_same_v<Reader, ReadRGB16>) return pixels;
        if (isExchanged) return {pixels.third, pixels.second, pixels.first};
        return pixels;
    }

    template <int kChannel>
    HWY_INLINE V8 Narrow(V16 lower, V16 upper) const {
        return LowBytes(hn::ShiftRightSame(filter.template Apply<kChannel>(lower), filter.Shift()),
                        hn::ShiftRightSame(filter.template Apply<kChannel>(upper), filter.Shift()));
    }

    template <bool kStream>
    HWY_INLINE void Store(V8 first, V8 second, V8 third, std::uint8_t* to) const {
        if constexpr (kPlanes == 3)
            Writer::template Store<kStream>(first, second, third, to, planes);
        else
            Writer::template Store<kStream>(first, second, third, to);
    }

    FilterStage<typename Band::Filter, kIsIdentity> filter;
    ReaderSettings settings;
    bool isExchanged;
};

template <class Reader, class Writer, class Band>
void ConvertPixels(const Band& band) {
    if (band.filter.IsIdentity()) {
        using Step = ColourStep<Reader, Writer, Band, true>;
        PixelLines<Step>(band, Step(band)).Run();
    } else {
        using Step = ColourStep<Reader, Writer, Band, false>;
        PixelLines<Step>(band, Step(band)).Run();
    }
}

#endif

/// Samples of bytes that lie apart are gathered first, in stretches that the first-level cache holds.
template <class Reader, class Writer, class Band>
void ConvertGathered(const Band& band, const std::uint8_t* from, std::uint8_t* to, std::size_t first, std::size_t end,
                     const FetchAhead& ahead) {
    constexpr std::size_t kStretch = 2048;
    std::uint8_t samples[kStretch / Reader::kGroup * Reader::kGroupBytes];
    const std::size_t groupBytes = Reader::kGroupBytes * band.sampleBytes;
    Band stretch = band;
    stretch.source = samples;
    stretch.lines = 1;
    stretch.joint = nullptr;
    stretch.places[0] = 0;
    stretch.places[1] = 1;
    stretch.places[2] = 2;
    for (std::size_t x = first; x < end; x += kStretch) {
        stretch.width = std::min(kStretch, end - x);
        stretch.ahead = ahead.Part(x - first, x - first + stretch.width, end - first);
        Reader::Gather(band, from + x / Reader::kGroup * groupBytes, stretch.width, samples);
        stretch.destination = to + x * Writer::kPixelBytes;
        ConvertPixels<Reader, Writer>(stretch);
    }
}

#if !KY_PLAIN

template <class Reader, class Writer, class Band>
void ConvertGatheredAsStage(const LineStage& stage, const std::uint8_t* from, std::uint8_t* to, std::size_t first,
                            std::size_t end, const FetchAhead& ahead) {
    const auto& band = stage.Kept<Band>();
    end = std::min((end + Reader::kGroup - 1) / Reader::kGroup * Reader::kGroup, band.width);
    ConvertGathered<Reader, Writer>(band, from, to, first, end, ahead);
}

#endif

template <class Reader, class Writer, class Band>
void ConvertColour(const Band& band) {
    if constexpr (Reader::kIsOfBytes) {
        if (!LiesReady(band)) {
#if !KY_PLAIN
            if (band.joint != nullptr && band.joint->asked != nullptr)
                band.joint->asked->Keep(band, &ConvertGatheredAsStage<Reader, Writer, Band>);
#endif
            for (std::uint32_t line = 0; line < band.lines; ++line)
                ConvertGathered<Reader, Writer>(band, band.source + line * band.sourceLine,
                                                band.destination + line * band.destinationLine, 0, band.width,
                                                band.ahead.At(line));
            return;
        }
    }
    ConvertPixels<Reader, Writer>(band);
}

/// Only some sources have a planar destination.
template <class Reader, class Band>
constexpr ColourKernels<Band> KernelsFrom = {&ConvertColour<Reader, Write565, Band>,
                                             &ConvertColour<Reader, Write24, Band>,
                                             &ConvertColour<Reader, Write32, Band>, nullptr};
