// make-sample-frame DIRECTORY: writes a raw frame as a colour camera would deliver it, to try conversions on. The
// scene is computed here: a chart of colour patches, slanted edges, gratings up to the finest that pixels can hold, text and
// ramps, with a little noise.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 960;

struct Colour {
    double red, green, blue;  // 0 is black, 1 white
};

Colour Gray(double level) { return {level, level, level}; }

Colour Mix(const Colour& a, const Colour& b, double part) {
    return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part, a.blue + (b.blue - a.blue) * part};
}

// Six columns, four rows: strong colours, their pale versions, natural ones, grays.
constexpr Colour kPatches[4][6] = {
    {{.80, .12, .12}, {.90, .55, .08}, {.90, .82, .10}, {.12, .62, .20}, {.10, .35, .80}, {.50, .15, .65}},
    {{.90, .62, .62}, {.93, .78, .60}, {.92, .90, .62}, {.64, .84, .66}, {.60, .74, .92}, {.80, .64, .88}},
    {{.45, .30, .22}, {.80, .60, .48}, {.35, .45, .18}, {.30, .50, .50}, {.42, .62, .85}, {.75, .70, .55}},
    {{.04, .04, .04}, {.20, .20, .20}, {.38, .38, .38}, {.56, .56, .56}, {.75, .75, .75}, {.95, .95, .95}},
};

// Each painter is given the place inside its rectangle, in pixels.

Colour PaintChart(double x, double y) {
    constexpr double kPitch = 100, kPatch = 88;
    const int column = static_cast<int>(x / kPitch), row = static_cast<int>(y / kPitch);
    const bool isFrame = x - column * kPitch > kPatch || y - row * kPitch > kPatch;
    return isFrame ? Gray(.08) : kPatches[row][column];
}

/// A square turned by five degrees, as is used to measure sharpness.
bool IsInTurnedSquare(double x, double y) {
    constexpr double kSine = .0872, kCosine = .9962;
    const double u = x - 145, v = y - 145;
    return std::max(std::abs(u * kCosine + v * kSine), std::abs(v * kCosine - u * kSine)) < 90;
}

Colour PaintGrayEdges(double x, double y) { return IsInTurnedSquare(x, y) ? Gray(.12) : Gray(.85); }

Colour PaintColouredEdges(double x, double y) {
    return IsInTurnedSquare(x, y) ? Colour{.80, .15, .12} : Colour{.12, .35, .70};
}

/// Rings that get finer outward; at the middle of each side they are one pixel wide.
Colour PaintZonePlate(double x, double y) {
    const double u = x - 240, v = y - 240;
    return Gray(.5 + .42 * std::cos(1.5708 / 240 * (u * u + v * v)));
}

/// Bars whose width falls from 32 pixels to 1 while x grows.
Colour PaintSweep(double x, double y) {
    const double position = x / 560;
    const double rate = std::log(32.0);
    const double phase = 3.14159265 / 32 * 560 * (std::exp(rate * position) - 1) / rate;
    return y < 60 ? Gray(.5 + .42 * std::sin(phase)) : Gray(std::sin(phase) > 0 ? .90 : .10);
}

Colour PaintRamps(double x, double y) {
    const double level = x / 1200;
    switch (static_cast<int>(y / 12)) {
        case 0: return Gray(level);
        case 1: return {level, .05, .05};
        case 2: return {.05, level, .05};
        default: return {.05, .05, level};
    }
}

/// The letters K y I m g L i b, each nine rows of five dots, the left one in the highest bit.
constexpr std::uint8_t kLetters[8][9] = {
    {0x11, 0x12, 0x14, 0x18, 0x14, 0x12, 0x11, 0x00, 0x00}, {0x00, 0x00, 0x11, 0x11, 0x11, 0x11, 0x0F, 0x01, 0x0E},
    {0x0E, 0x04, 0x04, 0x04, 0x04, 0x04, 0x0E, 0x00, 0x00}, {0x00, 0x00, 0x1A, 0x15, 0x15, 0x15, 0x15, 0x00, 0x00},
    {0x00, 0x00, 0x0F, 0x11, 0x11, 0x11, 0x0F, 0x01, 0x0E}, {0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x1F, 0x00, 0x00},
    {0x04, 0x00, 0x0C, 0x04, 0x04, 0x04, 0x0E, 0x00, 0x00}, {0x10, 0x10, 0x16, 0x19, 0x11, 0x11, 0x1E, 0x00, 0x00},
};

