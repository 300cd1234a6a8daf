#include "Frames.h"

#include <algorithm>
#include <new>
#include <random>

namespace kybench {

namespace {

constexpr std::align_val_t kAlignment{64};

}  // namespace

void Frames::Free::operator()(std::uint8_t* buffer) const { ::operator delete[](buffer, kAlignment); }

Frames::Buffer Frames::Allocate(std::size_t byteCount) {
    return Buffer(static_cast<std::uint8_t*>(::operator new[](byteCount, kAlignment)));
}

Frames::Frames(std::size_t sourceBytes, std::size_t destinationBytes)
    : source(Allocate(sourceBytes)), destination(Allocate(destinationBytes)) {
    std::mt19937_64 random;
    std::generate_n(source.get(), sourceBytes, [&random] { return static_cast<std::uint8_t>(random() >> 56); });
    std::fill_n(destination.get(), destinationBytes, std::uint8_t{0xA5});
}

}  // namespace kybench
