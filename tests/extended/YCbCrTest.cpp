// YCbCr as the standards have it: every triple of bytes, every layout, and RGB to NV12 and I420.
#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/GuardedBuffer.h>
#include <tests/support/Random.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <cstring>

namespace {

/// Numerators over 10000 of the part of red, green and blue in luma: ITU-R BT.601 or BT.709.
struct Parts {
    std::int64_t red, green, blue;
};
constexpr Parts PartsOf(std::int64_t type) {
    return (type & KY_YCBCR_BT709) != 0 ? Parts{2126, 7152, 722} : Parts{2990, 5870, 1140};
}
constexpr bool IsFull(std::int64_t type) { return (type & KY_YCBCR_FULL_RANGE) != 0; }

__extension__ using Wide = __int128;

/// n / d to the nearest whole number, halves up, of a byte.
unsigned Rounded(Wide n, Wide d) {
    const Wide doubled = 2 * n + d;
    return doubled < 0 ? 0 : static_cast<unsigned>(std::min<Wide>(doubled / (2 * d), 255));
}

using Pixel = std::array<unsigned, 3>;

/// R = Y + 2 (1 - r) Cr, B = Y + 2 (1 - b) Cb, G from Y = r R + g G + b B; in units of the ranges, in whole numbers.
Pixel RGBOf(std::int64_t type, unsigned bits, int y, int cb, int cr) {
    const Parts part = PartsOf(type);
    const std::int64_t most = (1 << bits) - 1, step = 1 << (bits - 8);
    const std::int64_t lumaRange = IsFull(type) ? most : 219 * step, colourRange = IsFull(type) ? most : 224 * step;
    y -= IsFull(type) ? 0 : static_cast<int>(16 * step);
    cb -= 1 << (bits - 1);
    cr -= 1 << (bits - 1);
    // Times 10000 * lumaRange * colourRange; green times its part as well.
    const Wide luma = Wide{y} * 10000 * colourRange;
    const Wide red = luma + Wide{2} * (10000 - part.red) * cr * lumaRange;
    const Wide blue = luma + Wide{2} * (10000 - part.blue) * cb * lumaRange;
    const Wide green = 10000 * luma - part.red * red - part.blue * blue;
    const Wide unit = Wide{10000} * lumaRange * colourRange;
    return {Rounded(255 * red, unit), Rounded(255 * green, unit * part.green), Rounded(255 * blue, unit)};
}

struct Layout {
    std::int64_t type;
    unsigned bits, shift, sampleBytes;
    unsigned columns, lines;       ///< that share Cb and Cr
    std::vector<unsigned> group;   ///< in one plane: what each sample of a group is: 0 Y, 1 Cb, 2 Cr; empty: planes
    std::vector<unsigned> planes;  ///< of planes after Y: 1 Cb, 2 Cr, 12 both in turn, 21
};

const std::vector<Layout> kLayouts = {
    {KY_TYPE_YUYV, 8, 0, 1, 2, 1, {0, 1, 0, 2}, {}},
    {KY_TYPE_UYVY, 8, 0, 1, 2, 1, {1, 0, 2, 0}, {}},
    {KY_TYPE_YVYU, 8, 0, 1, 2, 1, {0, 2, 0, 1}, {}},
    {KY_TYPE_VYUY, 8, 0, 1, 2, 1, {2, 0, 1, 0}, {}},
    {KY_TYPE_YUV444, 8, 0, 1, 1, 1, {0, 1, 2}, {}},
    {KY_TYPE_UYV444, 8, 0, 1, 1, 1, {1, 0, 2}, {}},
    {KY_TYPE_YYUYYV411, 8, 0, 1, 4, 1, {0, 0, 1, 0, 0, 2}, {}},
    {KY_TYPE_UYYVYY411, 8, 0, 1, 4, 1, {1, 0, 0, 2, 0, 0}, {}},
    {KY_TYPE_YUYV10, 10, 0, 2, 2, 1, {0, 1, 0, 2}, {}},
    {KY_TYPE_YUYV12, 12, 0, 2, 2, 1, {0, 1, 0, 2}, {}},
    {KY_TYPE_Y210, 10, 6, 2, 2, 1, {0, 1, 0, 2}, {}},
    {KY_TYPE_NV12, 8, 0, 1, 2, 2, {}, {12}},
    {KY_TYPE_NV21, 8, 0, 1, 2, 2, {}, {21}},
    {KY_TYPE_NV16, 8, 0, 1, 2, 1, {}, {12}},
    {KY_TYPE_I420, 8, 0, 1, 2, 2, {}, {1, 2}},
    {KY_TYPE_YV12, 8, 0, 1, 2, 2, {}, {2, 1}},
    {KY_TYPE_P010, 10, 6, 2, 2, 2, {}, {12}},
    {KY_TYPE_I422, 8, 0, 1, 2, 1, {}, {1, 2}},
};

std::uint32_t RoundUp(std::uint32_t number, std::uint32_t step) { return (number + step - 1) / step; }

/// An image by its samples. Lines and planes are apart by bytes of no meaning.
class Picture {
public:
    Picture(const Layout& of, std::uint32_t wide, std::uint32_t high, std::uint32_t strideUnits, std::uint32_t gap)
        : layout(of) {
        image = {of.type, wide, high, nullptr, 0, 0, 0};
        if (strideUnits != 0) image.stride = std::size_t{strideUnits} * 16;
        const std::size_t line = image.stride != 0 ? image.stride : TightLine();
        if (gap != 0 && of.group.empty()) image.planeStride = line * high + gap;
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &image.size)) << KyImage_GetError();
    }

    /// Where a sample is: 0 Y, 1 Cb, 2 Cr.
    std::size_t PlaceOf(unsigned sample, std::uint32_t x, std::uint32_t y) const {
        const std::size_t bytes = layout.sampleBytes;
        const std::size_t stride = image.stride != 0 ? image.stride : TightLine();
        if (!layout.group.empty()) {
            const std::vector<unsigned>& group = layout.group;
            std::size_t skip = sample == 0 ? x % layout.columns : 0, i = 0;
            while (group[i] != sample || skip-- > 0) ++i;
            return y * stride + (x / layout.columns * group.size() + i) * bytes;
        }
        if (sample == 0) return y * stride + x * bytes;
        const std::size_t second = image.planeStride != 0 ? image.planeStride : stride * image.height;
        const std::uint32_t column = x / layout.columns, row = y / layout.lines;
        if (layout.planes.size() == 1) {
            const std::size_t line =
                image.stride != 0 ? image.stride : 2 * bytes * RoundUp(image.width, layout.columns);
            return second + row * line + (2 * column + (layout.planes[0] % 10 == sample ? 1 : 0)) * bytes;
        }
        const std::size_t line = image.stride != 0 ? image.stride / 2 : RoundUp(image.width, 2);
        const std::size_t plane = layout.planes[0] == sample ? 0 : line * RoundUp(image.height, layout.lines);
        return second + plane + row * line + column;
    }

    int Sample(unsigned sample, std::uint32_t x, std::uint32_t y) const {
        const std::uint8_t* const at = image.data + PlaceOf(sample, x, y);
        if (layout.sampleBytes == 1) return *at;
        return (at[0] | at[1] << 8) >> layout.shift;
    }

    KyImage image;

