#include <KyImgLib/platform/KyThread.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

#if defined(_WIN32)

std::uint32_t KyThread::GetCurrentThreadID() noexcept { return ::GetCurrentThreadId(); }

#else

namespace {

// Asking the system each time would cost more than a small conversion. 0 while not known.
thread_local std::uint32_t currentID = 0;

/// The one thread of a forked process has another ID than the thread that it comes from.
const int forkHandler = ::pthread_atfork(nullptr, nullptr, [] { currentID = 0; });

}  // namespace

std::uint32_t KyThread::GetCurrentThreadID() noexcept {
    // Without the handler nothing may be kept.
    if (currentID == 0 || forkHandler != 0) currentID = static_cast<std::uint32_t>(::syscall(SYS_gettid));
    return currentID;
}

#endif
