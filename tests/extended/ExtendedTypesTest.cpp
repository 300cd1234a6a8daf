// Formats beyond those that are there after loading: what is registered, and their samples bit by bit.
#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <tests/extended/ConvertImage.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Random.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <cstring>

namespace {

/// Bit `n` of a stream that begins with the lowest bit of each byte.
unsigned StreamBit(const std::uint8_t* bytes, std::size_t n) { return bytes[n / 8] >> n % 8 & 1; }

unsigned StreamBits(const std::uint8_t* bytes, std::size_t first, unsigned count) {
    unsigned value = 0;
    for (unsigned k = 0; k < count; ++k) value |= StreamBit(bytes, first + k) << k;
    return value;
}

/// Sample i of a line.
using Sample = unsigned (*)(const std::uint8_t* line, std::size_t i);

/// PFNC, "p": sample after sample in one stream.
template <unsigned kBits>
unsigned LeastFirst(const std::uint8_t* line, std::size_t i) {
    return StreamBits(line, i * kBits, kBits);
}

/// Samples of less than a byte as gray: 0 to 255.
template <unsigned kBits>
unsigned FullRange(const std::uint8_t* line, std::size_t i) {
    return LeastFirst<kBits>(line, i) * 255 / ((1u << kBits) - 1);
}

/// MIPI CSI-2: the high bytes of a group, then a stream of the low bits.
template <unsigned kBits, unsigned kGroup>
unsigned HighBytesFirst(const std::uint8_t* line, std::size_t i) {
    const std::uint8_t* const group = line + i / kGroup * (kGroup * kBits / 8);
    const std::size_t n = i % kGroup;
    return unsigned{group[n]} << (kBits - 8) | StreamBits(group + kGroup, n * (kBits - 8), kBits - 8);
}

unsigned BigEndian(const std::uint8_t* line, std::size_t i) {
    return static_cast<unsigned>(line[2 * i] << 8 | line[2 * i + 1]);
}

struct Row {
    std::int64_t type;
    const char* name;
    std::int64_t plain;
    unsigned bits, groupPixels, groupBytes;
    Sample sample;
};

constexpr std::int64_t kBayer16 = 0x10002000E;

constexpr Row kRows[] = {
    {0x100410001, "Grayscale 10-bits, Packed p", 0x10002, 10, 4, 5, LeastFirst<10>},
    {0x100410002, "Grayscale 12-bits, Packed p", 0x10003, 12, 2, 3, LeastFirst<12>},
    {0x100410003, "Grayscale 14-bits, Packed p", 0x10004, 14, 4, 7, LeastFirst<14>},
    {0x100410004, "Grayscale 10-bits, Packed MIPI", 0x10002, 10, 4, 5, HighBytesFirst<10, 4>},
    {0x100410005, "Grayscale 12-bits, Packed MIPI", 0x10003, 12, 2, 3, HighBytesFirst<12, 2>},
    {0x100410006, "Grayscale 14-bits, Packed MIPI", 0x10004, 14, 4, 7, HighBytesFirst<14, 4>},
    {0x100410007, "Grayscale 1-bits, Packed p", 0x10001, 1, 8, 1, FullRange<1>},
    {0x100410008, "Grayscale 2-bits, Packed p", 0x10001, 2, 4, 1, FullRange<2>},
    {0x100410009, "Grayscale 4-bits, Packed p", 0x10001, 4, 2, 1, FullRange<4>},
    {0x10001000A, "Grayscale 10-bits, Big-endian", 0x10002, 10, 1, 2, BigEndian},
    {0x10001000B, "Grayscale 12-bits, Big-endian", 0x10003, 12, 1, 2, BigEndian},
    {0x10001000C, "Grayscale 14-bits, Big-endian", 0x10004, 14, 1, 2, BigEndian},
    {0x10001000D, "Grayscale 16-bits, Big-endian", 0x10005, 16, 1, 2, BigEndian},
    {0x100420001, "Bayer RGB 10-bits, Packed p", 0x20011, 10, 4, 5, LeastFirst<10>},
    {0x100420002, "Bayer RGB 12-bits, Packed p", 0x20012, 12, 2, 3, LeastFirst<12>},
    {0x100420003, "Bayer RGB 14-bits, Packed p", 0x20016, 14, 4, 7, LeastFirst<14>},
    {0x100420004, "Bayer RGB 10-bits, Packed MIPI", 0x20011, 10, 4, 5, HighBytesFirst<10, 4>},
    {0x100420005, "Bayer RGB 12-bits, Packed MIPI", 0x20012, 12, 2, 3, HighBytesFirst<12, 2>},
    {0x100420006, "Bayer RGB 14-bits, Packed MIPI", 0x20016, 14, 4, 7, HighBytesFirst<14, 4>},
    {0x10002000A, "Bayer RGB 10-bits, Big-endian", 0x20011, 10, 1, 2, BigEndian},
    {0x10002000B, "Bayer RGB 12-bits, Big-endian", 0x20012, 12, 1, 2, BigEndian},
    {0x10002000C, "Bayer RGB 14-bits, Big-endian", 0x20016, 14, 1, 2, BigEndian},
    {0x10002000D, "Bayer RGB 16-bits, Big-endian", kBayer16, 16, 1, 2, BigEndian},
    {kBayer16, "Bayer RGB 16-bits", kBayer16, 16, 1, 2, nullptr},
};

/// Others, which have tests of their own.
constexpr std::pair<std::int64_t, const char*> kColours[] = {
    {0x100010020, "Grayscale 16-bits, Scaled"},
    {0x100020030, "RGB 48-bits, Scaled"},
    {0x100020031, "RGBA 64-bits, Scaled"},
    {0x100020032, "RGBA 64-bits"},
    {0x100020034, "BGR 16-bits (5-6-5)"},
    {0x100020035, "RGB 16-bits (5-6-5)"},
    {0x100020036, "BGR 15-bits (5-5-5)"},
    {0x100020037, "RGB 15-bits (5-5-5)"},
    {0x100020038, "RGB 30-bits (3 x 10 bits in 32)"},
    {0x100020039, "BGR 30-bits (3 x 10 bits in 32)"},
    {0x10042003A, "RGB 30-bits (3 x 10 bits), Packed p"},
    {0x10042003B, "BGR 30-bits (3 x 10 bits), Packed p"},
    {0x100820040, "RGB 48-bits, Planar, Scaled"},
    {0x100820041, "RGB 96-bits (3 x float), Planar"},
    {0x100820042, "RGB 30-bits (3 x 10 bits), Planar"},
    {0x100820043, "RGB 36-bits (3 x 12 bits), Planar"},
    {0x100820044, "GBR 24-bits, Planar"},
};

/// Four bytes a pixel: the places of red, green, blue and alpha.
struct FourBytes {
    std::int64_t type;
    const char* name;
    std::size_t red, green, blue, alpha;
};

constexpr FourBytes kFourBytes[] = {
    {0x100020020, "RGBA 32-bits", 0, 1, 2, 3},
    {0x100020021, "BGRA 32-bits", 2, 1, 0, 3},
    {0x100020022, "ARGB 32-bits", 1, 2, 3, 0},
    {0x100020023, "ABGR 32-bits", 3, 2, 1, 0},
};

/// Each in four colours.
constexpr std::pair<std::int64_t, const char*> kYCbCrLayouts[] = {
    {0x100040100, "YCbCr 8-bits 4:2:2, YUYV"},   {0x100040110, "YCbCr 8-bits 4:2:2, UYVY"},
    {0x100040120, "YCbCr 8-bits 4:2:2, YVYU"},   {0x100040130, "YCbCr 8-bits 4:2:2, VYUY"},
    {0x100440140, "YCbCr 8-bits 4:4:4, YUV"},    {0x100440150, "YCbCr 8-bits 4:4:4, UYV"},
    {0x100440160, "YCbCr 8-bits 4:1:1, YYUYYV"}, {0x100440170, "YCbCr 8-bits 4:1:1, UYYVYY"},
    {0x100040180, "YCbCr 10-bits 4:2:2, YUYV"},  {0x100040190, "YCbCr 12-bits 4:2:2, YUYV"},
    {0x1001401A0, "YCbCr 10-bits 4:2:2, Y210"},  {0x1008401B0, "YCbCr 8-bits 4:2:0, NV12"},
    {0x1008401C0, "YCbCr 8-bits 4:2:0, NV21"},   {0x1008401D0, "YCbCr 8-bits 4:2:2, NV16"},
    {0x1008401E0, "YCbCr 8-bits 4:2:0, I420"},   {0x1008401F0, "YCbCr 8-bits 4:2:0, YV12"},
    {0x100940200, "YCbCr 10-bits 4:2:0, P010"},  {0x100840210, "YCbCr 8-bits 4:2:2, I422"},
};

std::map<std::int64_t, std::string> RegisteredTypes() {
    std::map<std::int64_t, std::string> types;
    std::int64_t id = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumPixelTypes(i, id); ++i)
        types[id] = KyPixelTypeFactory::GetPixelTypeName(id);
    return types;
}

