#ifndef KYBENCH_ROWS_H
#define KYBENCH_ROWS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace kybench {

struct Size {
    std::uint32_t width;
    std::uint32_t height;
    std::size_t GetPixelCount() const { return std::size_t{width} * height; }
};

/// On most machines the first lives in the second-level cache, the next in the last-level cache, the last in memory.
inline constexpr std::array<Size, 3> kSizes = {{{640, 480}, {1920, 1080}, {4096, 3072}}};

enum class Filter { kNone, kWhiteBalance };

/// A conversion to be measured at every size.
struct Row {
    const char* conversion;
    std::int64_t source;
    std::int64_t destination;
    std::uint32_t flags;
    Filter filter;
};

/// The table of everything that is measured.
std::span<const Row> AllRows();

/// A row that is a chain, and the rows that are its two stages alone.
struct Chain {
    const char* row;
    const char* stages[2];
};
std::span<const Chain> AllChains();

/// "Bayer8ToRGB24/bilinear/wb/1920x1080"
std::string NameOf(const Row& row, Size size);

/// The same conversion without a filter.
Row UnfilteredOf(const Row& row);

}  // namespace kybench

#endif
