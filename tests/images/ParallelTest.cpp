// One image on several threads: those of the library, and those of an application.
#include <tests/images/ImageCase.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Emulation.h>
#include <tests/support/Sanitizers.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <functional>

#if defined(__linux__)
#include <filesystem>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

using Role = GuardedImage::Role;

/// What an application's executor does with its tasks.
using Behaviour = std::function<void(std::uint32_t tasks, const std::function<void(std::uint32_t)>& task)>;

class Parallel : public testing::Test {
protected:
    std::uint32_t Convert(const Behaviour& behaviour, std::uint32_t threads, const KyConversion* conversion = nullptr) {
        KyExecutor executor = {};
        executor.threads = threads;
        executor.context = const_cast<Behaviour*>(&behaviour);
        executor.run = [](void* context, std::uint32_t tasks, void (*task)(void*, std::uint32_t), void* state) {
            (*static_cast<Behaviour*>(context))(tasks, [&](std::uint32_t index) { task(state, index); });
        };
        return KyImage_ConvertParallel(&source.image, &destination.image, conversion, &executor);
    }

    Lines Expected(std::uint32_t flags = 0) {
        return ConvertLines(*KyPixelTypeFactory::FindConverter(kBayer8, KY_TYPE_RGB24), source.Read(),
                            source.image.width, source.image.height, flags, nullptr);
    }

    support::Random random{41};
    GuardedImage source{kBayer8, 60, 40, Role::kSource, random};
    GuardedImage destination{KY_RGB24, 60, 40, Role::kDestination, random};
};

TEST_F(Parallel, ExecutorRunsTasksOnItsThreadsInAnyOrder) {
    const std::vector<std::uint8_t> expected = destination.MemoryWith(Expected());
    std::uint32_t tasksGiven = 0;
    const Behaviour backwardsOnThreads = [&](std::uint32_t tasks, const auto& task) {
        tasksGiven = tasks;
        support::RunOnThreads(static_cast<int>(tasks), [&](int i) { task(tasks - 1 - static_cast<std::uint32_t>(i)); });
    };
    std::uint32_t step = 0;
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_GetBandStep(&source.image, &destination.image, nullptr, &step));
    const std::uint32_t steps = (40 + step - 1) / step;
    for (const std::uint32_t threads : {1u, 3u, 7u, 40u, 0xFFFFFFFFu}) {
        std::fill_n(destination.image.data, 1, std::uint8_t{0});
        EXPECT_EQ(KY_STATUS_SUCCESS, Convert(backwardsOnThreads, threads)) << KyImage_GetError();
        EXPECT_EQ(std::min(threads, steps), tasksGiven);
        EXPECT_EQ(expected, destination.Memory());
    }
    EXPECT_EQ(KY_STATUS_SUCCESS, Convert(backwardsOnThreads, 0));
    EXPECT_EQ(std::min(std::max(std::thread::hardware_concurrency(), 1u), steps), tasksGiven);
}

TEST_F(Parallel, ExecutorThatRunsTooFewTasksIsRefused) {
    for (const Behaviour& faulty :
         {Behaviour([](std::uint32_t, const auto&) {}), Behaviour([](std::uint32_t tasks, const auto&task) {
              for (std::uint32_t i = 1; i < tasks; ++i) task(i), task(i), task(tasks + i);
          })}) {
        EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, Convert(faulty, 3));
        EXPECT_NE(std::string::npos, std::string(KyImage_GetError()).find("tasks: expected all of them"));
    }
    const Behaviour twice = [](std::uint32_t tasks, const auto& task) {
        for (std::uint32_t i = 0; i < tasks; ++i) task(i), task(i), task(tasks + i);
    };
    const std::vector<std::uint8_t> expected = destination.MemoryWith(Expected());
    EXPECT_EQ(KY_STATUS_SUCCESS, Convert(twice, 3)) << "but not too many";
    EXPECT_EQ(expected, destination.Memory());
}

TEST_F(Parallel, ExecutorIsNotRunForWhatIsRefusedOrEmpty) {
    bool hasRun = false;
    const Behaviour behaviour = [&](std::uint32_t, const auto&) { hasRun = true; };
    KyConversion conversion = Conversion(0, nullptr, 41);
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, Convert(behaviour, 2, &conversion));
    conversion.firstLine = 40;
    EXPECT_EQ(KY_STATUS_SUCCESS, Convert(behaviour, 2, &conversion));
    EXPECT_FALSE(hasRun);
}

/// An image that is large enough for several threads at the scalar level, and what one thread makes of it.
struct LargeImage {
    LargeImage(std::int64_t type, std::uint32_t seed)
        : random(seed), source(type, 1001, 700, Role::kSource, random),
          destination(KY_RGB24_PLANAR, 1001, 700, Role::kDestination, random) {
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&source.image, &destination.image, &conversion));
        expected = destination.Memory();
    }

    bool ConvertsAlike(const KyExecutor* executor = nullptr) {
        std::memset(destination.image.data, 0, 1000);
        return KyImage_ConvertParallel(&source.image, &destination.image, &conversion, executor) == KY_STATUS_SUCCESS &&
               expected == destination.Memory();
    }

    support::Random random;
    GuardedImage source, destination;
    const KyConversion conversion = Conversion(KY_FLAG_BAYER_INTERPOLATE);
    std::vector<std::uint8_t> expected;
};

TEST(ParallelImages, ThreadsOfTheLibraryGiveTheBytesOfOne) {
    const std::int64_t types[] = {kBayer8, 0x00410003, 0x00210001};
    for (const std::uint32_t level : {0u, KyCpuLevel::GetActive()}) {
        const support::ScopedCpuLevel active(level);
        support::RunOnThreads(3, [&](int i) {
            LargeImage image(types[i], 42);
            for (int repetition = 0; repetition < 3; ++repetition) EXPECT_TRUE(image.ConvertsAlike());
            for (const std::uint32_t threads : {0u, 1u, 2u, 1000u}) {
                const KyExecutor limited = {threads, nullptr, nullptr};
                EXPECT_TRUE(image.ConvertsAlike(&limited)) << threads;
            }
        });
    }
}

#if defined(__linux__) && !defined(__SANITIZE_THREAD__)
/// The fork may happen while another thread has the lock of the library's threads, which do not live in the child.
TEST(ParallelImages, ChildOfAForkHasThreadsOfItsOwn) {
    if (support::IsEmulated()) GTEST_SKIP() << "a child that qemu-user forks from several threads hangs";
    const support::ScopedCpuLevel scalar(0);
    LargeImage image(kBayer8, 43), others(kBayer8, 44);
    std::atomic<bool> isOver{false};
    std::thread busy([&] {
        while (!isOver) EXPECT_TRUE(others.ConvertsAlike());
    });
    for (int i = 0; i < 10; ++i) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            alarm(60);
            const bool isAlike = image.ConvertsAlike();
            const auto threads = std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
            _exit(!isAlike ? 1 : threads < 2 && std::thread::hardware_concurrency() > 1 ? 2 : 0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(0, status);
    }
    isOver = true;
    busy.join();
}
#endif

}  // namespace
