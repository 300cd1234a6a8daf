#include <KyImgLib/converters/colour/KyRGBtoRGB.h>

#include <KyImgLib/converters/colour/ColourDriverInternal.h>
#include <KyImgLib/converters/colour/RGB16FilterInternal.h>

struct KyRGBtoRGB::Kernels {
    const KyRGBtoRGB& converter;
    const KyPixelConverterContext& context;
    const KyLinePass& pass;
    std::uint32_t channelBytes;  ///< of sources of bytes
    bool expandFirst;            ///< for sources of RGB16, see ky::RGB16Filter

    static void ConvertPass(const KyPixelConverter& base, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        const auto& converter = static_cast<const KyRGBtoRGB&>(base);
        Kernels{converter, context, pass, converter.ChannelBytes, converter.DestinationBytes() == 3}.Convert();
    }

    /// False when the sizes are not those of a layout that there are kernels for.
    bool Convert() const {
        const ky::RGBKernels& kernels = ky::ActiveKernels().rgb;
        const std::uint32_t destinationBytes = converter.DestinationBytes();
        if (destinationBytes < 2 || destinationBytes > 4 || converter.ChannelBytes == 0) return false;
        const std::uint32_t channels = converter.SourceBytes() / converter.ChannelBytes;
        if ((converter.GetDestinationType() & KY_TYPE_PLANAR) != 0 && channels != 3) return false;
        switch (channels) {
            case 2: {
                static_assert(ky::LineStage::kTableBytes >= ky::RGB16Filter::kTableBytes);
                std::uint8_t tables[ky::RGB16Filter::kTableBytes];
                const bool isAsked = pass.joint != nullptr && pass.joint->asked != nullptr;
                const ky::RGB16Filter filter(ky::FilterOf(context, 8), expandFirst,
                                             isAsked ? pass.joint->asked->Tables() : tables);
                ConvertBytes(kernels.fromRGB16, filter.Stage(converter.DestinationIsBGR));
                return true;
            }
            case 3: ConvertBytes(kernels.fromRGB24, ByteFilter()); return true;
            case 4: ConvertBytes(kernels.fromRGB32, ByteFilter()); return true;
            case 6: ConvertWords(kernels.fromRGB48); return true;
            case 8: ConvertWords(kernels.fromRGB64); return true;
            default: return false;
        }
    }

private:
    ky::Filter8 ByteFilter() const { return ky::ByteStage(ky::FilterOf(context, 8), converter.DestinationIsBGR, 0); }

    void ConvertBytes(const ky::ColourKernels<ky::Colour8Band>& kernels, const ky::Filter8& filter) const {
        ky::Colour8Band band = {};
        band.filter = filter;
        band.sampleBytes = channelBytes;
        Convert(kernels, band);
    }

    void ConvertWords(const ky::ColourKernels<ky::Colour16Band>& kernels) const {
        ky::Colour16Band band = {};
        band.filter = ky::WordStage(ky::FilterOf(context, 16), converter.DestinationIsBGR, converter.Shift);
        band.sampleBytes = 1;
        Convert(kernels, band);
    }

    template <typename Band>
    void Convert(const ky::ColourKernels<Band>& kernels, Band& band) const {
        band.isExchanged = converter.SourceIsBGR != converter.DestinationIsBGR;
        const std::uint32_t destinationBytes = converter.DestinationBytes();
        if ((converter.GetDestinationType() & KY_TYPE_PLANAR) == 0) {
            ky::ConvertLines(ky::KernelTo(kernels, destinationBytes), 1, band, pass);
            return;
        }
        const std::uint32_t* const offsets = context.planeOffsets;
        for (int plane = 1; plane < 3; ++plane)
            band.planeOffsets[plane - 1] = std::ptrdiff_t{offsets[plane]} - std::ptrdiff_t{offsets[0]};
        KyLinePass fromFirstPlane = pass;
        fromFirstPlane.destination += offsets[0];
        ky::ConvertLines(kernels.toPlanar, 1, band, fromFirstPlane);
    }
};

KyRGBtoRGB::KyRGBtoRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                       std::uint32_t sourceBytesPerChannelUnit, std::uint32_t destinationPixelBytes,
                       std::uint32_t pipeliningSize, bool sourceIsBGR, bool destinationIsBGR, std::uint32_t extra,
                       std::uint32_t shift, std::uint32_t linesPerConvert)
    : KyPixelConverter(sourceType, destinationType, (extra + 1) * sourceBytesPerChannelUnit, destinationPixelBytes,
                       pipeliningSize, linesPerConvert),
      SourceIsBGR(sourceIsBGR), DestinationIsBGR(destinationIsBGR), ChannelBytes(extra + 1),
      Shift(shift), DestinationIndex{destinationIsBGR ? 2u : 0u, 1, destinationIsBGR ? 0u : 2u},
      SourceIndex{sourceIsBGR ? 2u : 0u, 1, sourceIsBGR ? 0u : 2u} {}

