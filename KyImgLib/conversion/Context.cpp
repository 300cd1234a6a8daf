#include <KyImgLib/conversion/ContextInternal.h>

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/platform/KyGate.h>
#include <KyImgLib/platform/KyThread.h>

#include <map>
#include <memory>
#include <new>

namespace ky {

namespace {

/// The contexts of all threads that are converting, under one gate. A thread enters the gate only when its outermost
/// conversion starts and ends; in between it finds its context by `current`.
struct ContextMap {
    KyGate gate;
    std::map<std::uint32_t, std::unique_ptr<ThreadContext>> contexts;
};

ContextMap& Contexts() {
    static ContextMap map;
    return map;
}

// A plain pointer needs no destructor, which a library unloaded before the thread ends could not run.
thread_local ThreadContext* current = nullptr;

}  // namespace

ThreadContext* AcquireContext() {
    if (current != nullptr) {
        ++current->referenceCount;
        return current;
    }
    std::unique_ptr<ThreadContext> created(new ThreadContext());
    if (created == nullptr) throw std::bad_alloc();
    created->referenceCount = 1;
    created->threadID = KyThread::GetCurrentThreadID();

    ContextMap& map = Contexts();
    const KyGateGuard inside(map.gate);
    current = (map.contexts[created->threadID] = std::move(created)).get();
    return current;
}

void ReleaseContext() {
    if (--current->referenceCount > 0) return;
    ContextMap& map = Contexts();
    const KyGateGuard inside(map.gate);
    map.contexts.erase(current->threadID);
    current = nullptr;
}

const ThreadContext* CurrentContext() { return current; }

const KyRGBFilter& DefaultFilter(std::uint16_t bitSize) {
    static const KyRGBFilter filters[] = {KyRGBFilter(8), KyRGBFilter(10), KyRGBFilter(12), KyRGBFilter(14),
                                          KyRGBFilter(16)};
    switch (bitSize) {
        case 8: return filters[0];
        case 10: return filters[1];
        case 12: return filters[2];
        case 14: return filters[3];
        default: return filters[4];
    }
}

void PrepareConversion() {
    Contexts();
    DefaultFilter(8);
}

}  // namespace ky
