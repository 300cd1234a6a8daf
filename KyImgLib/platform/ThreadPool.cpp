#include <KyImgLib/platform/ThreadPoolInternal.h>

#include <algorithm>
#include <thread>

#if defined(__linux__)
#include <sched.h>
#endif

std::uint32_t ky::CoreCount() noexcept {
#if defined(__linux__)
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) == 0)
        return static_cast<std::uint32_t>(std::max(CPU_COUNT(&cores), 1));
#endif
    return std::max(std::thread::hardware_concurrency(), 1u);
}

#if defined(_WIN32)

#include <windows.h>

namespace {

struct Job {
    void (*work)(void*);
    void* context;
};

void CALLBACK RunJob(PTP_CALLBACK_INSTANCE, void* job, PTP_WORK) {
    static_cast<Job*>(job)->work(static_cast<Job*>(job)->context);
}

}  // namespace

/// The system has a pool for every process. Threads of our own could not be ended while the library is unloaded: a thread
/// that ends waits for the lock that unloading holds.
void ky::RunOnThreads(std::uint32_t others, void (*work)(void* context), void* context) noexcept {
    Job job = {work, context};
    const PTP_WORK item = ::CreateThreadpoolWork(&RunJob, &job, nullptr);
    for (std::uint32_t i = 0; item != nullptr && i < others; ++i) ::SubmitThreadpoolWork(item);
    work(context);
    if (item == nullptr) return;
    ::WaitForThreadpoolWorkCallbacks(item, TRUE);  // those that have not begun are cancelled
    ::CloseThreadpoolWork(item);
}

#else

#include <condition_variable>
#include <exception>
#include <mutex>
#include <new>
#include <vector>

#include <pthread.h>
#include <signal.h>

namespace {

class ThreadPool {
public:
    void Run(std::uint32_t others, void (*work)(void*), void* context) {
        Job job = {work, context, others, 0, nullptr};
        Offer(job);
        for (std::uint32_t i = 0; i < others; ++i) offered.notify_one();
        work(context);
        Withdraw(job);
    }

    void Close() {
        std::vector<std::thread> ending;
        {
            const std::lock_guard lock(mutex);
            isClosed = true;
            ending.swap(threads);
        }
        offered.notify_all();
        for (std::thread& thread : ending) thread.join();
    }

private:
    struct Job {
        void (*work)(void*);
        void* context;
        std::uint32_t wanted, running;  ///< threads: that may still take it, and that have it now
        Job* next;
    };

    void Offer(Job& job) {
        const std::lock_guard lock(mutex);
        StartThreads(job.wanted);
        LeaveCoreToCaller();
        job.next = jobs;
        jobs = &job;
    }

    /// No other thread knows the job after this.
    void Withdraw(Job& job) {
        std::unique_lock lock(mutex);
        Remove(job);
        returned.wait(lock, [&] { return job.running == 0; });
    }

    void Remove(const Job& job) {
        Job** at = &jobs;
        while (*at != nullptr && *at != &job) at = &(*at)->next;
        if (*at != nullptr) *at = job.next;
    }

    /// As many in all, or as many as there can be.
    void StartThreads(std::uint32_t count) {
        if (isClosed || threads.size() >= count) return;
        // Signals are for the application's threads, but those of a fault are for the one that has it.
        sigset_t blocked, before;
        sigfillset(&blocked);
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS}) sigdelset(&blocked, fault);
        pthread_sigmask(SIG_SETMASK, &blocked, &before);
        try {
            while (threads.size() < count) threads.emplace_back([this] { TakeJobs(); });
        } catch (const std::exception&) {
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    /// Some schedulers wake a thread on the core of the one that wakes it, so that other cores can sleep. It would begin when
    /// the caller is done with everything. (Where several callers share the threads, the first one's cores stay.)
    void LeaveCoreToCaller() {
#if defined(__linux__)
        cpu_set_t others;
        const int core = sched_getcpu();
        if (threads.empty() || jobs != nullptr || core < 0 || sched_getaffinity(0, sizeof others, &others) != 0) return;
        CPU_CLR(static_cast<unsigned>(core), &others);
        if (CPU_COUNT(&others) == 0 || (placed == threads.size() && CPU_EQUAL(&others, &cores))) return;
        for (std::thread& thread : threads) pthread_setaffinity_np(thread.native_handle(), sizeof others, &others);
        cores = others;
        placed = threads.size();
#endif
    }

    void TakeJobs() {
        std::unique_lock lock(mutex);
        for (;;) {
            offered.wait(lock, [this] { return isClosed || jobs != nullptr; });
            if (isClosed) return;
            Job& job = *jobs;
            ++job.running;
            if (--job.wanted == 0) Remove(job);
            lock.unlock();
            job.work(job.context);
            lock.lock();
            if (--job.running == 0) returned.notify_all();
        }
    }

    std::mutex mutex;
    std::condition_variable offered, returned;
    std::vector<std::thread> threads;
    Job* jobs = nullptr;
    bool isClosed = false;
#if defined(__linux__)
    cpu_set_t cores;  ///< that the first `placed` threads may run on
    std::size_t placed = 0;
#endif
};

/// Never destroyed: conversions may go on while the process ends, without threads of the library then.
alignas(ThreadPool) unsigned char memory[sizeof(ThreadPool)];
ThreadPool& ThePool() { return *std::launder(reinterpret_cast<ThreadPool*>(memory)); }

/// Makes the pool while the library is loaded: a fork must not happen meanwhile. The child of a fork has none of its parent's threads, and may have got the pool
/// while another thread changed it: it begins with a new one. What its parent's held stays unused.
struct Life {
    Life() {
        Begin();
        pthread_atfork(nullptr, nullptr, &Begin);
    }
    ~Life() { ThePool().Close(); }
    static void Begin() { ::new (memory) ThreadPool; }
};
const Life life;

}  // namespace

void ky::RunOnThreads(std::uint32_t others, void (*work)(void* context), void* context) noexcept {
    ThePool().Run(others, work, context);
}

#endif
