#ifndef KYBENCH_PEERS_OPERATIONS_H
#define KYBENCH_PEERS_OPERATIONS_H

#include "../Rows.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace kybench {

/// What the bytes of a source may be.
enum class Samples { kBytes, kWords12, kWords10BigEndian };

/// Where the samples of a destination are.
enum class Layout { kGray8, kWords, kRGB24, kRGB32, kPlanes, kNV12, kI420 };

/// An image in one buffer, without padding.
struct Picture {
    const std::uint8_t* bytes;
    std::uint32_t width;
    std::uint32_t height;

    std::size_t GetPixelCount() const { return std::size_t{width} * height; }
};

/// A conversion that other libraries know as well.
struct Operation {
    const char* name;
    std::int64_t source;
    std::int64_t destination;
    std::uint32_t flags;
    bool hasTables;
    Samples samples;
    Layout layout;
    std::uint32_t border;  ///< pixels at each edge that every library makes in a way of its own
    /// What sample `channel` of pixel (x, y) of the destination has to be, from the definition of the formats alone.
    int (*exact)(const Picture& source, std::uint32_t x, std::uint32_t y, int channel);
};

std::span<const Operation> AllOperations();

/// The three tables for red, green and blue of the operations that have some: gamma curves.
const std::uint8_t (&Tables())[3][256];

/// Number of samples that a pixel of a layout has.
int ChannelCount(Layout layout);

/// Sample `channel` of pixel (x, y): gray; red, green, blue; or Y, Cb, Cr.
int SampleOf(Layout layout, const Picture& picture, std::uint32_t x, std::uint32_t y, int channel);

}  // namespace kybench

#endif