private:
    std::size_t TightLine() const {
        const std::size_t groups = RoundUp(image.width, layout.columns);
        return layout.sampleBytes * (layout.group.empty() ? image.width : groups * layout.group.size());
    }

    const Layout& layout;
};

class YCbCr : public testing::TestWithParam<std::uint32_t> {
protected:
    void SetUp() override { ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register()); }

    static void Convert(const KyImage& source, const KyImage& destination, const KyRGBFilter* filter = nullptr) {
        KyConversion conversion = {};
        conversion.structSize = sizeof conversion;
        conversion.filter = filter;
        ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&source, &destination, &conversion)) << KyImage_GetError();
    }

    const support::ScopedCpuLevel level{GetParam()};
    support::Random random{11};
};

/// All 2^24 of them, a pixel each, and as pairs that share their colours.
TEST_P(YCbCr, EveryTripleOfBytesIsRoundedExactly) {
    constexpr std::uint32_t kWidth = 512, kHeight = 256;
    std::vector<std::uint8_t> triples(3 * kWidth * kHeight), pairs(2 * kWidth * kHeight), rgb(triples.size()),
        ofPairs(triples.size());
    for (std::int64_t colours = 0; colours < 4; ++colours)
        for (unsigned cb2 = 0; cb2 < 128; ++cb2) {
            // Lines are Cr, columns Y of one Cb and of the next.
            for (std::size_t i = 0; i < kWidth * kHeight; ++i) {
                const unsigned y = i % 256, cb = 2 * cb2 + (i / 256) % 2, cr = static_cast<unsigned>(i / kWidth);
                const unsigned triple[] = {y, cb, cr};
                for (std::size_t k = 0; k < 3; ++k) triples[3 * i + k] = static_cast<std::uint8_t>(triple[k]);
                pairs[2 * i] = static_cast<std::uint8_t>(y);
                pairs[2 * i + 1] = static_cast<std::uint8_t>(i % 2 == 0 ? cb : cr);
            }
            Convert({KY_TYPE_YUV444 | colours, kWidth, kHeight, triples.data(), triples.size(), 0, 0},
                    {KY_TYPE_RGB24, kWidth, kHeight, rgb.data(), rgb.size(), 0, 0});
            Convert({KY_TYPE_YUYV | colours, kWidth, kHeight, pairs.data(), pairs.size(), 0, 0},
                    {KY_TYPE_RGB24, kWidth, kHeight, ofPairs.data(), ofPairs.size(), 0, 0});
            ASSERT_EQ(rgb, ofPairs) << "colours " << colours << ", Cb " << 2 * cb2;
            for (std::size_t i = 0; i < kWidth * kHeight; ++i) {
                const Pixel expected = RGBOf(colours, 8, triples[3 * i], triples[3 * i + 1], triples[3 * i + 2]);
                const Pixel actual = {rgb[3 * i], rgb[3 * i + 1], rgb[3 * i + 2]};
                ASSERT_EQ(expected, actual) << "colours " << colours << ", YCbCr " << +triples[3 * i] << " "
                                            << +triples[3 * i + 1] << " " << +triples[3 * i + 2];
            }
        }
}

