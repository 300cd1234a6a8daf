#ifndef KYIMGLIB_PIPELINE_ROWMEMORY_H
#define KYIMGLIB_PIPELINE_ROWMEMORY_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace ky {

/// Memory that one conversion uses and the next one finds again. The last one given back is the next one lent, so that a
/// single thread always works in the same, warm memory. Any number of threads may take and give. None waits: while another one
/// holds the pool, memory comes from the system, so the child of a fork does not wait for a thread that it does not have.
class BufferPool {
public:
    struct Buffer {
        std::unique_ptr<std::uint8_t[]> bytes;
        std::size_t size = 0;
    };

    /// A buffer of at least `size` bytes, their contents anything. Throws std::bad_alloc.
    Buffer Take(std::size_t size);
    void Give(Buffer returned) noexcept;

private:
    std::mutex mutex;
    std::vector<Buffer> idle;
};

/// A buffer of a pool, lent as long as this lives.
class LentBuffer {
public:
    LentBuffer(BufferPool& owner, std::size_t size) : pool(owner), buffer(owner.Take(size)) {}
    ~LentBuffer() { pool.Give(std::move(buffer)); }
    LentBuffer(const LentBuffer&) = delete;
    LentBuffer& operator=(const LentBuffer&) = delete;

    std::uint8_t* Get() const { return buffer.bytes.get(); }

private:
    BufferPool& pool;
    BufferPool::Buffer buffer;
};

/// The pool that row rings take their memory from.
BufferPool& RowMemoryPool();

/// Memory for the rings of one pipeline.
class RowMemory : public LentBuffer {
public:
    explicit RowMemory(std::size_t size) : LentBuffer(RowMemoryPool(), size) {}
};

}  // namespace ky

#endif
