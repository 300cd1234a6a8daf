#include <KyImgLib/conversion/ImageConversionInternal.h>

#include <KyImgLib/conversion/AreaConversionInternal.h>
#include <KyImgLib/conversion/ConverterRecordInternal.h>

#include <algorithm>

namespace ky {

namespace {

/// Adds the kernels of all stages. False when one has none.
bool AddStages(const Stages& stages, const ConversionSettings& settings, Pipeline& pipeline) {
    if (!stages.ConvertByKernels()) return false;
    for (std::size_t i = 0; i < stages.count; ++i) {
        // A stage that copies is left out where there is another one.
        if (stages.Copies(i) && (i + 1 < stages.count || pipeline.Count() != 0)) continue;
        const KyPixelConverter& stage = *stages.converters[i];
        ConverterRecord& record = ConverterRecord::Of(stage);
        ConversionSettings own = settings;
        if (own.filter == nullptr) own.filter = &record.DefaultFilter();
        if (!record.AddKernels(own, pipeline) || pipeline.Count() > Pipeline::kMostKernels) return false;
        // Of an interlaced image, kernels that take rows together would take those of a field; its area form does.
        if (IsInterlaced(stage) && !pipeline.TakesRowsAlone()) return false;
    }
    return true;
}

template <class Byte>
void SetPlanes(Rows<Byte> (&rows)[2], Byte* first, const ImagePlanes& planes) {
    rows[0] = Rows<Byte>::OfImage(first + planes.toSecond, planes.stride);
    rows[1] = Rows<Byte>::OfImage(first + planes.toSecond + planes.step, planes.stride);
}

}  // namespace

std::uint32_t BandStepOf(const KyPixelConverter& converter, std::uint32_t flags, const KyRGBFilter* filter) {
    Pipeline pipeline;
    if (!AddStages(Stages::Of(converter), {filter, flags, 2, 2, 2, true, 0}, pipeline)) return 0;
    return std::max(pipeline.RowStep(), IsInterlaced(converter) ? 2u : 1u);
}

bool ConvertImage(const Stages& stages, const ImageConversion& image) {
    Pipeline pipeline;
    if (!AddStages(stages,
                   {image.filter, image.flags, image.width, image.height, image.width, true, image.sourceRowBytes},
                   pipeline))
        return false;
    for (std::size_t i = 0; i < pipeline.Count(); ++i) pipeline.SetSize(i, image.width, image.height, image.height);

    Pipeline::Images images;
    images.source = SourceRows::OfImage(image.source, image.sourceStride);
    if (IsInterlaced(*stages.converters[0])) {
        const std::uint8_t *even = image.source, *odd = image.source + image.fieldStride;
        if ((image.flags & KyPixelConverter::FLAG_INVERT_DEINTERLACER) != 0) std::swap(even, odd);
        images.source = SourceRows::OfFields(even, odd, image.sourceStride);
    }
    images.destination = DestinationRows::OfImage(image.destination, image.destinationStride);
    images.lines = image.height;
    SetPlanes(images.sourcePlanes, image.source, image.sourcePlanes);
    SetPlanes(images.destinationPlanes, image.destination, image.destinationPlanes);
    pipeline.Run(images, image.firstLine, image.endLine);
    return true;
}

}  // namespace ky
