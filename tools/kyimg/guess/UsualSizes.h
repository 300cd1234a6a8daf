#ifndef KYIMG_GUESS_USUALSIZES_H
#define KYIMG_GUESS_USUALSIZES_H

#include <cstdint>
#include <span>

namespace kyimg {

struct UsualSize {
    std::uint32_t width, height;
};

/// Sizes of sensors and of video.
std::span<const UsualSize> AllUsualSizes();

/// How unusual an image size is: about 0 for sizes of sensors, some more for even sizes of a usual shape, more for odd ones.
double SizePenalty(std::uint64_t width, std::uint64_t height);

/// Likewise for a header or trailer of this many bytes.
double HeaderPenalty(std::uint64_t bytes);

/// Sizes in bytes that headers often have.
std::span<const std::uint32_t> AllUsualHeaders();

}  // namespace kyimg

#endif
