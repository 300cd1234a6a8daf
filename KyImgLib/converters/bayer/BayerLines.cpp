#include <KyImgLib/converters/bayer/BayerLinesInternal.h>

#include <KyImgLib/conversion/ContextInternal.h>

#include <algorithm>
#include <limits>

namespace ky {

namespace {

/// Converts lines of an image, whose line `first` is at `source` and goes to `destination`.
std::uint32_t ConvertLines(const KyPixelConverter& converter, const KyPixelConverterContext& context,
                           std::uint32_t flags, const std::uint8_t* source, std::size_t sourceStride,
                           std::uint8_t* destination, std::uint32_t count, std::uint32_t first, std::uint32_t lines) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    Pipeline pipeline;
    if (!ConverterRecord::Of(converter).AddKernels({context.filter, flags, count, lines, 0, false, 0}, pipeline))
        return KY_STATUS_NOT_SUPPORTED;
    // A height of 0 has no last line.
    const std::uint32_t height = context.destinationHeight == 0 ? kMost : context.destinationHeight;
    for (std::size_t i = 0; i < pipeline.Count(); ++i)
        pipeline.SetSize(i, pipeline.Kernel(i).AreaWidth(count), std::max(first + lines, height), height);
    Pipeline::Images images = {};
    images.lines = lines;
    images.source = SourceRows::FromRow(source, first, static_cast<std::ptrdiff_t>(sourceStride));
    images.destination =
        DestinationRows::FromRow(destination, first, static_cast<std::ptrdiff_t>(context.destinationLineSize));
    pipeline.Run(images, first, first + lines);
    return KY_STATUS_SUCCESS;
}

}  // namespace

std::uint32_t ConvertLinePair(const KyPixelConverter& converter, const std::uint8_t* source, std::uint8_t* destination,
                              std::uint32_t count) {
    const ContextHolder context;
    if (!HasBayerPattern(context->flags)) return KY_STATUS_BAD_ARGUMENT;
    return ConvertLines(converter, *context, context->flags & ~KyPixelConverter::FLAG_BAYER_INTERPOLATE, source,
                        context->sourceLineSize, destination, count, 0, 2);
}

std::uint32_t ConvertInterpolated(const KyPixelConverter& converter, const std::uint8_t* source,
                                  std::uint8_t* destination, std::uint32_t count) {
    const ContextHolder context;
    // The stride is that of the area's source: a composite converter's line call changes the strides in the context. Only a
    // call outside of an area takes them.
    const std::size_t areaStride =
        std::size_t{context->areaSourceWidth} * converter.KyPixelConverter::GetSourceByteSize();
    const std::size_t sourceStride = areaStride != 0 ? areaStride : context->sourceLineSize;
    return ConvertLines(converter, *context, context->flags | KyPixelConverter::FLAG_BAYER_INTERPOLATE, source,
                        sourceStride, destination, count, context->lineIndex, 1);
}

}  // namespace ky
