#ifndef KYIMGLIB_TESTS_SUPPORT_THREADS_H
#define KYIMGLIB_TESTS_SUPPORT_THREADS_H

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace support {

/// Lets nobody on before all are there. Instead of std::latch, which with g++ 12 for Windows now and then wakes nobody: where
/// there is no futex, its wait looks at the counter before it takes the lock under which it sleeps.
class MeetingPoint {
public:
    explicit MeetingPoint(int count) : missing(count) {}

    void Wait() {
        std::unique_lock lock(gate);
        if (--missing == 0) allThere.notify_all();
        allThere.wait(lock, [this] { return missing == 0; });
    }

private:
    std::mutex gate;
    std::condition_variable allThere;
    int missing;
};

/// Runs `work(0)` to `work(count - 1)` on threads of their own that all start together; waits for all.
template <typename Work>
void RunOnThreads(int count, Work work) {
    MeetingPoint start(count);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back([&start, &work, i] {
            start.Wait();
            work(i);
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace support

#endif
