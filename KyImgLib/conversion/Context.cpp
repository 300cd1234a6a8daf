#include <KyImgLib/conversion/ContextInternal.h>

#include <KyImgLib/conversion/KyRGBFilter.h>

namespace ky {

namespace {

// Each thread's record is its own, so that threads which convert small images do not wait for each other, and the child of a
// fork finds no lock that another thread holds. Neither variable needs a destructor, which a library unloaded before the
// thread ends could not run.
thread_local ThreadContext own;
thread_local ThreadContext* current = nullptr;

}  // namespace

ThreadContext* AcquireContext() {
    if (current == nullptr) {
        own = {};
        current = &own;
    }
    ++current->referenceCount;
    return current;
}

void ReleaseContext() {
    if (--current->referenceCount == 0) current = nullptr;
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

void PrepareConversion() { DefaultFilter(8); }

}  // namespace ky
