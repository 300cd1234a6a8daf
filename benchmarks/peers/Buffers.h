#ifndef KYBENCH_PEERS_BUFFERS_H
#define KYBENCH_PEERS_BUFFERS_H

#include "Operations.h"
#include "Peer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kybench {

/// What all contenders read and write: 64-byte aligned, all pages in memory.
class Buffers {
public:
    /// As large as any of `operations` needs at any of `sizes`. Only other libraries need memory of their own between two
    /// steps.
    Buffers(const std::vector<const Operation*>& operations, const std::vector<Size>& sizes, bool hasOthers);

    /// Random samples of the kind that an operation takes, or another layout of them for a peer that has only that.
    Work MakeWork(const Operation& operation, Size size, const Contender* contender = nullptr);

private:
    struct alignas(64) Block {
        std::uint8_t bytes[64];
    };
    using Buffer = std::vector<Block>;
    static std::uint8_t* BytesOf(Buffer& buffer) { return buffer.front().bytes; }

    std::array<Buffer, 3> sources;  ///< by Samples; empty where no operation takes them
    Buffer arranged;
    Buffer scratch;
    Buffer destination;
};

/// Bytes of an image of a type of the library.
std::size_t FrameBytes(std::int64_t type, Size size);

}  // namespace kybench

#endif
