// RGB and gray of more or fewer bits than 8: against the arithmetic of the manual, sample by sample.
#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <tests/extended/ConvertImage.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Random.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <cstring>

namespace {

constexpr std::int64_t kGray16 = 0x100010020;
constexpr std::int64_t kRGB48Scaled = 0x100020030, kRGBA64Scaled = 0x100020031, kRGBA64 = 0x100020032;
constexpr std::int64_t kWordPlanes = 0x100820040, kFloatPlanes = 0x100820041;

using Words = std::vector<unsigned>;
using Pixel = std::array<unsigned, 3>;

Words WordsOf(const Bytes& bytes) {
    Words words;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) words.push_back(bytes[i] | unsigned{bytes[i + 1]} << 8);
    return words;
}

void Append(Bytes& bytes, unsigned word) {
    bytes.push_back(static_cast<std::uint8_t>(word & 255));
    bytes.push_back(static_cast<std::uint8_t>(word >> 8));
}

/// value * to / from, rounded to nearest.
unsigned Scaled(unsigned value, unsigned from, unsigned to) {
    return static_cast<unsigned>((std::uint64_t{value} * to * 2 + from) / (2 * std::uint64_t{from}));
}

unsigned Largest(unsigned bits) { return (1u << bits) - 1; }

/// What a destination has to hold of RGB whose samples have so many bits.
Words DeepPixels(std::int64_t type, const Words& rgb, unsigned bits) {
    Words words;
    for (std::size_t i = 0; i < rgb.size(); i += 3) {
        for (std::size_t k = 0; k < 3; ++k)
            words.push_back(type == kRGBA64 || type == KY_TYPE_RGB48 ? rgb[i + k]
                                                                     : Scaled(rgb[i + k], Largest(bits), 65535));
        if (type == kRGBA64) words.push_back(Largest(bits));
        if (type == kRGBA64Scaled) words.push_back(65535);
    }
    return words;
}

/// The samples of one channel after the other.
Words InPlanes(const Words& rgb) {
    Words planes;
    for (std::size_t k = 0; k < 3; ++k)
        for (std::size_t i = k; i < rgb.size(); i += 3) planes.push_back(rgb[i]);
    return planes;
}

/// Floats from 0 to 1.
Bytes FloatsOf(const Words& samples, unsigned bits) {
    Bytes bytes(4 * samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const float value = static_cast<float>(samples[i]) / static_cast<float>(Largest(bits));
        std::memcpy(bytes.data() + 4 * i, &value, sizeof value);
    }
    return bytes;
}

Words LumaOf(const Bytes& rgb) {
    Words luma;
    for (std::size_t i = 0; i < rgb.size(); i += 3)
        luma.push_back(((299u * rgb[i] + 587u * rgb[i + 1] + 114u * rgb[i + 2]) * 257 + 500) / 1000);
    return luma;
}

/// RGB types of words: their channels, the bits of a sample, and the lowest bit that it has in its word.
struct WordFormat {
    std::int64_t type;
    std::size_t channels;
    unsigned bits, lowest;
};

constexpr WordFormat kWordFormats[] = {
    {0x20004, 3, 16, 0},      {0x120004, 3, 16, 0},      {0x20005, 4, 16, 0},  {0x120005, 4, 16, 0},
    {0x20008, 3, 10, 0},      {0x2000C, 3, 12, 0},       {0x20009, 4, 10, 0},  {0x2000D, 4, 12, 0},
    {0x120008, 3, 10, 6},     {0x12000C, 3, 12, 4},      {0x120009, 4, 10, 6}, {0x12000D, 4, 12, 4},
    {kRGB48Scaled, 3, 16, 0}, {kRGBA64Scaled, 4, 16, 0}, {kRGBA64, 4, 16, 0},
};

/// Sources of other bits: pixel i of a line.
struct BitFormat {
    std::int64_t type;
    unsigned groupPixels, groupBytes;
    std::array<unsigned, 3> first, bits;  ///< of red, green and blue, counted from the lowest bit of a pixel
};

