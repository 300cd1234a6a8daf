#include <KyImgLib/converters/colour/KyRGBtoRGB.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>
#include <KyImgLib/converters/colour/RGB16FilterInternal.h>

namespace {

/// From one RGB layout to another, which the sizes of pixels tell.
struct RGBMaker {
    std::uint32_t sourceBytes, channelBytes;  ///< of a pixel, and of each channel of sources of bytes
    std::uint32_t destinationBytes;           ///< of a pixel, of all planes together
    std::uint32_t shift;                      ///< of filtered words
    bool sourceIsBGR, destinationIsBGR, destinationIsPlanar;
    bool expandsFirst;  ///< of sources of RGB16, see ky::RGB16Filter

    /// False when the sizes are not those of a layout that there are kernels for.
    bool AddKernels(const ky::ConversionSettings& conversion, ky::Pipeline& pipeline) const {
        const ky::RGBKernels& kernels = ky::ActiveKernels().rgb;
        if (destinationBytes < 2 || destinationBytes > 4 || channelBytes == 0) return false;
        const std::uint32_t channels = sourceBytes / channelBytes;
        if (destinationIsPlanar && channels != 3) return false;
        switch (channels) {
            case 2: AddRGB16(kernels.fromRGB16, conversion, pipeline.Add()); return true;
            case 3: AddBytes(kernels.fromRGB24, channels, conversion, pipeline); return true;
            case 4: AddBytes(kernels.fromRGB32, channels, conversion, pipeline); return true;
            case 6: AddWords(kernels.fromRGB48, conversion, pipeline.Add()); return true;
            case 8: AddWords(kernels.fromRGB64, conversion, pipeline.Add()); return true;
            default: return false;
        }
    }

private:
    using Kernels8 = ky::ColourKernels<ky::Colour8Settings>;
    using Kernels16 = ky::ColourKernels<ky::Colour16Settings>;

    void AddRGB16(const Kernels8& kernels, const ky::ConversionSettings& conversion, ky::RowKernel& kernel) const {
        static_assert(sizeof kernel.tables >= ky::RGB16Filter::kTableBytes);
        const ky::RGB16Filter filter(ky::FilterOr(conversion.filter, 8), expandsFirst, kernel.tables);
        Add(kernels, filter.Stage(destinationIsBGR), kernel);
    }

    void AddBytes(const Kernels8& kernels, std::uint32_t channels, const ky::ConversionSettings& conversion,
                  ky::Pipeline& pipeline) const {
        const ky::Filter8 filter = ky::ByteStage(conversion.filter, destinationIsBGR);
        if (channelBytes != 1) {
            ky::ActiveKernels().gray.gather({channelBytes, 1, channels, false, {}}, pipeline.Add());
            // What is gathered may be the destination already.
            if (channels == destinationBytes && channels == 3 && !destinationIsPlanar &&
                sourceIsBGR == destinationIsBGR && filter.IsIdentity())
                return;
        }
        Add(kernels, filter, pipeline.Add());
    }

    void AddWords(const Kernels16& kernels, const ky::ConversionSettings& conversion, ky::RowKernel& kernel) const {
        Add(kernels, ky::WordStage(conversion.filter, destinationIsBGR, shift), kernel);
    }

    template <class Kernels, class Filter>
    void Add(const Kernels& kernels, const Filter& filter, ky::RowKernel& kernel) const {
        ky::ColourSettings<Filter> settings = {};
        settings.filter = filter;
        settings.isExchanged = sourceIsBGR != destinationIsBGR;
        (destinationIsPlanar ? kernels.toPlanar : ky::KernelTo(kernels, destinationBytes))(settings, kernel);
    }
};

RGBMaker MakerOf(const KyPixelConverter& converter, bool sourceIsBGR, bool destinationIsBGR, std::uint32_t channelBytes,
                 std::uint32_t shift) {
    RGBMaker maker;
    maker.sourceBytes = converter.KyPixelConverter::GetSourceByteSize();
    maker.channelBytes = channelBytes;
    maker.destinationBytes = converter.KyPixelConverter::GetDestinationByteSize();
    maker.shift = shift;
    maker.sourceIsBGR = sourceIsBGR;
    maker.destinationIsBGR = destinationIsBGR;
    maker.destinationIsPlanar = (converter.KyPixelConverter::GetDestinationType() & KY_TYPE_PLANAR) != 0;
    maker.expandsFirst = maker.destinationBytes == 3;
    return maker;
}

}  // namespace

