// convert_frame FRAME PICTURE: turns a raw 8-bit Bayer frame of 1280x960 pixels into a PPM file.
//
// Shows the usual conversion from C++: two images, a converter that is looked up once for all frames, bilinear demosaicing
// with white balance, on all cores.

#include <KyImgLib/KyImgLib.h>

#include <cstdio>
#include <fstream>
#include <vector>

int main(int argc, char** argv) {
    constexpr std::uint32_t width = 1280, height = 960;
    std::vector<std::uint8_t> mosaic(width * height), rgb(3 * width * height);
    std::ifstream input(argc == 3 ? argv[1] : "", std::ios::binary);
    if (!input.read(reinterpret_cast<char*>(mosaic.data()), width * height)) {
        std::fprintf(stderr, "usage: convert-frame FRAME PICTURE, a frame of %u bytes\n", width * height);
        return 1;
    }

    // Type, width and height, bytes and how many there are; strides of 0: lines without padding.
    const KyImage frame = {0x00020010, width, height, mosaic.data(), mosaic.size(), 0, 0};
    const KyImage picture = {KY_TYPE_RGB24, width, height, rgb.data(), rgb.size(), 0, 0};
    KyRGBFilter whiteBalance(8);
    whiteBalance.SetMultipliers(1.9, 1.0, 1.6);
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_INTERPOLATE;
    conversion.filter = &whiteBalance;

    const KyImageConverter converter(frame.type, picture.type);
    if (converter.ConvertParallel(frame, picture, &conversion, nullptr) != KY_STATUS_SUCCESS) {
        std::fprintf(stderr, "%s\n", KyImageConverter::GetError());
        return 1;
    }

    std::ofstream output(argv[2], std::ios::binary);
    output << "P6\n" << width << ' ' << height << "\n255\n";
    return output.write(reinterpret_cast<const char*>(rgb.data()), 3 * width * height).flush() ? 0 : 1;
}
