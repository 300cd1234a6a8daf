#ifndef KYIMGLIB_CONVERTERS_FILTERSTAGEINTERNAL_H
#define KYIMGLIB_CONVERTERS_FILTERSTAGEINTERNAL_H

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/kernels/Filter8.h>

#include <utility>

namespace ky {

inline FilterChannel8 ChannelOf(const std::uint8_t* table, const KyFilterShape& shape) {
    return {table, shape.isIdentity, shape.isLinear, shape.addsIndex, shape.offset, shape.shift, shape.multiplier};
}

/// A filter's 8-bit view as kernels take it. For destinations that store blue first, red and blue change places, in the
/// filter as in the source: the kernels then see an RGB destination.
inline Filter8 FilterStage(const KyRGBFilter& filter, bool blueFirst) {
    Filter8 stage = {{ChannelOf(filter.GetRedTable8(), filter.GetRedShape()),
                      ChannelOf(filter.GetGreenTable8(), filter.GetGreenShape()),
                      ChannelOf(filter.GetBlueTable8(), filter.GetBlueShape())}};
    if (blueFirst) std::swap(stage.channel[0], stage.channel[2]);
    return stage;
}

}  // namespace ky

#endif
