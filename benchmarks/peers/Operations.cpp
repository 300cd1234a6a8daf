#include "Operations.h"

#include <KyImgLib/KyImgLib.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace kybench {

namespace {

using u32 = std::uint32_t;

constexpr std::int64_t kBayer8 = 0x00020010;
constexpr std::int64_t kGray10 = 0x00010002;
constexpr std::int64_t kGray12 = 0x00010003;
constexpr std::int64_t kRGB48 = 0x0002000C;  // 3 x 12 bits
constexpr std::int64_t kRGB24Packed = 0x00420002;
constexpr u32 kBilinear = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_INTERPOLATE;
constexpr u32 kBilinearRGGB = KyPixelConverter::FLAG_BAYER_RGGB | KyPixelConverter::FLAG_BAYER_INTERPOLATE;

/// Rounded to nearest, halves up. What is added to a half outweighs the errors of doubles, and is less than any sample can be
/// away from one.
int ToByte(double value) { return static_cast<int>(std::floor(std::clamp(value, 0.0, 255.0) + (0.5 + 1e-9))); }

// ITU-R BT.601.
constexpr double kRed = 0.299, kGreen = 0.587, kBlue = 0.114;

/// One channel of RGB from the real-valued formula. Y is 0 to 1, Cb and Cr are -0.5 to 0.5.
int RGBOf(double y, double cb, double cr, int channel) {
    const double colours[3] = {
        y + 2 * (1 - kRed) * cr,
        y - 2 * kBlue * (1 - kBlue) / kGreen * cb - 2 * kRed * (1 - kRed) / kGreen * cr,
        y + 2 * (1 - kBlue) * cb,
    };
    return ToByte(255 * colours[channel]);
}

int RGBOfLimited(int y, int cb, int cr, int channel) {
    return RGBOf((y - 16) / 219.0, (cb - 128) / 224.0, (cr - 128) / 224.0, channel);
}

template <std::size_t kLuma, std::size_t kCb, std::size_t kCr>
int FromYUV422(const Picture& s, u32 x, u32 y, int channel) {
    const std::uint8_t* const pair = s.bytes + (std::size_t{y} * s.width + x / 2 * 2) * 2;
    return RGBOfLimited(pair[kLuma + x % 2 * 2], pair[kCb], pair[kCr], channel);
}

int FromYUV444(const Picture& s, u32 x, u32 y, int channel) {
    const std::uint8_t* const pixel = s.bytes + (std::size_t{y} * s.width + x) * 3;
    return RGBOf(pixel[0] / 255.0, (pixel[1] - 128) / 255.0, (pixel[2] - 128) / 255.0, channel);
}

template <Layout layout>
int FromPlanes(const Picture& s, u32 x, u32 y, int channel) {
    return RGBOfLimited(SampleOf(layout, s, x, y, 0), SampleOf(layout, s, x, y, 1), SampleOf(layout, s, x, y, 2),
                        channel);
}

/// Y, Cb or Cr of limited range from RGB of 0 to 255.
int YCbCrOf(const std::array<double, 3>& rgb, int channel) {
    const double y = (kRed * rgb[0] + kGreen * rgb[1] + kBlue * rgb[2]) / 255;
    if (channel == 0) return ToByte(16 + 219 * y);
    if (channel == 1) return ToByte(128 + 224 * (rgb[2] / 255 - y) / (2 * (1 - kBlue)));
    return ToByte(128 + 224 * (rgb[0] / 255 - y) / (2 * (1 - kRed)));
}

int FromRGB24(const Picture& s, u32 x, u32 y, int channel) { return SampleOf(Layout::kRGB24, s, x, y, channel); }

/// Y of the pixel, Cb and Cr of the mean of the four pixels that share them.
template <int (*rgb)(const Picture&, u32, u32, int)>
int ToYUV420(const Picture& s, u32 x, u32 y, int channel) {
    std::array<double, 3> pixel;
    for (int c = 0; c < 3; ++c) {
        const u32 left = x / 2 * 2, top = y / 2 * 2;
        pixel[static_cast<std::size_t>(c)] = channel == 0 ? rgb(s, x, y, c)
                                                          : (rgb(s, left, top, c) + rgb(s, left + 1, top, c) +
                                                             rgb(s, left, top + 1, c) + rgb(s, left + 1, top + 1, c)) /
                                                                4.0;
    }
    return YCbCrOf(pixel, channel);
}

int FromBGR32(const Picture& s, u32 x, u32 y, int channel) {
    return s.bytes[(std::size_t{y} * s.width + x) * 4 + 2 - static_cast<std::size_t>(channel)];
}

int FromRGB48(const Picture& s, u32 x, u32 y, int channel) {
    const std::size_t byte = ((std::size_t{y} * s.width + x) * 3 + static_cast<std::size_t>(channel)) * 2;
    return (s.bytes[byte] | s.bytes[byte + 1] << 8) >> 4;
}

int FromGray12(const Picture& s, u32 x, u32 y, int) { return SampleOf(Layout::kWords, s, x, y, 0) >> 4; }

int FromGray8(const Picture& s, u32 x, u32 y, int) { return SampleOf(Layout::kGray8, s, x, y, 0); }

int FromMono10BE(const Picture& s, u32 x, u32 y, int) {
    const std::uint8_t* const word = s.bytes + (std::size_t{y} * s.width + x) * 2;
    return word[0] << 8 | word[1];
}

int FromMono12p(const Picture& s, u32 x, u32 y, int) {
    const std::size_t bit = (std::size_t{y} * s.width + x) * 12;
    return (s.bytes[bit / 8] | s.bytes[bit / 8 + 1] << 8) >> bit % 8 & 0xFFF;
}

int NearestOfGRBG(const Picture& s, u32 x, u32 y, int channel) {
    const u32 left = x / 2 * 2, top = y / 2 * 2;
    if (channel == 0) return FromGray8(s, left + 1, top, 0);
    if (channel == 2) return FromGray8(s, left, top + 1, 0);
    return x % 2 == 0 ? FromGray8(s, left, top, 0) : FromGray8(s, left + 1, top + 1, 0);
}

/// Mean of the samples of a colour in the 3 x 3 neighbourhood that are nearest, cut to an integer. The pattern has red in
/// column `redX` and row `redY` of each cell.
template <int (*sample)(const Picture&, u32, u32, int), u32 redX, u32 redY>
int Bilinear(const Picture& s, u32 x, u32 y, int channel) {
    const auto colourAt = [](u32 column, u32 row) {
        const bool isRedRow = row % 2 == redY, isRedColumn = column % 2 == redX;
        return isRedRow == isRedColumn ? (isRedRow ? 0 : 2) : 1;
    };
    if (colourAt(x, y) == channel) return sample(s, x, y, 0);
    int sum = 0, count = 0;
    for (u32 row = y - 1; row != y + 2; ++row)
        for (u32 column = x - 1; column != x + 2; ++column)
            if (row < s.height && column < s.width && colourAt(column, row) == channel) {
                sum += sample(s, column, row, 0);
                ++count;
            }
    return sum / count;
}

constexpr auto BilinearOfGRBG = Bilinear<FromGray8, 1, 0>;

int BilinearOfRGGB12p(const Picture& s, u32 x, u32 y, int channel) {
    return Bilinear<FromMono12p, 0, 0>(s, x, y, channel) >> 4;
}

template <int (*rgb)(const Picture&, u32, u32, int)>
int ThroughTables(const Picture& s, u32 x, u32 y, int channel) {
    return Tables()[channel][rgb(s, x, y, channel)];
}

using enum Samples;
constexpr std::int64_t kFullRange = KY_YCBCR_FULL_RANGE;

constexpr Operation kOperations[] = {
    {"BGR32ToRGB24", KY_TYPE_BGR32, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromBGR32},
    {"RGB24ToRGB32", KY_TYPE_RGB24, KY_TYPE_RGB32, 0, false, kBytes, Layout::kRGB32, 0, FromRGB24},
    {"RGB48ToRGB24", kRGB48, KY_TYPE_RGB24, 0, false, kWords12, Layout::kRGB24, 0, FromRGB48},
    {"RGB24ToPlanar", KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR, 0, false, kBytes, Layout::kPlanes, 0, FromRGB24},
    {"RGB24ToRGB24/tables", kRGB24Packed, KY_TYPE_RGB24, 0, true, kBytes, Layout::kRGB24, 0, ThroughTables<FromRGB24>},
    {"YUV444ToRGB24", KY_TYPE_YUV444 | kFullRange, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromYUV444},
    {"YUYVToRGB32", KY_TYPE_YUYV, KY_TYPE_RGB32, 0, false, kBytes, Layout::kRGB32, 0, FromYUV422<0, 1, 3>},
    {"YUYVToRGB24", KY_TYPE_YUYV, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromYUV422<0, 1, 3>},
    {"UYVYToRGB24", KY_TYPE_UYVY, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromYUV422<1, 0, 2>},
    {"NV12ToRGB24", KY_TYPE_NV12, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromPlanes<Layout::kNV12>},
    {"I420ToRGB24", KY_TYPE_I420, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromPlanes<Layout::kI420>},
    {"RGB24ToNV12", KY_TYPE_RGB24, KY_TYPE_NV12, 0, false, kBytes, Layout::kNV12, 0, ToYUV420<FromRGB24>},
    {"RGB24ToI420", KY_TYPE_RGB24, KY_TYPE_I420, 0, false, kBytes, Layout::kI420, 0, ToYUV420<FromRGB24>},
    {"Gray12ToGray8", kGray12, KY_TYPE_GRAYSCALE8, 0, false, kWords12, Layout::kGray8, 0, FromGray12},
    {"Mono10BEToGray10", KY_TYPE_MONO10_BE, kGray10, 0, false, kWords10BigEndian, Layout::kWords, 0, FromMono10BE},
    {"Mono12pToGray12", KY_TYPE_MONO12P, kGray12, 0, false, kBytes, Layout::kWords, 0, FromMono12p},
    {"Gray8ToRGB24", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24, 0, false, kBytes, Layout::kRGB24, 0, FromGray8},
    {"Bayer8ToRGB24/nearest", kBayer8, KY_TYPE_RGB24, KyPixelConverter::FLAG_BAYER_GRBG, false, kBytes, Layout::kRGB24,
     0, NearestOfGRBG},
    {"Bayer8ToRGB24/bilinear", kBayer8, KY_TYPE_RGB24, kBilinear, false, kBytes, Layout::kRGB24, 2, BilinearOfGRBG},
    {"Bayer8ToRGB32/bilinear", kBayer8, KY_TYPE_RGB32, kBilinear, false, kBytes, Layout::kRGB32, 2, BilinearOfGRBG},
    {"Bayer8ToRGB24/bilinear/tables", kBayer8, KY_TYPE_RGB24, kBilinear, true, kBytes, Layout::kRGB24, 2,
     ThroughTables<BilinearOfGRBG>},
    {"Bayer12pToRGB24/bilinear", KY_TYPE_BAYER12P, KY_TYPE_RGB24, kBilinearRGGB, false, kBytes, Layout::kRGB24, 2,
     BilinearOfRGGB12p},
    {"Bayer8ToNV12/bilinear", kBayer8, KY_TYPE_NV12, kBilinear, false, kBytes, Layout::kNV12, 2,
     ToYUV420<BilinearOfGRBG>},
};

}  // namespace

