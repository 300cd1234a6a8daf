// From a frame grabber's buffer to an image of a vision library, both with padding after each line, and without a copy.
//
// The grabber starts each line of packed 12-bit Bayer at a multiple of 256 bytes. The vision library's images (Image has
// the fields of OpenCV's cv::Mat) have three bytes a pixel, blue first, and lines at multiples of 16 bytes.

#include <KyImgLib/KyImgLib.h>

#include <cstdio>
#include <vector>

namespace {

constexpr std::int64_t kBayer12Packed = 0x00420012;
constexpr std::uint32_t kWidth = 1301, kHeight = 7;

std::size_t RoundUp(std::size_t bytes, std::size_t step) { return (bytes + step - 1) / step * step; }

struct Image {
    int rows, cols;
    std::uint8_t* data;
    std::size_t step;
};

/// A gray scene: two samples of 0xABC in three bytes; padding is 0.
std::vector<std::uint8_t> GrabFrame(std::size_t lineBytes, std::size_t stride) {
    std::vector<std::uint8_t> frame(stride * kHeight);
    for (std::size_t y = 0; y < kHeight; ++y)
        for (std::size_t i = 0; i < lineBytes; ++i) frame[y * stride + i] = i % 3 == 1 ? 0xCC : 0xAB;
    return frame;
}

}  // namespace

int main() {
    const std::size_t pairs = (kWidth + 1) / 2, sourceStride = RoundUp(3 * pairs, 256);
    std::vector<std::uint8_t> frame = GrabFrame(3 * pairs, sourceStride);
    const KyImage source = {kBayer12Packed, kWidth, kHeight, frame.data(), frame.size(), sourceStride, 0};

    const std::size_t step = RoundUp(3 * kWidth, 16);
    std::vector<std::uint8_t> pixels(step * kHeight);
    const Image image = {kHeight, kWidth, pixels.data(), step};
    const std::size_t destinationBytes = image.step * static_cast<std::size_t>(image.rows);
    const KyImage destination = {KY_TYPE_BGR24,
                                 static_cast<std::uint32_t>(image.cols),
                                 static_cast<std::uint32_t>(image.rows),
                                 image.data,
                                 destinationBytes,
                                 image.step,
                                 0};

    KyRGBFilter whiteBalance(12);
    whiteBalance.SetMultipliers(0.5, 1.0, 0.25);
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = KyPixelConverter::FLAG_BAYER_RGGB | KyPixelConverter::FLAG_BAYER_INTERPOLATE;
    conversion.filter = &whiteBalance;

    // The pair is looked up once, for all frames.
    const KyImageConverter converter(kBayer12Packed, KY_TYPE_BGR24);
    if (converter.Convert(source, destination, &conversion) != KY_STATUS_SUCCESS) {
        std::fprintf(stderr, "%s\n", KyImageConverter::GetError());
        return 1;
    }
    const std::uint8_t* const last = image.data + (kHeight - 1) * image.step + 3 * (kWidth - 1);
    std::printf("%d lines, %u and %u bytes apart; the last pixel is B %d, G %d, R %d\n", image.rows,
                static_cast<unsigned>(sourceStride), static_cast<unsigned>(image.step), last[0], last[1], last[2]);
    return last[0] == 0x2A && last[1] == 0xAB && last[2] == 0x55 && last[3] == 0 ? 0 : 1;
}
