#include <KyImgLib/conversion/ContextInternal.h>

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/platform/KyGate.h>
#include <KyImgLib/platform/KyThread.h>

namespace ky {

namespace {

/// The contexts of all threads that are converting, by thread ID, under one gate. A thread enters the gate only when its
/// outermost conversion starts and ends; in between it finds its context by `current`.
class ContextTable {
public:
    void Add(ThreadContext& context) {
        const KyGateGuard inside(gate);
        ThreadContext*& first = Bucket(context);
        context.next = first;
        first = &context;
    }
    void Remove(const ThreadContext& context) {
        const KyGateGuard inside(gate);
        ThreadContext** link = &Bucket(context);
        while ((*link)->threadID != context.threadID) link = &(*link)->next;
        *link = context.next;
    }

private:
    ThreadContext*& Bucket(const ThreadContext& context) { return buckets[context.threadID % kBuckets]; }

    static constexpr std::uint32_t kBuckets = 64;
    KyGate gate;
    ThreadContext* buckets[kBuckets] = {};
};

ContextTable& Contexts() {
    static ContextTable table;
    return table;
}

// Neither needs a destructor, which a library unloaded before the thread ends could not run.
thread_local ThreadContext own;
thread_local ThreadContext* current = nullptr;

}  // namespace

ThreadContext* AcquireContext() {
    if (current != nullptr) {
        ++current->referenceCount;
        return current;
    }
    own = {};
    own.referenceCount = 1;
    own.threadID = KyThread::GetCurrentThreadID();
    Contexts().Add(own);
    return current = &own;
}

void ReleaseContext() {
    if (--current->referenceCount > 0) return;
    Contexts().Remove(*current);
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
