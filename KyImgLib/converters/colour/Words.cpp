#include <KyImgLib/converters/colour/WordsInternal.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

namespace ky {

namespace {

/// Applies a filter to RGB24, or to the words of RGB48. The identity of all 16 bits changes nothing, and costs no kernel.
void AddFilter(const KyRGBFilter* given, bool ofBytes, Pipeline& pipeline) {
    const KernelTable& table = ActiveKernels();
    if (ofBytes) {
        Colour8Settings settings = {};
        settings.filter = ByteStage(given, false);
        if (!settings.filter.IsIdentity()) table.rgb.fromRGB24.toRGB24(settings, pipeline.Add());
        return;
    }
    Colour16Settings settings = {};
    settings.filter = WordStage(given, false, 0);
    if (!settings.filter.IsIdentity() || settings.filter.indexMask != 0xFFFF)
        table.rgbBits.filterRGB48(settings, pipeline.Add());
}

/// From RGB24 to other RGB of bytes, or from RGB48 to the high bytes of its samples.
void AddBytes(std::int64_t destination, std::uint32_t bits, Pipeline& pipeline) {
    const RGBKernels& kernels = ActiveKernels().rgb;
    if (bits != 8) {
        Colour16Settings settings = {};
        settings.filter = WordStage(nullptr, false, bits - 8);
        kernels.fromRGB48.toRGB24(settings, pipeline.Add());
        return;
    }
    Colour8Settings settings = {};
    settings.filter = ByteStage(nullptr, false);
    settings.isExchanged = destination == KY_TYPE_BGR24 || destination == KY_TYPE_BGR32;
    const bool isPlanar = destination == KY_TYPE_RGB24_PLANAR;
    const std::uint32_t pixelBytes = destination == KY_TYPE_RGB16                                   ? 2
                                     : destination == KY_TYPE_RGB32 || destination == KY_TYPE_BGR32 ? 4
                                                                                                    : 3;
    (isPlanar ? kernels.fromRGB24.toPlanar : KernelTo(kernels.fromRGB24, pixelBytes))(settings, pipeline.Add());
}

struct WordsMaker {
    std::int64_t destination;
    WordLayout layout;
    std::uint8_t bits;
    bool isFullRange, appliesFilter;

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        if (appliesFilter) AddFilter(conversion.filter, bits == 8, pipeline);
        if (layout == WordLayout::kBytes)
            AddBytes(destination, bits, pipeline);
        else
            Kernel()(Settings(), pipeline.Add());
        return true;
    }

private:
    WordSettings Settings() const {
        const auto largest = static_cast<std::uint16_t>((1u << bits) - 1);
        WordSettings settings = {};
        settings.samples = layout == WordLayout::kGray ? 1 : 3;
        settings.scale = isFullRange ? WordScale::ToFullRange(bits) : WordScale::Masked(bits);
        settings.repeatsBytes = isFullRange;
        settings.alpha = isFullRange ? std::uint16_t{0xFFFF} : largest;
        settings.largest = largest;
        return settings;
    }

    MakeWords Kernel() const {
        const WordTable& table = ActiveKernels().words;
        const ChannelKernels& fromChannels = bits == 8 ? table.fromRGB24 : table.fromRGB48;
        switch (layout) {
            case WordLayout::kRGBA64: return fromChannels.toRGBA64;
            case WordLayout::kWordPlanes: return fromChannels.toWordPlanes;
            case WordLayout::kFloatPlanes: return fromChannels.toFloatPlanes;
            case WordLayout::kLuma: return table.lumaOfRGB24;
            default: return bits == 8 ? table.widen : table.scale;
        }
    }
};

}  // namespace

WordsConverter::WordsConverter(const WordConversion& conversion)
    : PlanesConverter(conversion.source, conversion.destination) {
    Record::Of(*this).SetKernels(typeid(WordsConverter),
                                 WordsMaker{conversion.destination, conversion.layout, conversion.bits,
                                            conversion.isFullRange, conversion.appliesFilter});
}

}  // namespace ky
