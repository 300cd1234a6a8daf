#include "ParallelConversions.h"

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <barrier>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <sched.h>
#endif

namespace kybench {

namespace {

constexpr std::int64_t kBayer8 = 0x00020010, kYUV422 = 0x00040001;
constexpr std::uint32_t kBilinear = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_INTERPOLATE;

constexpr ParallelRow kRows[] = {
    {"Parallel/scalar/Bayer8ToRGB24/bilinear/640x480", kBayer8, KY_TYPE_RGB24, kBilinear, 640, 480, true},
    {"Parallel/scalar/Bayer8ToRGB24/bilinear/1920x1080", kBayer8, KY_TYPE_RGB24, kBilinear, 1920, 1080, true},
    {"Parallel/scalar/YUV422ToRGB24/1920x1080", kYUV422, KY_TYPE_RGB24, 0, 1920, 1080, true},
    {"Parallel/Bayer8ToRGB24/bilinear/640x480", kBayer8, KY_TYPE_RGB24, kBilinear, 640, 480, false},
    {"Parallel/Bayer8ToRGB24/bilinear/1920x1080", kBayer8, KY_TYPE_RGB24, kBilinear, 1920, 1080, false},
    {"Parallel/Bayer8ToRGB24/bilinear/4096x3072", kBayer8, KY_TYPE_RGB24, kBilinear, 4096, 3072, false},
    {"Parallel/Gray8ToRGB32/1920x1080", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB32, 0, 1920, 1080, false},
    {"Parallel/Gray8ToRGB32/4096x3072", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB32, 0, 4096, 3072, false},
};

KyImage ImageOf(std::int64_t type, const ParallelRow& row) {
    KyImage image = {};
    image.type = type;
    image.width = row.width;
    image.height = row.height;
    KyImage_GetSize(&image, &image.size);
    return image;
}

/// A source and a destination, and what to do with them.
class Images {
public:
    explicit Images(const ParallelRow& row)
        : source(ImageOf(row.source, row)), destination(ImageOf(row.destination, row)), from(source.size + 64, 100),
          to(destination.size + 64) {
        source.data = Aligned(from);
        destination.data = Aligned(to);
        conversion.structSize = sizeof conversion;
        conversion.flags = row.flags;
    }

    std::uint32_t Convert(bool parallel) {
        return parallel ? KyImage_ConvertParallel(&source, &destination, &conversion, nullptr)
                        : KyImage_Convert(&source, &destination, &conversion);
    }

private:
    static std::uint8_t* Aligned(std::vector<std::uint8_t>& bytes) {
        return bytes.data() + (64 - reinterpret_cast<std::uintptr_t>(bytes.data()) % 64) % 64;
    }

    KyImage source, destination;
    std::vector<std::uint8_t> from, to;
    KyConversion conversion = {};
};

/// Keeps a thread on one of the cores that it may use.
class CoreLock {
public:
    explicit CoreLock([[maybe_unused]] std::uint32_t number) {
#if defined(__linux__)
        sched_getaffinity(0, sizeof before, &before);
        cpu_set_t one;
        CPU_ZERO(&one);
        for (std::size_t core = 0; core < CPU_SETSIZE; ++core)
            if (CPU_ISSET(core, &before) && number-- == 0) CPU_SET(core, &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    ~CoreLock() { sched_setaffinity(0, sizeof before, &before); }

private:
    cpu_set_t before;
#else
    }
#endif
};

void MeasureApart(benchmark::State& state, const ParallelRow& row) {
    const std::uint32_t cores = CoreCount();
    std::barrier together(cores);
    bool isOver = false;
    std::vector<std::thread> others;
    for (std::uint32_t core = 1; core < cores; ++core)
        others.emplace_back([&, core] {
            const CoreLock lock(core);
            Images images(row);
            for (;;) {
                together.arrive_and_wait();
                if (isOver) return;
                images.Convert(false);
                together.arrive_and_wait();
            }
        });
    const CoreLock lock(0);
    Images images(row);
    for ([[maybe_unused]] auto _ : state) {
        together.arrive_and_wait();
        images.Convert(false);
        together.arrive_and_wait();
    }
    isOver = true;
    together.arrive_and_wait();
    for (std::thread& thread : others) thread.join();
}

void Measure(benchmark::State& state, const ParallelRow& row, Threads threads) {
    const std::uint32_t level = KyCpuLevel::GetActive();
    if (row.isScalar) KyCpuLevel::SetActive(0);
    if (threads == Threads::kApart) {
        MeasureApart(state, row);
    } else {
        Images images(row);
        for ([[maybe_unused]] auto _ : state) {
            if (images.Convert(threads == Threads::kAll) != KY_STATUS_SUCCESS) state.SkipWithError(KyImage_GetError());
            benchmark::ClobberMemory();
        }
    }
    KyCpuLevel::SetActive(level);
}

}  // namespace

std::span<const ParallelRow> AllParallelRows() { return kRows; }

std::uint32_t CoreCount() { return std::max(std::thread::hardware_concurrency(), 1u); }

int RegisterParallelConversions(const Options& options) {
    int count = 0;
    for (const ParallelRow& row : kRows) {
        if (!std::regex_search(row.name, options.filter)) continue;
        for (const Threads threads : {Threads::kOne, Threads::kAll, Threads::kApart})
            benchmark::RegisterBenchmark(row.NameOf(threads).c_str(), [row, threads](benchmark::State& state) {
                Measure(state, row, threads);
            })->UseRealTime();
        ++count;
    }
    return count;
}

}  // namespace kybench