constexpr BitFormat kBitFormats[] = {
    {0x100020034, 1, 2, {11, 5, 0}, {5, 6, 5}},      {0x100020035, 1, 2, {0, 5, 11}, {5, 6, 5}},
    {0x100020036, 1, 2, {10, 5, 0}, {5, 5, 5}},      {0x100020037, 1, 2, {0, 5, 10}, {5, 5, 5}},
    {0x100020038, 1, 4, {0, 10, 20}, {10, 10, 10}},  {0x100020039, 1, 4, {20, 10, 0}, {10, 10, 10}},
    {0x10042003A, 4, 15, {0, 10, 20}, {10, 10, 10}}, {0x10042003B, 4, 15, {20, 10, 0}, {10, 10, 10}},
};

Pixel PixelAt(const BitFormat& format, const std::uint8_t* line, std::size_t x) {
    const std::size_t pixelBits = format.groupBytes * 8 / format.groupPixels;
    Pixel pixel = {};
    for (std::size_t k = 0; k < 3; ++k)
        for (unsigned n = 0; n < format.bits[k]; ++n) {
            const std::size_t bit = x * pixelBits + format.first[k] + n;
            pixel[k] |= (line[bit / 8] >> bit % 8 & 1u) << n;
        }
    return pixel;
}

/// RGB in planes: the bits of a sample, and the planes of red, green and blue.
struct PlanarFormat {
    std::int64_t type;
    unsigned bits;
    std::array<std::size_t, 3> planes;
};

constexpr PlanarFormat kPlanarFormats[] = {
    {KY_TYPE_RGB24_PLANAR, 8, {0, 1, 2}}, {0x82000A, 8, {0, 1, 2}},     {0x100820044, 8, {2, 0, 1}},
    {0x100820042, 10, {0, 1, 2}},         {0x100820043, 12, {0, 1, 2}}, {kWordPlanes, 16, {0, 1, 2}},
};

/// Bits of a type's samples in RGB48; 8 where it becomes RGB24 only.
unsigned DepthOf(std::int64_t id) {
    for (const WordFormat& format : kWordFormats)
        if (format.type == id) return format.bits;
    for (const BitFormat& format : kBitFormats)
        if (format.type == id) return format.bits[0] == 10 ? 10 : 8;
    for (const PlanarFormat& format : kPlanarFormats)
        if (format.type == id) return format.bits;
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
    if (!type.IsBayerPattern()) return 8;
    return KyPixelTypeFactory::FindPixelType(type.GetPlainTypeID())->GetPixelBitSize();
}

std::vector<std::int64_t> SourcesOf(std::int64_t destination) {
    std::vector<std::int64_t> types;
    std::int64_t type = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumConverterTo(i, destination, type); ++i) types.push_back(type);
    return types;
}

struct Gains : KyRGBFilter {
    explicit Gains(std::uint32_t bits) : KyRGBFilter(bits) { SetMultipliers(1.75, 0.625, 1.25, 3, 0, 1); }
};

Words Filtered(Words rgb, const KyRGBFilter& filter) {
    for (std::size_t i = 0; i < rgb.size(); i += 3) {
        rgb[i] = filter.GetRedValue16(rgb[i]);
        rgb[i + 1] = filter.GetGreenValue16(rgb[i + 1]);
        rgb[i + 2] = filter.GetBlueValue16(rgb[i + 2]);
    }
    return rgb;
}

class ExtendedColours : public testing::TestWithParam<std::uint32_t> {
protected:
    void SetUp() override { ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register()); }

    const support::ScopedCpuLevel level{GetParam()};
    support::Random random{11};
};

std::vector<std::uint32_t> WidthsAnd(std::uint32_t longOne) {
    std::vector<std::uint32_t> widths = {longOne};
    for (std::uint32_t width = 1; width < 140; ++width) widths.push_back(width);
    return widths;
}

TEST_P(ExtendedColours, BytesBecomeWords) {
    for (const std::uint32_t width : WidthsAnd(4099)) {
        Bytes bytes = random.Bytes(std::size_t{width} * 3);
        for (std::size_t i = 0; width > 256 && i < 768; ++i) bytes[i] = static_cast<std::uint8_t>(i / 3);
        const Words samples(bytes.begin(), bytes.end());
        for (const std::int64_t type : {kRGB48Scaled, kRGBA64Scaled, kRGBA64, KY_TYPE_RGB48})
            ASSERT_EQ(DeepPixels(type, samples, 8), WordsOf(ConvertImage(KY_TYPE_RGB24, type, bytes, width, 1)))
                << type << " " << width;
        ASSERT_EQ(LumaOf(bytes), WordsOf(ConvertImage(KY_TYPE_RGB24, kGray16, bytes, width, 1))) << width;
        ASSERT_EQ(InPlanes(DeepPixels(kRGB48Scaled, samples, 8)),
                  WordsOf(ConvertImage(KY_TYPE_RGB24, kWordPlanes, bytes, width, 1)))
            << width;
        ASSERT_EQ(FloatsOf(InPlanes(samples), 8), ConvertImage(KY_TYPE_RGB24, kFloatPlanes, bytes, width, 1)) << width;
    }
}