/// Random samples of each layout, sizes odd and even, lines and planes with and without gaps, to all colours of bytes.
TEST_P(YCbCr, LayoutsReadTheirSamples) {
    for (const Layout& layout : kLayouts)
        for (std::int64_t colours = 0; colours < 4; ++colours) {
            Layout own = layout;
            own.type |= colours;
            for (std::uint32_t width = 1; width < 150; width += width < 8 ? 1 : 1 + random.Below(12)) {
                const std::uint32_t height = 1 + random.Below(4), gap = random.Below(2) * 5;
                Picture picture(own, width, height, random.Below(2) * (width / 2 + 2), gap);
                support::GuardedBuffer source(picture.image.size, support::GuardedBuffer::Side::kEnd, 0);
                const std::vector<std::uint8_t> bytes = random.Bytes(picture.image.size);
                std::memcpy(source.data(), bytes.data(), bytes.size());
                if (own.sampleBytes == 2 && own.shift == 0)
                    for (std::size_t i = 1; i < bytes.size(); i += 2)
                        source.data()[i] &= static_cast<std::uint8_t>((1 << (own.bits - 8)) - 1);
                picture.image.data = source.data();

                const bool isBGR = random.Below(2) == 1, has32Bits = random.Below(2) == 1;
                const std::int64_t to =
                    has32Bits ? (isBGR ? KY_TYPE_BGR32 : KY_TYPE_RGB32) : (isBGR ? KY_TYPE_BGR24 : KY_TYPE_RGB24);
                const std::size_t pixelBytes = has32Bits ? 4 : 3;
                support::GuardedBuffer result(pixelBytes * width * height, support::GuardedBuffer::Side::kEnd, 0);
                Convert(picture.image, {to, width, height, result.data(), pixelBytes * width * height, 0, 0});
                for (std::uint32_t y = 0; y < height; ++y)
                    for (std::uint32_t x = 0; x < width; ++x) {
                        Pixel expected = RGBOf(own.type, own.bits, picture.Sample(0, x, y), picture.Sample(1, x, y),
                                               picture.Sample(2, x, y));
                        if (isBGR) std::swap(expected[0], expected[2]);
                        const std::uint8_t* const pixel = result.data() + (std::size_t{y} * width + x) * pixelBytes;
                        ASSERT_EQ(expected, (Pixel{pixel[0], pixel[1], pixel[2]}))
                            << std::hex << own.type << std::dec << ", pixel " << x << "," << y << " of " << width << "x"
                            << height;
                    }
            }
        }
}

