#include <KyImgLib/platform/KyThread.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/syscall.h>
#include <unistd.h>
#endif

std::uint32_t KyThread::GetCurrentThreadID() noexcept {
#if defined(_WIN32)
    return ::GetCurrentThreadId();
#else
    // A system call each time: a value kept for the thread would be wrong in the child of a fork.
    return static_cast<std::uint32_t>(::syscall(SYS_gettid));
#endif
}
