#ifndef KYIMGLIB_KERNELS_COLOUR_YUVRULE_H
#define KYIMGLIB_KERNELS_COLOUR_YUVRULE_H

#include <algorithm>
#include <cstdint>

namespace ky {

struct RGBBytes {
    std::uint8_t red, green, blue;
};

/// The rule that all kernels follow: ITU-R BT.601, limited range, in factors of 1/256. Red may be made of another Y.
inline RGBBytes RGBOfYUV(int y, int u, int v, int yOfRed) {
    const int luma = 298 * (y - 16) + 128, lumaOfRed = 298 * (yOfRed - 16) + 128;
    u -= 128;
    v -= 128;
    return {static_cast<std::uint8_t>(std::clamp((lumaOfRed + 409 * v) >> 8, 0, 255)),
            static_cast<std::uint8_t>(std::clamp((luma - 100 * u - 208 * v) >> 8, 0, 255)),
            static_cast<std::uint8_t>(std::clamp((luma + 516 * u) >> 8, 0, 255))};
}

}  // namespace ky

#endif
