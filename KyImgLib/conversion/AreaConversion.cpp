#include <KyImgLib/conversion/AreaConversionInternal.h>

#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/conversion/ImageConversionInternal.h>
#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace ky {

namespace {

constexpr std::uint32_t kBayerPatternFlags = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_GBRG |
                                             KyPixelConverter::FLAG_BAYER_RGGB | KyPixelConverter::FLAG_BAYER_BGGR;

/// Puts an area conversion's settings into the context, as line forms find them.
void FillContext(const KyPixelConverter& converter, const Area& area, KyPixelConverterContext& context) {
    context.sourceLineSize = converter.GetSourceByteSize(area.sourceWidth);
    context.sourceHeight = area.sourceHeight;
    context.destinationLineSize = converter.GetDestinationByteSize(area.destinationWidth) + area.destinationPadding;
    context.destinationHeight = area.destinationHeight;
    context.flags = area.flags;
    if ((area.flags & kBayerPatternFlags) == 0) context.flags |= KyPixelConverter::FLAG_BAYER_GRBG;
    if ((converter.GetDestinationType() & KY_TYPE_PLANAR) != 0 && (converter.GetSourceType() & KY_TYPE_PLANAR) == 0) {
        const std::uint32_t planeSize = area.destinationWidth * area.destinationHeight;
        for (std::uint32_t plane = 0; plane < 3; ++plane) context.planeOffsets[plane] = plane * planeSize;
        context.destinationLineSize = area.sourceWidth;
    }
}

/// Whether an image of the type has planes that areas know nothing of: it is converted as an image.
bool HasPlanesOfItsOwn(std::int64_t type) { return (type & KY_TYPE_PLANAR) != 0 && (type & KY_TYPE_EXTENDED) != 0; }

/// Lines of an area that are converted together.
std::uint32_t LineStep(const KyPixelConverter& converter) {
    if (IsInterlaced(converter)) return 2;
    return std::max(ConverterRecord::LinesPerConvertOf(converter), std::uint32_t{1});
}

/// The fields of an interlaced source, that one first which holds the even destination lines.
struct Fields {
    const std::uint8_t *even, *odd;

