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

enum class Format { kRGB16, kRGB24, kBGR24, kRGB32, kBGR32, kRGB48, kPlanar, kGray8, kGray16 };

inline const char* NameOf(Format format) {
    static const char* const names[] = {"RGB16", "RGB24",  "BGR24", "RGB32", "BGR32",
                                        "RGB48", "Planar", "Gray8", "Gray16"};
    return names[static_cast<int>(format)];
}

inline void PrintTo(Format format, std::ostream* out) { *out << NameOf(format); }

/// Bytes from one pixel to the next.
inline std::uint32_t BytesOf(Format format) {
    static const std::uint32_t bytes[] = {2, 3, 3, 4, 4, 6, 1, 1, 2};
    return bytes[static_cast<int>(format)];
}

inline bool IsBGR(Format format) { return format == Format::kBGR24 || format == Format::kBGR32; }

/// The low byte comes first.
inline unsigned LoadWord(const std::uint8_t* bytes) { return bytes[0] + 256u * bytes[1]; }

inline void StoreWord(unsigned value, std::uint8_t* bytes) {
    bytes[0] = static_cast<std::uint8_t>(value % 256);
    bytes[1] = static_cast<std::uint8_t>(value / 256 % 256);
}

/// Planes lie `planeBytes` apart. Gray is whatever red holds.
inline void Store(Format format, Rgb pixel, std::uint8_t* bytes, std::size_t planeBytes = 0) {
    if (format == Format::kRGB48) {
        StoreWord(pixel.red, bytes);
        StoreWord(pixel.green, bytes + 2);
        StoreWord(pixel.blue, bytes + 4);
        return;
    }
    if (format == Format::kGray16) return StoreWord(pixel.red, bytes);
    pixel = {pixel.red % 256, pixel.green % 256, pixel.blue % 256};
    if (format == Format::kRGB16)  // rrrrrggg gggbbbbb
        return StoreWord(pixel.red / 8 * 2048 + pixel.green / 4 * 32 + pixel.blue / 8, bytes);
    if (format == Format::kGray8 || format == Format::kPlanar) {
        bytes[0] = static_cast<std::uint8_t>(pixel.red);
        if (format == Format::kGray8) return;
        bytes[planeBytes] = static_cast<std::uint8_t>(pixel.green);
        bytes[2 * planeBytes] = static_cast<std::uint8_t>(pixel.blue);
        return;
    }
    const bool redFirst = !IsBGR(format);
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
