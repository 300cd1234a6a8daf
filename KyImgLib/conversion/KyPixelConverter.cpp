#include <KyImgLib/conversion/KyPixelConverter.h>

#include <KyImgLib/conversion/AreaConversionInternal.h>
#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <new>

// Their values stand in the class; these are the objects, for callers that take an address.
const std::uint32_t KyPixelConverter::FLAG_INVERT_DEINTERLACER;
const std::uint32_t KyPixelConverter::FLAG_BAYER_GRBG;
const std::uint32_t KyPixelConverter::FLAG_BAYER_GBRG;
const std::uint32_t KyPixelConverter::FLAG_BAYER_RGGB;
const std::uint32_t KyPixelConverter::FLAG_BAYER_BGGR;
const std::uint32_t KyPixelConverter::FLAG_BAYER_INTERPOLATE;

KyPixelConverter::KyPixelConverter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                   std::uint32_t sourceByteSize, std::uint32_t destinationByteSize,
                                   std::uint32_t pipeliningSize, std::uint32_t linesPerConvert)
    : record(new Record(sourceType, destinationType, sourceByteSize, destinationByteSize, pipeliningSize,
                        linesPerConvert)) {
    if (record == nullptr) throw std::bad_alloc();
    KyPixelTypeFactory::RegisterPixelConverter(*this);  // changes nothing when the pair has a converter
}

KyPixelConverter::~KyPixelConverter() {
    delete record;
    record = nullptr;
}

const std::int64_t& KyPixelConverter::GetSourceType() const { return record->sourceType; }

const std::int64_t& KyPixelConverter::GetDestinationType() const { return record->destinationType; }

std::uint32_t KyPixelConverter::GetSourceByteSize(std::uint32_t count) const { return record->sourceByteSize * count; }

std::uint32_t KyPixelConverter::GetSourceByteSize() const { return record->sourceByteSize; }

std::uint32_t KyPixelConverter::GetDestinationByteSize(std::uint32_t count) const {
    return record->destinationByteSize * count;
}

std::uint32_t KyPixelConverter::GetDestinationByteSize() const { return record->destinationByteSize; }

std::uint32_t KyPixelConverter::GetPipeliningSize() const { return record->pipeliningSize; }

std::uint32_t KyPixelConverter::GetLinesPerConvert() const { return record->linesPerConvert; }

std::uint32_t KyPixelConverter::Convert(const KyRGBFilter& filter, const std::uint8_t* source,
                                        std::uint32_t sourceWidth, std::uint32_t sourceHeight,
                                        std::uint8_t* destination, std::uint32_t destinationWidth,
                                        std::uint32_t destinationHeight, std::uint32_t width, std::uint32_t height,
                                        std::uint32_t flags, std::uint32_t destinationPadding) const {
    const ky::ContextHolder context;
    context->filter = &filter;
    return Convert(source, sourceWidth, sourceHeight, destination, destinationWidth, destinationHeight, width, height,
                   flags, destinationPadding);
}

std::uint32_t KyPixelConverter::Convert(const std::uint8_t* source, std::uint32_t sourceWidth,
                                        std::uint32_t sourceHeight, std::uint8_t* destination,
                                        std::uint32_t destinationWidth, std::uint32_t destinationHeight,
                                        std::uint32_t width, std::uint32_t height, std::uint32_t flags,
                                        std::uint32_t destinationPadding) const {
    const ky::AreaScope context(sourceWidth);
    if (context->filter == nullptr) context->filter = &record->DefaultFilter();
    const ky::Area area = {sourceWidth, sourceHeight, destinationWidth,  destinationHeight, width,
                           height,      flags,        destinationPadding};
    if (!ky::ConvertAreaByKernels(ky::Stages::Of(*this), area, source, destination, *context))
        ky::ConvertAreaByLineCalls(*this, area, source, destination, *context);
    return KY_STATUS_SUCCESS;
}

const KyRGBFilter& KyPixelConverter::Record::DefaultFilter() {
    const KyRGBFilter* filter = defaultFilter.load(std::memory_order_relaxed);
    if (filter != nullptr) return *filter;
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(sourceType);
    // An unregistered source type has no bit size, and gets the 16-bit filter as every unusual size does.
    filter = &ky::DefaultFilter(type == nullptr ? 16 : type->GetPixelBitSize());
    // Types stay registered once they are.
    if (type != nullptr) defaultFilter.store(filter, std::memory_order_relaxed);
    return *filter;
}

std::uint32_t KyPixelConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                        std::uint32_t count) const {
    return ky::ConvertLinesByKernels(*this, source, destination, count);
}

std::uint32_t KyPixelConverter::Convert(const std::uint8_t*, std::uint8_t*) const { return KY_STATUS_NOT_SUPPORTED; }

KyPixelConverterContext* KyPixelConverter::GetContext() const { return ky::AcquireContext(); }

void KyPixelConverter::ReleaseContext() const { ky::ReleaseContext(); }
