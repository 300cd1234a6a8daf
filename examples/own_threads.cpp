// One frame on the threads that an application has anyway: a KyExecutor hands the bands of the image to a pool.

#include <KyImgLib/KyImgLib.h>

#include <condition_variable>
#include <cstdio>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace {

/// Threads that run whatever is posted to them.
class Pool {
public:
    explicit Pool(unsigned count) {
        for (unsigned i = 0; i < count; ++i) threads.emplace_back([this] { Work(); });
    }
    ~Pool() {
        for (std::size_t i = 0; i < threads.size(); ++i) Post({});
        for (std::thread& thread : threads) thread.join();
    }
    void Post(std::function<void()> job) {
        const std::lock_guard<std::mutex> lock(gate);
        jobs.push_back(std::move(job));
        posted.notify_one();
    }

private:
    void Work() {
        for (;;) {
            std::unique_lock<std::mutex> lock(gate);
            posted.wait(lock, [this] { return !jobs.empty(); });
            const std::function<void()> job = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            if (!job) return;
            job();
        }
    }

    std::mutex gate;
    std::condition_variable posted;
    std::deque<std::function<void()>> jobs;
    std::vector<std::thread> threads;
};

/// KyExecutor::run: hands the tasks to the pool and waits for them.
void RunInPool(void* context, std::uint32_t tasks, void (*task)(void*, std::uint32_t), void* state) {
    std::mutex gate;
    std::condition_variable finished;
    std::uint32_t left = tasks;
    for (std::uint32_t i = 0; i < tasks; ++i)
        static_cast<Pool*>(context)->Post([&, i] {
            task(state, i);
            const std::lock_guard<std::mutex> lock(gate);
            if (--left == 0) finished.notify_one();
        });
    std::unique_lock<std::mutex> lock(gate);
    finished.wait(lock, [&] { return left == 0; });
}

}  // namespace

int main() {
    constexpr std::uint32_t width = 1920, height = 1080, threads = 4;
    std::vector<std::uint8_t> frame(width * height * 2), alone(width * height * 3), together(alone.size());
    for (std::size_t i = 0; i < frame.size(); ++i) frame[i] = static_cast<std::uint8_t>(i * 37);
    const KyImage source = {0x00040001, width, height, frame.data(), frame.size(), 0, 0};  // YUV 4:2:2
    const KyImage one = {KY_TYPE_RGB24, width, height, alone.data(), alone.size(), 0, 0};
    const KyImage other = {KY_TYPE_RGB24, width, height, together.data(), together.size(), 0, 0};

    Pool pool(threads);
    KyExecutor executor = {};
    executor.threads = threads;
    executor.context = &pool;
    executor.run = &RunInPool;
    const KyImageConverter converter(source.type, one.type);
    if (converter.Convert(source, one, nullptr) != KY_STATUS_SUCCESS ||
        converter.ConvertParallel(source, other, nullptr, &executor) != KY_STATUS_SUCCESS) {
        std::fprintf(stderr, "%s\n", KyImageConverter::GetError());
        return 1;
    }
    std::printf("%u threads give %s bytes as one\n", threads, alone == together ? "the same" : "other");
    return alone == together ? 0 : 1;
}
