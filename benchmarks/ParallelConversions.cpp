#include "ParallelConversions.h"

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

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

void Measure(benchmark::State& state, const ParallelRow& row, bool parallel) {
    KyImage source = ImageOf(row.source, row), destination = ImageOf(row.destination, row);
    std::vector<std::uint8_t> from(source.size + 64, 100), to(destination.size + 64);
    const auto aligned = [](std::vector<std::uint8_t>& bytes) {
        return bytes.data() + (64 - reinterpret_cast<std::uintptr_t>(bytes.data()) % 64) % 64;
    };
    source.data = aligned(from);
    destination.data = aligned(to);
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = row.flags;

    const std::uint32_t level = KyCpuLevel::GetActive();
    if (row.isScalar) KyCpuLevel::SetActive(0);
    for ([[maybe_unused]] auto _ : state) {
        const std::uint32_t status = parallel ? KyImage_ConvertParallel(&source, &destination, &conversion, nullptr)
                                              : KyImage_Convert(&source, &destination, &conversion);
        if (status != KY_STATUS_SUCCESS) state.SkipWithError(KyImage_GetError());
        benchmark::ClobberMemory();
    }
    KyCpuLevel::SetActive(level);
}

}  // namespace

std::span<const ParallelRow> AllParallelRows() { return kRows; }

int RegisterParallelConversions(const Options& options) {
    int count = 0;
    for (const ParallelRow& row : kRows) {
        if (!std::regex_search(row.name, options.filter)) continue;
        for (const bool parallel : {false, true})
            benchmark::RegisterBenchmark(row.NameOf(parallel).c_str(), [row, parallel](benchmark::State& state) {
                Measure(state, row, parallel);
            })->UseRealTime();
        ++count;
    }
    return count;
}

}  // namespace kybench