    Fields(const std::uint8_t* source, const KyPixelConverterContext& context) {
        const std::uint32_t fieldSize = context.sourceHeight * context.sourceLineSize / 2;
        const bool isInverted = (context.flags & KyPixelConverter::FLAG_INVERT_DEINTERLACER) != 0;
        even = isInverted ? source + fieldSize : source;
        odd = isInverted ? source : source + fieldSize;
    }
};

/// Rows of the source up to this one have neighbours below. With a height of 0 there is no last line.
std::uint32_t HeightForNeighbours(std::uint32_t destinationHeight) {
    return destinationHeight == 0 ? std::numeric_limits<std::uint32_t>::max() : destinationHeight;
}

/// Adds a stage's kernels. False when it has none.
bool AddStage(const KyPixelConverter& converter, const Area& area, const ConversionSettings& settings,
              Pipeline& pipeline) {
    const std::size_t first = pipeline.Count();
    if (!ConverterRecord::Of(converter).AddKernels(settings, pipeline)) return false;
    const std::size_t count = pipeline.Count();
    if (count > Pipeline::kMostKernels) return false;
    const RowKernel& kernel = pipeline.Kernel(count - 1);
    const std::size_t width = kernel.AreaWidth(area.width);
    const std::uint32_t step = IsInterlaced(converter) ? 2 : kernel.needs.rowStep;
    const std::uint32_t lines = area.height - area.height % step;
    const std::uint32_t height = HeightForNeighbours(area.destinationHeight);
    // A kernel before it makes what it reads, neighbours included.
    for (std::size_t i = first; i + 1 < count; ++i) pipeline.SetSize(i, width, std::max(lines, height), height);
    pipeline.SetSize(count - 1, width, lines, height);
    return true;
}

/// Whether the kernels of an interlaced stage make of it what line calls make of it: those convert all lines of one field, and
/// then those of the other. So lines may neither depend on others nor reach into them, with surplus pixels of a group or in
/// planes that overlap.
bool CanInterleaveFields(const Pipeline& pipeline, const KyPixelConverter& converter, const Area& area) {
    for (std::size_t i = 0; i < pipeline.Count(); ++i)
        if (pipeline.Kernel(i).AreaWidth(area.width) > area.width) return false;
    const bool isPlanar = (converter.GetDestinationType() & KY_TYPE_PLANAR) != 0;
    const std::uint64_t line = isPlanar ? area.sourceWidth : area.destinationWidth;
    const std::uint64_t planeSize = std::uint64_t{area.destinationWidth} * area.destinationHeight;
    return pipeline.TakesRowsAlone() && area.width <= line && (!isPlanar || area.height * line <= planeSize);
}

/// Whether the lines that one stage makes are the next one's as they are, and no longer than a converter can tell. Those of a
/// stage that is left out are the source's.
bool LinesMatch(const Stages& stages, std::size_t index, std::uint32_t width) {
    const KyPixelConverter &converter = *stages.converters[index], &next = *stages.converters[index + 1];
    const std::size_t pixel = converter.GetDestinationByteSize();
    const std::uint32_t line = converter.GetDestinationByteSize(width);
    return line == next.GetSourceByteSize(width) && pixel * width <= std::numeric_limits<std::uint32_t>::max() &&
           (!stages.Copies(index) || line == converter.GetSourceByteSize(width));
}

Pipeline::Images ImagesOf(const KyPixelConverterContext& context, bool isInterlaced, const std::uint8_t* source,
                          std::size_t sourceLineSize, std::uint8_t* destination, std::uint32_t lines) {
    const auto sourceStride = static_cast<std::ptrdiff_t>(sourceLineSize);
    Pipeline::Images images;
    images.source = SourceRows::OfImage(source, sourceStride);
    if (isInterlaced) {
        KyPixelConverterContext reader = context;
        reader.sourceLineSize = static_cast<std::uint32_t>(sourceLineSize);
        const Fields fields(source, reader);
        images.source = SourceRows::OfFields(fields.even, fields.odd, sourceStride);
    }
    const std::uint32_t* const planes = context.planeOffsets;
    const auto stride = static_cast<std::ptrdiff_t>(context.destinationLineSize);
    images.destination = DestinationRows::OfImage(destination + planes[0], stride);
    images.lines = lines;
    for (int plane = 1; plane < 3; ++plane)
        images.destinationPlanes[plane - 1] = DestinationRows::OfImage(destination + planes[plane], stride);
    return images;
}

/// The kernel of a converter that has none: calls its line form.
struct LineCalls {
    const KyPixelConverter* converter;
    ThreadContext* context;
    std::uint32_t rowIndexes;  ///< line indexes from a row to the next

    static void Run(const RowKernel& kernel, const Tile& tile) {
        const LineCalls& self = kernel.Get<LineCalls>();
        for (std::uint32_t y = tile.first; y < tile.last; y += kernel.needs.rowStep) {
            self.context->lineIndex = y * self.rowIndexes;
            self.converter->Convert(tile.source[y], tile.destination[y], static_cast<std::uint32_t>(tile.width));
        }
    }
};

/// The format of a registered type, and where the planes of a whole image of it lie that has no gaps.
struct WholeImage {
    const PixelFormat format;
    std::size_t rowBytes;
    ImagePlanes planes;

