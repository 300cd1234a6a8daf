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
    stretchBytes = wanted.pixels == 0 ? 0 : source.lineSize * kStretch / wanted.pixels;
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
    end = convertsWholeLines ? wanted.pixels : std::min((end + kStretch - 1) / kStretch * kStretch, wanted.pixels);
    for (std::uint32_t i = 0; i < count; ++i) {
        Held& row = held[i];
        if (row.reached >= end) continue;
        const std::uint8_t* const from = before == nullptr ? SourceLine(row.line) : before->Row(row.line);
        if (before != nullptr) before->Reach(end);
        run(*this, from, RowOf(i), row.reached, end);
        row.reached = end;
    }
}

const std::uint8_t* LineStage::SourceLine(std::uint32_t line) const {
    line -= source.first;
    return source.lines[line % 2] + line / 2 * source.twoLines;
}

FetchAhead LineStage::Ahead(std::uint32_t line, std::size_t first, std::size_t end) const {
    if (before != nullptr) return before->Ahead(line, first, end);
    if (!source.asksAhead) return {};
    const std::size_t begin = first / kStretch * stretchBytes;
    const std::size_t bytes = (end + kStretch - 1) / kStretch * stretchBytes - begin;
    line += wanted.atOnce + wanted.neighbours - source.first;
    const auto lineStart = reinterpret_cast<std::uintptr_t>(source.lines[line % 2]) + line / 2 * source.twoLines;
    return {lineStart + begin, 0, bytes};
}

}  // namespace ky
