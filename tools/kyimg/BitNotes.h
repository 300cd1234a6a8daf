#ifndef KYIMG_BITNOTES_H
#define KYIMG_BITNOTES_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kyimg {

/// What is odd about the bits of a frame's samples, for gray and mosaics in little-endian words: some that the type does not
/// have, or none of the upper ones that it has. Nothing for other types.
std::vector<std::string> FindOddBits(std::int64_t type, std::span<const std::uint8_t> frame);

}  // namespace kyimg

#endif
