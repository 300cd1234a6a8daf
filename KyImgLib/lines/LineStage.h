#ifndef KYIMGLIB_LINES_LINESTAGE_H
#define KYIMGLIB_LINES_LINESTAGE_H

#include <KyImgLib/lines/FetchAhead.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

namespace ky {

/// A stage of a chain whose lines the next stage takes as it needs them: a stretch at a time, or whole ones where it needs
/// their neighbours. So what lies between the two stays in a near cache, and while one waits for memory the other can work:
/// many lines, one stage after the other, would leave the processor and the memory idle in turn.
///
/// A stage is made ready once for all lines. Calling a pass function for each stretch made chains two to three times slower;
/// probably because what has just been written as single numbers and is read as a vector waits for the streaming writes
/// before it.
class LineStage {
public:
    /// Lines are there in whole numbers of so many pixels, which are whole steps and whole groups.
    static constexpr std::size_t kColumns = 512;
    /// Bytes around a row that vectors may read, and groups of pixels write.
    static constexpr std::size_t kMargin = 128;

    /// Converts the pixels of a source line from `first`, a multiple of kColumns, to `end`. Pixels that the conversion leaves
    /// out stay 0. Meanwhile it asks for `ahead`, which has bytes only where `Asks` says both.
    using Run = void (*)(const LineStage& stage, const std::uint8_t* from, std::uint8_t* to, std::size_t first,
                         std::size_t end, const FetchAhead& ahead);

    /// Who asks the memory for what is read next: none of the two, the next stage, or each for half of it, where this one
    /// gives colours. Stages that give single samples need not be able to.
    enum class Asks { kNobody, kNextStage, kBoth };

    /// Where lines come from.
    struct Source {
        const std::uint8_t* lines[2];  ///< the first and the second line
        std::size_t twoLines;          ///< bytes from there to the next two
        std::size_t lineSize;          ///< bytes
        std::uint32_t first;           ///< index of the first one
        std::uint32_t count;           ///< lines from this index on are all 0
        Asks asks;                     ///< for the next lines, where there are more than the caches hold
    };
    /// What the next stage needs.
    struct Rows {
        std::size_t pixels;        ///< of a line
        std::size_t lineSize;      ///< bytes
        std::uint32_t atOnce;      ///< lines that it goes on by
        std::uint32_t neighbours;  ///< above and below them
    };

    LineStage() {}  // nothing is cleared that is not looked at: there are several for each conversion
    LineStage(const LineStage&) = delete;
    LineStage& operator=(const LineStage&) = delete;

    /// Answers with what the conversion needs for every line. `wholeLines`: it can only convert a line as a whole.
    template <class State>
    void Keep(const State& kept, Run function, bool wholeLines = false) {
        static_assert(std::is_trivially_copyable_v<State> && sizeof(State) <= kStateBytes);
        static_assert(alignof(State) <= kAlignment);
        new (StateAddress()) State(kept);
        run = function;
        convertsWholeLines = wholeLines;
    }
    template <class State>
    const State& Kept() const {
        return *static_cast<const State*>(const_cast<LineStage*>(this)->StateAddress());
    }
    /// Memory for tables of the conversion's own, which it reads as long as it is a stage.
    static constexpr std::size_t kTableBytes = 3 * 256;
    std::uint8_t* Tables() { return tables; }
    bool IsReady() const { return run != nullptr; }

    /// Bytes of memory for the rows.
    static std::size_t MemoryFor(const Rows& rows);
    /// \param memory  MemoryFor() these rows, all 0
    void Begin(const Rows& rows, std::uint8_t* memory);
    void SetSource(const Source& lines);
    /// Lines come through another stage.
    void SetSource(LineStage& stage) { before = &stage; }

    /// The row of a line, which is there as far as was reached. It stays while the next stage needs it.
    const std::uint8_t* Row(std::uint32_t line);

    /// Makes all rows reach column `end`, or the last one.
    void Reach(std::size_t end);

    /// What is worth asking for while the next stage converts these columns of a line: what it takes when it goes on.
    FetchAhead Ahead(std::uint32_t line, std::size_t first, std::size_t end) const;

private:
    static constexpr std::size_t kStateBytes = 1024, kAlignment = 64;
    static constexpr std::uint32_t kMostRows = 4;

    struct Held {
        std::uint32_t line;
        std::size_t reached;  ///< columns that are there
    };

    static std::size_t Pitch(std::size_t lineSize) {
        return (lineSize + kAlignment - 1) / kAlignment * kAlignment + 2 * kMargin;
    }
    static std::uint32_t CountOf(const Rows& rows);
    /// Vectors in it are aligned, wherever the stage is. (Not every compiler aligns the stack for them.)
    void* StateAddress() {
        const auto address = reinterpret_cast<std::uintptr_t>(state);
        return state + ((address + kAlignment - 1) / kAlignment * kAlignment - address);
    }
    std::uint8_t* RowOf(std::uint32_t slot) { return memory + slot * pitch; }
    const std::uint8_t* SourceLine(std::uint32_t line) const;
    FetchAhead SourceOf(std::uint32_t line, std::size_t first, std::size_t end) const;

    Run run = nullptr;
    LineStage* before = nullptr;
    Source source;
    Rows wanted;
    bool convertsWholeLines;
    std::size_t pitch;
    std::size_t columnBytes;  ///< of kColumns pixels of the source; about, where pixels share bytes
    std::uint32_t count;      ///< of rows, a power of two
    std::uint8_t* memory;
    Held held[kMostRows];
    std::uint8_t tables[kTableBytes];
    unsigned char state[kStateBytes + kAlignment];
};

/// Where a conversion meets the stage before it, or is made ready to be one itself.
struct LineJoint {
    LineStage* before;  ///< the source's lines come from here; null: from memory
    LineStage* asked;   ///< not null: convert nothing, but keep here what is needed, if that is possible
    bool takesLines;    ///< an answer then: lines may come from a stage before
};

/// Line y of a band, from memory or, as a whole, from the stage before.
template <class Band>
const std::uint8_t* SourceLineOf(const Band& band, std::ptrdiff_t y) {
    if (band.joint == nullptr || band.joint->before == nullptr) return band.source + y * band.sourceLine;
    const std::uint8_t* const row = band.joint->before->Row(static_cast<std::uint32_t>(band.lineIndex + y));
    band.joint->before->Reach(band.width);
    return row;
}

/// What to ask for with some columns of line y of a band: what is said, or what the stage before reads next.
template <class Band>
FetchAhead AheadOf(const Band& band, std::ptrdiff_t y, std::size_t begin, std::size_t end) {
    if (band.ahead.bytes != 0) return band.ahead.At(y).Part(begin, end, band.width);
    if (band.joint == nullptr || band.joint->before == nullptr) return {};
    return band.joint->before->Ahead(static_cast<std::uint32_t>(band.lineIndex + y), begin, end);
}

}  // namespace ky

#endif