std::size_t ConverterCount() {
    std::int64_t source = 0, destination = 0;
    std::uint32_t count = 0;
    while (KyPixelTypeFactory::EnumConverters(count, source, destination)) ++count;
    return count;
}

class ExtendedTypes : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register()); }
};

/// This one comes first, also where all run in one process.
TEST(ABeforeExtendedTypes, RegisterOnceFromManyThreads) {
    const std::map<std::int64_t, std::string> before = RegisteredTypes();
    EXPECT_EQ(162u, before.size());
    EXPECT_LT(before.rbegin()->first, std::int64_t{1} << 32);
    // An application may have a converter from a type that it has not registered.
    static const KyRGB24ToRGB24 ofApplication(0x0002F7F8, false, 0, false);
    std::vector<std::size_t> counts(8);
    support::RunOnThreads(8, [&](int i) {
        EXPECT_EQ(KY_STATUS_SUCCESS, i % 2 == 0 ? KyExtendedTypes::Register() : KyExtendedTypes_Register());
        counts[static_cast<std::size_t>(i)] = ConverterCount();
    });
    for (const std::size_t count : counts) EXPECT_EQ(counts[0], count);

    std::map<std::int64_t, std::string> expected = before;
    for (const Row& row : kRows) expected[row.type] = row.name;
    for (const FourBytes& row : kFourBytes) expected[row.type] = row.name;
    for (const auto& [layout, name] : kYCbCrLayouts)
        for (const auto& [colours, suffix] :
             {std::pair(0, ""), {1, ", Full range"}, {2, ", BT.709"}, {3, ", BT.709, Full range"}})
            expected[layout + colours] = std::string(name) + suffix;
    for (const auto& [type, name] : kColours) expected[type] = name;
    EXPECT_EQ(expected, RegisteredTypes());
}

