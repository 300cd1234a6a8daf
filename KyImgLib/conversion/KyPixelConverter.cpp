#include <KyImgLib/conversion/KyPixelConverter.h>

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>
#include <new>

// Their values stand in the class; these are the objects, for callers that take an address.
const std::uint32_t KyPixelConverter::FLAG_INVERT_DEINTERLACER;
const std::uint32_t KyPixelConverter::FLAG_BAYER_GRBG;
const std::uint32_t KyPixelConverter::FLAG_BAYER_GBRG;
const std::uint32_t KyPixelConverter::FLAG_BAYER_RGGB;
const std::uint32_t KyPixelConverter::FLAG_BAYER_BGGR;
const std::uint32_t KyPixelConverter::FLAG_BAYER_INTERPOLATE;

namespace {

constexpr std::uint32_t kBayerPatternFlags = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_GBRG |
                                             KyPixelConverter::FLAG_BAYER_RGGB | KyPixelConverter::FLAG_BAYER_BGGR;

/// An area conversion leaves no filter behind, whichever way it ends.
struct FilterClearer {
    KyPixelConverterContext& context;
    ~FilterClearer() { context.filter = nullptr; }
};

}  // namespace

struct KyPixelConverter::Record : KyObject {
    std::int64_t sourceType;
    std::int64_t destinationType;
    std::uint32_t sourceByteSize;
    std::uint32_t destinationByteSize;
    std::uint32_t pipeliningSize;
    std::uint32_t linesPerConvert;
    const std::type_info* passOwner = nullptr;
    PassFunction passFunction = nullptr;

    Record(std::int64_t source, std::int64_t destination, std::uint32_t sourceBytes, std::uint32_t destinationBytes,
           std::uint32_t pipelining, std::uint32_t lines)
        : sourceType(source), destinationType(destination), sourceByteSize(sourceBytes),
          destinationByteSize(destinationBytes), pipeliningSize(pipelining), linesPerConvert(lines) {}
};

KyPixelConverter::KyPixelConverter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                   std::uint32_t sourceByteSize, std::uint32_t destinationByteSize,
                                   std::uint32_t pipeliningSize, std::uint32_t linesPerConvert)
    : record(new Record(sourceType, destinationType, sourceByteSize, destinationByteSize, pipeliningSize,
                        linesPerConvert)) {
    if (record == nullptr) throw std::bad_alloc();
    if (!KyPixelTypeFactory::HasConverter(sourceType, destinationType))
        KyPixelTypeFactory::RegisterPixelConverter(*this);
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
    const ky::ContextHolder context;
    const FilterClearer clearer{*context};
    const std::int64_t sourceType = GetSourceType();

    if (context->filter == nullptr) {
        const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(sourceType);
        // An unregistered source type has no bit size, and gets the 16-bit filter as every unusual size does.
        context->filter = &ky::DefaultFilter(type == nullptr ? 16 : type->GetPixelBitSize());
    }
    if ((flags & kBayerPatternFlags) == 0) flags |= FLAG_BAYER_GRBG;

    const std::uint32_t sourceLineSize = GetSourceByteSize(sourceWidth);
    context->areaSourceWidth = sourceWidth;
    context->sourceLineSize = sourceLineSize;
    context->sourceHeight = sourceHeight;
    context->destinationLineSize = GetDestinationByteSize(destinationWidth) + destinationPadding;
    context->destinationHeight = destinationHeight;
    context->flags = flags;
    if ((GetDestinationType() & KY_TYPE_PLANAR) != 0 && (sourceType & KY_TYPE_PLANAR) == 0) {
        const std::uint32_t planeSize = destinationWidth * destinationHeight;
        for (std::uint32_t plane = 0; plane < 3; ++plane) context->planeOffsets[plane] = plane * planeSize;
        context->destinationLineSize = sourceWidth;
    }

    // Read now: a composite converter's line call changes the context.
    const std::size_t destinationLineSize = context->destinationLineSize;
    KyLinePass pass;
    pass.width = width;
    if ((sourceType & KY_TYPE_INTERLACED) != 0) {
        const std::uint8_t* const firstField = source;
        const std::uint8_t* const secondField = source + sourceHeight * sourceLineSize / 2;
        const bool inverted = (flags & FLAG_INVERT_DEINTERLACER) != 0;
        pass.lineStep = 2;
        pass.height = height - height % 2;
        pass.sourceStep = sourceLineSize;
        pass.destinationStep = 2 * destinationLineSize;

        pass.source = inverted ? secondField : firstField;
        pass.destination = destination;
        ConvertPass(*context, pass);

        pass.source = inverted ? firstField : secondField;
        pass.destination = destination + destinationLineSize;
        ConvertPass(*context, pass);
    } else {
        pass.lineStep = std::max(GetLinesPerConvert(), std::uint32_t{1});
        pass.height = height - height % pass.lineStep;
        pass.sourceStep = std::size_t{pass.lineStep} * sourceLineSize;
        pass.destinationStep = pass.lineStep * destinationLineSize;
        pass.source = source;
        pass.destination = destination;
        ConvertPass(*context, pass);
    }
    return KY_STATUS_SUCCESS;
}

void KyPixelConverter::ConvertPass(KyPixelConverterContext& context, const KyLinePass& pass) const {
    if (record->passFunction != nullptr && typeid(*this) == *record->passOwner) {
        record->passFunction(*this, context, pass);
        return;
    }
    const std::uint8_t* source = pass.source;
    std::uint8_t* destination = pass.destination;
    for (std::uint32_t line = 0; line < pass.height; line += pass.lineStep) {
        context.lineIndex = line;
        Convert(source, destination, pass.width);
        source += pass.sourceStep;
        destination += pass.destinationStep;
    }
}

std::uint32_t KyPixelConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                        std::uint32_t count) const {
    if (record->passFunction == nullptr) return KY_STATUS_NOT_SUPPORTED;
    const ky::ContextHolder context;
    KyLinePass pass = {};
    pass.source = source;
    pass.destination = destination;
    pass.width = count;
    pass.height = pass.lineStep = std::max(GetLinesPerConvert(), std::uint32_t{1});
    record->passFunction(*this, *context, pass);
    return KY_STATUS_SUCCESS;
}

std::uint32_t KyPixelConverter::Convert(const std::uint8_t*, std::uint8_t*) const { return KY_STATUS_NOT_SUPPORTED; }

KyPixelConverterContext* KyPixelConverter::GetContext() const { return ky::AcquireContext(); }

void KyPixelConverter::ReleaseContext() const { ky::ReleaseContext(); }

std::uint32_t KyPixelConverter::GetAreaSourceWidth() const {
    const ky::ThreadContext* const context = ky::CurrentContext();
    return context == nullptr ? 0 : context->areaSourceWidth;
}

void KyPixelConverter::SetPassFunction(const std::type_info& owner, PassFunction function) {
    record->passOwner = &owner;
    record->passFunction = function;
}
