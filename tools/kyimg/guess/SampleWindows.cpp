#include "SampleWindows.h"

#include <KyImgLib/images/KyImageConverter.h>

#include <algorithm>

namespace kyimg {

std::size_t SamplesOfLine(const SampleFormat& format, std::size_t bytes) {
    return bytes / format.groupBytes * format.groupSamples;
}

namespace {

/// The library unpacks.
void Unpack(const std::uint8_t* bytes, std::size_t size, const SampleFormat& format, std::size_t stride,
            SampleWindow& window) {
    const auto width = static_cast<std::uint32_t>(window.width);
    const auto lines = static_cast<std::uint32_t>(window.lines);
    const KyImage source = {format.type, width, lines, const_cast<std::uint8_t*>(bytes), size, stride, 0};
    const KyImage samples = {
        format.plainType,          width, lines, reinterpret_cast<std::uint8_t*>(window.samples.data()),
        window.samples.size() * 2, 0,     0};
    if (KyImageConverter(format.type, format.plainType).Convert(source, samples, nullptr) != KY_STATUS_SUCCESS)
        window = SampleWindow();
}

}  // namespace

SampleWindow ReadWindow(std::span<const std::uint8_t> file, const SampleFormat& format, const LineGrid& grid,
                        std::size_t firstLine, std::size_t lines, std::size_t firstSample, std::size_t width) {
    SampleWindow window = {width, lines, std::vector<std::uint16_t>(width * lines)};
    const std::size_t offset =
        grid.begin + firstLine * grid.stride + firstSample / format.groupSamples * format.groupBytes;
    const std::uint8_t* const bytes = file.data() + offset;
    if (format.type != 0) {
        Unpack(bytes, file.size() - offset, format, grid.stride, window);
        return window;
    }
    for (std::size_t y = 0; y < lines; ++y)
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint8_t* const sample = bytes + y * grid.stride + x * format.groupBytes;
            const int high = format.groupBytes == 2 ? sample[1] : 0;
            window.samples[y * width + x] = static_cast<std::uint16_t>(high << 8 | sample[0]);
        }
    return window;
}

std::vector<SampleWindow> ReadSpread(std::span<const std::uint8_t> file, const SampleFormat& format,
                                     const LineGrid& grid, std::size_t count) {
    constexpr std::size_t kLines = 6, kWidest = 504, kStep = 24;
    std::vector<SampleWindow> windows;
    const std::size_t inLine = SamplesOfLine(format, grid.stride);
    const std::size_t width = std::min(kWidest, inLine);
    if (width == 0 || grid.lines == 0) return windows;
    const std::size_t lines = std::min(kLines * kWidest / width, grid.lines);
    const std::size_t lastLine = grid.lines - lines, lastSample = inLine - width,
                      last = std::max<std::size_t>(count, 2) - 1;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t y = lastLine * i / last / 2 * 2;
        const std::size_t x = lastSample * (i * 7 % count) / last / kStep * kStep;
        windows.push_back(ReadWindow(file, format, grid, y, lines, x, width));
    }
    return windows;
}

}  // namespace kyimg