KyRGBtoRGB::KyRGBtoRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                       std::uint32_t sourceBytesPerChannelUnit, std::uint32_t destinationPixelBytes,
                       std::uint32_t pipeliningSize, bool sourceIsBGR, bool destinationIsBGR, std::uint32_t extra,
                       std::uint32_t shift, std::uint32_t linesPerConvert)
    : KyPixelConverter(sourceType, destinationType, (extra + 1) * sourceBytesPerChannelUnit, destinationPixelBytes,
                       pipeliningSize, linesPerConvert),
      SourceIsBGR(sourceIsBGR), DestinationIsBGR(destinationIsBGR), ChannelBytes(extra + 1),
      Shift(shift), DestinationIndex{destinationIsBGR ? 2u : 0u, 1, destinationIsBGR ? 0u : 2u},
      SourceIndex{sourceIsBGR ? 2u : 0u, 1, sourceIsBGR ? 0u : 2u} {}

std::uint32_t KyRGBtoRGB::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    // Of channels of more than one byte, the first byte of each.
    std::uint8_t firstBytes[4] = {};
    if (ChannelBytes > 1) {
        for (std::size_t channel = 0; channel < 3; ++channel) firstBytes[channel] = source[channel * ChannelBytes];
        source = firstBytes;
    }
    if (ChannelBytes == 0) return KY_STATUS_NOT_SUPPORTED;
    RGBMaker maker = MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift);
    maker.sourceBytes /= ChannelBytes;
    maker.channelBytes = 1;
    maker.expandsFirst = false;
    const ky::ContextHolder context;
    ky::Pipeline pipeline;
    if (!maker.AddKernels({context->filter, context->flags, 1, 1, 1, false, 0}, pipeline))
        return KY_STATUS_NOT_SUPPORTED;
    pipeline.SetSize(0, 1, 1, 1);
    const std::uint32_t* const planes = context->planeOffsets;
    const auto rowAt = [&](std::uint32_t offset) { return ky::DestinationRows::OfImage(destination + offset, 0); };
    pipeline.Run({ky::SourceRows::OfImage(source, 0), rowAt(planes[0]), {}, {rowAt(planes[1]), rowAt(planes[2])}, 1}, 0,
                 1);
    return KY_STATUS_SUCCESS;
}

namespace {
constexpr std::uint32_t kPipelining = 4;
constexpr std::uint32_t kLines = 1;
constexpr bool kIsRGB = false;
constexpr std::uint32_t kNoExtra = 0;
constexpr std::uint32_t kNoShift = 0;
}  // namespace

KyRGB24ToRGB16::KyRGB24ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 3, 2, kPipelining, sourceIsBGR, kIsRGB, extra, kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB24ToRGB16),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB32ToRGB16::KyRGB32ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 4, 2, kPipelining, sourceIsBGR, kIsRGB, extra, kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB32ToRGB16),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB48ToRGB16::KyRGB48ToRGB16(const std::int64_t& sourceType, std::uint32_t shift)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 6, 2, kPipelining, kIsRGB, kIsRGB, kNoExtra, shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB48ToRGB16),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB64ToRGB16::KyRGB64ToRGB16(const std::int64_t& sourceType, std::uint32_t shift)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 8, 2, kPipelining, kIsRGB, kIsRGB, kNoExtra, shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB64ToRGB16),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB16ToRGB24::KyRGB16ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 2, 3, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB16ToRGB24),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB24ToRGB24::KyRGB24ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 3, 3, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB24ToRGB24),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB32ToRGB24::KyRGB32ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 4, 3, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB32ToRGB24),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB48ToRGB24::KyRGB48ToRGB24(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 6, 3, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB48ToRGB24),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB64ToRGB24::KyRGB64ToRGB24(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 8, 3, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB64ToRGB24),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB24ToRGB24Planar::KyRGB24ToRGB24Planar(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB24_PLANAR, 3, 3, kPipelining, sourceIsBGR, kIsRGB, extra, kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB24ToRGB24Planar),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB16ToRGB32::KyRGB16ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 2, 4, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB16ToRGB32),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB24ToRGB32::KyRGB24ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 3, 4, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB24ToRGB32),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB32ToRGB32::KyRGB32ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 4, 4, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB32ToRGB32),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB48ToRGB32::KyRGB48ToRGB32(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 6, 4, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB48ToRGB32),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}

KyRGB64ToRGB32::KyRGB64ToRGB32(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 8, 4, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyRGB64ToRGB32),
                                 MakerOf(*this, SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift));
}
