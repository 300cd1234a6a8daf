#include <KyImgLib/conversion/KyPixelConverter.h>

#include <KyImgLib/conversion/AreaInternal.h>
#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/platform/CpuCacheInternal.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

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
    std::uint32_t neighbourLines = 0;
    std::atomic<const KyRGBFilter*> defaultFilter{nullptr};  ///< once the source type is known: null before

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
    if (context->filter == nullptr) context->filter = &GetDefaultFilter();
    FillContext(*context, {sourceWidth, sourceHeight, destinationWidth, destinationHeight, width, height, flags,
                           destinationPadding});
    ky::AreaLines lines = {};
    lines.source = source;
    lines.destination = destination;
    lines.step = GetLineStep();
    lines.end = height - height % lines.step;
    lines.width = width;
    lines.isLarge = ky::ExceedsCache((std::size_t{context->sourceLineSize} + context->destinationLineSize) * lines.end);
    lines.asksOnward = lines.isLarge;
    ConvertLines(*context, lines);
    if (lines.isLarge) ky::FinishStreaming();
    return KY_STATUS_SUCCESS;
}

const KyRGBFilter& KyPixelConverter::GetDefaultFilter() const {
    const KyRGBFilter* filter = record->defaultFilter.load(std::memory_order_relaxed);
    if (filter != nullptr) return *filter;
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(GetSourceType());
    // An unregistered source type has no bit size, and gets the 16-bit filter as every unusual size does.
    filter = &ky::DefaultFilter(type == nullptr ? 16 : type->GetPixelBitSize());
    // Types stay registered once they are.
    if (type != nullptr) record->defaultFilter.store(filter, std::memory_order_relaxed);
    return *filter;
}

std::uint32_t KyPixelConverter::GetLineStep() const {
    if ((GetSourceType() & KY_TYPE_INTERLACED) != 0) return 2;
    return std::max(GetLinesPerConvert(), std::uint32_t{1});
}

void KyPixelConverter::FillContext(KyPixelConverterContext& context, const ky::Area& area) const {
    context.sourceLineSize = GetSourceByteSize(area.sourceWidth);
    context.sourceHeight = area.sourceHeight;
    context.destinationLineSize = GetDestinationByteSize(area.destinationWidth) + area.destinationPadding;
    context.destinationHeight = area.destinationHeight;
    context.flags = area.flags;
    if ((area.flags & kBayerPatternFlags) == 0) context.flags |= FLAG_BAYER_GRBG;
    if ((GetDestinationType() & KY_TYPE_PLANAR) != 0 && (GetSourceType() & KY_TYPE_PLANAR) == 0) {
        const std::uint32_t planeSize = area.destinationWidth * area.destinationHeight;
        for (std::uint32_t plane = 0; plane < 3; ++plane) context.planeOffsets[plane] = plane * planeSize;
        context.destinationLineSize = area.sourceWidth;
    }
}

void KyPixelConverter::ConvertLines(KyPixelConverterContext& context, const ky::AreaLines& lines) const {
    // Read now: a composite converter's line call changes the context.
    const std::size_t sourceLineSize = context.sourceLineSize, destinationLineSize = context.destinationLineSize;
    KyLinePass pass = {};
    pass.width = lines.width;
    pass.firstLine = lines.begin;
    pass.height = lines.end - lines.begin;
    pass.lineStep = lines.step;
    pass.isLarge = lines.isLarge;
    pass.joint = lines.joint;
    pass.destination = lines.destination;
    pass.destinationStep = pass.lineStep * destinationLineSize;
    if ((GetSourceType() & KY_TYPE_INTERLACED) == 0) {
        pass.source = lines.source + (lines.begin - lines.sourceFirst) * sourceLineSize;
        pass.sourceStep = pass.lineStep * sourceLineSize;
        AskAhead(pass, lines, sourceLineSize);
        ConvertPass(context, pass);
        return;
    }
    pass.sourceStep = sourceLineSize;
    for (const std::uint8_t* const field : FieldsOf(context, lines.source).lines) {
        pass.source = field + lines.begin / 2 * sourceLineSize;
        AskAhead(pass, lines, sourceLineSize);
        ConvertPass(context, pass);
        pass.destination += destinationLineSize;
    }
}

ky::Fields KyPixelConverter::FieldsOf(const KyPixelConverterContext& context, const std::uint8_t* source) {
    const std::uint32_t fieldSize = context.sourceHeight * context.sourceLineSize / 2;
    if ((context.flags & FLAG_INVERT_DEINTERLACER) != 0) return {{source + fieldSize, source}};
    return {{source, source + fieldSize}};
}

/// A pass without lines: whoever knows joints answers, others have nothing to do.
void KyPixelConverter::Ask(KyPixelConverterContext& context, std::uint32_t width, ky::LineJoint& joint) const {
    KyLinePass pass = {};
    pass.width = width;
    pass.lineStep = GetLineStep();
    pass.joint = &joint;
    ConvertPass(context, pass);
}

void KyPixelConverter::AskAhead(KyLinePass& pass, const ky::AreaLines& lines, std::size_t sourceLineSize) const {
    pass.ahead = lines.ahead;
    pass.aheadStep = pass.aheadBytes = pass.lineStep * lines.aheadLine;
    if (!lines.asksOnward) return;
    // With neighbours on both sides, two lines more are read already.
    const std::size_t callsAhead = pass.lineStep == 1 ? 1 + 2 * record->neighbourLines : 1;
    pass.ahead = reinterpret_cast<std::uintptr_t>(pass.source) + callsAhead * pass.sourceStep;
    pass.aheadStep = pass.sourceStep;
    pass.aheadBytes = pass.sourceStep - sourceLineSize + GetSourceByteSize(pass.width);
}

void KyPixelConverter::ConvertPass(KyPixelConverterContext& context, const KyLinePass& pass) const {
    if (ConvertsByPassFunction()) {
        record->passFunction(*this, context, pass);
        return;
    }
    const std::uint8_t* source = pass.source;
    std::uint8_t* destination = pass.destination;
    for (std::uint32_t line = 0; line < pass.height; line += pass.lineStep) {
        context.lineIndex = pass.firstLine + line;
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

void KyPixelConverter::SetPassFunction(const std::type_info& owner, PassFunction function,
                                       std::uint32_t neighbourLines) {
    record->passOwner = &owner;
    record->passFunction = function;
    record->neighbourLines = neighbourLines;
}

bool KyPixelConverter::ConvertsByPassFunction() const {
    return record->passFunction != nullptr && typeid(*this) == *record->passOwner;
}

std::uint32_t KyPixelConverter::GetNeighbourLines() const { return record->neighbourLines; }
