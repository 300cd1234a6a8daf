#ifndef KYIMGLIB_PLATFORM_KYTHREAD_H
#define KYIMGLIB_PLATFORM_KYTHREAD_H

#include <KyImgLib/platform/KyExport.h>

#include <cstdint>

/// The calling thread.
class KYIMGLIB_API KyThread {
public:
    /// The operating system's ID of the calling thread: unique among the threads that are alive in this process.
    static std::uint32_t GetCurrentThreadID() noexcept;
};

#endif
