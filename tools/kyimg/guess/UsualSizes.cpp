#include "UsualSizes.h"

#include <algorithm>
#include <cmath>

namespace kyimg {

namespace {

constexpr UsualSize kSizes[] = {
    {160, 120},   {320, 240},   {320, 256},   {384, 288},   {512, 512},   {640, 360},   {640, 400},   {640, 480},
    {640, 512},   {656, 492},   {659, 494},   {720, 480},   {720, 540},   {720, 576},   {728, 544},   {752, 480},
    {768, 512},   {768, 576},   {780, 580},   {800, 480},   {800, 600},   {808, 608},   {816, 616},   {960, 540},
    {960, 600},   {1024, 768},  {1024, 1024}, {1032, 776},  {1034, 779},  {1280, 720},  {1280, 800},  {1280, 960},
    {1280, 1024}, {1288, 728},  {1288, 964},  {1292, 964},  {1296, 966},  {1296, 972},  {1388, 1038}, {1392, 1040},
    {1440, 1080}, {1456, 1088}, {1600, 1200}, {1624, 1234}, {1624, 1240}, {1628, 1236}, {1640, 1232}, {1920, 1080},
    {1920, 1200}, {1936, 1096}, {1936, 1216}, {2040, 1086}, {2046, 1086}, {2048, 1088}, {2048, 1536}, {2048, 2048},
    {2056, 1542}, {2064, 1544}, {2304, 1296}, {2448, 2048}, {2448, 2050}, {2464, 2056}, {2472, 2064}, {2560, 1440},
    {2560, 1600}, {2560, 1920}, {2560, 2048}, {2592, 1536}, {2592, 1944}, {2600, 2160}, {2688, 1520}, {2736, 1824},
    {2840, 2840}, {2856, 2848}, {3072, 2048}, {3088, 2064}, {3088, 2076}, {3096, 2080}, {3208, 2200}, {3280, 2464},
    {3296, 2472}, {3376, 2704}, {3664, 2748}, {3840, 2160}, {3840, 2748}, {3856, 2764}, {4000, 3000}, {4024, 3036},
    {4032, 3040}, {4056, 3040}, {4096, 2160}, {4096, 2168}, {4096, 3000}, {4096, 3072}, {4096, 4096}, {4112, 3008},
    {4112, 2176}, {4504, 4504}, {4512, 4512}, {4608, 2592}, {4896, 3264}, {5120, 4096}, {5120, 5120}, {5320, 3032},
    {5320, 4600}, {5328, 3040}, {5328, 4608}, {5472, 3648}, {6464, 4852}, {6576, 4384}, {6600, 4400}, {7920, 6004},
    {8192, 4320}, {9344, 7000}, {9568, 6380},
};

constexpr std::uint32_t kHeaders[] = {8,    12,   16,   20,   24,   32,    36,    40,    44,    48,    54,   56,
                                      64,   72,   80,   96,   100,  112,   120,   128,   160,   192,   200,  256,
                                      320,  384,  400,  500,  512,  640,   768,   1000,  1024,  1536,  2048, 2880,
                                      3072, 4096, 5760, 6144, 8192, 10240, 12288, 16384, 20480, 32768, 65536};

double ShapePenalty(double ratio) {
    constexpr double kShapes[] = {1, 1.25, 4.0 / 3, 1.5, 1.6, 16.0 / 9};
    for (const double shape : kShapes)
        if (std::abs(ratio / shape - 1) < 0.02) return 0;
    if (ratio >= 0.95 && ratio <= 2.4) return 1;
    if (ratio >= 0.6 && ratio <= 4) return 4;
    return ratio >= 0.3 && ratio <= 10 ? 9 : 16;
}

double AlignmentPenalty(std::uint64_t side) {
    return side % 16 == 0 ? 0 : side % 8 == 0 ? 0.5 : side % 4 == 0 ? 1 : side % 2 == 0 ? 1.5 : 2.5;
}

}  // namespace

std::span<const UsualSize> AllUsualSizes() { return kSizes; }
std::span<const std::uint32_t> AllUsualHeaders() { return kHeaders; }

double SizePenalty(std::uint64_t width, std::uint64_t height) {
    const auto matches = [=](const UsualSize& size) { return size.width == width && size.height == height; };
    if (std::ranges::any_of(kSizes, matches)) return 0;
    const double ratio = static_cast<double>(width) / static_cast<double>(height);
    return 3 + ShapePenalty(ratio) + AlignmentPenalty(width) + AlignmentPenalty(height);
}

double HeaderPenalty(std::uint64_t bytes) {
    if (bytes == 0) return 0;
    return std::ranges::find(kHeaders, bytes) != std::end(kHeaders) ? 3 : bytes % 16 == 0 ? 5 : bytes % 4 == 0 ? 6 : 8;
}

}  // namespace kyimg
