#ifndef KYIMGLIB_KERNELS_FILTER16_H
#define KYIMGLIB_KERNELS_FILTER16_H

#include <KyImgLib/pipeline/FilterShape.h>

#include <cstdint>

namespace ky {

/// A word table for one channel, and what is known of it.
struct FilterChannel16 : FilterShape16 {
    const std::uint16_t* table;
};

/// Tables for the three channels of a pixel, in the order in which a writer stores them, and the way from a table's
/// entry to what is stored.
struct Filter16 {
    FilterChannel16 channel[3];
    std::uint16_t indexMask;  ///< entries of each table - 1, the largest entry; a sample is taken modulo their number
    std::uint8_t shift;       ///< entries are shifted right by this; 16 leaves nothing

    std::uint16_t Value(int place, std::uint16_t sample) const {
        return static_cast<std::uint16_t>(channel[place].table[sample & indexMask] >> shift);
    }
    bool IsIdentity() const { return channel[0].isIdentity && channel[1].isIdentity && channel[2].isIdentity; }
};

}  // namespace ky

#endif
