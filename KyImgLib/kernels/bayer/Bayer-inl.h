// Kernels of both Bayer families at one instruction-set level.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/Gather-inl.h>
#include <KyImgLib/kernels/Filter8-inl.h>
#include <KyImgLib/kernels/Filter16-inl.h>
#include <KyImgLib/kernels/Streaming-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
// clang-format on

/// Writes one pixel: red (or what counts as it) first, through the filter's tables.
template <class Writer, class Filter, typename Sample>
void StoreSite(const Filter& filter, const SiteColours<Sample>& site, bool ownIsBlue, std::uint8_t* to) {
    const Sample first = ownIsBlue ? site.opposite : site.own;
    const Sample third = ownIsBlue ? site.own : site.opposite;
    using Value = typename Writer::Value;
    Writer::StorePixel(static_cast<Value>(filter.Value(0, first)), static_cast<Value>(filter.Value(1, site.green)),
                       static_cast<Value>(filter.Value(2, third)), to);
}

#if KY_PLAIN

#include <KyImgLib/kernels/bayer/Plain-inl.h>

#else

// clang-format off
#include <KyImgLib/kernels/bayer/SourceLines-inl.h>
#include <KyImgLib/kernels/bayer/Sites-inl.h>
#include <KyImgLib/kernels/bayer/Interpolate-inl.h>
#include <KyImgLib/kernels/bayer/Replicate-inl.h>
// clang-format on

#endif

template <class Writer, class Band>
constexpr BayerKernels<Band> KernelsTo = {&Interpolate<Writer, Band>, &Replicate<Writer, Band>};
