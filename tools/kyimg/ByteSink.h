#ifndef KYIMG_BYTESINK_H
#define KYIMG_BYTESINK_H

#include <cstdint>
#include <functional>
#include <span>

namespace kyimg {

/// Takes the bytes of a file from its start to its end, piece by piece. May throw.
using ByteSink = std::function<void(std::span<const std::uint8_t>)>;

}  // namespace kyimg

#endif
