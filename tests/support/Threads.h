#ifndef KYIMGLIB_TESTS_SUPPORT_THREADS_H
#define KYIMGLIB_TESTS_SUPPORT_THREADS_H

#include <latch>
#include <thread>
#include <vector>

namespace support {

/// Runs `work(0)` to `work(count - 1)` on threads of their own that all start together; waits for all.
template <typename Work>
void RunOnThreads(int count, Work work) {
    std::latch start(count);
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back([&start, &work, i] {
            start.arrive_and_wait();
            work(i);
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace support

#endif
