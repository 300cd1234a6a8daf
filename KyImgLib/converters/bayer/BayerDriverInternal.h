#ifndef KYIMGLIB_CONVERTERS_BAYER_BAYERDRIVERINTERNAL_H
#define KYIMGLIB_CONVERTERS_BAYER_BAYERDRIVERINTERNAL_H

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/converters/FilterStageInternal.h>
#include <KyImgLib/converters/PassBandInternal.h>
#include <KyImgLib/converters/bayer/PatternInternal.h>
#include <KyImgLib/kernels/bayer/BayerBand.h>

#include <algorithm>

namespace ky {

/// Calls the kernels of one Bayer converter: turns its settings and a thread's context into bands of lines.
template <typename Band>
class BayerDriver {
public:
    using Filter = typename Band::Filter;

    BayerKernels<Band> kernels;
    std::uint32_t sourceStep;   ///< bytes of a source pixel
    bool blueFirst;             ///< the destination stores blue in the first place
    std::uint16_t defaultBits;  ///< of the filter for line calls outside of an area
    std::uint32_t shift;        ///< of filtered words
    Filter (*makeFilter)(const KyRGBFilter& filter, bool blueFirst, std::uint32_t shift);

    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const {
        const ContextHolder context;
        if (!HasBayerPattern(context->flags)) return KY_STATUS_BAD_ARGUMENT;
        Convert(*context, false, context->sourceLineSize, OneCall(source, destination, count, 2, 0));
        return KY_STATUS_SUCCESS;
    }

    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const {
        const ContextHolder context;
        // Neighbouring lines are a line of the area's source away, whatever the context says of line sizes since: a
        // composite converter's line call changes them. A call outside of an area has only the context to go by.
        const std::size_t areaLine = std::size_t{context->areaSourceWidth} * sourceStep;
        const std::size_t sourceLine = areaLine != 0 ? areaLine : context->sourceLineSize;
        Convert(*context, true, sourceLine, OneCall(source, destination, count, 1, context->lineIndex));
        return KY_STATUS_SUCCESS;
    }

    void ConvertPass(const KyPixelConverterContext& context, const KyLinePass& pass) const {
        const bool interpolate = (context.flags & KyPixelConverter::FLAG_BAYER_INTERPOLATE) != 0;
        const std::size_t sourceLine = context.sourceLineSize;
        const bool isOneImage = pass.sourceStep == pass.lineStep * sourceLine;
        // One band for all lines, up to the one that the destination's height calls the last: that line and any after it
        // have no neighbour below.
        std::uint32_t together = isOneImage ? pass.height : 0;
        if (interpolate && context.destinationHeight != 0) {
            const std::uint32_t above = std::min(context.destinationHeight, pass.firstLine);
            together = std::min(together, context.destinationHeight - above);
        }
        if (together == pass.height) {
            Convert(context, interpolate, sourceLine, pass);
            return;
        }
        KyLinePass lines = pass;
        lines.height = together;
        Convert(context, interpolate, sourceLine, lines);
        // What is left goes line call by line call, and so do the fields of an interlaced source, where calls come with
        // every second index, and lines from each following one.
        lines.height = interpolate ? 1 : 2;
        for (std::uint32_t line = together; line < pass.height; line += pass.lineStep) {
            const std::size_t call = line / pass.lineStep;
            lines.source = pass.source + call * pass.sourceStep;
            lines.destination = pass.destination + call * pass.destinationStep;
            lines.ahead = pass.ahead + call * pass.aheadStep;
            lines.firstLine = pass.firstLine + line;
            Convert(context, interpolate, sourceLine, lines);
        }
    }

private:
    static KyLinePass OneCall(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t width,
                              std::uint32_t lines, std::uint32_t index) {
        KyLinePass pass = {};
        pass.source = source;
        pass.destination = destination;
        pass.width = width;
        pass.height = lines;
        pass.firstLine = index;
        return pass;
    }

    /// Converts lines that follow one another in the image.
    void Convert(const KyPixelConverterContext& context, bool interpolate, std::size_t sourceLine,
                 const KyLinePass& lines) const {
        const std::uint32_t width = interpolate ? lines.width : lines.width - lines.width % 2;
        if (width == 0 || (lines.height == 0 && lines.joint == nullptr)) return;

        Band band;
        band.source = lines.source;
        band.sourceLine = static_cast<std::ptrdiff_t>(sourceLine);
        band.sourceStep = sourceStep;
        band.destination = lines.destination;
        band.destinationLine = static_cast<std::ptrdiff_t>(context.destinationLineSize);
        band.width = width;
        band.lines = lines.height;
        band.firstLine = MosaicLine::OfType(EvenRowType(context.flags));
        if (interpolate && lines.firstLine % 2 != 0) band.firstLine = band.firstLine.Next();
        if (blueFirst) band.firstLine = band.firstLine.Exchanged();
        band.hasLineAbove = lines.firstLine > 0;
        band.hasLineBelow = lines.firstLine + (lines.height - 1) < context.destinationHeight - 1;
        band.isLarge = lines.isLarge;
        band.ahead = AheadOf(lines);
        if (!interpolate) {  // a line call, for which this is, has two lines
            band.ahead.line /= 2;
            band.ahead.bytes /= 2;
        }
        band.joint = lines.joint;
        band.lineIndex = lines.firstLine;
        band.filter = makeFilter(FilterOf(context, defaultBits), blueFirst, shift);
        (interpolate ? kernels.interpolate : kernels.replicate)(band);
    }
};

}  // namespace ky

#endif
