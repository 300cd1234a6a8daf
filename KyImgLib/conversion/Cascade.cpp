#include <KyImgLib/conversion/CascadeInternal.h>

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/platform/CpuCacheInternal.h>

#include <algorithm>
#include <cstring>

namespace ky {

namespace {

/// Of all strips together: near the size of a first-level cache.
constexpr std::size_t kStripBytes = 48 * 1024;

/// Lines that are wanted at a time, at least. Stages that convert few lines at once spend their time on starting, and more
/// of it where a line needs its neighbours.
constexpr std::uint32_t kFewestLines = 2, kFewestWithNeighbours = 8;

/// Strips start at a multiple of it, and conversions of pixel groups may write as much after their end.
constexpr std::size_t kAlignment = 64;

std::size_t RoundUp(std::size_t bytes) { return (bytes + kAlignment - 1) / kAlignment * kAlignment; }

}  // namespace

bool Cascade::Serves(const CascadeStages& stages) {
    constexpr std::int64_t kFarApart = KY_TYPE_INTERLACED | KY_TYPE_PLANAR;
    if (stages.count > CascadeStages::kMost) return false;
    for (std::size_t i = 0; i < stages.count; ++i) {
        if (!stages.converters[i]->ConvertsByPassFunction()) return false;
        const std::int64_t source = stages.converters[i]->GetSourceType();
        if (i > 0 && (source & kFarApart) != 0) return false;
        // Fields of pixel groups: a line's surplus pixel falls on the first one of a line of the other field.
        if ((source & KY_TYPE_INTERLACED) != 0 && (source & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_YUV) return false;
        if (i + 1 < stages.count && (stages.converters[i]->GetDestinationType() & kFarApart) != 0) return false;
    }
    return true;
}

Cascade::Cascade(const CascadeStages& chain, const Area& area, ThreadContext& threadContext)
    : wanted(area), context(threadContext), stages{}, count(chain.count) {
    std::size_t bytesOfLine = 0;
    std::uint32_t surplus = 0;
    std::uint32_t fewestLines = kFewestLines;
    for (std::size_t i = 0; i < count; ++i) {
        const KyPixelConverter& converter = *chain.converters[i];
        Stage& stage = stages[i];
        stage.converter = &converter;
        stage.context = context;
        if (stage.context.filter == nullptr) stage.context.filter = &converter.GetDefaultFilter();
        // All but the last convert an image into one of the same size.
        const Area whole = {area.sourceWidth, area.sourceHeight, area.sourceWidth, area.sourceHeight,
                            area.sourceWidth, area.sourceHeight, area.flags,       0};
        const Area& own = IsLast(stage) ? area : whole;
        converter.FillContext(stage.context, own);
        stage.step = converter.GetLineStep();
        stage.lines = own.height - own.height % stage.step;
        stage.width = own.width;
        if (!IsLast(stage)) bytesOfLine += stage.context.destinationLineSize;
        surplus += 2 * (converter.GetNeighbourLines() + stage.step);
        if (converter.GetNeighbourLines() != 0) fewestLines = kFewestWithNeighbours;
    }
    const std::size_t fitting = kStripBytes / std::max<std::size_t>(bytesOfLine, 1);
    linesAtOnce = std::max(fewestLines, static_cast<std::uint32_t>(std::min<std::size_t>(fitting, wanted.height)));
    const std::size_t bytesInAndOut =
        std::size_t{stages[0].context.sourceLineSize} + stages[count - 1].context.destinationLineSize;
    isLarge = ExceedsCache(bytesInAndOut * stages[count - 1].lines);
    // The stage that would leave memory idle asks for the source: a first one of much arithmetic, otherwise the last, which
    // only writes. (Not for the fields of an interlaced image, which are read in turn.)
    const std::int64_t source = stages[0].converter->GetSourceType();
    fetchingStage = (source & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_YUV ? 0 : count - 1;
    if ((source & KY_TYPE_INTERLACED) != 0) fetchingStage = count;
    stripBytes = kAlignment;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        stages[i].stripLines = linesAtOnce + surplus;
        stripBytes += SizeOf(stages[i]);
    }
}

std::size_t Cascade::SizeOf(const Stage& stage) {
    return RoundUp(std::size_t{stage.stripLines} * stage.context.destinationLineSize + kAlignment);
}

bool Cascade::CanConvert() const {
    for (std::size_t i = 0; i + 1 < count; ++i) {
        const std::size_t pixel = stages[i].converter->GetDestinationByteSize();
        const std::size_t line = stages[i].context.destinationLineSize;
        if (line != stages[i + 1].context.sourceLineSize || pixel * wanted.sourceWidth > UINT32_MAX) return false;
    }
    return true;
}

void Cascade::Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint8_t* strips) {
    image = source;
    output = destination;
    // What a stage leaves out, as the last line of an odd number, is the same every time.
    std::memset(strips, 0, stripBytes);
    strips += RoundUp(reinterpret_cast<std::uintptr_t>(strips)) - reinterpret_cast<std::uintptr_t>(strips);
    for (std::size_t i = 0; i + 1 < count; ++i) {
        stages[i].strip = strips;
        strips += SizeOf(stages[i]);
    }
    const std::uint32_t lines = stages[count - 1].lines;
    for (std::uint32_t line = 0; line < lines;) {
        line += std::min(lines - line, linesAtOnce);
        Advance(count - 1, line);
    }
    if (isLarge) FinishStreaming();
}

/// Makes a stage give its lines up to `end`, or a few more.
void Cascade::Advance(std::size_t index, std::uint32_t end) {
    Stage& stage = stages[index];
    if (end < stage.lines) end = std::min(stage.lines, end + (stage.step - end % stage.step) % stage.step);
    end = std::min(end, stage.lines);
    if (end <= stage.done) return;

    AreaLines lines = {};
    lines.source = image;
    if (index > 0) {
        Advance(index - 1, end + stage.converter->GetNeighbourLines());
        lines.source = stages[index - 1].strip;
        lines.sourceFirst = stages[index - 1].stripFirst;
    }
    lines.begin = stage.done;
    lines.end = end;
    lines.step = stage.step;
    lines.width = stage.width;
    if (IsLast(stage)) {
        const std::size_t lineSize = stage.context.destinationLineSize;
        lines.destination = output + lines.begin * lineSize;
        lines.isLarge = isLarge;
    } else {
        lines.destination = MakeRoom(stage, stages[index + 1], end);
    }
    if (isLarge && index == fetchingStage) {
        lines.aheadLine = stages[0].context.sourceLineSize;
        lines.ahead =
            reinterpret_cast<std::uintptr_t>(image) + std::size_t{index == 0 ? end : stages[0].done} * lines.aheadLine;
    }
    // The stage finds its settings where it finds those of an area conversion of its own.
    const std::uint32_t references = context.referenceCount;
    static_cast<KyPixelConverterContext&>(context) = stage.context;
    context.referenceCount = references;
    stage.converter->ConvertLines(context, lines);
    stage.done = end;
}

/// The place of a stage's next line in its strip. Of the lines before it, those stay that are still to be read.
std::uint8_t* Cascade::MakeRoom(Stage& stage, const Stage& consumer, std::uint32_t end) {
    const std::size_t lineSize = stage.context.destinationLineSize;
    const std::uint32_t neighbours = consumer.converter->GetNeighbourLines();
    // With room for what the consumer may take for lines after the last one.
    if (end + neighbours + consumer.step - stage.stripFirst > stage.stripLines) {
        const std::uint32_t kept = consumer.done - std::min(consumer.done, neighbours);
        std::memmove(stage.strip, stage.strip + (kept - stage.stripFirst) * lineSize, (stage.done - kept) * lineSize);
        stage.stripFirst = kept;
    }
    return stage.strip + (stage.done - stage.stripFirst) * lineSize;
}

}  // namespace ky
