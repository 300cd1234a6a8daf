#include "SmallConversions.h"

#include "Registration.h"

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <vector>

namespace kybench {

namespace {

constexpr std::int64_t kBayer8 = 0x00020010;
constexpr std::int64_t kYUV422 = 0x00040001;
constexpr std::uint32_t kBilinear = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_INTERPOLATE;

constexpr SmallRow kRows[] = {
    {"Small/Gray8ToRGB24/line64", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24, 0, 64, 0},
    {"Small/Gray8ToRGB24/64x1", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24, 0, 64, 1},
    {"Small/Gray8ToRGB24/16x16", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24, 0, 16, 16},
    {"Small/RGB24ToRGB32/line64", KY_TYPE_RGB24, KY_TYPE_RGB32, 0, 64, 0},
    {"Small/RGB24ToRGB32/64x1", KY_TYPE_RGB24, KY_TYPE_RGB32, 0, 64, 1},
    {"Small/RGB24ToRGB32/16x16", KY_TYPE_RGB24, KY_TYPE_RGB32, 0, 16, 16},
    {"Small/YUV422ToRGB24/line64", kYUV422, KY_TYPE_RGB24, 0, 64, 0},
    {"Small/YUV422ToRGB24/64x1", kYUV422, KY_TYPE_RGB24, 0, 64, 1},
    {"Small/YUV422ToRGB24/16x16", kYUV422, KY_TYPE_RGB24, 0, 16, 16},
    {"Small/Bayer8ToRGB24/bilinear/64x1", kBayer8, KY_TYPE_RGB24, kBilinear, 64, 1},
    {"Small/Bayer8ToRGB24/bilinear/16x16", kBayer8, KY_TYPE_RGB24, kBilinear, 16, 16},
};

void Measure(benchmark::State& state, const SmallRow& row) {
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(row.source, row.destination);
    const std::vector<std::uint8_t> source(4096);
    std::vector<std::uint8_t> destination(4096);
    for ([[maybe_unused]] auto _ : state) {
        if (row.height == 0)
            KyPixelConverter_ConvertLine(converter, source.data(), destination.data(), row.width);
        else
            converter->Convert(source.data(), row.width, row.height, destination.data(), row.width, row.height,
                               row.width, row.height, row.flags, 0);
        benchmark::ClobberMemory();
    }
}

}  // namespace

std::span<const SmallRow> AllSmallRows() { return kRows; }

int RegisterSmallConversions(const Options& options) {
    int count = 0;
    for (const SmallRow& row : kRows) {
        if (!std::regex_search(row.name, options.filter)) continue;
        RegisterByCpuTime(row.name, [row](benchmark::State& state) { Measure(state, row); });
        ++count;
    }
    return count;
}

}  // namespace kybench
