// convert_frame FRAME PICTURE: turns a raw 8-bit Bayer frame of 1280x960 pixels into a PPM file.

#include <KyImgLib/KyImgLib.h>

#include <fstream>
#include <vector>

int main(int argc, char** argv) {
    constexpr std::uint32_t width = 1280, height = 960;
    std::vector<char> mosaic(width * height), picture(3 * width * height);
    if (argc != 3 || !std::ifstream(argv[1], std::ios::binary).read(mosaic.data(), width * height)) return 1;

    const KyPixelConverter* converter = KyPixelTypeFactory::FindConverter(0x00020010, KY_TYPE_RGB24);
    KyRGBFilter whiteBalance(8);
    whiteBalance.SetMultipliers(1.9, 1.0, 1.6);
    converter->Convert(whiteBalance, reinterpret_cast<const std::uint8_t*>(mosaic.data()), width, height,
                       reinterpret_cast<std::uint8_t*>(picture.data()), width, height, width, height,
                       KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_INTERPOLATE, 0);

    std::ofstream file(argv[2], std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n";
    return file.write(picture.data(), 3 * width * height).flush() ? 0 : 1;
}
