#ifndef KYIMGLIB_KERNELS_WORDS_WORDKERNELS_H
#define KYIMGLIB_KERNELS_WORDS_WORDKERNELS_H

#include <KyImgLib/pipeline/RowKernel.h>

#include <cstdint>
#include <numeric>

namespace ky {

/// How words of fewer bits become words of the full range, in 16-bit arithmetic: with v = word & mask,
///
///     (v << shift) + ((v * factor + addend) * multiplier >> 16 >> down)
///
/// is v * 65535 / mask, rounded to nearest. No product of the factor exceeds 16 bits.
struct WordScale {
    std::uint16_t mask = 0xFFFF, factor = 0, addend = 0, multiplier = 0;
    std::uint8_t shift = 0, down = 0;

    /// Words as they are, but for bits above `bits`.
    static constexpr WordScale Masked(unsigned bits) {
        WordScale scale;
        scale.mask = static_cast<std::uint16_t>((1u << bits) - 1);
        return scale;
    }

    /// From words of `bits` bits, 8 to 16. What v << shift lacks is v * (2^shift - 1) / mask: a fraction whose numerator,
    /// rounding included, fits 16 bits, and which a multiplication by the reciprocal of its denominator divides exactly.
    static constexpr WordScale ToFullRange(unsigned bits) {
        WordScale scale = Masked(bits);
        scale.shift = static_cast<std::uint8_t>(16 - bits);
        const std::uint32_t lacking = (1u << scale.shift) - 1;
        const std::uint32_t common = std::gcd(lacking, std::uint32_t{scale.mask});
        const std::uint32_t divisor = scale.mask / common;
        if (divisor == 1) {  // all or nothing: v, or 0
            scale.factor = static_cast<std::uint16_t>(lacking / common * 256);
            scale.multiplier = 256;
            return scale;
        }
        scale.factor = static_cast<std::uint16_t>(lacking / common);
        scale.addend = static_cast<std::uint16_t>(divisor / 2);
        const auto reciprocal = [&](unsigned shifted) {
            return ((std::uint64_t{65536} << shifted) + divisor - 1) / divisor;
        };
        while (reciprocal(scale.down + 1u) < 65536) ++scale.down;
        scale.multiplier = static_cast<std::uint16_t>(reciprocal(scale.down));
        return scale;
    }

    constexpr std::uint16_t Value(std::uint16_t word) const {
        const std::uint32_t value = word & mask;
        return static_cast<std::uint16_t>((value << shift) + ((value * factor + addend) * multiplier >> 16 >> down));
    }
};

/// Settings of kernels whose samples are 16-bit words, and of those from words to floats.
struct WordSettings {
    std::uint32_t samples;  ///< of a pixel, for kernels of samples in order: 1 or 3
    WordScale scale;        ///< of words
    bool repeatsBytes;      ///< of bytes: a byte is both bytes of its word, 257 times its value; otherwise the low one
    std::uint16_t alpha;
    float largest;  ///< the sample that becomes 1.0
};

using MakeWords = void (*)(const WordSettings& settings, RowKernel& kernel);

/// Kernels from three channels of one size by destination.
struct ChannelKernels {
    MakeWords toRGBA64;       ///< words R, G, B and an alpha
    MakeWords toWordPlanes;   ///< three planes of words
    MakeWords toFloatPlanes;  ///< three planes of samples divided by the largest one
};

struct WordTable {
    MakeWords widen;           ///< bytes to words, in order
    MakeWords scale;           ///< words to words, in order
    MakeWords unpackThree;     ///< three samples of 10 bits a pixel, a stream from the lowest bit on, to words
    ChannelKernels fromRGB24;  ///< from bytes
    ChannelKernels fromRGB48;  ///< from words
    MakeWords lumaOfRGB24;     ///< from bytes R, G, B: words of the full range
};

}  // namespace ky

#endif