TEST_F(ExtendedTypes, HaveTheSizesOfTheirGroups) {
    for (const Row& row : kRows) {
        const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(row.type);
        EXPECT_EQ(row.bits, type.GetPixelBitSize()) << row.name;
        EXPECT_EQ((row.type & 0x20000) != 0, type.IsBayerPattern()) << row.name;
        for (const std::uint32_t width : {1u, 7u, 8u, 1301u}) {
            KyImage image = {};
            image.type = row.type;
            image.width = width;
            image.height = 3;
            const std::size_t line = (width + row.groupPixels - 1) / row.groupPixels * row.groupBytes;
            std::size_t size = 0;
            EXPECT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &size)) << KyImage_GetError();
            EXPECT_EQ(3 * line, size) << row.name << " " << width;
            EXPECT_EQ(line, type.GetBufferSizeFor(width, 1)) << row.name << " " << width;
        }
    }
}

class ExtendedTypesOfLevel : public testing::TestWithParam<std::uint32_t> {
protected:
    void SetUp() override { ASSERT_EQ(KY_STATUS_SUCCESS, KyExtendedTypes_Register()); }

    static std::vector<std::uint8_t> Convert(std::int64_t from, std::int64_t to, std::uint8_t* bytes, std::size_t size,
                                             std::uint32_t width, std::uint32_t height, std::uint32_t flags = 0) {
        return ConvertImage(from, to, {bytes, bytes + size}, width, height, flags);
    }