std::uint32_t KyRGBtoRGB::SourceBytes() const { return KyPixelConverter::GetSourceByteSize(); }

std::uint32_t KyRGBtoRGB::DestinationBytes() const { return KyPixelConverter::GetDestinationByteSize(); }

std::uint32_t KyRGBtoRGB::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    // Of channels of more than one byte, the first byte of each.
    std::uint8_t firstBytes[4] = {};
    if (ChannelBytes > 1) {
        for (std::size_t channel = 0; channel < 3; ++channel) firstBytes[channel] = source[channel * ChannelBytes];
        source = firstBytes;
    }
    const ky::ContextHolder context;
    KyLinePass pass = {};
    pass.source = source;
    pass.destination = destination;
    pass.width = pass.height = pass.lineStep = 1;
    const bool isConverted = Kernels{*this, *context, pass, 1, false}.Convert();
    return isConverted ? KY_STATUS_SUCCESS : KY_STATUS_NOT_SUPPORTED;
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
    SetPassFunction(typeid(KyRGB24ToRGB16), &Kernels::ConvertPass);
}

KyRGB32ToRGB16::KyRGB32ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 4, 2, kPipelining, sourceIsBGR, kIsRGB, extra, kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB32ToRGB16), &Kernels::ConvertPass);
}

KyRGB48ToRGB16::KyRGB48ToRGB16(const std::int64_t& sourceType, std::uint32_t shift)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 6, 2, kPipelining, kIsRGB, kIsRGB, kNoExtra, shift, kLines) {
    SetPassFunction(typeid(KyRGB48ToRGB16), &Kernels::ConvertPass);
}

KyRGB64ToRGB16::KyRGB64ToRGB16(const std::int64_t& sourceType, std::uint32_t shift)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB16, 8, 2, kPipelining, kIsRGB, kIsRGB, kNoExtra, shift, kLines) {
    SetPassFunction(typeid(KyRGB64ToRGB16), &Kernels::ConvertPass);
}

KyRGB16ToRGB24::KyRGB16ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 2, 3, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB16ToRGB24), &Kernels::ConvertPass);
}

KyRGB24ToRGB24::KyRGB24ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 3, 3, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB24ToRGB24), &Kernels::ConvertPass);
}

KyRGB32ToRGB24::KyRGB32ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 4, 3, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB32ToRGB24), &Kernels::ConvertPass);
}

KyRGB48ToRGB24::KyRGB48ToRGB24(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 6, 3, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    SetPassFunction(typeid(KyRGB48ToRGB24), &Kernels::ConvertPass);
}

KyRGB64ToRGB24::KyRGB64ToRGB24(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB24Or(destinationIsBGR), 8, 3, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    SetPassFunction(typeid(KyRGB64ToRGB24), &Kernels::ConvertPass);
}

KyRGB24ToRGB24Planar::KyRGB24ToRGB24Planar(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, KY_TYPE_RGB24_PLANAR, 3, 3, kPipelining, sourceIsBGR, kIsRGB, extra, kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB24ToRGB24Planar), &Kernels::ConvertPass);
}

KyRGB16ToRGB32::KyRGB16ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 2, 4, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB16ToRGB32), &Kernels::ConvertPass);
}

KyRGB24ToRGB32::KyRGB24ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 3, 4, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB24ToRGB32), &Kernels::ConvertPass);
}

KyRGB32ToRGB32::KyRGB32ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                               bool sourceIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 4, 4, kPipelining, sourceIsBGR, destinationIsBGR, extra,
                 kNoShift, kLines) {
    SetPassFunction(typeid(KyRGB32ToRGB32), &Kernels::ConvertPass);
}

KyRGB48ToRGB32::KyRGB48ToRGB32(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 6, 4, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    SetPassFunction(typeid(KyRGB48ToRGB32), &Kernels::ConvertPass);
}

KyRGB64ToRGB32::KyRGB64ToRGB32(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR)
    : KyRGBtoRGB(sourceType, ky::RGB32Or(destinationIsBGR), 8, 4, kPipelining, kIsRGB, destinationIsBGR, kNoExtra,
                 shift, kLines) {
    SetPassFunction(typeid(KyRGB64ToRGB32), &Kernels::ConvertPass);
}
