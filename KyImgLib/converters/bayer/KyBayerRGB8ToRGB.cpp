#include <KyImgLib/converters/bayer/KyBayerRGB8ToRGB.h>

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/converters/FilterStageInternal.h>
#include <KyImgLib/converters/bayer/PatternInternal.h>
#include <KyImgLib/kernels/KernelTable.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/platform/CpuCacheInternal.h>

struct KyBayerRGB8ToRGB::Driver {
    /// The kernels of one destination, at whichever level is active.
    using KernelsOf = ky::Bayer8Kernels ky::Bayer8Table::*;

    /// Converts `lines` lines of `width` pixels, the first of which has this index.
    static void Convert(const KyBayerRGB8ToRGB& converter, const KyPixelConverterContext& context, KernelsOf kernelsOf,
                        bool interpolate, const std::uint8_t* source, std::size_t sourceLine, std::uint8_t* destination,
                        std::uint32_t width, std::uint32_t lines, std::uint32_t index) {
        if (!interpolate) width -= width % 2;
        if (width == 0 || lines == 0) return;

        // A line call outside of an area has no filter: its values stay as they are.
        const KyRGBFilter& filter = context.filter == nullptr ? ky::DefaultFilter(8) : *context.filter;
        ky::BayerBand band;
        band.source = source;
        band.sourceLine = static_cast<std::ptrdiff_t>(sourceLine);
        band.sourceStep = converter.shiftOrStep;
        band.destination = destination;
        band.destinationLine = static_cast<std::ptrdiff_t>(context.destinationLineSize);
        band.width = width;
        band.lines = lines;
        band.firstLine = ky::MosaicLine::OfType(ky::EvenRowType(context.flags));
        if (interpolate && index % 2 != 0) band.firstLine = band.firstLine.Next();
        if (converter.swapRedBlue) band.firstLine = band.firstLine.Exchanged();
        band.hasLineAbove = index > 0;
        band.hasLineBelow = index + (lines - 1) < context.destinationHeight - 1;
        const std::size_t pixelBytes = std::size_t{converter.GetDestinationByteSize()} + converter.shiftOrStep;
        band.isLarge = ky::ExceedsCache(pixelBytes * width * lines);
        band.filter = ky::FilterStage(filter, converter.swapRedBlue);

        const ky::Bayer8Kernels& kernels = ky::ActiveKernels().bayer8.*kernelsOf;
        (interpolate ? kernels.interpolate : kernels.replicate)(band);
    }

    static std::uint32_t ConvertLinePair(const KyBayerRGB8ToRGB& converter, KernelsOf kernelsOf,
                                         const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) {
        const ky::ContextHolder context;
        if (!ky::HasBayerPattern(context->flags)) return KY_STATUS_BAD_ARGUMENT;
        Convert(converter, *context, kernelsOf, false, source, context->sourceLineSize, destination, count, 2, 0);
        return KY_STATUS_SUCCESS;
    }

    static std::uint32_t ConvertInterpolated(const KyBayerRGB8ToRGB& converter, KernelsOf kernelsOf,
                                             const std::uint8_t* source, std::uint8_t* destination,
                                             std::uint32_t count) {
        const ky::ContextHolder context;
        // Neighbouring lines are a line of the area's source away, whatever the context says of line sizes since: a
        // composite converter's line call changes them. A call outside of an area has only the context to go by.
        const std::size_t areaLine = std::size_t{context->areaSourceWidth} * converter.shiftOrStep;
        const std::size_t sourceLine = areaLine != 0 ? areaLine : context->sourceLineSize;
        Convert(converter, *context, kernelsOf, true, source, sourceLine, destination, count, 1, context->lineIndex);
        return KY_STATUS_SUCCESS;
    }