    const support::ScopedCpuLevel level{GetParam()};
    support::Random random{7};
};

/// Of every width, and once so long that each place of a group has had every value.
TEST_P(ExtendedTypesOfLevel, EverySampleAsTheStandardHasIt) {
    for (const Row& row : kRows) {
        if (row.sample == nullptr) continue;
        const unsigned valueBits = row.sample == &BigEndian ? 16 : row.bits;
        const std::size_t values = std::size_t{row.groupPixels} << valueBits;  // of all places together
        std::vector<std::uint32_t> widths = {static_cast<std::uint32_t>(20 * values)};
        for (std::uint32_t width = 1; width < 140; ++width) widths.push_back(width);
        for (const std::uint32_t width : widths) {
            const std::uint32_t height = width < 140 ? 2 : 1;
            const std::size_t line = (width + row.groupPixels - 1) / row.groupPixels * row.groupBytes;
            const std::vector<std::uint8_t> bytes = random.Bytes(line * height);
            const std::vector<std::uint8_t> result = ConvertImage(row.type, row.plain, bytes, width, height);
            const std::size_t pixelBytes = row.bits < 8 ? 1 : 2;
            ASSERT_EQ(width * height * pixelBytes, result.size());
            std::vector<bool> hasHad(std::size_t{row.groupPixels} << 16);
            for (std::uint32_t y = 0; y < height; ++y)
                for (std::uint32_t x = 0; x < width; ++x) {
                    const std::uint8_t* const pixel = result.data() + (std::size_t{y} * width + x) * pixelBytes;
                    const unsigned value = pixelBytes == 1 ? pixel[0] : pixel[0] | unsigned{pixel[1]} << 8;
                    ASSERT_EQ(row.sample(bytes.data() + y * line, x), value)
                        << row.name << ", pixel " << x << " of " << width;
                    hasHad[std::size_t{x % row.groupPixels} << 16 | value] = true;
                }
            const auto had = static_cast<std::size_t>(std::count(hasHad.begin(), hasHad.end(), true));
            EXPECT_TRUE(width != widths.front() || had == values) << row.name << ": " << had << " of " << values;
        }
    }
}

/// They go wherever their plain type does, and the kernels of a chain give in one pass what its stages give one by one.
TEST_P(ExtendedTypesOfLevel, ChainsAreTheirStages) {
    constexpr std::uint32_t kWidth = 203, kHeight = 9;
    for (const Row& row : kRows) {
        if (row.sample == nullptr) continue;
        const bool isBayer = (row.type & 0x20000) != 0;
        const std::size_t line = (kWidth + row.groupPixels - 1) / row.groupPixels * row.groupBytes;
        std::vector<std::uint8_t> bytes = random.Bytes(line * kHeight);
        std::vector<std::uint8_t> plain = Convert(row.type, row.plain, bytes.data(), bytes.size(), kWidth, kHeight);
        std::int64_t destination = 0;
        std::uint32_t count = 0;
        for (; KyPixelTypeFactory::EnumConverterFrom(count, row.plain, destination); ++count)
            for (const std::uint32_t flags : {0u, 0x140u}) {
                if (!isBayer && flags != 0) continue;
                ASSERT_TRUE(KyPixelTypeFactory::HasConverter(row.type, destination)) << row.name << " " << destination;
                EXPECT_EQ(Convert(row.plain, destination, plain.data(), plain.size(), kWidth, kHeight, flags),
                          Convert(row.type, destination, bytes.data(), bytes.size(), kWidth, kHeight, flags))
                    << row.name << " to " << destination;
            }
        EXPECT_GE(count, isBayer ? 20u : 7u) << row.name;  // the built-in colours, and the extended ones
    }
}

