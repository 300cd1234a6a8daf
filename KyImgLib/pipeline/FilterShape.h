#ifndef KYIMGLIB_PIPELINE_FILTERSHAPE_H
#define KYIMGLIB_PIPELINE_FILTERSHAPE_H

#include <cstdint>

namespace ky {

/// What is known of a table of 256 bytes, so that kernels need not look values up one by one.
struct FilterShape8 {
    bool isIdentity;  ///< every entry is its own index
    /// Every entry i is min(offset + (addsIndex ? i : 0) + (i * multiplier >> shift), 255), but for the exceptions, which are
    /// one less.
    bool isLinear;
    bool addsIndex;
    std::uint8_t offset;
    std::uint8_t shift;  ///< 8 to 16
    std::uint16_t multiplier;
    std::uint8_t exceptionCount;  ///< at most 8
    std::uint8_t exceptions[8];
};

/// What is known of a table of words.
struct FilterShape16 {
    bool isIdentity;  ///< every entry is its own index
    /// Entries up to `last` are offset + i * wholeGain + (i * fractionGain >> 32), those after it are the largest possible
    /// one.
    bool isLinear;
    std::uint16_t offset;
    std::uint16_t wholeGain;
    std::uint32_t fractionGain;
    std::uint16_t last;
};

}  // namespace ky

#endif
