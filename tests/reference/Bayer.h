#ifndef KYIMGLIB_TESTS_REFERENCE_BAYER_H
#define KYIMGLIB_TESTS_REFERENCE_BAYER_H

#include <tests/reference/Area.h>
#include <tests/reference/Pixels.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace reference {

/// A mosaic of bytes or little-endian words, and how it is to be converted.
struct BayerImage {
    const std::uint8_t* samples;
    std::uint32_t lineWidth;  ///< pixels from one line to the next
    std::uint32_t step;       ///< bytes of a pixel; the last ones count:
    std::uint32_t sampleBytes;
    const char* pattern;  ///< colours of the first two pixels, then of the two below: "GRBG"
    std::uint32_t width;  ///< pixels of a line that are converted
    std::uint32_t lines;  ///< lines that have neighbours to give

    char ColourAt(std::uint32_t x, std::uint32_t y) const { return pattern[y % 2 * 2 + x % 2]; }
    unsigned SampleAt(std::uint32_t x, std::uint32_t y) const {
        const std::uint8_t* const sample = samples + (std::size_t{y} * lineWidth + x + 1) * step - sampleBytes;
        return sampleBytes == 1 ? sample[0] : sample[0] + 256u * sample[1];
    }
};

/// A pixel has its own colour, and of each other one the average of those of its eight neighbours that have it.
inline unsigned Interpolated(const BayerImage& image, std::uint32_t x, std::uint32_t y, char colour) {
    if (image.ColourAt(x, y) == colour) return image.SampleAt(x, y);
    unsigned sum = 0, count = 0;
    for (std::uint32_t below = 0; below <= 2; ++below)
        for (std::uint32_t right = 0; right <= 2; ++right) {
            if (x + right < 1 || x + right > image.width || y + below < 1 || y + below > image.lines) continue;
            if (image.ColourAt(x + right - 1, y + below - 1) != colour) continue;
            sum += image.SampleAt(x + right - 1, y + below - 1);
            ++count;
        }
    return count == 0 ? 0 : sum / count;
}

/// The sample of that colour in the line of a cell of 2 x 2 pixels, or of any of its two lines.
inline unsigned OfCell(const BayerImage& image, std::uint32_t cellX, std::uint32_t cellY, char colour,
                       std::uint32_t firstLine, std::uint32_t lastLine) {
    for (std::uint32_t y = cellY + firstLine; y <= cellY + lastLine; ++y)
        for (std::uint32_t x = cellX; x < cellX + 2; ++x)
            if (image.ColourAt(x, y) == colour) return image.SampleAt(x, y);
    return 0;
}

/// A pixel has the red and blue of its cell; the left ones its upper green, the right ones the lower.
inline Rgb Replicated(const BayerImage& image, std::uint32_t x, std::uint32_t y) {
    const std::uint32_t cellX = x - x % 2, cellY = y - y % 2, greenLine = x % 2;
    return {OfCell(image, cellX, cellY, 'R', 0, 1), OfCell(image, cellX, cellY, 'G', greenLine, greenLine),
            OfCell(image, cellX, cellY, 'B', 0, 1)};
}

inline Rgb BayerPixel(const BayerImage& image, bool interpolate, std::uint32_t x, std::uint32_t y) {
    if (!interpolate) return Replicated(image, x, y);
    return {Interpolated(image, x, y, 'R'), Interpolated(image, x, y, 'G'), Interpolated(image, x, y, 'B')};
}

/// Samples at the end of each pixel's bytes; without interpolation only whole cells are converted.
struct BayerConversion {
    Format format;
    std::uint32_t step, sampleBytes;

    static bool Interpolates(std::uint32_t flags) { return (flags & 0x100) != 0; }
    /// The first pattern that is given counts; without one it is GRBG.
    static const char* PatternOf(std::uint32_t flags) {
        if ((flags & 0xF0) == 0 || (flags & 0x10) != 0) return "GRBG";
        if ((flags & 0x20) != 0) return "GBRG";
        return (flags & 0x40) != 0 ? "RGGB" : "BGGR";
    }

    Extent Needs(const Area& area) const {
        const Area converted = Converted(area);
        const std::uint32_t linesRead =
            Interpolates(area.flags) ? std::min(area.height + 1, area.destinationLines) : converted.height;
        if (linesRead == 0 || converted.width == 0 || converted.height == 0) return {};
        return {(std::size_t{linesRead - 1} * area.sourceWidth + converted.width) * step,
                (converted.height - 1) * Stride(area) + converted.width * BytesOf(format)};
    }

    Rgb PixelAt(const Area& area, const Tables& filter, const std::uint8_t* source, std::uint32_t x,
                std::uint32_t y) const {
        const BayerImage image = {source,
                                  area.sourceWidth,
                                  step,
                                  sampleBytes,
                                  PatternOf(area.flags),
                                  Converted(area).width,
                                  area.destinationLines};
        return filter.Apply(BayerPixel(image, Interpolates(area.flags), x, y));
    }

    void Convert(const Area& area, const Tables& filter, const std::uint8_t* source, std::uint8_t* destination) const {
        const Area converted = Converted(area);
        for (std::uint32_t y = 0; y < converted.height; ++y)
            for (std::uint32_t x = 0; x < converted.width; ++x)
                Store(format, PixelAt(area, filter, source, x, y),
                      destination + y * Stride(area) + x * BytesOf(format));
    }

private:
    static Area Converted(Area area) {
        if (!Interpolates(area.flags)) area.width -= area.width % 2, area.height -= area.height % 2;
        return area;
    }
    std::size_t Stride(const Area& area) const {
        return std::size_t{area.destinationWidth} * BytesOf(format) + area.padding;
    }
};

}  // namespace reference

#endif