    WholeImage(std::int64_t type, std::uint32_t width, std::uint32_t height)
        : format(FormatOf(*KyPixelTypeFactory::FindPixelType(type))),
          rowBytes(static_cast<std::size_t>(format.LineBytes(width))), planes{} {
        planes.toSecond = static_cast<std::ptrdiff_t>(rowBytes * height);
        planes.stride = static_cast<std::ptrdiff_t>(format.otherPlanes.LineBytes(width));
        planes.step = planes.stride * static_cast<std::ptrdiff_t>(format.otherPlanes.Lines(height));
    }
};

/// Lines of all planes.
void CopyPlanes(const PixelFormat& format, const ImageConversion& image) {
    const auto copy = [](const std::uint8_t* from, std::ptrdiff_t fromStride, std::uint8_t* to, std::ptrdiff_t toStride,
                         std::uint64_t bytes, std::uint32_t lines) {
        for (std::uint32_t y = 0; y < lines; ++y, from += fromStride, to += toStride)
            std::memcpy(to, from, static_cast<std::size_t>(bytes));
    };
    copy(image.source, image.sourceStride, image.destination, image.destinationStride, format.LineBytes(image.width),
         image.height);
    const OtherPlanes& others = format.otherPlanes;
    for (std::uint32_t i = 0; i < others.count; ++i) {
        const auto n = static_cast<std::ptrdiff_t>(i);
        copy(image.source + image.sourcePlanes.toSecond + n * image.sourcePlanes.step, image.sourcePlanes.stride,
             image.destination + image.destinationPlanes.toSecond + n * image.destinationPlanes.step,
             image.destinationPlanes.stride, others.LineBytes(image.width), others.Lines(image.height));
    }
}

/// False where the stages have not all kernels, or too many.
bool ConvertAreaAsImage(const Stages& stages, const Area& area, const std::uint8_t* source, std::uint8_t* destination,
                        const KyRGBFilter* filter) {
    const KyPixelConverter& first = *stages.converters[0];
    const KyPixelConverter& last = *stages.converters[stages.count - 1];
    if (!KyPixelTypeFactory::HasPixelType(first.GetSourceType()) ||
        !KyPixelTypeFactory::HasPixelType(last.GetDestinationType()))
        return false;
    const WholeImage from(first.GetSourceType(), area.sourceWidth, area.sourceHeight);
    const WholeImage to(last.GetDestinationType(), area.destinationWidth, area.destinationHeight);
    const std::uint32_t padding = to.format.otherPlanes.count == 0 ? area.destinationPadding : 0;
    ImageConversion image = {};
    image.source = source;
    image.sourceRowBytes = from.rowBytes;
    image.sourceStride = static_cast<std::ptrdiff_t>(from.rowBytes);
    image.fieldStride = static_cast<std::ptrdiff_t>(area.sourceHeight / 2 * from.rowBytes);
    image.sourcePlanes = from.planes;
    image.destination = destination;
    image.destinationStride = static_cast<std::ptrdiff_t>(to.rowBytes + padding);
    image.destinationPlanes = to.planes;
    image.width = area.width;
    image.height = IsInterlaced(first) ? area.height - area.height % 2 : area.height;
    image.flags = area.flags;
    image.filter = filter;
    image.endLine = image.height;
    if (stages.count == 1 && stages.Copies(0)) {
        if (from.format.group != to.format.group || from.format.otherPlanes != to.format.otherPlanes) return false;
        CopyPlanes(from.format, image);
        return true;
    }
    return ConvertImage(stages, image);
}

}  // namespace

Stages Stages::Of(const KyPixelConverter& converter) {
    const Stages* const chain = ConverterRecord::Of(converter).chain;
    // A class derived from a chain may do something else.
    if (chain != nullptr && typeid(converter) == typeid(KyComplexConverter)) return *chain;
    Stages alone;
    alone.Add(converter);
    return alone;
}

bool Stages::Copies(std::size_t index) const { return typeid(*converters[index]) == typeid(KyIdentityConverter); }

bool Stages::ConvertByKernels() const {
    constexpr std::int64_t kFieldsOrPlanes = KY_TYPE_INTERLACED | KY_TYPE_PLANAR;
    if (count > kMost) return false;
    for (std::size_t i = 0; i < count; ++i) {
        if (!ConverterRecord::Of(*converters[i]).ConvertsByKernels(*converters[i])) return false;
        if (i > 0 && (converters[i]->GetSourceType() & kFieldsOrPlanes) != 0) return false;
        if (i + 1 < count && (converters[i]->GetDestinationType() & kFieldsOrPlanes) != 0) return false;
    }
    return true;
}