/// Of 10 and 12 bits, every pair of Cb and Cr with some Y.
TEST_P(YCbCr, WordsAreRoundedExactly) {
    for (const std::int64_t layout : {KY_TYPE_YUYV10, KY_TYPE_YUYV12}) {
        const unsigned bits = layout == KY_TYPE_YUYV10 ? 10 : 12, step = bits == 10 ? 1 : 5;
        const std::uint32_t width = 2 * ((1u << bits) / step), height = 64;
        std::vector<std::uint8_t> source(4 * width * height), rgb(3 * width * height);
        for (const std::int64_t type : {layout, layout | 1, layout | 2, layout | 3})
            for (std::uint32_t first = 0; first < 1u << bits; first += height * step * 3) {
                for (std::uint32_t y = 0; y < height; ++y)
                    for (std::uint32_t x = 0; x < 2 * width; ++x) {
                        const std::uint32_t cb = x / 4 * step, cr = (first + y * step) & ((1u << bits) - 1);
                        const std::uint32_t sample = x % 2 == 0 ? random.Below(1u << bits) : x % 4 == 1 ? cb : cr;
                        source[2 * (2 * width * y + x)] = sample & 0xFF;
                        source[2 * (2 * width * y + x) + 1] = sample >> 8 & 0xFF;
                    }
                Convert({type, width, height, source.data(), source.size(), 0, 0},
                        {KY_TYPE_RGB24, width, height, rgb.data(), rgb.size(), 0, 0});
                for (std::size_t i = 0; i < std::size_t{width} * height; ++i) {
                    const auto word = [&](std::size_t n) { return source[2 * n] | source[2 * n + 1] << 8; };
                    const std::size_t pair = i / 2 * 4;
                    const Pixel expected = RGBOf(type, bits, word(2 * i), word(pair + 1), word(pair + 3));
                    ASSERT_EQ(expected, (Pixel{rgb[3 * i], rgb[3 * i + 1], rgb[3 * i + 2]}))
                        << bits << " bits, YCbCr " << word(2 * i) << " " << word(pair + 1) << " " << word(pair + 3);
                }
            }
    }
}

