#include <KyImgLib/lines/LineStage.h>

#include <algorithm>
#include <cstring>

namespace ky {

std::uint32_t LineStage::CountOf(const Rows& rows) {
    const std::uint32_t needed = rows.atOnce + 2 * rows.neighbours;
    std::uint32_t powerOfTwo = 1;
    while (powerOfTwo < needed) powerOfTwo *= 2;
    return powerOfTwo;
}

std::size_t LineStage::MemoryFor(const Rows& rows) { return Pitch(rows.lineSize) * CountOf(rows); }

void LineStage::Begin(const Rows& rows, std::uint8_t* zeros) {
    wanted = rows;
    pitch = Pitch(rows.lineSize);
    count = CountOf(rows);
    memory = zeros + kMargin;
    for (std::uint32_t i = 0; i < count; ++i) held[i] = {UINT32_MAX, wanted.pixels};
}

void LineStage::SetSource(const Source& lines) {
    source = lines;
    columnBytes = source.lineSize * kColumns / wanted.pixels;
}

const std::uint8_t* LineStage::Row(std::uint32_t line) {
    const std::uint32_t slot = line % count;
    if (held[slot].line != line) {
        held[slot] = {line, 0};
        if (before == nullptr && line >= source.count) {
            std::memset(RowOf(slot), 0, pitch - 2 * kMargin);
            held[slot].reached = wanted.pixels;
        }
    }
    return RowOf(slot);
}

void LineStage::Reach(std::size_t end) {
    end = convertsWholeLines ? wanted.pixels : std::min((end + kColumns - 1) / kColumns * kColumns, wanted.pixels);
    for (std::uint32_t i = 0; i < count; ++i) {
        Held& row = held[i];
        if (row.reached >= end) continue;
        const std::uint8_t* const from = before == nullptr ? SourceLine(row.line) : before->Row(row.line);
        if (before != nullptr) before->Reach(end);
        FetchAhead ahead = {};
        if (before == nullptr && source.asks == Asks::kBoth) {
            ahead = SourceOf(row.line + wanted.atOnce, row.reached, end);
            ahead.bytes /= 2;
        }
        run(*this, from, RowOf(i), row.reached, end, ahead);
        row.reached = end;
    }
}

const std::uint8_t* LineStage::SourceLine(std::uint32_t line) const {
    line -= source.first;
    return source.lines[line % 2] + line / 2 * source.twoLines;
}

FetchAhead LineStage::Ahead(std::uint32_t line, std::size_t first, std::size_t end) const {
    if (before != nullptr) return before->Ahead(line, first, end);
    if (source.asks == Asks::kNobody) return {};
    FetchAhead ahead = SourceOf(line + wanted.atOnce + wanted.neighbours, first, end);
    if (source.asks == Asks::kBoth) {
        const std::size_t ownHalf = ahead.bytes / 2;
        ahead = {ahead.from + ownHalf, 0, ahead.bytes - ownHalf};
    }
    return ahead;
}

/// The bytes of some columns of a source line, which may lie beyond the last one.
FetchAhead LineStage::SourceOf(std::uint32_t line, std::size_t first, std::size_t end) const {
    const std::size_t begin = first / kColumns * columnBytes;
    const std::size_t bytes = (end + kColumns - 1) / kColumns * columnBytes - begin;
    line -= source.first;
    const auto lineStart = reinterpret_cast<std::uintptr_t>(source.lines[line % 2]) + line / 2 * source.twoLines;
    return {lineStart + begin, 0, bytes};
}

}  // namespace ky
