#include <KyImgLib/conversion/ContextInternal.h>

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/pipeline/RowMemory.h>

namespace ky {

namespace {

// Each thread's record is its own, so that threads which convert small images do not wait for each other, and the child of a
// fork finds no lock that another thread holds. It needs no destructor, which a library unloaded before the thread ends
// could not run.
thread_local ThreadContext record;

/// In a shared library the address of a thread-local variable takes a call, which compilers repeat for each use.
__attribute__((noinline)) ThreadContext* OwnRecord() { return &record; }

}  // namespace

ThreadContext* AcquireContext() {
    ThreadContext* const context = OwnRecord();
    if (context->referenceCount == 0) *context = {};
    ++context->referenceCount;
    return context;
}

void ReleaseContext() {
    ThreadContext* const context = OwnRecord();
    if (context->referenceCount != 0) --context->referenceCount;
}

const ThreadContext* CurrentContext() {
    const ThreadContext* const context = OwnRecord();
    return context->referenceCount == 0 ? nullptr : context;
}

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
    DefaultFilter(8);
    RowMemory::Prepare();
}

}  // namespace ky
