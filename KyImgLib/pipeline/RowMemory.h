#ifndef KYIMGLIB_PIPELINE_ROWMEMORY_H
#define KYIMGLIB_PIPELINE_ROWMEMORY_H

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ky {

/// Memory that one conversion keeps rows in and the next one finds again, in a pool. The last one given back is the next one
/// taken, so that a single thread always works in the same memory, which its cache holds. Any number of threads may take
/// and give. None waits: while another one holds the pool, memory comes from the system, so the child of a fork does not
/// wait for a thread that it does not have.
class RowMemory {
public:
    /// At least `size` bytes, their contents anything. Throws std::bad_alloc.
    explicit RowMemory(std::size_t size);
    ~RowMemory();
    RowMemory(const RowMemory&) = delete;
    RowMemory& operator=(const RowMemory&) = delete;

    std::uint8_t* Get() const { return block.bytes.get(); }

    struct Block {
        std::unique_ptr<std::uint8_t[]> bytes;
        std::size_t size = 0;
    };

    /// Creates the pool, so that it outlives everything created later.
    static void Prepare();

private:
    Block block;
};

}  // namespace ky

#endif