/// Y of every RGB, and Cb and Cr of the mean of what shares them.
TEST_P(YCbCr, EncodersGetExactPlanes) {
    for (const std::int64_t layoutType : {KY_TYPE_NV12, KY_TYPE_I420})
        for (std::int64_t colours = 0; colours < 4; ++colours)
            for (std::uint32_t width = 1; width < 4400; width += width < 8 ? 1 : width / 3 * 2 + random.Below(5)) {
                Layout layout = *std::find_if(kLayouts.begin(), kLayouts.end(),
                                              [&](const Layout& row) { return row.type == layoutType; });
                layout.type |= colours;
                const std::uint32_t height = 1 + random.Below(5);
                Picture picture(layout, width, height, random.Below(2) * (width / 2 + 2), random.Below(2) * 5);
                support::GuardedBuffer result(picture.image.size, support::GuardedBuffer::Side::kEnd, 0);
                picture.image.data = result.data();
                support::GuardedBuffer source(3 * width * height, support::GuardedBuffer::Side::kEnd, 0);
                const std::vector<std::uint8_t> rgb = random.Bytes(3 * width * height);
                std::memcpy(source.data(), rgb.data(), rgb.size());
                // Saturated colours are where full range is cut off.
                if (width % 2 == 0)
                    for (std::size_t i = 0; i < rgb.size(); ++i) source.data()[i] = (rgb[i] & 1) != 0 ? 255 : 0;
                Convert({KY_TYPE_RGB24, width, height, source.data(), rgb.size(), 0, 0}, picture.image);

                const Parts part = PartsOf(colours);
                const std::int64_t sumOf[] = {part.red, part.green, part.blue};
                const bool isFull = IsFull(colours);
                for (std::uint32_t y = 0; y < height; ++y)
                    for (std::uint32_t x = 0; x < width; ++x) {
                        const std::uint8_t* const pixel = source.data() + 3 * (std::size_t{y} * width + x);
                        std::int64_t luma = 0;
                        for (int i = 0; i < 3; ++i) luma += sumOf[i] * pixel[i];
                        const unsigned expectedY =
                            Rounded(luma * (isFull ? 255 : 219) + (isFull ? 0 : 16 * 2550000), 2550000);
                        ASSERT_EQ(expectedY, static_cast<unsigned>(picture.Sample(0, x, y)))
                            << std::hex << layout.type << std::dec << " " << x << "," << y << " of " << width;
                        // Of the four pixels; those beyond the edge are the ones at the edge.
                        std::int64_t sums[3] = {}, lumaOfFour = 0;
                        for (unsigned k = 0; k < 4; ++k) {
                            const std::uint32_t px = std::min(x / 2 * 2 + k % 2, width - 1),
                                                py = std::min(y / 2 * 2 + k / 2, height - 1);
                            for (std::size_t i = 0; i < 3; ++i)
                                sums[i] += source.data()[3 * (std::size_t{py} * width + px) + i];
                        }
                        for (int i = 0; i < 3; ++i) lumaOfFour += sumOf[i] * sums[i];
                        for (const unsigned sample : {1u, 2u}) {
                            const std::int64_t own = sample == 1 ? sums[2] : sums[0];
                            const std::int64_t unit = 2 * (10000 - (sample == 1 ? part.blue : part.red)) * 4 * 255;
                            const std::int64_t n = (10000 * own - lumaOfFour) * (isFull ? 255 : 224);
                            ASSERT_EQ(Rounded(n + 128 * unit, unit),
                                      static_cast<unsigned>(picture.Sample(sample, x, y)))
                                << std::hex << layout.type << std::dec << " " << x << "," << y << " of " << width;
                        }
                    }
            }
}

