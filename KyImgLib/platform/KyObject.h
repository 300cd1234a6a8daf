#ifndef KYIMGLIB_PLATFORM_KYOBJECT_H
#define KYIMGLIB_PLATFORM_KYOBJECT_H

#include <KyImgLib/platform/KyExport.h>

#include <cstddef>

/// Allocation of library objects.
///
/// A class derived from KyObject is allocated and freed inside the library, whichever module says `new` or
/// `delete`: on Windows the library and the application may have heaps of their own. Both operators are safe
/// to call from any thread.
class KYIMGLIB_API KyObject {
public:
    /// Returns null when there is no memory, so that `new T(...)` yields null instead of throwing.
    static void* operator new(std::size_t size) noexcept;
    static void operator delete(void* memory) noexcept;

    /// Construction in memory of the caller's, which class-level operators would otherwise hide.
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}
};

#endif
