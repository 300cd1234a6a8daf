#include "Arrangement.h"

#include "Errors.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace kyimg {

namespace {

ConvertedFrame EmptyCopy(const ConvertedFrame& frame, std::uint32_t width, std::uint32_t height,
                         std::size_t pixelBytes) {
    ConvertedFrame result;
    result.type = frame.type;
    result.sampleBits = frame.sampleBits;
    result.width = width;
    result.height = height;
    result.bytes.resize(pixelBytes * width * height);
    return result;
}

/// Each pixel becomes the one of `frame` at find(x, y).
template <typename Find>
ConvertedFrame Rearrange(const ConvertedFrame& frame, std::uint32_t width, std::uint32_t height, Find find) {
    const std::size_t pixelBytes = FindPictureLayout(frame)->pixelBytes;
    ConvertedFrame result = EmptyCopy(frame, width, height, pixelBytes);
    std::uint8_t* out = result.bytes.data();
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x, out += pixelBytes) {
            const auto [fromX, fromY] = find(x, y);
            std::copy_n(frame.bytes.data() + (std::size_t{fromY} * frame.width + fromX) * pixelBytes, pixelBytes, out);
        }
    return result;
}

using Place = std::pair<std::uint32_t, std::uint32_t>;

/// Clockwise.
ConvertedFrame Rotate(const ConvertedFrame& frame, std::uint32_t degrees) {
    const std::uint32_t right = frame.width - 1, bottom = frame.height - 1;
    switch (degrees) {
        case 90:
            return Rearrange(frame, frame.height, frame.width,
                             [=](std::uint32_t x, std::uint32_t y) { return Place(y, bottom - x); });
        case 180:
            return Rearrange(frame, frame.width, frame.height,
                             [=](std::uint32_t x, std::uint32_t y) { return Place(right - x, bottom - y); });
        default:
            return Rearrange(frame, frame.height, frame.width,
                             [=](std::uint32_t x, std::uint32_t y) { return Place(right - y, x); });
    }
}

/// N x N pixels become one, their mean; what is left over at the right and below is left out.
ConvertedFrame Shrink(const ConvertedFrame& frame, std::uint32_t factor) {
    const PictureLayout layout = *FindPictureLayout(frame);
    const std::size_t sampleBytes = layout.GetSampleBytes(), samples = layout.pixelBytes / sampleBytes;
    const std::uint32_t count = factor * factor;
    ConvertedFrame result = EmptyCopy(frame, frame.width / factor, frame.height / factor, layout.pixelBytes);
    std::uint8_t* out = result.bytes.data();
    for (std::uint32_t y = 0; y < result.height; ++y)
        for (std::uint32_t x = 0; x < result.width; ++x)
            for (std::size_t sample = 0; sample < samples; ++sample, out += sampleBytes) {
                std::uint64_t sum = count / 2;
                for (std::uint32_t i = 0; i < count; ++i) {
                    const std::size_t pixel =
                        (std::size_t{y} * factor + i / factor) * frame.width + std::size_t{x} * factor + i % factor;
                    const std::uint8_t* const in = &frame.bytes[pixel * layout.pixelBytes + sample * sampleBytes];
                    sum += in[0];
                    if (sampleBytes == 2) sum += std::uint64_t{in[1]} << 8;
                }
                out[0] = static_cast<std::uint8_t>(sum / count);
                if (sampleBytes == 2) out[1] = static_cast<std::uint8_t>(sum / count >> 8);
            }
    return result;
}

}  // namespace

Arrangement::Arrangement(const ConvertOptions& options, const ConvertedFrame& frame)
    : shrink(options.shrink), degrees(options.rotate), mirrorsHorizontally(options.flip == "horizontal"),
      mirrorsVertically(options.flip == "vertical") {
    if (shrink <= 1 && degrees == 0 && options.flip.empty()) return;
    const auto layout = FindPictureLayout(frame);
    const bool isMosaic = KyPixelTypeFactory::FindPixelType(frame.type)->IsBayerPattern();
    if (!layout || isMosaic || (frame.type & KY_TYPE_PLANAR) != 0 || (layout->is565 && shrink > 1))
        throw UsageError(fmt::format("--rotate, --flip and --shrink are for pictures, not for {}; try --to RGB24",
                                     DescribeType(frame.type)));
    if (frame.width < shrink || frame.height < shrink)
        throw UsageError(
            fmt::format("--shrink: a picture of {}x{} cannot be {} times smaller", frame.width, frame.height, shrink));
}

ConvertedFrame Arrangement::Apply(ConvertedFrame frame) const {
    if (shrink > 1) frame = Shrink(frame, shrink);
    if (degrees != 0) frame = Rotate(frame, degrees);
    const std::uint32_t right = frame.width - 1, bottom = frame.height - 1;
    if (mirrorsHorizontally)
        frame = Rearrange(frame, frame.width, frame.height,
                          [=](std::uint32_t x, std::uint32_t y) { return Place(right - x, y); });
    if (mirrorsVertically)
        frame = Rearrange(frame, frame.width, frame.height,
                          [=](std::uint32_t x, std::uint32_t y) { return Place(x, bottom - y); });
    return frame;
}

}  // namespace kyimg