/// Every sample in each channel.
TEST_P(ExtendedColours, WordsKeepTheirDepth) {
    for (const WordFormat& format : kWordFormats)
        for (const std::uint32_t width : WidthsAnd(65536)) {
            Bytes bytes;
            Words samples;
            for (std::uint32_t x = 0; x < width; ++x)
                for (std::size_t k = 0; k < format.channels; ++k) {
                    const unsigned word =
                        width < 140 ? random.Below(65536) : (x + 21845 * static_cast<unsigned>(k)) & 0xFFFF;
                    Append(bytes, word);
                    if (k < 3) samples.push_back(word >> format.lowest & Largest(format.bits));
                }
            for (const std::int64_t type : {kRGB48Scaled, kRGBA64Scaled, kRGBA64, KY_TYPE_RGB48})
                if (type != format.type) {
                    ASSERT_EQ(DeepPixels(type, samples, format.bits),
                              WordsOf(ConvertImage(format.type, type, bytes, width, 1)))
                        << format.type << " to " << type << ", width " << width;
                }
            ASSERT_EQ(InPlanes(DeepPixels(kRGB48Scaled, samples, format.bits)),
                      WordsOf(ConvertImage(format.type, kWordPlanes, bytes, width, 1)))
                << format.type << " " << width;
            ASSERT_EQ(FloatsOf(InPlanes(samples), format.bits),
                      ConvertImage(format.type, kFloatPlanes, bytes, width, 1))
                << format.type << " " << width;
            if (format.type == KY_TYPE_RGB48) continue;
            const Gains gains(format.bits);
            ASSERT_EQ(Filtered(samples, gains),
                      WordsOf(ConvertImage(format.type, KY_TYPE_RGB48, bytes, width, 1, 0, &gains)))
                << format.type << " " << width;
        }
}

/// Every sample in each channel and each place of a group.
TEST_P(ExtendedColours, BitsBecomeTheNearestBytes) {
    for (const BitFormat& format : kBitFormats)
        for (const std::uint32_t width : WidthsAnd(65536)) {
            const std::uint32_t height = width < 140 ? 2 : 1;
            const std::size_t line = (width + format.groupPixels - 1) / format.groupPixels * format.groupBytes;
            Bytes bytes = random.Bytes(line * height);
            for (std::size_t i = 0; format.groupBytes == 2 && width == 65536 && i < line; ++i)
                bytes[i] = static_cast<std::uint8_t>(i / 2 >> i % 2 * 8);
            Bytes rgb;
            Words words;
            for (std::uint32_t y = 0; y < height; ++y)
                for (std::uint32_t x = 0; x < width; ++x) {
                    const Pixel pixel = PixelAt(format, bytes.data() + y * line, x);
                    for (std::size_t k = 0; k < 3; ++k) {
                        rgb.push_back(static_cast<std::uint8_t>(Scaled(pixel[k], Largest(format.bits[k]), 255)));
                        words.push_back(pixel[k]);
                    }
                }
            ASSERT_EQ(rgb, ConvertImage(format.type, KY_TYPE_RGB24, bytes, width, height))
                << format.type << " " << width;
            if (format.bits[0] == 10) {
                ASSERT_EQ(words, WordsOf(ConvertImage(format.type, KY_TYPE_RGB48, bytes, width, height)))
                    << format.type << " " << width;
                const Gains gains(10);
                ASSERT_EQ(Filtered(words, gains),
                          WordsOf(ConvertImage(format.type, KY_TYPE_RGB48, bytes, width, height, 0, &gains)))
                    << format.type << " " << width;
            }
            const Gains gains(8);
            for (const std::int64_t type :
                 {KY_TYPE_RGB16, KY_TYPE_RGB24, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32, KY_TYPE_RGB24_PLANAR})
                ASSERT_EQ(ConvertImage(0x420002, type, rgb, width, height, 0, &gains),
                          ConvertImage(format.type, type, bytes, width, height, 0, &gains))
                    << format.type << " to " << type << ", width " << width;
        }
}

