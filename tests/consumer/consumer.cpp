// Converts a small mosaic through the installed classes, with a class of its own derived from one of theirs.
#include <KyImgLib/KyImgLib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr std::int64_t kOwnType = 0x2FFF0;

// Linking this needs the base's virtual table and type information, not just its functions.
class OwnType : public KyPixelType {
public:
    OwnType() : KyPixelType(kOwnType, 24, 3, false) {}
};

}  // namespace

int main() {
    const std::uint32_t width = 4;
    const std::uint32_t height = 2;
    // R G R G / G B G B of an evenly coloured scene: red 200, green 100, blue 50.
    const std::vector<std::uint8_t> mosaic = {200, 100, 200, 100, 100, 50, 100, 50};
    std::vector<std::uint8_t> rgb(width * height * 3);

    KyRGBFilter halfRed(8);
    halfRed.SetMultipliers(0.5, 1.0, 1.0);

    const KyBayerRGB8 source;
    const KyRGB24 destination;
    const KyPixelConverter* converter = KyPixelTypeFactory::FindConverter(source.GetTypeID(), destination.GetTypeID());
    if (!converter) {
        std::puts("no converter from Bayer 8 to RGB 24");
        return 1;
    }
    const std::uint32_t status =
        converter->Convert(halfRed, mosaic.data(), width, height, rgb.data(), width, height, width, height,
                           KyPixelConverter::FLAG_BAYER_RGGB | KyPixelConverter::FLAG_BAYER_INTERPOLATE, 0);
    for (std::size_t i = 0; i < rgb.size(); i += 3) {
        if (status != KY_STATUS_SUCCESS || rgb[i] != 100 || rgb[i + 1] != 100 || rgb[i + 2] != 50) {
            std::printf("status %u, pixel %zu is %d, %d, %d\n", status, i / 3, rgb[i], rgb[i + 1], rgb[i + 2]);
            return 1;
        }
    }

    const OwnType type;
    KyPixelTypeFactory::RegisterPixelType(kOwnType, &type, "own");
    if (!KyPixelTypeFactory::HasPixelType(kOwnType)) {
        std::puts("a type of the program's own could not be registered");
        return 1;
    }
    return 0;
}
