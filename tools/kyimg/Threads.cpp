#include "Threads.h"

#include <system_error>
#include <thread>
#include <vector>

namespace kyimg {

namespace {

/// KyExecutor::run: a thread for each task, of which the calling one takes the first.
void Run(void*, std::uint32_t tasks, void (*task)(void* state, std::uint32_t index), void* state) {
    std::vector<std::jthread> others;
    others.reserve(tasks - 1);
    for (std::uint32_t index = 1; index < tasks; ++index) {
        try {
            others.emplace_back(task, state, index);
        } catch (const std::system_error&) {  // there are no more threads
            task(state, index);
        }
    }
    task(state, 0);
}

}  // namespace

KyExecutor MakeExecutor(std::uint32_t threads) {
    KyExecutor executor = {};
    executor.threads = threads;
    executor.run = &Run;
    return executor;
}

}  // namespace kyimg
