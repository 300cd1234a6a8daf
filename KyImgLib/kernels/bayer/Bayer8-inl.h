// Kernels of the 8-bit Bayer family at one instruction-set level.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/Filter8-inl.h>
#include <KyImgLib/kernels/Writers8-inl.h>
// clang-format on

/// Writes one pixel: red (or what counts as it) first, through the filter's tables.
template <class Writer>
void StoreSite(const Filter8& filter, const SiteColours<std::uint8_t>& site, bool ownIsBlue, std::uint8_t* to) {
    const std::uint8_t first = ownIsBlue ? site.opposite : site.own;
    const std::uint8_t third = ownIsBlue ? site.own : site.opposite;
    Writer::StorePixel(filter.channel[0].table[first], filter.channel[1].table[site.green],
                       filter.channel[2].table[third], to);
}

#if KY_PLAIN

#include <KyImgLib/kernels/bayer/PlainBayer8-inl.h>

#else

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/bayer/SourceLines-inl.h>
#include <KyImgLib/kernels/bayer/Interpolate8-inl.h>
#include <KyImgLib/kernels/bayer/Replicate8-inl.h>
// clang-format on

#endif

extern const Bayer8Table kBayer8;
const Bayer8Table kBayer8 = {
    {&Interpolate<Write565>, &Replicate<Write565>},
    {&Interpolate<Write24>, &Replicate<Write24>},
    {&Interpolate<Write32>, &Replicate<Write32>},
};
