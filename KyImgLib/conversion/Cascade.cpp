#include <KyImgLib/conversion/CascadeInternal.h>

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/platform/CpuCacheInternal.h>

#include <algorithm>
#include <cstring>

namespace ky {

namespace {

/// Of all strips together: a part of a second-level cache.
constexpr std::size_t kStripBytes = 96 * 1024;

/// Lines that are wanted at a time, at least. Stages that convert few lines at once spend their time on starting, and more
/// of it where a line needs its neighbours.
constexpr std::uint32_t kFewestLines = 2, kFewestWithNeighbours = 8;

/// Strips start at a multiple of it, and conversions of pixel groups may write as much after their end.
constexpr std::size_t kAlignment = 64;

/// Pixels of a line below which starting a line costs more than a strip.
constexpr std::uint32_t kNarrowestJoined = 1024;

std::size_t RoundUp(std::size_t bytes) { return (bytes + kAlignment - 1) / kAlignment * kAlignment; }

}  // namespace

bool Cascade::Serves(const CascadeStages& stages) {
    constexpr std::int64_t kFarApart = KY_TYPE_INTERLACED | KY_TYPE_PLANAR;
    if (stages.count > CascadeStages::kMost) return false;
    for (std::size_t i = 0; i < stages.count; ++i) {
        if (!stages.converters[i]->ConvertsByPassFunction()) return false;
        if (i > 0 && (stages.converters[i]->GetSourceType() & kFarApart) != 0) return false;
        if (i + 1 < stages.count && (stages.converters[i]->GetDestinationType() & kFarApart) != 0) return false;
    }
    return true;
}

Cascade::Cascade(const CascadeStages& chain, const Area& area, ThreadContext& threadContext)
    : wanted(area), context(threadContext), stages{}, count(chain.count) {
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
    }
    const std::size_t bytesInAndOut =
        std::size_t{stages[0].context.sourceLineSize} + stages[count - 1].context.destinationLineSize;
    isLarge = ExceedsCache(bytesInAndOut * stages[count - 1].lines);
}

bool Cascade::IsInterlaced() const { return (stages[0].converter->GetSourceType() & KY_TYPE_INTERLACED) != 0; }

bool Cascade::IsYUV() const {
    return (stages[0].converter->GetSourceType() & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_YUV;
}

/// Whether a stage gives whole colours, which mostly takes arithmetic. (To move their bytes takes less, but more than to move
/// samples. No chain of the library's has RGB16 in between.)
bool Cascade::MakesColours(const Stage& stage) {
    constexpr std::uint32_t kColourBytes = 3;
    return stage.converter->GetDestinationByteSize() >= kColourBytes;
}

std::size_t Cascade::Prepare() {
    JoinStages();
    // The stage that would leave memory idle asks for the source: one of much arithmetic, otherwise the one that writes.
    const std::size_t taker = TakerOf(0);
    firstAsks = isLarge && (taker == count - 1 || MakesColours(stages[taker]));
    std::size_t bytesOfLine = 0;
    std::uint32_t surplus = 0, fewestLines = kFewestLines;
    for (std::size_t i = 0; i < count; ++i) {
        if (stages[i].isJoined) continue;
        const std::uint32_t neighbours = stages[i].converter->GetNeighbourLines();
        surplus += 2 * (neighbours + stages[i].step);
        if (neighbours != 0) fewestLines = kFewestWithNeighbours;
        if (i + 1 < count) bytesOfLine += stages[i].context.destinationLineSize;
    }
    const std::size_t fitting = bytesOfLine == 0 ? wanted.height : kStripBytes / bytesOfLine;
    linesAtOnce = std::max(fewestLines, static_cast<std::uint32_t>(std::min<std::size_t>(fitting, wanted.height)));
    bufferBytes = kAlignment;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        stages[i].stripLines = linesAtOnce + surplus;
        bufferBytes += BufferBytes(i);
    }
    return bufferBytes;
}

/// Asks each stage whether the next one can take its lines as it needs them.
void Cascade::JoinStages() {
    if (wanted.width < kNarrowestJoined) return;
    for (std::size_t i = 0; i < count; ++i) {
        const Stage& stage = stages[i];
        LineJoint joint = {nullptr, &lineStages[i], false};
        WithContext(stage, [&] { stage.converter->Ask(context, stage.width, joint); });
        if (i == 0) continue;
        stages[i - 1].isJoined = joint.takesLines && lineStages[i - 1].IsReady();
        if (stages[i - 1].isJoined) lineStages[i].SetSource(lineStages[i - 1]);
    }
}

template <class Work>
void Cascade::WithContext(const Stage& stage, const Work& work) {
    // A stage finds its settings where it finds those of an area conversion of its own.
    const std::uint32_t references = context.referenceCount;
    static_cast<KyPixelConverterContext&>(context) = stage.context;
    context.referenceCount = references;
    work();
}

/// What the next stages need of a stage that is joined to them.
LineStage::Rows Cascade::RowsOf(std::size_t index) const {
    const Stage &stage = stages[index], &taker = stages[TakerOf(index)];
    const std::uint32_t neighbours = taker.converter->GetNeighbourLines();
    return {stage.width, stage.context.destinationLineSize, neighbours == 0 ? 1u : 2u, neighbours};
}

