#include <KyImgLib/images/ConvertInternal.h>

#include <KyImgLib/platform/KyCpuLevel.h>
#include <KyImgLib/platform/RefusalInternal.h>
#include <KyImgLib/platform/ThreadPoolInternal.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <vector>

namespace ky {

namespace {

/// A conversion in bands, which any threads convert at once.
class Bands {
public:
    Bands(const CheckedConversion& checkedConversion, std::uint32_t wanted)
        : checked(checkedConversion),
          steps((checked.lineEnd - checked.firstLine + std::uint64_t{checked.step} - 1) / checked.step),
          count(static_cast<std::uint32_t>(std::clamp<std::uint64_t>(wanted, 1, steps))) {}

    std::uint32_t Count() const { return count; }

    void Convert(std::uint32_t index) noexcept {
        const std::uint32_t status = ConvertBand(checked, BorderOf(index), BorderOf(index + 1));
        std::uint32_t none = KY_STATUS_SUCCESS;
        if (status != KY_STATUS_SUCCESS && failure.compare_exchange_strong(none, status))
            std::strcpy(text, LastRefusal());  // which is this thread's
    }

    /// Once all are done.
    std::uint32_t Status() const {
        const std::uint32_t status = failure;
        return status == KY_STATUS_SUCCESS ? status : Refusal(status) << text;
    }

private:
    std::uint32_t BorderOf(std::uint64_t index) const {
        const std::uint64_t line = checked.firstLine + steps * index / count * checked.step;
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(line, checked.lineEnd));
    }

    const CheckedConversion& checked;
    const std::uint64_t steps;
    const std::uint32_t count;
    std::atomic<std::uint32_t> failure{KY_STATUS_SUCCESS};
    char text[kRefusalSize] = "";
};

/// Threads that make a conversion faster, up to `limit` and to the number of cores; 0: no limit. It takes some time to start one.
std::uint32_t ThreadsThatPay(const CheckedConversion& checked, std::uint32_t limit) {
    constexpr std::uint64_t kScalarBytes = 128 << 10, kVectorBytes = 6 << 20;
    const std::uint64_t line = checked.pair->source.LineBytesOfPlanes(checked.source.width) +
                               checked.pair->destination.LineBytesOfPlanes(checked.source.width);
    const std::uint64_t bytes = line * (checked.lineEnd - checked.firstLine);
    const std::uint64_t threads = bytes / (KyCpuLevel::GetActive() == 0 ? kScalarBytes : kVectorBytes);
    if (threads <= 1 || !checked.hasKernels) return 1;
    const std::uint32_t cores = CoreCount();
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(threads, limit == 0 ? cores : std::min(cores, limit)));
}

/// The calling thread and others take one band after the other, so that nobody waits for a thread that starts late.
std::uint32_t ConvertOnOwnThreads(const CheckedConversion& checked, std::uint32_t limit) {
    constexpr std::uint32_t kBandsOfThread = 16;
    const std::uint32_t threads = ThreadsThatPay(checked, limit);
    if (threads == 1) return ConvertBand(checked, checked.firstLine, checked.lineEnd);

    struct {
        Bands bands;
        std::atomic<std::uint32_t> next{0};
    } shared = {{checked, threads * kBandsOfThread}};
    const auto takeBands = [](void* context) {
        auto& [bands, next] = *static_cast<decltype(shared)*>(context);
        for (std::uint32_t index; (index = next.fetch_add(1)) < bands.Count();) bands.Convert(index);
    };
    RunOnThreads(threads - 1, takeBands, &shared);
    return shared.bands.Status();
}

/// What an application's threads are given to do.
struct Task {
    Bands bands;
    std::vector<std::atomic<bool>> started;
    std::atomic<std::uint32_t> done{0};

    Task(const CheckedConversion& checked, std::uint32_t wanted) : bands(checked, wanted), started(bands.Count()) {}

    static void Run(void* state, std::uint32_t index) {
        auto& task = *static_cast<Task*>(state);
        if (index >= task.started.size() || task.started[index].exchange(true)) return;
        task.bands.Convert(index);
        ++task.done;
    }
};

std::uint32_t ConvertOnExecutor(const CheckedConversion& checked, const KyExecutor& executor) {
    Task task(checked, executor.threads == 0 ? CoreCount() : executor.threads);
    const std::uint32_t count = task.bands.Count();
    executor.run(executor.context, count, &Task::Run, &task);
    if (const std::uint32_t done = task.done; done != count)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "executor.run returned after " << done << " of " << count << " tasks: expected all of them";
    return task.bands.Status();
}

}  // namespace

std::uint32_t ConvertBands(const CheckedConversion& checked, const KyExecutor* executor) noexcept {
    return Guard([&] {
        if (executor != nullptr && executor->run != nullptr) return ConvertOnExecutor(checked, *executor);
        return ConvertOnOwnThreads(checked, executor == nullptr ? 0 : executor->threads);
    });
}

}  // namespace ky