    template <KernelsOf kKernels>
    static void ConvertPass(const KyPixelConverter& self, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        const auto& converter = static_cast<const KyBayerRGB8ToRGB&>(self);
        const bool interpolate = (context.flags & FLAG_BAYER_INTERPOLATE) != 0;
        const std::size_t sourceLine = context.sourceLineSize;
        const bool isOneImage = pass.sourceStep == pass.lineStep * sourceLine;
        if (isOneImage) {
            Convert(converter, context, kKernels, interpolate, pass.source, sourceLine, pass.destination, pass.width,
                    pass.height, 0);
            return;
        }
        // The fields of an interlaced source: line calls come with every second index, lines from each following one.
        for (std::uint32_t line = 0; line < pass.height; line += pass.lineStep) {
            const std::size_t call = line / pass.lineStep;
            Convert(converter, context, kKernels, interpolate, pass.source + call * pass.sourceStep, sourceLine,
                    pass.destination + call * pass.destinationStep, pass.width, interpolate ? 1 : 2, line);
        }
    }
};

KyBayerRGB8ToRGB::KyBayerRGB8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t a,
                                   std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t e, std::uint32_t reserved)
    : KyPixelConverter(sourceType, destinationType, a * (e + 1), b, c, 1), swapRedBlue(swap), shiftOrStep(e + 1),
      redIndex(swap ? 2 : 0), greenIndex(1), blueIndex(swap ? 0 : 2), reservedArgument(reserved) {}

std::uint32_t KyBayerRGB8ToRGB::GetLinesPerConvert() const {
    const ky::ContextHolder context;
    return (context->flags & FLAG_BAYER_INTERPOLATE) != 0 ? 1 : 2;
}

std::uint32_t KyBayerRGB8ToRGB::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                        std::uint32_t count) const {
    const ky::ContextHolder context;
    return (context->flags & FLAG_BAYER_INTERPOLATE) != 0 ? ConvertInterpolated(source, destination, count)
                                                          : ConvertLinePair(source, destination, count);
}

KyBayerGeometry KyBayerRGB8ToRGB::GetGeometry() const {
    const ky::ContextHolder context;
    const auto width = static_cast<std::int32_t>(context->areaSourceWidth);
    KyBayerGeometry geometry;
    geometry.evenRowType = ky::EvenRowType(context->flags);
    geometry.oddRowType = 3 - geometry.evenRowType;
    const std::int32_t neighbours[] = {-width, -width - 1, -width + 1, 0, -1, 1, width, width - 1, width + 1};
    std::int32_t* offset = geometry.neighbourOffsets;
    for (const std::int32_t neighbour : neighbours)
        for (std::int32_t pixel = 0; pixel < 8; pixel += 2) *offset++ = pixel + neighbour;
    return geometry;
}

namespace {
constexpr std::uint32_t kPipelining = 8;
}

#define KY_BAYER8_MEMBERS(Class, kernels)                                                                            \
    std::uint32_t Class::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) \
        const {                                                                                                      \
        return Driver::ConvertLinePair(*this, &ky::Bayer8Table::kernels, source, destination, count);                \
    }                                                                                                                \
    std::uint32_t Class::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,                  \
                                             std::uint32_t count) const {                                            \
        return Driver::ConvertInterpolated(*this, &ky::Bayer8Table::kernels, source, destination, count);            \
    }

KyBayerRGB8ToRGB16::KyBayerRGB8ToRGB16(const std::int64_t& sourceType, std::uint32_t e, std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, KY_TYPE_RGB16, 1, 2, kPipelining, false, e, reserved) {
    SetPassFunction(typeid(KyBayerRGB8ToRGB16), &Driver::ConvertPass<&ky::Bayer8Table::toRGB16>);
}
KY_BAYER8_MEMBERS(KyBayerRGB8ToRGB16, toRGB16)

KyBayerRGB8ToRGB24::KyBayerRGB8ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t e,
                                       std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, swap ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 1, 3, kPipelining, swap, e, reserved) {
    SetPassFunction(typeid(KyBayerRGB8ToRGB24), &Driver::ConvertPass<&ky::Bayer8Table::toRGB24>);
}
KY_BAYER8_MEMBERS(KyBayerRGB8ToRGB24, toRGB24)

KyBayerRGB8ToRGB32::KyBayerRGB8ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t e,
                                       std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, swap ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 1, 4, kPipelining, swap, e, reserved) {
    SetPassFunction(typeid(KyBayerRGB8ToRGB32), &Driver::ConvertPass<&ky::Bayer8Table::toRGB32>);
}
KY_BAYER8_MEMBERS(KyBayerRGB8ToRGB32, toRGB32)

#undef KY_BAYER8_MEMBERS
