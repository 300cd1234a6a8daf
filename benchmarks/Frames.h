#ifndef KYBENCH_FRAMES_H
#define KYBENCH_FRAMES_H

#include <cstddef>
#include <cstdint>
#include <memory>

namespace kybench {

/// The buffers that everything measured shares: 64-byte aligned, all pages in memory, the source full of random bytes.
class Frames {
public:
    Frames(std::size_t sourceBytes, std::size_t destinationBytes);

    const std::uint8_t* GetSource() const { return source.get(); }
    std::uint8_t* GetDestination() const { return destination.get(); }

private:
    struct Free {
        void operator()(std::uint8_t* buffer) const;
    };
    using Buffer = std::unique_ptr<std::uint8_t[], Free>;
    static Buffer Allocate(std::size_t byteCount);

    Buffer source;
    Buffer destination;
};

}  // namespace kybench

#endif
