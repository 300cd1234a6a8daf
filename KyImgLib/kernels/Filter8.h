#ifndef KYIMGLIB_KERNELS_FILTER8_H
#define KYIMGLIB_KERNELS_FILTER8_H

#include <KyImgLib/pipeline/FilterShape.h>

#include <cstdint>

namespace ky {

/// A byte table for one channel, and what is known of it.
struct FilterChannel8 : FilterShape8 {
    const std::uint8_t* table;  ///< 256 entries
};

/// Tables for the three channels of a pixel, in the order in which a writer stores them.
struct Filter8 {
    FilterChannel8 channel[3];

    std::uint8_t Value(int place, std::uint8_t sample) const { return channel[place].table[sample]; }
    bool IsIdentity() const { return channel[0].isIdentity && channel[1].isIdentity && channel[2].isIdentity; }
};

}  // namespace ky

#endif