/// Everything else goes through RGB24, and a filter counts once.
TEST_P(YCbCr, ChainsAndFilters) {
    constexpr std::uint32_t kWidth = 134, kHeight = 8;
    KyRGBFilter filter(8);
    filter.SetMultipliers(0.5, 0.75, 1.5, 3, 0, 0);
    std::vector<std::uint8_t> mosaic = random.Bytes(kWidth * kHeight), rgb(3 * kWidth * kHeight), gained(rgb.size());
    const auto image = [](std::int64_t type, std::vector<std::uint8_t>& bytes) {
        KyImage made = {type, kWidth, kHeight, nullptr, 0, 0, 0};
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&made, &made.size));
        bytes.resize(made.size);
        made.data = bytes.data();
        return made;
    };
    const KyImage bayer = image(0x20010, mosaic), colours = image(KY_TYPE_RGB24, rgb);
    const KyImage withGains = image(KY_TYPE_RGB24, gained);
    Convert(bayer, colours);
    Convert(bayer, withGains, &filter);
    for (const std::int64_t type : {KY_TYPE_NV12 | KY_YCBCR_BT709, KY_TYPE_I420}) {
        std::vector<std::uint8_t> expected, fromMosaic, fromRGB, back;
        Convert(withGains, image(type, expected));
        Convert(bayer, image(type, fromMosaic), &filter);
        EXPECT_EQ(expected, fromMosaic);
        std::vector<std::uint8_t> filtered;
        const KyImage copy = image(KY_TYPE_BGR24, back);
        Convert(colours, copy, &filter);
        Convert(copy, image(type, filtered));
        Convert(colours, image(type, fromRGB), &filter);
        EXPECT_EQ(filtered, fromRGB);

        // Of an area: the whole of a frame, and a part of it to a smaller one.
        const KyPixelConverter& toPlanes = *KyPixelTypeFactory::FindConverter(KY_TYPE_RGB24, type);
        std::vector<std::uint8_t> area(fromRGB.size());
        EXPECT_EQ(KY_STATUS_SUCCESS, toPlanes.Convert(filter, rgb.data(), kWidth, kHeight, area.data(), kWidth, kHeight,
                                                      kWidth, kHeight, 0, 0));
        EXPECT_EQ(fromRGB, area);
        const KyPixelConverter& chain = *KyPixelTypeFactory::FindConverter(0x20010, type);
        EXPECT_EQ(KY_STATUS_SUCCESS, chain.Convert(filter, mosaic.data(), kWidth, kHeight, area.data(), kWidth, kHeight,
                                                   kWidth, kHeight, 0, 0));
        EXPECT_EQ(fromMosaic, area);
        std::vector<std::uint8_t> fromPlanes(3 * kWidth * kHeight), fromArea(fromPlanes.size());
        Convert(image(type, fromRGB), image(KY_TYPE_RGB24, fromPlanes));
        EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelTypeFactory::FindConverter(type, KY_TYPE_RGB24)
                                         ->Convert(fromRGB.data(), kWidth, kHeight, fromArea.data(), kWidth, kHeight,
                                                   kWidth, kHeight, 0, 0));
        EXPECT_EQ(fromPlanes, fromArea);
        EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, toPlanes.Convert(rgb.data(), area.data(), kWidth));
    }
}

