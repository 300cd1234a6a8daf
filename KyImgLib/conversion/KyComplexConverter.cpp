#include <KyImgLib/conversion/KyComplexConverter.h>

#include <KyImgLib/conversion/AreaConversionInternal.h>
#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/pipeline/RowMemory.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace {

/// A common multiple: the larger of the two if both divide it, otherwise the product. Two that give 0 count as 1.
std::uint32_t Combine(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t larger = std::max(a, b);
    const std::uint32_t smaller = std::min(a, b);
    if (smaller == 0) return std::max(larger, std::uint32_t{1});
    return larger % smaller == 0 ? larger : a * b;
}

/// Bytes that a converter's destination of some lines takes. Lines one after the other may need more than all pixels in
/// one run, where pixels share bytes and each line is rounded up. The 32-bit size of a large image wraps; this does not.
/// Converters of groups of pixels may go a group past the end.
std::size_t DestinationSize(const KyPixelConverter& converter, std::uint32_t width, std::uint32_t lines) {
    constexpr std::size_t kGroup = 64;
    const std::size_t oneRun = converter.GetDestinationByteSize(width * lines);
    const std::size_t line = std::max(std::size_t{converter.GetDestinationByteSize(width)},
                                      std::size_t{converter.GetDestinationByteSize()} * width);
    return std::max(oneRun, line * lines) + kGroup;
}

}  // namespace

struct KyComplexConverter::Stages : KyObject {
    const KyPixelConverter& first;
    const KyPixelConverter& second;
    ky::Stages all;  ///< those of chains among the two in turn

    Stages(const KyPixelConverter& firstStage, const KyPixelConverter& secondStage)
        : first(firstStage), second(secondStage) {
        for (const KyPixelConverter* const stage : {&first, &second}) {
            const ky::Stages inner = ky::Stages::Of(*stage);
            for (std::size_t i = 0; i < inner.count; ++i)
                all.Add(*inner.converters[std::min(i, ky::Stages::kMost - 1)]);
        }
    }
};

// The stages come before the base, which registers the converter: what is registered must not fail any more.
KyComplexConverter::KyComplexConverter(const KyPixelConverter* first, const KyPixelConverter* second)
    : KyComplexConverter(MakeStages(*first, *second)) {}

KyComplexConverter::KyComplexConverter(std::unique_ptr<Stages> made)
    : KyPixelConverter(made->first.GetSourceType(), made->second.GetDestinationType(), made->first.GetSourceByteSize(),
                       made->second.GetDestinationByteSize(),
                       Combine(Record::PipeliningSizeOf(made->first), Record::PipeliningSizeOf(made->second)),
                       Combine(Record::LinesPerConvertOf(made->first), Record::LinesPerConvertOf(made->second))),
      stages(made.release()) {
    Record::Of(*this).chain = &stages->all;
}

std::unique_ptr<KyComplexConverter::Stages> KyComplexConverter::MakeStages(const KyPixelConverter& first,
                                                                           const KyPixelConverter& second) {
    std::unique_ptr<Stages> made(new Stages(first, second));
    if (made == nullptr) throw std::bad_alloc();
    return made;
}

KyComplexConverter::~KyComplexConverter() { delete stages; }

const KyPixelConverter& KyComplexConverter::GetFirst() const { return stages->first; }

const KyPixelConverter& KyComplexConverter::GetSecond() const { return stages->second; }

std::uint32_t KyComplexConverter::GetSourceByteSize(std::uint32_t count) const {
    return stages->first.GetSourceByteSize(count);
}

std::uint32_t KyComplexConverter::GetDestinationByteSize(std::uint32_t count) const {
    return stages->second.GetDestinationByteSize(count);
}

std::uint32_t KyComplexConverter::Convert(const std::uint8_t* source, std::uint32_t sourceWidth,
                                          std::uint32_t sourceHeight, std::uint8_t* destination,
                                          std::uint32_t destinationWidth, std::uint32_t destinationHeight,
                                          std::uint32_t width, std::uint32_t height, std::uint32_t flags,
                                          std::uint32_t destinationPadding) const {
    const ky::AreaScope context(sourceWidth);
    const KyRGBFilter* const filter = context->filter;
    const ky::Area area = {sourceWidth, sourceHeight, destinationWidth,  destinationHeight, width,
                           height,      flags,        destinationPadding};
    if (ky::ConvertAreaByKernels(stages->all, area, source, destination, *context)) return KY_STATUS_SUCCESS;

    const std::size_t size = DestinationSize(stages->first, sourceWidth, sourceHeight);
    const ky::RowMemory image(size);
    std::memset(image.Get(), 0, size);  // what the first stage leaves out is not what an earlier image had there
    const std::uint32_t status = stages->first.Convert(source, sourceWidth, sourceHeight, image.Get(), sourceWidth,
                                                       sourceHeight, sourceWidth, sourceHeight, flags, 0);
    if (status != KY_STATUS_SUCCESS) return status;

    context->filter = filter;  // the first stage's area conversion has cleared it
    return stages->second.Convert(image.Get(), sourceWidth, sourceHeight, destination, destinationWidth,
                                  destinationHeight, width, height, flags, destinationPadding);
}

std::uint32_t KyComplexConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                          std::uint32_t count) const {
    // Held for the chain and for each stage; on one thread the three are the same record.
    const ky::ContextHolder context, firstContext, secondContext;
    const std::size_t size = DestinationSize(stages->first, count, GetLinesPerConvert());
    const ky::RowMemory lines(size);
    std::memset(lines.Get(), 0, size);
    context->destinationLineSize = stages->first.GetDestinationByteSize(count);
    context->sourceLineSize = stages->second.GetSourceByteSize(count);

    const std::uint32_t status = stages->first.Convert(source, lines.Get(), count);
    if (status != KY_STATUS_SUCCESS) return status;
    return stages->second.Convert(lines.Get(), destination, count);
}

std::uint32_t KyComplexConverter::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    const ky::RowMemory pixel(stages->first.GetDestinationByteSize(1));
    const std::uint32_t status = stages->first.Convert(source, pixel.Get());
    if (status != KY_STATUS_SUCCESS) return status;
    return stages->second.Convert(pixel.Get(), destination);
}
