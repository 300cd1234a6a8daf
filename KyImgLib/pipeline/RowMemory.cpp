#include <KyImgLib/pipeline/RowMemory.h>

#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace ky {

namespace {

struct Pool {
    std::mutex mutex;
    std::vector<RowMemory::Block> idle;
};

Pool& GetPool() {
    static Pool pool;
    return pool;
}

}  // namespace

RowMemory::RowMemory(std::size_t size) {
    Pool& pool = GetPool();
    if (const std::unique_lock<std::mutex> lock(pool.mutex, std::try_to_lock); lock && !pool.idle.empty()) {
        block = std::move(pool.idle.back());
        pool.idle.pop_back();
    }
    if (block.size >= size) return;
    block.bytes.reset();  // before the larger one is allocated
    block.bytes.reset(new std::uint8_t[size]);
    block.size = size;
}

RowMemory::~RowMemory() {
    Pool& pool = GetPool();
    try {
        if (const std::unique_lock<std::mutex> lock(pool.mutex, std::try_to_lock); lock)
            pool.idle.push_back(std::move(block));
    } catch (const std::bad_alloc&) {  // then this memory is simply freed
    }
}

void RowMemory::Prepare() { GetPool(); }

}  // namespace ky
