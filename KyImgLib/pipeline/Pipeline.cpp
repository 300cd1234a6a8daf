#include <KyImgLib/pipeline/Pipeline.h>

#include <KyImgLib/pipeline/RowMemory.h>
#include <KyImgLib/platform/CpuCacheInternal.h>

#include <algorithm>
#include <cstring>

namespace ky {

namespace {

/// Bytes around a ring's row that vectors may read, and whole groups of pixels write.
constexpr std::size_t kMargin = 128;
constexpr std::size_t kCacheLine = 64;

/// Columns that a stage is ahead of the next one are a multiple of it: of every group, and of every vector.
constexpr std::size_t kColumnStep = 64;

/// Bytes of what is made at a time: a part of the L1 cache. While an image is streamed it is less, or memory would have
/// nothing to write for too long.
constexpr std::size_t kBatchBytes = 16 * 1024, kStreamedBatchBytes = 4 * 1024;

/// Rows that are made at a time, at most: enough for what each time costs not to count.
constexpr std::size_t kMostBatchRows = 64;

template <class Number>
Number RoundUp(Number value, Number step) {
    return (value + step - 1) / step * step;
}

std::size_t PowerOfTwo(std::size_t least) {
    std::size_t power = 1;
    while (power < least) power *= 2;
    return power;
}

/// Of rows `first` to `last`, from the first pixel to the last one.
ReadableBytes Extent(const SourceRows& rows, std::uint32_t first, std::uint32_t last, std::size_t rowBytes) {
    ReadableBytes extent = {rows[first], rows[first] + rowBytes};
    for (const std::uint32_t y :
         {first + 1 < last ? first + 1 : first, last - 1, last - 1 > first ? last - 2 : first}) {
        extent.begin = std::min(extent.begin, rows[y]);
        extent.end = std::max(extent.end, rows[y] + rowBytes);
    }
    return extent;
}

}  // namespace

bool Pipeline::TakesRowsAlone() const {
    for (std::size_t i = 0; i < count; ++i)
        if (stages[i].kernel.needs.rowStep != 1 || stages[i].kernel.needs.neighbours != 0) return false;
    return true;
}

std::uint32_t Pipeline::RowStep() const {
    std::uint32_t step = 1;
    for (std::size_t i = 0; i < count; ++i) step = std::max(step, stages[i].kernel.needs.rowStep);
    return step;
}

void Pipeline::Run(const Images& images, std::uint32_t first, std::uint32_t last) {
    if (first >= last || Last().width == 0) return;
    Stage& stage = stages[0];
    const RowKernel& reader = stage.kernel;
    const RowKernel::Needs& writer = Last().kernel.needs;
    const std::size_t sourceBytes = reader.SourceBytes(stage.width);
    const std::size_t destinationBytes = Last().width * writer.pixelBytes * writer.planes;
    isStreamed = ShouldStream(sourceBytes * images.lines, destinationBytes * images.lines);

    const std::uint32_t neighbours = Neighbours();
    if (neighbours != 0) {
        const std::uint32_t above = std::min(first, neighbours);
        const std::uint32_t below = std::max(last, std::min(last + neighbours, stage.height));
        stage.tile.readable = Extent(images.source, first - above, below, sourceBytes);
    }
    if (count == 1)
        RunAlone(images, first, last);
    else
        RunFused(images, first, last);
    if (isStreamed) FinishStreaming();
}

/// Rows above and below that all stages together need of the source.
std::uint32_t Pipeline::Neighbours() const {
    std::uint32_t neighbours = 0;
    for (std::size_t i = 0; i < count; ++i) neighbours += stages[i].kernel.needs.neighbours;
    return neighbours;
}

void Pipeline::RunAlone(const Images& images, std::uint32_t first, std::uint32_t last) {
    Stage& stage = stages[0];
    Tile& tile = stage.tile;
    tile.source = images.source;
    tile.destination = images.destination;
    tile.sourcePlanes = images.sourcePlanes;
    tile.destinationPlanes = images.destinationPlanes;
    tile.begin = 0;
    tile.end = tile.width = stage.width;
    tile.first = first;
    tile.last = last;
    tile.height = stage.height;
    tile.streams = isStreamed;
    tile.prefetch = {};
    if (isStreamed) {
        const RowKernel::Needs& needs = stage.kernel.needs;
        tile.prefetch = {&tile.source, needs.rowsAtOnce + needs.neighbours, 0, stage.kernel.SourceBytes(stage.width)};
    }
    stage.kernel(tile);
}

void Pipeline::RunFused(const Images& images, std::uint32_t first, std::uint32_t last) {
    ChooseTiles();
    isOneBatch = last - first <= batchRows;
    const RowMemory memory(SizeRings());
    Connect(images, first, memory.Get());
    for (std::uint32_t row = first; row < last;) {
        const std::uint32_t end = row + std::min(last - row, batchRows);
        PlanRows(end);
        if (firstTiled > 0)
            MakeRows(firstTiled - 1, stages[firstTiled].batchEnd + stages[firstTiled].kernel.needs.neighbours);
        MakeTiles(row, end);
        row = end;
    }
}

/// How many rows and columns are made at a time.
void Pipeline::ChooseTiles() {
    firstTiled = 0;
    std::uint32_t step = 1;
    std::size_t pixelBytes = 1, widest = 1;
    for (std::size_t i = 0; i < count; ++i) {
        const RowKernel::Needs& needs = stages[i].kernel.needs;
        if (needs.neighbours != 0) firstTiled = i;
        if (needs.wholeRows) firstTiled = i + 1;
        step = std::max({step, needs.rowStep, needs.rowsAtOnce});
        pixelBytes = std::max<std::size_t>(pixelBytes, needs.pixelBytes * needs.planes);
        widest = std::max(widest, stages[i].width);
    }
    firstTiled = std::min(firstTiled, count - 1);
    const std::size_t budget = isStreamed ? kStreamedBatchBytes : kBatchBytes;
    const std::size_t rows = budget / (pixelBytes * widest);
    batchRows = std::max(step, static_cast<std::uint32_t>(std::min(rows, kMostBatchRows)) / step * step);
    // Of whole rows alone there are no tiles.
    const bool areTiled = firstTiled + 1 < count && rows < step;
    tileColumns = areTiled ? RoundUp(budget / pixelBytes, kColumnStep) : widest;
}

/// Returns the bytes that all rings need.
std::size_t Pipeline::SizeRings() {
    std::size_t bytes = kCacheLine;
    std::size_t rows = batchRows;
    for (std::size_t i = count - 1; i-- > 0;) {
        Stage& stage = stages[i];
        const Stage& next = stages[i + 1];
        rows += 2 * next.kernel.needs.neighbours + stage.kernel.needs.rowStep - 1;
        stage.ringRows = PowerOfTwo(rows);
        const std::size_t rowBytes = std::max(stage.width, next.width) * stage.kernel.needs.pixelBytes;
        stage.ringStride = isOneBatch ? rowBytes : RoundUp(rowBytes, kCacheLine) + 2 * kMargin;
        stage.ringBytes = RoundUp(stage.ringRows * stage.ringStride, kCacheLine) + 2 * kMargin;
        bytes += stage.ringBytes;
    }
    return bytes;
}

/// Gives every stage its rows. What changes later are single numbers: a record written anew and loaded at once, as a vector,
/// would wait for all streaming stores before it.
void Pipeline::Connect(const Images& images, std::uint32_t first, std::uint8_t* memory) {
    memory += RoundUp(reinterpret_cast<std::uintptr_t>(memory), kCacheLine) - reinterpret_cast<std::uintptr_t>(memory);
    // From the last stage to the first: the row that the one after it needs first.
    Last().nextRow = first;
    for (std::size_t i = count - 1; i-- > 0;) {
        const std::uint32_t wanted = stages[i + 1].nextRow;
        const std::uint32_t row = wanted - std::min(wanted, stages[i + 1].kernel.needs.neighbours);
        stages[i].nextRow = row - row % stages[i].kernel.needs.rowStep;
    }
    for (std::size_t i = 0; i < count; ++i) {
        Stage& stage = stages[i];
        Tile& tile = stage.tile;
        tile.source = images.source;
        tile.destination = images.destination;
        tile.sourcePlanes = images.sourcePlanes;
        tile.destinationPlanes = images.destinationPlanes;
        tile.width = stage.width;
        tile.height = stage.height;
        tile.streams = isStreamed && i + 1 == count;
        if (i > 0) {
            const DestinationRows& ring = stages[i - 1].tile.destination;
            tile.source = {ring.even, ring.odd, ring.twoRows, ring.mask};
            tile.readable = {nullptr, reinterpret_cast<const std::uint8_t*>(UINTPTR_MAX)};
        }
        if (i + 1 < count) {
            const auto stride = static_cast<std::ptrdiff_t>(stage.ringStride);
            tile.destination = isOneBatch ? DestinationRows::FromRow(memory + kMargin, stage.nextRow, stride)
                                          : DestinationRows::OfRing(memory + kMargin, stride, stage.ringRows);
            const std::size_t pixel = stage.kernel.needs.pixelBytes, next = stages[i + 1].width;
            for (std::size_t row = 0; row < stage.ringRows && stage.width < next; ++row)
                std::memset(tile.destination[stage.nextRow + row] + stage.width * pixel, 0,
                            (next - stage.width) * pixel);
            memory += stage.ringBytes;
        }
        SetPrefetch(stage);
    }
}

/// While the last stage writes, memory gives what the first one reads next. A compute-bound first stage would leave memory
/// idle meanwhile, and prefetches one half.
void Pipeline::SetPrefetch(Stage& stage) const {
    Prefetch& prefetch = stage.tile.prefetch;
    prefetch = {};
    const bool isFirst = &stage == &stages[0], isLast = &stage == &Last();
    if (!isStreamed || !(isLast || (isFirst && stages[0].kernel.needs.isComputeBound))) return;
    prefetch.rows = &stages[0].tile.source;
    prefetch.ahead = batchRows + Neighbours();
}

/// Up to which row each of the tiled stages makes what the one after it needs.
void Pipeline::PlanRows(std::uint32_t last) {
    Last().batchEnd = last;
    for (std::size_t i = count - 1; i-- > firstTiled;)
        stages[i].batchEnd = std::min(RoundUp(stages[i + 1].batchEnd, stages[i].kernel.needs.rowStep), stages[i].lines);
}

/// Makes whole rows up to `until`, as far as there are any.
void Pipeline::MakeRows(std::size_t index, std::uint32_t until) {
    Stage& stage = stages[index];
    const Stage& next = stages[index + 1];
    until = std::min(until, std::max(next.lines, next.height));
    if (until <= stage.nextRow) return;
    const std::uint32_t end = std::min(RoundUp(until, stage.kernel.needs.rowStep), stage.lines);
    if (stage.nextRow < end) {
        if (index > 0) MakeRows(index - 1, end + stage.kernel.needs.neighbours);
        MakeTile(stage, stage.nextRow, end, 0, stage.width);
        stage.nextRow = end;
    }
    if (stage.nextRow < until) {
        ClearRows(stage, stage.nextRow, until, next.width);
        stage.nextRow = until;
    }
}

/// Makes some rows of the destination, tile by tile through all stages that take tiles.
void Pipeline::MakeTiles(std::uint32_t first, std::uint32_t last) {
    for (std::size_t i = firstTiled; i + 1 < count; ++i) {
        stages[i].nextColumn = 0;
        ClearRows(stages[i], std::max(first, stages[i].lines), stages[i + 1].batchEnd, stages[i + 1].width);
    }
    Stage& writer = Last();
    for (std::size_t begin = 0; begin < writer.width;) {
        const std::size_t end = EndOfTile(writer, first, begin);
        for (std::size_t i = firstTiled; i + 1 < count; ++i) {
            Stage& stage = stages[i];
            const std::size_t columns = std::min(RoundUp(end, kColumnStep), stage.width);
            MakeTile(stage, first, stage.batchEnd, stage.nextColumn, columns);
            stage.nextColumn = columns;
        }
        MakeTile(writer, first, last, begin, end);
        begin = end;
    }
}

void Pipeline::MakeTile(Stage& stage, std::uint32_t first, std::uint32_t last, std::size_t begin, std::size_t end) {
    if (first >= last || begin >= end) return;
    Tile& tile = stage.tile;
    tile.first = first;
    tile.last = last;
    tile.begin = begin;
    tile.end = end;
    if (tile.prefetch.rows != nullptr) {
        const RowKernel& reader = stages[0].kernel;
        tile.prefetch.begin = reader.SourceBytes(begin);
        tile.prefetch.bytes = reader.SourceBytes(end) - tile.prefetch.begin;
        if (reader.needs.isComputeBound) {
            const std::size_t half = tile.prefetch.bytes / 2;
            if (&stage != &stages[0]) tile.prefetch.begin += half;
            tile.prefetch.bytes -= half;
        }
    }
    stage.kernel(tile);
}

/// Where a tile ends that begins there: streamed tiles where a cache line does, so that the next one begins with one.
std::size_t Pipeline::EndOfTile(const Stage& stage, std::uint32_t row, std::size_t begin) const {
    std::size_t end = begin + tileColumns;
    if (stage.tile.streams && end + kColumnStep < stage.width) {
        const RowKernel::Needs& needs = stage.kernel.needs;
        const std::uintptr_t address = stage.tile.destination.Address(row);
        const std::size_t most = end + kCacheLine;
        while (end < most && (address + end * needs.pixelBytes) % kCacheLine != 0) end += needs.group;
    }
    // The last tile is at least a vector wide.
    return end + kColumnStep > stage.width ? stage.width : end;
}

void Pipeline::ClearRows(const Stage& stage, std::uint32_t first, std::uint32_t last, std::size_t columns) {
    for (std::uint32_t row = first; row < last; ++row)
        std::memset(stage.tile.destination[row], 0, columns * stage.kernel.needs.pixelBytes);
}

}  // namespace ky
