#ifndef KYBENCH_BASELINEKERNELS_H
#define KYBENCH_BASELINEKERNELS_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kybench {

/// Loads all bytes of a source and stores as many as a destination has, without any other work than that every load
/// has to feed a store. Moves whole blocks of 64 bytes from and to 64-byte aligned buffers.
struct BaselineKernel {
    const char* name;
    void (*move)(const std::uint8_t* source, std::uint8_t* destination, std::size_t sourceBytes);
};

/// The kernels that this CPU runs, for `sourceBytes` that become `destinationBytes`. Throws std::runtime_error when the
/// ratio of the two is one that no kernel is compiled for.
std::vector<BaselineKernel> BaselineKernelsFor(std::size_t sourceBytes, std::size_t destinationBytes);

}  // namespace kybench

#endif
