#include <KyImgLib/pipeline/RowMemory.h>

#include <new>
#include <utility>

namespace ky {

BufferPool::Buffer BufferPool::Take(std::size_t size) {
    Buffer taken;
    if (const std::unique_lock<std::mutex> lock(mutex, std::try_to_lock); lock && !idle.empty()) {
        taken = std::move(idle.back());
        idle.pop_back();
    }
    if (taken.size >= size) return taken;
    taken.bytes.reset();  // before the larger one is asked for
    taken.bytes.reset(new std::uint8_t[size]);
    taken.size = size;
    return taken;
}

void BufferPool::Give(Buffer returned) noexcept {
    try {
        if (const std::unique_lock<std::mutex> lock(mutex, std::try_to_lock); lock) idle.push_back(std::move(returned));
    } catch (const std::bad_alloc&) {  // then this buffer is simply freed
    }
}

BufferPool& RowMemoryPool() {
    static BufferPool pool;
    return pool;
}

}  // namespace ky
