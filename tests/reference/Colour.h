#ifndef KYIMGLIB_TESTS_REFERENCE_COLOUR_H
#define KYIMGLIB_TESTS_REFERENCE_COLOUR_H

#include <tests/reference/Lines.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace reference {

/// Positions of red, green and blue, or of whatever a pixel is made of.
using Places = std::array<std::uint32_t, 3>;

inline Rgb FromYUV(unsigned y, unsigned u, unsigned v) {
    const int luma = 298 * (static_cast<int>(y) - 16), cb = static_cast<int>(u) - 128, cr = static_cast<int>(v) - 128;
    const auto limit = [](int value) { return static_cast<unsigned>(std::clamp(value >> 8, 0, 255)); };
    return {limit(luma + 409 * cr + 128), limit(luma - 208 * cr - 100 * cb + 128), limit(luma + 516 * cb + 128)};
}

/// Channels of `unit` bytes each, of which byte `used` counts.
inline Reader RgbBytes(std::uint32_t channels, std::uint32_t unit, std::uint32_t used, Places places) {
    return [=](const Line& line, std::uint32_t x) {
        const std::uint8_t* const pixel = line.source + x * channels * unit + used;
        return line.filter.Apply({pixel[places[0] * unit], pixel[places[1] * unit], pixel[places[2] * unit]});
    };
}

inline Reader RgbWords(std::uint32_t channels) {
    return [=](const Line& line, std::uint32_t x) {
        const std::uint8_t* const pixel = line.source + x * channels * 2;
        return line.filter.Apply({LoadWord(pixel), LoadWord(pixel + 2), LoadWord(pixel + 4)});
    };
}

inline unsigned GreenOf565(const Line& line, std::uint32_t x) { return LoadWord(line.source + 2 * x) / 32 % 64; }

/// The green of a 5-6-5 pixel is expanded and filtered; its red and blue are not looked at.
inline Reader Rgb565ExpandedFirst() {
    return [](const Line& line, std::uint32_t x) { return line.filter.Apply({0, 4 * GreenOf565(line, x), 0}); };
}

/// The green of a 5-6-5 pixel is filtered and expanded, as far as it still is a number of its bits.
inline Reader Rgb565FilteredFirst() {
    return [](const Line& line, std::uint32_t x) {
        const auto expanded = [](unsigned value, unsigned bits) {
            return value < 1u << bits ? value << (8 - bits) : 0;
        };
        return Rgb{expanded(line.filter.red[0], 5), expanded(line.filter.green[GreenOf565(line, x)], 6),
                   expanded(line.filter.blue[0], 5)};
    };
}

/// Pairs Y0 U Y1 V of samples that the function loads, each of them `unit` bytes.
template <typename Load>
Reader Yuv422(std::uint32_t unit, Load load) {
    return [=](const Line& line, std::uint32_t x) {
        const std::uint8_t* const pair = line.source + x / 2 * 4 * unit;
        return line.filter.Apply(FromYUV(load(pair + x % 2 * 2 * unit), load(pair + unit), load(pair + 3 * unit)));
    };
}

/// Four pixels in U Y0 Y1 V Y2 Y3; all but the first have the red of the second.
inline Reader Yuv411() {
    return [](const Line& line, std::uint32_t x) {
        const std::uint8_t* const group = line.source + x / 4 * 6;
        const unsigned luma[4] = {group[1], group[2], group[4], group[5]};
        Rgb pixel = FromYUV(luma[x % 4], group[0], group[3]);
        if (x % 4 > 1) pixel.red = FromYUV(luma[1], group[0], group[3]).red;
        return line.filter.Apply(pixel);
    };
}

/// Y, U and V at places of their own after byte `extra` of each pixel.
inline Reader Yuv444(std::uint32_t extra, Places yuv) {
    return [=](const Line& line, std::uint32_t x) {
        const std::uint8_t* const pixel = line.source + 3 * x * (extra + 1) + extra;
        return line.filter.Apply(FromYUV(pixel[yuv[0]], pixel[yuv[1]], pixel[yuv[2]]));
    };
}

}  // namespace reference

#endif