/// A mosaic of 16-bit words gives the high bytes of what one of 12 bits gives with four bits less.
TEST_P(ExtendedTypesOfLevel, SixteenBitMosaicsKeepTheirHighBytes) {
    constexpr std::uint32_t kWidth = 130, kHeight = 6;
    std::vector<std::uint8_t> words16(2 * kWidth * kHeight), words12(words16.size());
    for (std::size_t i = 0; i < kWidth * kHeight; ++i) {
        // Multiples of 64, so that no average depends on what the shorter samples lack.
        const unsigned sample = random.Below(1024) * 64;
        for (unsigned k = 0; k < 2; ++k) {
            words16[2 * i + k] = static_cast<std::uint8_t>(sample >> 8 * k);
            words12[2 * i + k] = static_cast<std::uint8_t>(sample >> 4 >> 8 * k);
        }
    }
    for (const std::uint32_t flags : {0x20u, 0x120u})
        for (const std::int64_t destination : {KY_TYPE_RGB16, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_RGB24_PLANAR})
            EXPECT_EQ(Convert(0x20012, destination, words12.data(), words12.size(), kWidth, kHeight, flags),
                      Convert(kBayer16, destination, words16.data(), words16.size(), kWidth, kHeight, flags))
                << destination << " flags " << flags;
}

/// From everything that becomes RGB32, and back; an alpha is 255.
TEST_P(ExtendedTypesOfLevel, FourBytesAreRGB32InTheirOrder) {
    constexpr std::uint32_t kWidth = 131, kHeight = 6;
    for (const std::int64_t from : {std::int64_t{0x20010}, std::int64_t{0x40001}, std::int64_t{0x10001},
                                    std::int64_t{0x410003}, std::int64_t{0x100420001}, KY_TYPE_BGR24, KY_TYPE_RGB32}) {
        KyImage image = {from, kWidth, kHeight, nullptr, 0, 0, 0};
        ASSERT_EQ(KY_STATUS_SUCCESS, KyImage_GetSize(&image, &image.size));
        std::vector<std::uint8_t> bytes = random.Bytes(image.size);
        const std::vector<std::uint8_t> rgb =
            Convert(from, KY_TYPE_RGB24, bytes.data(), bytes.size(), kWidth, kHeight, 0x110);
        for (const FourBytes& row : kFourBytes) {
            std::vector<std::uint8_t> pixels =
                Convert(from, row.type, bytes.data(), bytes.size(), kWidth, kHeight, 0x110);
            for (std::size_t i = 0; i < kWidth * kHeight; ++i) {
                const std::uint8_t* const pixel = pixels.data() + 4 * i;
                ASSERT_EQ(
                    (std::vector<std::uint8_t>{rgb[3 * i], rgb[3 * i + 1], rgb[3 * i + 2], 255}),
                    (std::vector<std::uint8_t>{pixel[row.red], pixel[row.green], pixel[row.blue], pixel[row.alpha]}))
                    << from << " to " << row.name << ", pixel " << i;
            }
            for (std::size_t i = 0; i < kWidth * kHeight; ++i) pixels[4 * i + row.alpha] = random.Below(256) & 0xFF;
            EXPECT_EQ(rgb, Convert(row.type, KY_TYPE_RGB24, pixels.data(), pixels.size(), kWidth, kHeight)) << row.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, ExtendedTypesOfLevel, testing::ValuesIn(support::AvailableLevels()),
                         [](const auto& test) { return std::string(KyCpuLevel::GetName(test.param)); });

}  // namespace