std::span<const Operation> AllOperations() { return kOperations; }

const std::uint8_t (&Tables())[3][256] {
    struct GammaCurves {
        std::uint8_t tables[3][256];
        GammaCurves() {
            const double exponents[3] = {0.45, 0.5, 0.55};
            for (int c = 0; c < 3; ++c)
                for (int i = 0; i < 256; ++i)
                    tables[c][i] = static_cast<std::uint8_t>(ToByte(255 * std::pow(i / 255.0, exponents[c])));
        }
    };
    static const GammaCurves curves;
    return curves.tables;
}

int ChannelCount(Layout layout) { return layout == Layout::kGray8 || layout == Layout::kWords ? 1 : 3; }

int SampleOf(Layout layout, const Picture& p, u32 x, u32 y, int channel) {
    const std::size_t pixel = std::size_t{y} * p.width + x, count = p.GetPixelCount();
    const auto c = static_cast<std::size_t>(channel);
    switch (layout) {
        case Layout::kGray8: return p.bytes[pixel];
        case Layout::kWords: return p.bytes[2 * pixel] | p.bytes[2 * pixel + 1] << 8;
        case Layout::kRGB24: return p.bytes[3 * pixel + c];
        case Layout::kRGB32: return p.bytes[4 * pixel + c];
        case Layout::kPlanes: return p.bytes[c * count + pixel];
        case Layout::kNV12:
            return p.bytes[channel == 0 ? pixel : count + std::size_t{y / 2} * p.width + x / 2 * 2 + c - 1];
        case Layout::kI420:
            return p
                .bytes[channel == 0 ? pixel : count + (c - 1) * count / 4 + std::size_t{y / 2} * (p.width / 2) + x / 2];
    }
    return 0;
}

}  // namespace kybench