/// Every sample in each channel; planes may be anywhere and lines have any stride.
TEST_P(ExtendedColours, PlanesBecomePixels) {
    for (const PlanarFormat& format : kPlanarFormats)
        for (const std::uint32_t width : WidthsAnd(65536)) {
            const std::size_t sampleBytes = format.bits == 8 ? 1 : 2, plane = width * sampleBytes;
            Bytes bytes;
            for (std::size_t k = 0; k < 3; ++k)
                for (unsigned x = 0; x < width; ++x) {
                    const unsigned value = (width < 140 ? random.Below(65536) : x + 21845u * static_cast<unsigned>(k)) &
                                           Largest(format.bits);
                    for (std::size_t n = 0; n < sampleBytes; ++n)
                        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * n));
                }
            Bytes pixels;
            for (std::size_t x = 0; x < width; ++x)
                for (const std::size_t at : format.planes)
                    for (std::size_t n = 0; n < sampleBytes; ++n)
                        pixels.push_back(bytes[at * plane + x * sampleBytes + n]);
            const std::int64_t pixelType = format.bits == 8 ? KY_TYPE_RGB24 : KY_TYPE_RGB48;
            ASSERT_EQ(pixels, ConvertImage(format.type, pixelType, bytes, width, 1)) << format.type << " " << width;
            const Gains gains(format.bits);
            const Words samples = format.bits == 8 ? Words(pixels.begin(), pixels.end()) : WordsOf(pixels);
            const Bytes filtered = ConvertImage(format.type, pixelType, bytes, width, 1, 0, &gains);
            ASSERT_EQ(Filtered(samples, gains),
                      format.bits == 8 ? Words(filtered.begin(), filtered.end()) : WordsOf(filtered))
                << format.type << " " << width;
            Bytes rgb;
            for (const unsigned sample : Filtered(samples, gains))
                rgb.push_back(static_cast<std::uint8_t>(sample >> (format.bits - 8)));
            for (const std::int64_t type : {KY_TYPE_RGB16, KY_TYPE_RGB24, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32,
                                            KY_TYPE_RGB24_PLANAR, std::int64_t{0x100020023}})
                if (type != format.type) {
                    ASSERT_EQ(ConvertImage(0x420002, type, rgb, width, 1),
                              ConvertImage(format.type, type, bytes, width, 1, 0, &gains))
                        << format.type << " to " << type << ", width " << width;
                }
        }
}

/// From and to planes that lie apart, with lines of a stride.
TEST_P(ExtendedColours, PlanesLieWhereTheImageSays) {
    constexpr std::uint32_t kWidth = 77, kHeight = 5;
    const Bytes rgb = random.Bytes(std::size_t{kWidth} * kHeight * 3);
    for (const std::int64_t type : {kWordPlanes, kFloatPlanes}) {
        const Bytes tight = ConvertImage(KY_TYPE_RGB24, type, rgb, kWidth, kHeight);
        const std::size_t line = tight.size() / 3 / kHeight, stride = line + 20, planeStride = kHeight * stride + 12;
        Bytes padded(3 * planeStride, 0xEE), words(std::size_t{kWidth} * kHeight * 6);
        Bytes source = rgb, expected = padded;
        for (std::size_t i = 0; i < 3 * kHeight; ++i)
            std::copy_n(
                tight.begin() + static_cast<std::ptrdiff_t>(i * line), line,
                expected.begin() + static_cast<std::ptrdiff_t>(i / kHeight * planeStride + i % kHeight * stride));
        const KyImage from = {KY_TYPE_RGB24, kWidth, kHeight, source.data(), source.size(), 0, 0};
        const KyImage planes = {type, kWidth, kHeight, padded.data(), padded.size(), stride, planeStride};
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&from, &planes, nullptr)) << KyImage_GetError();
        EXPECT_EQ(expected, padded);
        if (type == kFloatPlanes) continue;
        const KyImage to = {KY_TYPE_RGB48, kWidth, kHeight, words.data(), words.size(), 0, 0};
        EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_Convert(&planes, &to, nullptr)) << KyImage_GetError();
        EXPECT_EQ(ConvertImage(KY_TYPE_RGB24, kRGB48Scaled, rgb, kWidth, kHeight), words);
    }
}

