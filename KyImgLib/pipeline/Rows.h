#ifndef KYIMGLIB_PIPELINE_ROWS_H
#define KYIMGLIB_PIPELINE_ROWS_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ky {

/// The rows of an image, or of a row ring, by their number in the picture.
///
/// Even and odd rows have a place of their own, so the fields of an interlaced image are rows of one picture like any other.
/// A ring keeps row y at y modulo its size, a power of two.
template <class Byte>
struct Rows {
    static constexpr std::size_t kWholeImage = ~std::size_t{0};

    Byte* even;              ///< row 0
    Byte* odd;               ///< row 1
    std::ptrdiff_t twoRows;  ///< bytes from a row to the next but one
    std::size_t mask;        ///< kWholeImage, or the ring's size less 1

    static Rows OfImage(Byte* first, std::ptrdiff_t stride) { return {first, first + stride, 2 * stride, kWholeImage}; }
    /// Of an image whose row y is given; its first row need not be in memory.
    static Rows FromRow(Byte* row, std::size_t y, std::ptrdiff_t stride) {
        const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(row) - y * static_cast<std::size_t>(stride);
        const std::uintptr_t second = first + static_cast<std::size_t>(stride);
        return {reinterpret_cast<Byte*>(first), reinterpret_cast<Byte*>(second), 2 * stride, kWholeImage};
    }
    static Rows OfFields(Byte* evenField, Byte* oddField, std::ptrdiff_t stride) {
        return {evenField, oddField, stride, kWholeImage};
    }
    static Rows OfRing(Byte* first, std::ptrdiff_t stride, std::size_t count) {
        return {first, first + stride, 2 * stride, count - 1};
    }

    Byte* operator[](std::size_t y) const { return reinterpret_cast<Byte*>(Address(y)); }

    /// Of any row, also of one outside the image: it may be prefetched.
    std::uintptr_t Address(std::size_t y) const {
        y &= mask;
        return reinterpret_cast<std::uintptr_t>(y % 2 == 0 ? even : odd) + y / 2 * static_cast<std::size_t>(twoRows);
    }

    /// Whether rows of so many bytes follow one another without a gap.
    bool AreContiguous(std::size_t rowBytes) const {
        const auto bytes = static_cast<std::ptrdiff_t>(rowBytes);
        return mask == kWholeImage && odd - even == bytes && twoRows == 2 * bytes;
    }
};

using SourceRows = Rows<const std::uint8_t>;
using DestinationRows = Rows<std::uint8_t>;

}  // namespace ky

#endif