bool ConvertAreaByKernels(const Stages& stages, const Area& area, const std::uint8_t* source, std::uint8_t* destination,
                          ThreadContext& context) {
    if (!stages.ConvertByKernels()) return false;
    const KyPixelConverter& first = *stages.converters[0];
    const KyPixelConverter& last = *stages.converters[stages.count - 1];
    // Areas know where RGB24_PLANAR's planes lie, but only write them.
    const bool readsPlanes = (first.GetSourceType() & KY_TYPE_PLANAR) != 0 && !stages.Copies(0);
    if (readsPlanes || HasPlanesOfItsOwn(last.GetDestinationType()))
        return ConvertAreaAsImage(stages, area, source, destination, context.filter);
    // All but the last convert an image into one of the same size.
    const Area whole = {area.sourceWidth, area.sourceHeight, area.sourceWidth, area.sourceHeight,
                        area.sourceWidth, area.sourceHeight, area.flags,       0};
    Pipeline pipeline;
    for (std::size_t i = 0; i < stages.count; ++i) {
        const KyPixelConverter& converter = *stages.converters[i];
        const bool isLast = i + 1 == stages.count;
        if (!isLast && !LinesMatch(stages, i, area.sourceWidth)) return false;
        const Area& own = isLast ? area : whole;
        // Of an odd height a copy of fields leaves the last line empty.
        const bool leavesLine = IsInterlaced(converter) && own.height % 2 != 0;
        if (!isLast && stages.Copies(i) && !leavesLine) continue;
        const KyRGBFilter* const filter =
            context.filter != nullptr ? context.filter : &ConverterRecord::Of(converter).DefaultFilter();
        if (!AddStage(converter, own, {filter, area.flags, own.width, own.height, own.sourceWidth, false, 0}, pipeline))
            return false;
        if (IsInterlaced(converter) && !CanInterleaveFields(pipeline, converter, own)) return false;
    }
    const bool isInterlaced = IsInterlaced(first);

    FillContext(last, area, context);
    const std::uint32_t step = LineStep(last);
    const std::uint32_t lines = area.height - area.height % step;
    pipeline.Run(ImagesOf(context, isInterlaced, source, first.GetSourceByteSize(area.sourceWidth), destination, lines),
                 0, lines);
    // Where line calls would leave it.
    if (lines != 0) context.lineIndex = lines - step;
    return true;
}

void ConvertAreaByLineCalls(const KyPixelConverter& converter, const Area& area, const std::uint8_t* source,
                            std::uint8_t* destination, ThreadContext& context) {
    FillContext(converter, area, context);
    const bool isInterlaced = IsInterlaced(converter);
    const std::uint32_t step = LineStep(converter);
    const std::uint32_t lines = area.height - area.height % step;
    // Read now: a composite converter's line call changes the context.
    const auto sourceStride = static_cast<std::ptrdiff_t>(context.sourceLineSize);
    const auto destinationStride = static_cast<std::ptrdiff_t>(context.destinationLineSize);
    RowKernel kernel;
    RowKernel::Needs needs;
    needs.rowStep = isInterlaced ? 1 : step;
    kernel.Set(needs, &LineCalls::Run, LineCalls{&converter, &context, isInterlaced ? 2u : 1u});
    Tile tile = {};
    tile.end = tile.width = area.width;
    if (!isInterlaced) {
        tile.source = SourceRows::OfImage(source, sourceStride);
        tile.destination = DestinationRows::OfImage(destination, destinationStride);
        tile.last = lines;
        kernel(tile);
        return;
    }
    const Fields fields(source, context);
    tile.last = lines / 2;
    for (const std::uint8_t* const field : {fields.even, fields.odd}) {
        tile.source = SourceRows::OfImage(field, sourceStride);
        tile.destination = DestinationRows::OfImage(destination, 2 * destinationStride);
        kernel(tile);
        destination += destinationStride;
    }
}

std::uint32_t ConvertLinesByKernels(const KyPixelConverter& converter, const std::uint8_t* source,
                                    std::uint8_t* destination, std::uint32_t count) {
    const ContextHolder context;
    const std::uint32_t lines = std::max(ConverterRecord::LinesPerConvertOf(converter), std::uint32_t{1});
    Area area = {};
    area.width = count;
    area.height = lines;
    Pipeline pipeline;
    if (!AddStage(converter, area, {context->filter, context->flags, count, lines, 0, false, 0}, pipeline))
        return KY_STATUS_NOT_SUPPORTED;
    KyPixelConverterContext lineSizes = *context;
    // A line call outside of an area has no line size to go by.
    if (lineSizes.destinationLineSize == 0) lineSizes.destinationLineSize = converter.GetDestinationByteSize(count);
    pipeline.Run(ImagesOf(lineSizes, false, source, lineSizes.sourceLineSize, destination, lines), 0, lines);
    return KY_STATUS_SUCCESS;
}

}  // namespace ky
