#ifndef KYIMGLIB_CONVERSION_CONTEXTINTERNAL_H
#define KYIMGLIB_CONVERSION_CONTEXTINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverterContext.h>

namespace ky {

/// A thread's context as the library keeps it: the public record, and what only the library reads.
struct ThreadContext : KyPixelConverterContext {
    std::uint32_t areaSourceWidth;  ///< source width of the area conversion that the thread is in
};

/// The calling thread's context, created when it has none; its reference count goes up by one.
ThreadContext* AcquireContext();
/// Takes back one AcquireContext() of the calling thread; after the last one it has no context.
void ReleaseContext();
/// The calling thread's context; null while it converts nothing.
const ThreadContext* CurrentContext();

/// Holds one reference on the calling thread's context.
class ContextHolder {
public:
    ContextHolder() : context(AcquireContext()) {}
    ~ContextHolder() { ReleaseContext(); }
    ContextHolder(const ContextHolder&) = delete;
    ContextHolder& operator=(const ContextHolder&) = delete;
    ThreadContext* operator->() const { return context; }
    ThreadContext& operator*() const { return *context; }

private:
    ThreadContext* context;
};

/// A thread's context during an area conversion. It leaves no filter behind, whichever way the conversion ends, and the
/// source width of the area around it.
class AreaScope : public ContextHolder {
public:
    explicit AreaScope(std::uint32_t sourceWidth) : outerSourceWidth((**this).areaSourceWidth) {
        (**this).areaSourceWidth = sourceWidth;
    }
    ~AreaScope() {
        (**this).filter = nullptr;
        (**this).areaSourceWidth = outerSourceWidth;
    }

private:
    std::uint32_t outerSourceWidth;
};

/// The identity filter for a source of this bit size: of 8, 10, 12 or 14 bits, for every other size of 16 bits.
const KyRGBFilter& DefaultFilter(std::uint16_t bitSize);

/// Creates the default filters and the memory of row rings, so that they outlive everything created later.
void PrepareConversion();

}  // namespace ky

#endif
