#ifndef KYIMGLIB_CONVERTERS_FILTERSTAGEINTERNAL_H
#define KYIMGLIB_CONVERTERS_FILTERSTAGEINTERNAL_H

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/FilterRecordInternal.h>
#include <KyImgLib/kernels/Filter16.h>
#include <KyImgLib/kernels/Filter8.h>

#include <algorithm>
#include <utility>

namespace ky {

/// The filter of a conversion; a line call outside of an area has none.
inline const KyRGBFilter& FilterOr(const KyRGBFilter* filter, std::uint16_t defaultBits) {
    return filter == nullptr ? DefaultFilter(defaultBits) : *filter;
}

/// A filter's 8-bit view as kernels take it. For destinations that store blue first, red and blue change places, in the
/// filter as in the source: the kernels then see an RGB destination.
inline Filter8 ByteStage(const KyRGBFilter* given, bool blueFirst) {
    const FilterRecord& filter = FilterRecord::Of(FilterOr(given, 8));
    Filter8 stage = {
        {{filter.red.view, filter.red8}, {filter.green.view, filter.green8}, {filter.blue.view, filter.blue8}}};
    if (blueFirst) std::swap(stage.channel[0], stage.channel[2]);
    return stage;
}

/// A filter's word tables as kernels take them, with entries shifted right afterwards.
inline Filter16 WordStage(const KyRGBFilter* given, bool blueFirst, std::uint32_t shift) {
    const FilterRecord& filter = FilterRecord::Of(FilterOr(given, 16));
    Filter16 stage = {
        {{filter.red.table, filter.red16}, {filter.green.table, filter.green16}, {filter.blue.table, filter.blue16}},
        static_cast<std::uint16_t>(filter.indexMask),
        static_cast<std::uint8_t>(std::min(shift, 16u))};  // with 16 and more nothing is left
    if (blueFirst) std::swap(stage.channel[0], stage.channel[2]);
    return stage;
}

}  // namespace ky

#endif
