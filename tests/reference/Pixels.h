#ifndef KYIMGLIB_TESTS_REFERENCE_PIXELS_H
#define KYIMGLIB_TESTS_REFERENCE_PIXELS_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

/// What conversions must give, written a pixel at a time and without the library.
namespace reference {

struct Rgb {
    unsigned red, green, blue;
};

enum class Format { kRGB16, kRGB24, kBGR24, kRGB32, kBGR32, kRGB48 };

inline const char* NameOf(Format format) {
    static const char* const names[] = {"RGB16", "RGB24", "BGR24", "RGB32", "BGR32", "RGB48"};
    return names[static_cast<int>(format)];
}

inline void PrintTo(Format format, std::ostream* out) { *out << NameOf(format); }

inline std::uint32_t BytesOf(Format format) {
    static const std::uint32_t bytes[] = {2, 3, 3, 4, 4, 6};
    return bytes[static_cast<int>(format)];
}

inline void Store(Format format, Rgb pixel, std::uint8_t* bytes) {
    if (format == Format::kRGB48) {
        for (const unsigned value : {pixel.red, pixel.green, pixel.blue}) {
            *bytes++ = static_cast<std::uint8_t>(value % 256);
            *bytes++ = static_cast<std::uint8_t>(value / 256);
        }
        return;
    }
    pixel = {pixel.red % 256, pixel.green % 256, pixel.blue % 256};
    if (format == Format::kRGB16) {
        // rrrrrggg gggbbbbb, the low byte first
        const unsigned word = pixel.red / 8 * 2048 + pixel.green / 4 * 32 + pixel.blue / 8;
        bytes[0] = static_cast<std::uint8_t>(word % 256);
        bytes[1] = static_cast<std::uint8_t>(word / 256);
        return;
    }
    const bool redFirst = format == Format::kRGB24 || format == Format::kRGB32;
    bytes[0] = static_cast<std::uint8_t>(redFirst ? pixel.red : pixel.blue);
    bytes[1] = static_cast<std::uint8_t>(pixel.green);
    bytes[2] = static_cast<std::uint8_t>(redFirst ? pixel.blue : pixel.red);
    if (BytesOf(format) == 4) bytes[3] = 0;
}

/// Tables that conversions pass red, green and blue through, and a shift to the right of what they hold.
struct Tables {
    std::vector<unsigned> red, green, blue;
    unsigned shift = 0;

    Rgb Apply(Rgb pixel) const {
        return {red[pixel.red % red.size()] >> shift, green[pixel.green % green.size()] >> shift,
                blue[pixel.blue % blue.size()] >> shift};
    }
};

/// Entry `index` of a filter for samples of `bits` bits, filled from a gain and an offset.
inline unsigned FilterEntry(unsigned bits, unsigned index, double gain, unsigned offset) {
    const double largest = std::pow(2.0, bits) - 1;
    return static_cast<unsigned>(std::min(std::floor(index * gain + offset), largest));
}

/// What a filter of this kind makes of samples of its own size.
inline std::vector<unsigned> WordTable(unsigned bits, double gain, unsigned offset) {
    std::vector<unsigned> table(std::size_t{1} << bits);
    for (unsigned i = 0; i < table.size(); ++i) table[i] = FilterEntry(bits, i, gain, offset);
    return table;
}

/// The bytes that it makes of 0 to 255; those it has no entry for become 0.
inline std::vector<unsigned> ByteTable(unsigned bits, double gain, unsigned offset) {
    std::vector<unsigned> table = WordTable(bits, gain, offset);
    table.resize(256, 0);
    for (unsigned& entry : table) entry = std::min(entry, 255u);
    return table;
}

}  // namespace reference

#endif