bool IsOnText(double x, double y, double dotSize) {
    if (x < 0 || y < 0) return false;
    const int column = static_cast<int>(x / dotSize), row = static_cast<int>(y / dotSize);
    if (column >= 8 * 6 || row >= 9 || column % 6 == 5) return false;
    return (kLetters[column / 6][row] >> (4 - column % 6) & 1) != 0;
}

Colour PaintText(double x, double y) {
    const bool isText = IsOnText(x - 20, y - 10, 9) || IsOnText(x - 540, y - 25, 6) || IsOnText(x - 890, y - 39, 3) ||
                        IsOnText(x - 1080, y - 45, 2);
    return isText ? Colour{.95, .92, .80} : Colour{.08, .12, .25};
}

struct Element {
    double left, top, width, height;
    Colour (*paint)(double x, double y);
};

constexpr Element kElements[] = {
    {40, 30, 1200, 97, PaintText},        {40, 150, 588, 388, PaintChart},
    {40, 570, 290, 290, PaintGrayEdges},  {340, 570, 290, 290, PaintColouredEdges},
    {720, 150, 480, 480, PaintZonePlate}, {680, 660, 560, 200, PaintSweep},
    {40, 890, 1200, 48, PaintRamps},
};

Colour Scene(double x, double y) {
    for (const Element& element : kElements) {
        const double u = x - element.left, v = y - element.top;
        if (u >= 0 && v >= 0 && u < element.width && v < element.height) return element.paint(u, v);
    }
    return Mix({.42, .47, .52}, {.66, .63, .58}, y / kHeight);
}

/// The light that falls on a whole pixel, not just on its middle.
Colour PixelLight(int column, int row) {
    constexpr int kSamples = 4;
    Colour sum = Gray(0);
    for (int i = 0; i < kSamples * kSamples; ++i) {
        const Colour light =
            Scene(column + (i % kSamples + .5) / kSamples, row + (static_cast<int>(i / kSamples) + .5) / kSamples);
        sum = {sum.red + light.red, sum.green + light.green, sum.blue + light.blue};
    }
    return Mix(Gray(0), sum, 1.0 / (kSamples * kSamples));
}

/// Nearly normally distributed with a standard deviation of 1, the same in every run.
double Noise() {
    static std::uint32_t state = 1;
    double sum = 0;
    for (int i = 0; i < 12; ++i) {
        state = state * 1664525 + 1013904223;
        sum += (state >> 8) / 16777216.0;
    }
    return sum - 6;
}

/// A sensor is less sensitive to red and blue than to green; gains of 1.9, 1.0 and 1.6 make up for it.
std::uint8_t Sample(int column, int row) {
    const Colour light = PixelLight(column, row);
    const bool isRedRow = row % 2 == 0;  // green red, then blue green
    double level = light.green;
    if (isRedRow && column % 2 == 1) level = light.red / 1.9;
    if (!isRedRow && column % 2 == 0) level = light.blue / 1.6;
    const double value = 255 * level + Noise() * std::sqrt(.3 + 2 * level);
    return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make-sample-frame DIRECTORY\n");
        return 2;
    }
    std::vector<std::uint8_t> mosaic;
    for (int row = 0; row < kHeight; ++row)
        for (int column = 0; column < kWidth; ++column) mosaic.push_back(Sample(column, row));

    const std::string path = std::string(argv[1]) + "/sample_bayer8_grbg_1280x960.raw";
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    const bool written = file != nullptr && std::fwrite(mosaic.data(), 1, mosaic.size(), file) == mosaic.size();
    if (file == nullptr || std::fclose(file) != 0 || !written) {
        std::perror(path.c_str());
        return 1;
    }
    std::printf("%s: %dx%d, 8-bit Bayer, first pixels green red, then blue green\n", path.c_str(), kWidth, kHeight);
    return 0;
}
