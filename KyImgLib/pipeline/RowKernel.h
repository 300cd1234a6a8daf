#ifndef KYIMGLIB_PIPELINE_ROWKERNEL_H
#define KYIMGLIB_PIPELINE_ROWKERNEL_H

#include <KyImgLib/pipeline/Rows.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

namespace ky {

/// Memory that vectors may read, more than the pixels that count: what lies between two rows belongs to the image.
struct ReadableBytes {
    const std::uint8_t* begin;
    const std::uint8_t* end;
};

/// What a kernel prefetches while it converts a row: a part of another row of the pipeline's source.
struct Prefetch {
    const SourceRows* rows;  ///< null: nothing
    std::size_t ahead;       ///< rows from the one that is converted to the one that is prefetched
    std::size_t begin;       ///< bytes from its start
    std::size_t bytes;       ///< 0: nothing
};

struct Columns {
    std::size_t begin, end;
    std::size_t width;  ///< of a row
};

/// What a kernel converts in one call: some columns of some rows.
struct Tile {
    SourceRows source;
    DestinationRows destination;
    /// The second and the third plane of an image that has such, for the kernels that read or write it. Planes of fewer lines
    /// count rows of their own.
    const SourceRows* sourcePlanes;
    const DestinationRows* destinationPlanes;
    std::size_t begin, end;     ///< columns
    std::size_t width;          ///< columns of a row
    std::uint32_t first, last;  ///< rows; `last` is the one after the last
    std::uint32_t height;       ///< rows of the source from which on there are no neighbours; may be before `last`
    ReadableBytes readable;
    bool streams;  ///< write with streaming (non-temporal) stores
    Prefetch prefetch;

    Columns GetColumns() const { return {begin, end, width}; }
};

/// One step of a pipeline: makes rows of one format from rows of another. A kernel declares what it needs; the pipeline sees
/// that it gets it. Kernels do not schedule and know nothing of one another.
class RowKernel {
public:
    using Run = void (*)(const RowKernel& kernel, const Tile& tile);

    /// What becomes of the last pixels of a row when they are less than a group, in area conversions.
    enum class PartialGroup { kConverted, kLeftOut };

    struct Needs {
        std::uint32_t group = 1;       ///< pixels that share source bytes; tiles begin with a group
        std::uint32_t groupBytes = 1;  ///< bytes of a group in the source
        std::uint32_t pixelBytes = 1;  ///< bytes of a destination pixel, in each plane
        std::uint32_t planes = 1;      ///< of the destination: 1 to 3
        std::uint32_t neighbours = 0;  ///< rows above and below that it reads as well
        std::uint32_t rowStep = 1;     ///< rows that are made together; tiles begin with a multiple of it
        std::uint32_t rowsAtOnce = 1;  ///< rows that it makes together where it can
        bool wholeRows = false;        ///< takes all columns at once
        bool isComputeBound = false;   ///< takes longer than its memory, and prefetches meanwhile
        PartialGroup areaPartialGroup = PartialGroup::kConverted;
    };

    RowKernel() {}  // members stay uninitialized: clearing them would slow small images
    RowKernel(const RowKernel&) = delete;
    RowKernel& operator=(const RowKernel&) = delete;

    /// `state`: all that the kernel's function needs for every tile, ready to be loaded.
    template <class State>
    void Set(const Needs& declared, Run function, const State& state) {
        static_assert(std::is_trivially_copyable_v<State> && std::is_trivially_destructible_v<State>);
        static_assert(sizeof(State) <= kStateBytes && alignof(State) <= kAlignment);
        needs = declared;
        run = function;
        new (StateAddress()) State(state);
    }

    template <class State>
    const State& Get() const {
        return *static_cast<const State*>(const_cast<RowKernel*>(this)->StateAddress());
    }

    void operator()(const Tile& tile) const { run(*this, tile); }

    /// Bytes of so many source pixels, whole groups.
    std::size_t SourceBytes(std::size_t pixels) const {
        return (pixels + needs.group - 1) / needs.group * needs.groupBytes;
    }

    /// Columns that an area conversion of this width makes.
    std::size_t AreaWidth(std::size_t width) const {
        const std::size_t torn = width % needs.group;
        if (torn == 0) return width;
        return needs.areaPartialGroup == PartialGroup::kLeftOut ? width - torn : width - torn + needs.group;
    }

    Needs needs;
    /// Look-up tables that the state may point to.
    std::uint8_t tables[3 * 256];

private:
    static constexpr std::size_t kStateBytes = 1024, kAlignment = 64;

    /// Vectors in it are aligned, wherever the kernel is. (Not every compiler aligns the stack for them.)
    void* StateAddress() {
        const auto address = reinterpret_cast<std::uintptr_t>(storage);
        return storage + ((address + kAlignment - 1) / kAlignment * kAlignment - address);
    }

    Run run;
    unsigned char storage[kStateBytes + kAlignment];
};

}  // namespace ky

#endif