/// A part of NV12 is an image; of I420 it is not, for want of a place to say where the third plane is.
TEST(YCbCrPlanes, Parts) {
    ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register());
    constexpr std::uint32_t kWidth = 30, kHeight = 11;
    support::Random random(12);
    std::vector<std::uint8_t> bytes = random.Bytes(2 * 32 * kHeight + 100), whole(3 * kWidth * kHeight), ofPart(whole);
    const KyImage image = {KY_TYPE_NV12, kWidth, kHeight, bytes.data(), bytes.size(), 32, 32 * kHeight + 7};
    const KyImage rgb = {KY_TYPE_RGB24, kWidth, kHeight, whole.data(), whole.size(), 0, 0};
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&image, &rgb, nullptr)) << KyImage_GetError();
    KyImage part, rgbOfPart;
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Crop(&image, 6, 4, 21 + 3, 7, &part, nullptr)) << KyImage_GetError();
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Crop(&rgb, 6, 4, 24, 7, &rgbOfPart, nullptr));
    const KyImage other = {
        KY_TYPE_RGB24, 24, 7, ofPart.data(), ofPart.size(), rgb.stride != 0 ? rgb.stride : 3 * kWidth, 0};
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&part, &other, nullptr)) << KyImage_GetError();
    for (std::size_t y = 0; y < 7; ++y)
        EXPECT_EQ(0, std::memcmp(rgbOfPart.data + y * rgbOfPart.stride, ofPart.data() + y * 3 * kWidth, 3 * 24)) << y;

    const auto expectRefused = [](const KyImage& of, std::uint32_t x, std::uint32_t y, std::uint32_t width,
                                  std::uint32_t height, const char* text) {
        KyImage made;
        EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_Crop(&of, x, y, width, height, &made, nullptr)) << text;
        EXPECT_NE(nullptr, std::strstr(KyImage_GetError(), text)) << KyImage_GetError();
    };
    expectRefused(image, 1, 0, 29, 11, "tears pixels with common colours apart: expected multiples of 2 and 2");
    expectRefused(image, 0, 3, 30, 8, "tears pixels with common colours apart");
    expectRefused(image, 0, 0, 30, 9, "tears pixels with common colours apart");
    KyImage planes = image;
    planes.type = KY_TYPE_I420;
    expectRefused(planes, 0, 0, 30, 4, "third plane where the height says");
    KyImage odd = image;
    odd.stride = odd.planeStride = 0;
    odd.width = 29;
    expectRefused(odd, 0, 0, 28, 8, "expected an even stride");
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Crop(&odd, 0, 0, 29, 11, &part, nullptr)) << KyImage_GetError();
    EXPECT_EQ(0u, part.stride);
    odd.stride = 29;
    std::size_t size = 0;
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyImage_GetSize(&odd, &size));
    EXPECT_NE(nullptr, std::strstr(KyImage_GetError(), "leaves 29 bytes for a line of the other planes"))
        << KyImage_GetError();

    // Bands begin with an even line where the destination shares colours; the same bytes as the whole.
    std::uint32_t step = 0;
    const KyImage encoded = {KY_TYPE_I420, kWidth, kHeight, bytes.data(), bytes.size(), 0, 0};
    std::vector<std::uint8_t> inBands(bytes.size());
    KyImage banded = encoded;
    banded.data = inBands.data();
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_GetBandStep(&rgb, &encoded, nullptr, &step));
    EXPECT_EQ(2u, step);
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&rgb, &encoded, nullptr));
    for (const std::uint32_t first : {8u, 4u, 0u}) {
        KyConversion band = {};
        band.structSize = sizeof band;
        band.firstLine = first;
        band.lineCount = std::min(4u, kHeight - first);
        ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&rgb, &banded, &band)) << KyImage_GetError();
    }
    EXPECT_EQ(bytes, inBands);
}

/// Areas of types in planes are tight images: of interlaced sources both fields, all planes of the identity, no padding.
TEST(YCbCrPlanes, Areas) {
    ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register());
    constexpr std::uint32_t kWidth = 40, kHeight = 6;
    support::Random random(13);
    const auto sizeOf = [](std::int64_t type) {
        KyImage image = {type, kWidth, kHeight, nullptr, 0, 0, 0};
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &image.size));
        return image.size;
    };
    constexpr std::int64_t kInterlaced = 0x00240001,
                           kPlaneTypes[] = {KY_TYPE_NV12, KY_TYPE_I420, KY_TYPE_P010, KY_TYPE_RGB48_PLANAR_SCALED,
                                            KY_TYPE_RGB_FLOAT_PLANAR};
    for (const std::int64_t source : {kInterlaced, KY_TYPE_RGB24, KY_TYPE_NV12, KY_TYPE_RGB10P})
        for (const std::int64_t type :
             {kPlaneTypes[0], kPlaneTypes[1], kPlaneTypes[2], kPlaneTypes[3], kPlaneTypes[4], KY_TYPE_RGB48}) {
            const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(source, type);
            if (converter == nullptr) continue;
            std::vector<std::uint8_t> bytes = random.Bytes(sizeOf(source)), image(sizeOf(type));
            const KyImage from = {source, kWidth, kHeight, bytes.data(), bytes.size(), 0, 0};
            const KyImage to = {type, kWidth, kHeight, image.data(), image.size(), 0, 0};
            ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&from, &to, nullptr)) << KyImage_GetError();
            support::GuardedBuffer area(image.size(), support::GuardedBuffer::Side::kEnd, 0);
            const std::uint32_t padding = (type & KY_TYPE_PLANAR) != 0 ? 16 : 0;
            EXPECT_EQ(KY_STATUS_SUCCESS, converter->Convert(bytes.data(), kWidth, kHeight, area.data(), kWidth, kHeight,
                                                            kWidth, kHeight, 0, padding));
            EXPECT_TRUE(std::equal(image.begin(), image.end(), area.data())) << std::hex << source << " to " << type;
        }
    for (const std::int64_t type : kPlaneTypes) {
        const std::vector<std::uint8_t> bytes = random.Bytes(sizeOf(type));
        support::GuardedBuffer area(bytes.size(), support::GuardedBuffer::Side::kEnd, 0);
        EXPECT_EQ(KY_STATUS_SUCCESS,
                  KyPixelTypeFactory::FindConverter(type, type)
                      ->Convert(bytes.data(), kWidth, kHeight, area.data(), kWidth, kHeight, kWidth, kHeight, 0, 0));
        EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), area.data())) << std::hex << type;
    }
}

