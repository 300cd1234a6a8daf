#include <KyImgLib/converters/colour/RGBBitsInternal.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

namespace ky {

namespace {

/// Bytes of a pixel, rounded up.
std::uint32_t PixelBytes(RGBBits layout) {
    const PixelGroup group = GroupOf(layout);
    return (group.bytes + group.pixels - 1) / group.pixels;
}

/// A stream of samples of 10 bits becomes words first.
void AddStream(Pipeline& pipeline) {
    WordSettings settings = {};
    settings.samples = 3;
    ActiveKernels().words.unpackThree(settings, pipeline.Add());
}

struct ToRGBMaker {
    RGBBits layout;
    bool sourceIsBGR, destinationIsBGR, destinationIsPlanar;
    std::uint32_t destinationBytes;  ///< of a pixel, of all planes together

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        if (layout == RGBBits::k10BitStream) AddStream(pipeline);
        const ColourKernels<Colour8Settings>& kernels = Kernels();
        Colour8Settings settings = {};
        settings.filter = ByteStage(conversion.filter, destinationIsBGR);
        settings.isExchanged = sourceIsBGR != destinationIsBGR;
        (destinationIsPlanar ? kernels.toPlanar : KernelTo(kernels, destinationBytes))(settings, pipeline.Add());
        return true;
    }

private:
    const ColourKernels<Colour8Settings>& Kernels() const {
        const RGBBitsTable& table = ActiveKernels().rgbBits;
        switch (layout) {
            case RGBBits::k565: return table.from565;
            case RGBBits::k555: return table.from555;
            case RGBBits::k10Bits32: return table.from10Bits32;
            default: return table.from10BitWords;
        }
    }
};

struct ToRGB48Maker {
    RGBBits layout;
    bool sourceIsBGR;
    std::uint8_t bits, wordShift;

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        Colour16Settings settings = {};
        settings.filter = WordStageOf(conversion.filter, bits);
        settings.isExchanged = sourceIsBGR;
        settings.sampleShift = wordShift;
        if (layout == RGBBits::k10BitStream) {
            AddStream(pipeline);
            if (settings.filter.IsIdentity() && !sourceIsBGR) return true;
        }
        const RGBBitsTable& table = ActiveKernels().rgbBits;
        (layout == RGBBits::k10Bits32    ? table.unpack10Bits32
         : layout == RGBBits::kFourWords ? table.filterRGB64
                                         : table.filterRGB48)(settings, pipeline.Add());
        return true;
    }
};

bool IsBGR(std::int64_t type) { return type == KY_TYPE_BGR24 || type == KY_TYPE_BGR32; }

std::uint32_t RGBBytes(std::int64_t type) {
    switch (type) {
        case KY_TYPE_RGB16: return 2;
        case KY_TYPE_RGB32:
        case KY_TYPE_BGR32: return 4;
        default: return 3;
    }
}

}  // namespace

PixelGroup GroupOf(RGBBits layout) {
    switch (layout) {
        case RGBBits::k565:
        case RGBBits::k555: return {1, 2};
        case RGBBits::k10Bits32: return {1, 4};
        case RGBBits::k10BitStream: return {4, 15};
        case RGBBits::kThreeWords: return {1, 6};
        default: return {1, 8};
    }
}

RGBBitsToRGB::RGBBitsToRGB(const RGBBitsFormat& source, std::int64_t destinationType)
    : KyPixelConverter(source.id, destinationType, PixelBytes(source.layout), RGBBytes(destinationType),
                       GroupOf(source.layout).pixels, 1),
      group(GroupOf(source.layout)) {
    Record::Of(*this).SetKernels(typeid(RGBBitsToRGB),
                                 ToRGBMaker{source.layout, source.isBGR, IsBGR(destinationType),
                                            destinationType == KY_TYPE_RGB24_PLANAR, RGBBytes(destinationType)});
}

std::uint32_t RGBBitsToRGB::GetSourceByteSize(std::uint32_t count) const {
    return static_cast<std::uint32_t>(BytesOf(group, count));
}

RGBBitsToRGB48::RGBBitsToRGB48(const RGBBitsFormat& source)
    : KyPixelConverter(source.id, KY_TYPE_RGB48, PixelBytes(source.layout), 6, GroupOf(source.layout).pixels, 1),
      group(GroupOf(source.layout)) {
    Record::Of(*this).SetKernels(typeid(RGBBitsToRGB48),
                                 ToRGB48Maker{source.layout, source.isBGR, source.bits, source.wordShift});
}

std::uint32_t RGBBitsToRGB48::GetSourceByteSize(std::uint32_t count) const {
    return static_cast<std::uint32_t>(BytesOf(group, count));
}

}  // namespace ky
