// Kernels of both Bayer families at one instruction-set level.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/RowWalk-inl.h>
#include <KyImgLib/kernels/Filter8-inl.h>
#include <KyImgLib/kernels/Filter16-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
// clang-format on

/// Writes one pixel: red (or what counts as it) first, through the filter's tables.
template <class Writer, class Filter, typename Sample>
void StoreSite(const Filter& filter, const SiteColours<Sample>& site, bool ownIsBlue, std::uint8_t* to) {
    const Sample first = ownIsBlue ? site.opposite : site.own;
    const Sample third = ownIsBlue ? site.own : site.opposite;
    using Value = typename Writer::Value;
    Writer::StorePixel(static_cast<Value>(filter.Value(0, first)), static_cast<Value>(filter.Value(1, site.green)),
                       static_cast<Value>(filter.Value(2, third)), &to);
}

/// The row of the mosaic with this number.
template <class Settings>
MosaicLine LineOf(const Settings& settings, std::uint32_t y) {
    return y % 2 == 0 ? settings.firstLine : settings.firstLine.Next();
}

/// Fills an odd last column, which has no whole cell, with the pixel to its left.
template <class Writer>
void RepeatLastPixel(const Tile& tile, std::uint8_t* row) {
    constexpr std::size_t kBytes = Writer::kPixelBytes;
    if (tile.end == tile.width && tile.width % 2 != 0)
        std::memcpy(row + (tile.width - 1) * kBytes, row + (tile.width - 2) * kBytes, kBytes);
}

/// Finds the cells that rows y and y + 1 are made of: those of rows `cells` and `cells` + 1. An odd last row is made of the
/// cells above it. False where the image has no whole cell: then the two rows are set to 0.
template <class Writer>
bool HasCells(const Tile& tile, std::uint32_t y, std::uint32_t& cells) {
    constexpr std::size_t kBytes = Writer::kPixelBytes;
    cells = y + 1 == tile.last && y >= 2 ? y - 2 : y;
    if (tile.width >= 2 && cells + 1 < tile.last) return true;
    for (const std::uint32_t last = std::min(y + 2, tile.last); y < last; ++y)
        std::memset(tile.destination[y] + tile.begin * kBytes, 0, (tile.end - tile.begin) * kBytes);
    return false;
}

#if KY_SCALAR

#include <KyImgLib/kernels/bayer/Scalar-inl.h>

#else

// clang-format off
#include <KyImgLib/kernels/bayer/Sites-inl.h>
#include <KyImgLib/kernels/bayer/Bilinear-inl.h>
#include <KyImgLib/kernels/bayer/Nearest-inl.h>
// clang-format on

#endif

template <class Writer, class Settings>
RowKernel::Needs NeedsOf() {
    RowKernel::Needs needs;
    needs.groupBytes = sizeof(typename Settings::Sample);
    needs.pixelBytes = Writer::kPixelBytes;
    needs.rowsAtOnce = 2;
    needs.isComputeBound = true;
    return needs;
}

template <class Writer, class Settings>
void MakeBilinear(const Settings& settings, RowKernel& kernel) {
    RowKernel::Needs needs = NeedsOf<Writer, Settings>();
    needs.neighbours = 1;
    SetBilinear<Writer>(needs, settings, kernel);
}

template <class Writer, class Settings>
void MakeNearest(const Settings& settings, RowKernel& kernel) {
    RowKernel::Needs needs = NeedsOf<Writer, Settings>();
    needs.group = 2;
    needs.groupBytes *= 2;
    needs.rowStep = 2;
    needs.neighbours = settings.repeatsLastRow ? 2 : 0;  // an odd last row is made of the cells above it
    needs.areaPartialGroup = RowKernel::PartialGroup::kLeftOut;
    SetNearest<Writer>(needs, settings, kernel);
}

template <class Writer, class Settings>
constexpr BayerKernels<Settings> KernelsTo = {&MakeBilinear<Writer, Settings>, &MakeNearest<Writer, Settings>};