/// The stage that gives this one's lines to a strip or to the destination: itself, or the one that it is joined to.
std::size_t Cascade::TakerOf(std::size_t index) const {
    while (stages[index].isJoined) ++index;
    return index;
}

std::size_t Cascade::BufferBytes(std::size_t index) const {
    const std::size_t lineSize = stages[index].context.destinationLineSize;
    if (stages[index].isJoined) return lineStages[index].MemoryFor(RowsOf(index));
    return RoundUp(std::size_t{stages[index].stripLines} * lineSize + kAlignment);
}

bool Cascade::CanConvert() const {
    constexpr std::uint32_t kLargestGroup = 4;
    // Otherwise a line's surplus pixels fall on the first ones of a line of the other field.
    if (IsInterlaced() && IsYUV() && wanted.sourceWidth % kLargestGroup != 0) return false;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        const std::size_t pixel = stages[i].converter->GetDestinationByteSize();
        const std::size_t line = stages[i].context.destinationLineSize;
        if (line != stages[i + 1].context.sourceLineSize || pixel * wanted.sourceWidth > UINT32_MAX) return false;
    }
    return true;
}

void Cascade::Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint8_t* buffer) {
    image = source;
    output = destination;
    // What a stage leaves out, as the last line of an odd number, is the same every time.
    std::memset(buffer, 0, bufferBytes);
    buffer += RoundUp(reinterpret_cast<std::uintptr_t>(buffer)) - reinterpret_cast<std::uintptr_t>(buffer);
    for (std::size_t i = 0; i + 1 < count; ++i) {
        Stage& stage = stages[i];
        if (stage.isJoined)
            lineStages[i].Begin(RowsOf(i), buffer);
        else
            stage.strip = buffer;
        buffer += BufferBytes(i);
    }
    const std::uint32_t lines = stages[count - 1].lines;
    for (std::uint32_t line = 0; line < lines;) {
        line += std::min(lines - line, linesAtOnce);
        Advance(count - 1, line);
    }
    if (isLarge) FinishStreaming();
}

/// Makes a stage that is not joined to the next one give its lines up to `end`, or a few more.
void Cascade::Advance(std::size_t index, std::uint32_t end) {
    Stage& stage = stages[index];
    if (end < stage.lines) end = std::min(stage.lines, end + (stage.step - end % stage.step) % stage.step);
    end = std::min(end, stage.lines);
    if (end <= stage.done) return;

    // The stages joined to this one come with it.
    std::size_t first = index;
    while (first > 0 && stages[first - 1].isJoined) --first;
    if (first > 0) Advance(first - 1, end + stage.converter->GetNeighbourLines());

    AreaLines lines = {};
    LineJoint joint = {};
    const Stage* const input = first == 0 ? nullptr : &stages[first - 1];
    lines.source = input == nullptr ? image : input->strip;
    lines.sourceFirst = input == nullptr ? 0 : input->stripFirst;
    if (first != index) {
        joint.before = &lineStages[index - 1];
        lineStages[first].SetSource(SourceOf(first));
        lines.joint = &joint;
    }
    lines.begin = stage.done;
    lines.end = end;
    lines.step = stage.step;
    lines.width = stage.width;
    if (IsLast(stage)) {
        lines.destination = output + lines.begin * std::size_t{stage.context.destinationLineSize};
        lines.isLarge = isLarge;
    } else {
        lines.destination = MakeRoom(stage, stages[TakerOf(index + 1)], end);
    }
    lines.asksOnward = firstAsks && index == 0;
    if (isLarge && !firstAsks && IsLast(stage)) AskAhead(lines);
    WithContext(stage, [&] { stage.converter->ConvertLines(context, lines); });
    stage.done = end;
}

/// While the last stage writes, the memory gives what the first one reads next.
void Cascade::AskAhead(AreaLines& lines) {
    const LineStage::Source source = SourceOf(0);
    const std::size_t next = stages[TakerOf(0)].done / (IsInterlaced() ? 2 : 1);
    // Of fields, twice as much of one, and next time of the other.
    const std::uint8_t* const field = source.lines[IsInterlaced() ? turn++ % 2 : 0];
    lines.ahead = reinterpret_cast<std::uintptr_t>(field) + next * source.lineSize;
    lines.aheadLine = source.lineSize;
}

/// Where a stage, or those joined to it, find their lines.
LineStage::Source Cascade::SourceOf(std::size_t index) const {
    const Stage& stage = stages[index];
    const std::size_t lineSize = stage.context.sourceLineSize;
    if (index > 0) {
        const Stage& input = stages[index - 1];
        return {{input.strip, input.strip + lineSize},
                2 * lineSize,
                lineSize,
                input.stripFirst,
                UINT32_MAX,
                LineStage::Asks::kNobody};
    }
    const LineStage::Asks asks = !firstAsks            ? LineStage::Asks::kNobody
                                 : MakesColours(stage) ? LineStage::Asks::kBoth
                                                       : LineStage::Asks::kNextStage;
    if (IsInterlaced()) {
        const Fields fields = KyPixelConverter::FieldsOf(stage.context, image);
        return {{fields.lines[0], fields.lines[1]}, lineSize, lineSize, 0, stage.lines, asks};
    }
    return {{image, image + lineSize}, 2 * lineSize, lineSize, 0, stage.lines, asks};
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
