#ifndef KYIMGLIB_KERNELS_FILTER8_H
#define KYIMGLIB_KERNELS_FILTER8_H

#include <cstdint>

namespace ky {

/// A byte table for one channel, and what is known of it.
struct FilterChannel8 {
    const std::uint8_t* table;  ///< 256 entries
    bool isIdentity;
    /// Every entry i is min(offset + (addsIndex ? i : 0) + (i * multiplier >> shift), 255), but for the exceptions, which
    /// are one less.
    bool isLinear;
    bool addsIndex;
    std::uint8_t offset;
    std::uint8_t shift;  ///< 8 to 16
    std::uint16_t multiplier;
    std::uint8_t exceptionCount;
    const std::uint8_t* exceptions;
};

/// Tables for the three channels of a pixel, in the order in which a writer stores them.
struct Filter8 {
    FilterChannel8 channel[3];

    std::uint8_t Value(int place, std::uint8_t sample) const { return channel[place].table[sample]; }
    bool IsIdentity() const { return channel[0].isIdentity && channel[1].isIdentity && channel[2].isIdentity; }
};

}  // namespace ky

#endif