/// What an application makes of the library's classes for types with other planes touches nothing outside of the images.
TEST(YCbCrPlanes, ConvertersOfApplications) {
    ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register());
    constexpr std::uint32_t kWidth = 64, kHeight = 4;
    const auto convert = [](std::int64_t source, std::int64_t destination, const KyRGBFilter* filter) {
        KyImage from = {source, kWidth, kHeight, nullptr, 0, 0, 0},
                to = {destination, kWidth, kHeight, nullptr, 0, 0, 0};
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&from, &from.size));
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&to, &to.size));
        support::GuardedBuffer in(from.size, support::GuardedBuffer::Side::kEnd, 0),
            out(to.size, support::GuardedBuffer::Side::kEnd, 0);
        std::fill_n(in.data(), from.size, std::uint8_t{200});
        from.data = in.data();
        to.data = out.data();
        KyConversion conversion = {};
        conversion.structSize = sizeof conversion;
        conversion.filter = filter;
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&from, &to, &conversion)) << KyImage_GetError();
        return std::vector<std::uint8_t>(out.data(), out.data() + to.size);
    };
    static const KyIdentityConverter copy(KY_TYPE_NV12, KY_TYPE_NV16, 2, 2), back(KY_TYPE_NV16, KY_TYPE_NV12, 2, 2);
    convert(KY_TYPE_NV12, KY_TYPE_NV16, nullptr);
    convert(KY_TYPE_NV16, KY_TYPE_NV12, nullptr);

    // One stage more than a pipeline has room for, when there is a filter.
    KyRGBFilter filter(8);
    filter.SetMultipliers(0.5, 0.5, 0.5);
    const auto find = [](std::int64_t source, std::int64_t destination) {
        return KyPixelTypeFactory::FindConverter(source, destination);
    };
    static const KyComplexConverter two(find(KY_TYPE_RGBA32, KY_TYPE_RGB32), find(KY_TYPE_RGB32, KY_TYPE_RGB24));
    static const KyComplexConverter three(&two, find(KY_TYPE_RGB24, KY_TYPE_NV12));
    constexpr std::int64_t kOther = 0x1000200F0;  // so that the pair is free for the chain
    static const KyPixelType other(kOther, 32, 4, false);
    EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelTypeFactory::RegisterPixelType(kOther, &other, "A type of a test"));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelTypeFactory::RegisterPixelConverter(kOther, KY_TYPE_NV12, &three));
    const std::vector<std::uint8_t> image = convert(kOther, KY_TYPE_NV12, &filter);
    std::vector<std::uint8_t> source(4 * kWidth * kHeight, 200), area(image.size());
    EXPECT_EQ(KY_STATUS_SUCCESS, three.Convert(filter, source.data(), kWidth, kHeight, area.data(), kWidth, kHeight,
                                               kWidth, kHeight, 0, 0));
    EXPECT_EQ(area, image);
    EXPECT_NE(0, area[0]);
}

INSTANTIATE_TEST_SUITE_P(Levels, YCbCr, testing::ValuesIn(support::AvailableLevels()),
                         [](const auto& test) { return std::string(KyCpuLevel::GetName(test.param)); });

}  // namespace