/// What becomes RGB16 becomes the type of the same bytes that has three colours as a source: samples of 5 and 6 bits come back.
TEST_P(ExtendedColours, BGR565pIsRGB16WithThreeColours) {
    constexpr std::int64_t kBGR565p = 0x100020034;
    constexpr std::uint32_t kWidth = 256, kHeight = 256;
    Bytes words;
    for (unsigned word = 0; word < 65536; ++word) Append(words, word);
    const Bytes rgb = ConvertImage(kBGR565p, KY_TYPE_RGB24, words, kWidth, kHeight);
    EXPECT_EQ(words, ConvertImage(KY_TYPE_RGB24, kBGR565p, rgb, kWidth, kHeight));
    EXPECT_EQ(words, ConvertImage(kBGR565p, KY_TYPE_RGB16, words, kWidth, kHeight));
    EXPECT_EQ(SourcesOf(KY_TYPE_RGB16).size(), SourcesOf(kBGR565p).size());
}

TEST_P(ExtendedColours, GrayIsScaledAtItsDepth) {
    for (const std::int64_t source : SourcesOf(kGray16)) {
        if ((source & KY_COLOUR_SPACE_MASK) != KY_COLOUR_SPACE_GRAYSCALE || source == kGray16) continue;
        const std::int64_t plain = KyPixelTypeFactory::FindPixelType(source)->GetPlainTypeID();
        const unsigned bits = KyPixelTypeFactory::FindPixelType(plain)->GetPixelBitSize();
        for (const std::uint32_t width : {66u, source == plain ? 65536u : 64u}) {
            Bytes bytes = random.Bytes(ImageSize(source, width, 2));
            for (std::size_t i = 0; width == 65536 && i < bytes.size(); ++i)
                bytes[i] = static_cast<std::uint8_t>(bits == 8 ? i : i / 2 >> i % 2 * 8);
            const Bytes gray = ConvertImage(source, plain, bytes, width, 2);
            Words expected = bits == 8 ? Words(gray.begin(), gray.end()) : WordsOf(gray);
            for (unsigned& value : expected) value = Scaled(value & Largest(bits), Largest(bits), 65535);
            ASSERT_EQ(expected, WordsOf(ConvertImage(source, kGray16, bytes, width, 2))) << source << " " << width;
        }
    }
}

