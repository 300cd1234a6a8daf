#ifndef KYIMGLIB_PIPELINE_PIPELINE_H
#define KYIMGLIB_PIPELINE_PIPELINE_H

#include <KyImgLib/pipeline/RowKernel.h>
#include <KyImgLib/pipeline/Rows.h>

#include <cstddef>
#include <cstdint>

namespace ky {

/// Runs up to four row kernels, one after the other, over rows of an image.
///
/// Between two kernels there is a row ring, as small as what the second needs, so that it stays in a cache. Kernels that need
/// neighbouring or whole rows, and those before them, take whole rows; the others take tiles of columns.
class Pipeline {
public:
    static constexpr std::size_t kMostKernels = 4;

    Pipeline() {}  // see RowKernel
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    /// The next kernel, to be filled in.
    RowKernel& Add() {
        ++count;
        return stages[count <= kMostKernels ? count - 1 : 0].kernel;
    }
    /// Kernels added, more than kMostKernels when there is no room for all.
    std::size_t Count() const { return count; }
    const RowKernel& Kernel(std::size_t index) const { return stages[index].kernel; }

    /// Sizes of the kernel's destination.
    ///
    /// \param width   columns
    /// \param lines   rows. Rows and columns that the next kernel reads but this one does not make are 0
    /// \param height  rows of its source from which on there are no neighbours
    void SetSize(std::size_t index, std::size_t width, std::uint32_t lines, std::uint32_t height) {
        stages[index].width = width;
        stages[index].lines = lines;
        stages[index].height = height;
    }

    /// Where the rows come from and go to.
    struct Images {
        SourceRows source;
        DestinationRows destination;
        SourceRows sourcePlanes[2];            ///< see Tile
        DestinationRows destinationPlanes[2];  ///< see Tile
        std::uint32_t lines;  ///< of the whole image: large ones are streamed, also when a band of them is made
    };

    /// Whether no kernel makes a row from more than one row of its source.
    bool TakesRowsAlone() const;

    /// Bands begin and end with a multiple of it, or with the last row.
    std::uint32_t RowStep() const;

    /// Makes the rows from `first` to the one before `last`. Throws std::bad_alloc.
    void Run(const Images& images, std::uint32_t first, std::uint32_t last);

private:
    struct Stage {
        RowKernel kernel;
        std::size_t width;
        std::uint32_t lines, height;

        Tile tile;
        std::size_t ringRows, ringStride, ringBytes;  ///< of the ring after it; bytes with margins
        std::uint32_t nextRow;                        ///< of whole rows: the one to be made next
        std::uint32_t batchEnd;                       ///< of tiles: the row after the last one of this batch
        std::size_t nextColumn;                       ///< of tiles: the column to be made next
    };

    Stage& Last() { return stages[count - 1]; }
    const Stage& Last() const { return stages[count - 1]; }
    std::uint32_t Neighbours() const;
    void RunAlone(const Images& images, std::uint32_t first, std::uint32_t last);
    void RunFused(const Images& images, std::uint32_t first, std::uint32_t last);
    void ChooseTiles();
    std::size_t SizeRings();
    void Connect(const Images& images, std::uint32_t first, std::uint8_t* memory);
    void PlanRows(std::uint32_t last);
    void MakeRows(std::size_t index, std::uint32_t until);
    void MakeTiles(std::uint32_t first, std::uint32_t last);
    void MakeTile(Stage& stage, std::uint32_t first, std::uint32_t last, std::size_t begin, std::size_t end);
    std::size_t EndOfTile(const Stage& stage, std::uint32_t row, std::size_t begin) const;
    void SetPrefetch(Stage& stage) const;
    static void ClearRows(const Stage& stage, std::uint32_t first, std::uint32_t last, std::size_t columns);

    Stage stages[kMostKernels];
    std::size_t count = 0;

    std::size_t firstTiled;  ///< stages before it make whole rows
    std::size_t tileColumns;
    std::uint32_t batchRows;  ///< rows that the tiled stages make before the next ones
    bool isOneBatch;          ///< they make all: the rows of a ring have no gaps, and kernels may take them as one
    bool isStreamed;          ///< stream, and prefetch
};

}  // namespace ky

#endif
