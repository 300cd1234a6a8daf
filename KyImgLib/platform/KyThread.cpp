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
    // The system call costs more than the rest of a small conversion's set-up, and the answer never changes
    // for a thread. A plain integer needs no destructor, which an unloaded library could not run.
    static thread_local std::uint32_t id = 0;
    if (id == 0) id = static_cast<std::uint32_t>(::syscall(SYS_gettid));
    return id;
#endif
}
