// A pixel type and a converter of an application's own, registered so that every user of the registry finds them.
//
// The type is 10-bit Bayer as camera sensors send it over CSI-2: four pixels in five bytes, first the high eight bits of
// each, then the low two bits of all. The converter makes 8-bit Bayer of it, and a chain of it with a built-in
// converter leads on to RGB24. Images are converted by both like by those of the library.

#include <KyImgLib/KyImgLib.h>

#include <cstdio>
#include <vector>

namespace {

// An index that no built-in type has.
constexpr std::int64_t kBayer10Csi2 = KY_COLOUR_SPACE_RGB | KY_TYPE_PACKED | 0x1001;
constexpr std::int64_t kBayer8 = 0x00020010;

std::uint32_t BytesOf(std::uint32_t pixels) { return (pixels * 5 + 3) / 4; }

class Bayer10Csi2 : public KyPixelType {
public:
    Bayer10Csi2() : KyPixelType(kBayer10Csi2, 10, 2, true) {}

    // The registry keeps a clone, which must be of this class to tell the right size.
    KyPixelType* Clone() const override { return new Bayer10Csi2; }
    std::uint32_t GetBufferSizeFor(std::uint32_t width, std::uint32_t height) const override {
        return BytesOf(width) * height;
    }
};

class Bayer10Csi2ToBayer8 : public KyPixelConverter {
public:
    Bayer10Csi2ToBayer8() : KyPixelConverter(kBayer10Csi2, kBayer8, 2, 1, 4, 1) {}

    using KyPixelConverter::Convert;  // the line form below would hide the others
    using KyPixelConverter::GetSourceByteSize;

    // Conversions ask this how many bytes a source line has.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override { return BytesOf(count); }

    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        for (std::uint32_t x = 0; x < count; ++x) destination[x] = source[x / 4 * 5 + x % 4];
        return KY_STATUS_SUCCESS;
    }
};

/// A frame of an even orange, Bayer pattern RGGB.
std::vector<std::uint8_t> MakeFrame(std::uint32_t width, std::uint32_t height) {
    std::vector<std::uint8_t> frame;
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; x += 4) {
            const std::uint8_t even = y % 2 == 0 ? 240 : 120, odd = y % 2 == 0 ? 120 : 30;
            frame.insert(frame.end(), {even, odd, even, odd, 0xE4});
        }
    return frame;
}

}  // namespace

int main() {
    // The type first: who finds a converter may ask for its types.
    const Bayer10Csi2 type;
    if (KyPixelTypeFactory::RegisterPixelType(kBayer10Csi2, &type, "Bayer RGB 10-bits, CSI-2") != KY_STATUS_SUCCESS)
        return 1;
    // Converters register themselves, and stay registered for good: so they must live as long as the program.
    static Bayer10Csi2ToBayer8 unpack;
    static KyBayerRGB8ToRGB24 demosaic(kBayer8, false, 0, 0);
    static const KyComplexConverter chain(&unpack, &demosaic);

    constexpr std::uint32_t width = 16, height = 4;
    std::vector<std::uint8_t> frame = MakeFrame(width, height), rgb(3 * width * height);
    const KyImage source = {kBayer10Csi2, width, height, frame.data(), frame.size(), 0, 0};
    const KyImage destination = {KY_TYPE_RGB24, width, height, rgb.data(), rgb.size(), 0, 0};
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = KyPixelConverter::FLAG_BAYER_RGGB | KyPixelConverter::FLAG_BAYER_INTERPOLATE;
    const KyImageConverter converter(kBayer10Csi2, KY_TYPE_RGB24);
    if (converter.Convert(source, destination, &conversion) != KY_STATUS_SUCCESS) {
        std::fprintf(stderr, "%s\n", KyImageConverter::GetError());
        return 1;
    }

    std::printf("%s: %u bytes became RGB24, pixel 5,2 is %d %d %d\n",
                KyPixelTypeFactory::GetPixelTypeName(kBayer10Csi2), static_cast<unsigned>(frame.size()),
                rgb[3 * (2 * width + 5)], rgb[3 * (2 * width + 5) + 1], rgb[3 * (2 * width + 5) + 2]);
    return rgb[0] == 240 && rgb[1] == 120 && rgb[2] == 30 ? 0 : 1;
}
