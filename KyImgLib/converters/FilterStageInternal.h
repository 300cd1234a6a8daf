#ifndef KYIMGLIB_CONVERTERS_FILTERSTAGEINTERNAL_H
#define KYIMGLIB_CONVERTERS_FILTERSTAGEINTERNAL_H

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/kernels/Filter16.h>
#include <KyImgLib/kernels/Filter8.h>

#include <algorithm>
#include <utility>

namespace ky {

/// The filter of a conversion; a line call outside of an area has none.
inline const KyRGBFilter& FilterOf(const KyPixelConverterContext& context, std::uint16_t defaultBits) {
    return context.filter == nullptr ? DefaultFilter(defaultBits) : *context.filter;
}

inline FilterChannel8 ChannelOf(const std::uint8_t* table, const KyFilterShape& shape) {
    return {table,       shape.isIdentity, shape.isLinear,       shape.addsIndex, shape.offset,
            shape.shift, shape.multiplier, shape.exceptionCount, shape.exceptions};
}

/// A filter's 8-bit view as kernels take it. For destinations that store blue first, red and blue change places, in the
/// filter as in the source: the kernels then see an RGB destination.
inline Filter8 ByteStage(const KyRGBFilter& filter, bool blueFirst, std::uint32_t) {
    Filter8 stage = {{ChannelOf(filter.GetRedTable8(), filter.GetRedShape()),
                      ChannelOf(filter.GetGreenTable8(), filter.GetGreenShape()),
                      ChannelOf(filter.GetBlueTable8(), filter.GetBlueShape())}};
    if (blueFirst) std::swap(stage.channel[0], stage.channel[2]);
    return stage;
}

inline FilterChannel16 ChannelOf(const std::uint16_t* table, const KyFilterShape16& shape, std::uint16_t largest) {
    return {table,           shape.isIdentity,   shape.isLinear, shape.offset,
            shape.wholeGain, shape.fractionGain, shape.last,     largest};
}

/// A filter's word tables as kernels take them, with entries shifted right afterwards.
inline Filter16 WordStage(const KyRGBFilter& filter, bool blueFirst, std::uint32_t shift) {
    const auto largest = static_cast<std::uint16_t>(filter.GetTableMask());
    Filter16 stage = {{ChannelOf(filter.GetRedTable16(), filter.GetRedShape16(), largest),
                       ChannelOf(filter.GetGreenTable16(), filter.GetGreenShape16(), largest),
                       ChannelOf(filter.GetBlueTable16(), filter.GetBlueShape16(), largest)},
                      largest,
                      static_cast<std::uint8_t>(std::min(shift, 16u))};  // with 16 and more nothing is left
    if (blueFirst) std::swap(stage.channel[0], stage.channel[2]);
    return stage;
}

}  // namespace ky

#endif
