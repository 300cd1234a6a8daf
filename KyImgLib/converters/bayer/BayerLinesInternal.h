#ifndef KYIMGLIB_CONVERTERS_BAYER_BAYERLINESINTERNAL_H
#define KYIMGLIB_CONVERTERS_BAYER_BAYERLINESINTERNAL_H

#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/converters/FilterStageInternal.h>
#include <KyImgLib/converters/bayer/PatternInternal.h>
#include <KyImgLib/kernels/KernelTable.h>

#include <cstdint>

namespace ky {

/// Adds the kernels of one destination: bilinear or nearest-neighbour demosaicing, as the flags say.
template <typename Settings>
void AddDemosaicing(const BayerKernels<Settings>& kernels, const typename Settings::Filter& filter, bool blueFirst,
                    const ConversionSettings& conversion, Pipeline& pipeline) {
    const bool isBilinear = (conversion.flags & KyPixelConverter::FLAG_BAYER_INTERPOLATE) != 0;
    MosaicLine firstLine = MosaicLine::OfType(EvenRowType(conversion.flags));
    if (blueFirst) firstLine = firstLine.Exchanged();
    const bool repeatsLastRow = conversion.isExact && conversion.height % 2 != 0;
    (isBilinear ? kernels.bilinear : kernels.nearest)({firstLine, repeatsLastRow, filter}, pipeline.Add());
}

/// Bytes of each pixel: of wider ones, the last byte is gathered.
struct Bayer8Maker {
    BayerKernels<Bayer8Settings> Bayer8Table::*kernels;
    std::uint32_t sourceStep;  ///< bytes of a source pixel
    bool blueFirst;            ///< the destination stores blue in the first place

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        const KernelTable& table = ActiveKernels();
        if (sourceStep != 1) table.gray.gather({sourceStep, 1, 1, false, {}}, pipeline.Add());
        AddDemosaicing(table.bayer8.*kernels, ByteStage(conversion.filter, blueFirst), blueFirst, conversion, pipeline);
        return true;
    }
};

struct Bayer16Maker {
    BayerKernels<Bayer16Settings> Bayer16Table::*kernels;
    std::uint32_t shift;  ///< of filtered words
    bool blueFirst;

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        AddDemosaicing(ActiveKernels().bayer16.*kernels, WordStage(conversion.filter, blueFirst, shift), blueFirst,
                       conversion, pipeline);
        return true;
    }
};

/// The two line forms of a Bayer converter, by the kernels of its class and with the settings of the thread's context.
///@{
std::uint32_t ConvertLinePair(const KyPixelConverter& converter, const std::uint8_t* source, std::uint8_t* destination,
                              std::uint32_t count);
std::uint32_t ConvertInterpolated(const KyPixelConverter& converter, const std::uint8_t* source,
                                  std::uint8_t* destination, std::uint32_t count);
///@}

}  // namespace ky

#endif