/// Whatever becomes RGB24 reaches every destination, at the depth it has, and passes a filter once.
TEST_P(ExtendedColours, EveryPictureConverts) {
    constexpr std::uint32_t kWidth = 36, kHeight = 6, kFlags = 0x140;
    std::size_t deep = 0;
    for (const std::int64_t source : SourcesOf(KY_TYPE_RGB24)) {
        if (!KyPixelTypeFactory::HasPixelType(source)) continue;  // another test has a converter from it
        const unsigned bits = DepthOf(source);
        deep += bits > 8;
        const std::int64_t between = bits == 8 ? KY_TYPE_RGB24 : KY_TYPE_RGB48;
        // Identity converters apply no filter; these types have the same bytes.
        const std::int64_t likeRGB24 = source == KY_TYPE_RGB24 ? 0x420002 : source;
        const std::int64_t alike = source == KY_TYPE_RGB48 ? 0x120004 : likeRGB24;
        const Bytes bytes = random.Bytes(ImageSize(source, kWidth, kHeight));
        const Gains gains(bits);
        for (const KyRGBFilter* const filter :
             {static_cast<const KyRGBFilter*>(nullptr), static_cast<const KyRGBFilter*>(&gains)}) {
            const Bytes rgb = ConvertImage(alike, between, bytes, kWidth, kHeight, kFlags, filter);
            const Words samples = bits == 8 ? Words(rgb.begin(), rgb.end()) : WordsOf(rgb);
            const std::string what = std::to_string(source) + (filter == nullptr ? "" : " with gains");
            for (const std::int64_t type : {kRGB48Scaled, kRGBA64Scaled, kRGBA64, KY_TYPE_RGB48})
                if (type != source) {
                    EXPECT_EQ(DeepPixels(type, samples, bits),
                              WordsOf(ConvertImage(source, type, bytes, kWidth, kHeight, kFlags, filter)))
                        << what << " to " << type;
                }
            EXPECT_EQ(FloatsOf(InPlanes(samples), bits),
                      ConvertImage(source, kFloatPlanes, bytes, kWidth, kHeight, kFlags, filter))
                << what;
            if (source != kWordPlanes) {
                EXPECT_EQ(InPlanes(DeepPixels(kRGB48Scaled, samples, bits)),
                          WordsOf(ConvertImage(source, kWordPlanes, bytes, kWidth, kHeight, kFlags, filter)))
                    << what;
            }
            if ((source & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE) continue;
            const Bytes rgb24 = ConvertImage(likeRGB24, KY_TYPE_RGB24, bytes, kWidth, kHeight, kFlags, filter);
            EXPECT_EQ(LumaOf(rgb24), WordsOf(ConvertImage(source, kGray16, bytes, kWidth, kHeight, kFlags, filter)))
                << what;
        }
    }
    EXPECT_GE(deep, 60u);
}

/// Of types of four bytes a pixel, too.
TEST_P(ExtendedColours, FourBytesPassAFilterOnce) {
    constexpr std::uint32_t kWidth = 67, kHeight = 4;
    const Gains gains(8);
    const std::int64_t fourBytes[] = {0x100020020, 0x100020021, 0x100020022, 0x100020023};
    const Bytes rgb32 = random.Bytes(std::size_t{kWidth} * kHeight * 4);
    const Bytes expected = ConvertImage(KY_TYPE_RGB32, KY_TYPE_RGB24, rgb32, kWidth, kHeight, 0, &gains);
    for (const std::int64_t source : fourBytes) {
        const Bytes bytes = ConvertImage(KY_TYPE_RGB32, source, rgb32, kWidth, kHeight);
        EXPECT_EQ(expected, ConvertImage(source, KY_TYPE_RGB24, bytes, kWidth, kHeight, 0, &gains)) << source;
        for (const std::int64_t type : {fourBytes[0], fourBytes[1], fourBytes[2], fourBytes[3], KY_TYPE_RGB32})
            for (const std::int64_t from : {source, KY_TYPE_RGB32, KY_TYPE_BGR24}) {
                if (from == type) continue;
                const Bytes pixels = ConvertImage(KY_TYPE_RGB32, from, rgb32, kWidth, kHeight);
                const Bytes filtered =
                    ConvertImage(from, type, from == KY_TYPE_RGB32 ? rgb32 : pixels, kWidth, kHeight, 0, &gains);
                EXPECT_EQ(expected, ConvertImage(type, KY_TYPE_RGB24, filtered, kWidth, kHeight))
                    << from << " to " << type;
            }
    }
}

/// The area form makes what the image form makes.
TEST_P(ExtendedColours, AreasAreImages) {
    constexpr std::uint32_t kWidth = 36, kHeight = 4;
    const Gains gains(10);
    std::vector<std::pair<std::int64_t, std::int64_t>> pairs;
    for (const BitFormat& format : kBitFormats)
        for (const std::int64_t type : {KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR, KY_TYPE_RGB48, kRGBA64Scaled, kGray16})
            pairs.emplace_back(format.type, type);
    for (const std::int64_t source : {std::int64_t{0x20011}, KY_TYPE_RGB24, KY_TYPE_RGB48, std::int64_t{0x10003}})
        for (const std::int64_t type : {kRGB48Scaled, kRGBA64, kGray16, kWordPlanes, kFloatPlanes})
            pairs.emplace_back(source, type);
    for (const PlanarFormat& format : kPlanarFormats)
        for (const std::int64_t type : {KY_TYPE_RGB24, KY_TYPE_BGR32, KY_TYPE_RGB48, kRGBA64, kFloatPlanes})
            pairs.emplace_back(format.type, type);
    for (const auto& [source, type] : pairs) {
        Bytes bytes = random.Bytes(ImageSize(source, kWidth, kHeight)), area(ImageSize(type, kWidth, kHeight));
        const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(source, type);
        ASSERT_NE(nullptr, converter) << source << " to " << type;
        EXPECT_EQ(KY_STATUS_SUCCESS, converter->Convert(gains, bytes.data(), kWidth, kHeight, area.data(), kWidth,
                                                        kHeight, kWidth, kHeight, 0x110, 0));
        EXPECT_EQ(ConvertImage(source, type, bytes, kWidth, kHeight, 0x110, &gains), area) << source << " to " << type;
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, ExtendedColours, testing::ValuesIn(support::AvailableLevels()),
                         [](const auto& test) { return std::string(KyCpuLevel::GetName(test.param)); });

}  // namespace
