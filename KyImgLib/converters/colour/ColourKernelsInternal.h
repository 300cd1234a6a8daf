#ifndef KYIMGLIB_CONVERTERS_COLOUR_COLOURKERNELSINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_COLOURKERNELSINTERNAL_H

#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/converters/FilterStageInternal.h>
#include <KyImgLib/kernels/KernelTable.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>
#include <cstdint>

namespace ky {

constexpr std::int64_t RGB24Or(bool isBGR) { return isBGR ? KY_TYPE_BGR24 : KY_TYPE_RGB24; }
constexpr std::int64_t RGB32Or(bool isBGR) { return isBGR ? KY_TYPE_BGR32 : KY_TYPE_RGB32; }

/// The kernel for a destination pixel of this size.
template <typename Settings>
typename ColourKernels<Settings>::Make KernelTo(const ColourKernels<Settings>& kernels, std::uint32_t pixelBytes) {
    return pixelBytes == 2 ? kernels.toRGB16 : pixelBytes == 3 ? kernels.toRGB24 : kernels.toRGB32;
}

/// The stage of a filter for words that stay words, of so many bits. The identity leaves out what a word has above these.
inline Filter16 WordStageOf(const KyRGBFilter* filter, std::uint32_t bits) {
    Filter16 stage = WordStage(filter, false, 0);
    if (stage.IsIdentity()) stage.indexMask = static_cast<std::uint16_t>(stage.indexMask & ((1u << bits) - 1));
    return stage;
}

/// YUV to RGB.
struct YUVMaker {
    ColourKernels<Colour8Settings> YUVKernels::*kernels;
    std::uint32_t pixelBytes;  ///< of the destination
    bool destinationIsBGR;
    std::uint32_t group, groupSamples;  ///< pixels that share samples, and those samples
    std::uint32_t sampleBytes;          ///< of samples of bytes: of wider ones, the last byte counts
    std::uint32_t sampleShift;          ///< of samples of words
    std::uint32_t places[3];            ///< 4:4:4: bytes from the last byte of a pixel's first sample to its Y, U and V

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        const KernelTable& table = ActiveKernels();
        Colour8Settings settings = {};
        settings.filter = ByteStage(conversion.filter, destinationIsBGR);
        settings.isExchanged = destinationIsBGR;
        settings.sampleShift = static_cast<std::uint8_t>(std::min(sampleShift, 16u));
        const bool isGathered = sampleBytes != 1 || places[0] > 2 || places[1] > 2 || places[2] > 2;
        if (isGathered)
            table.gray.gather({sampleBytes, group, groupSamples, group == 1, {places[0], places[1], places[2]}},
                              pipeline.Add());
        for (std::uint8_t i = 0; i < 3; ++i) settings.places[i] = isGathered ? i : static_cast<std::uint8_t>(places[i]);
        KernelTo(table.yuv.*kernels, pixelBytes)(settings, pipeline.Add());
        return true;
    }
};

}  // namespace ky

#endif
