// Each flat function: its answer for null, and that it reaches the member of the same meaning.
#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <tests/flat/ImageCaller.h>

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace {

/// Returns statuses that no other code returns and remembers its arguments.
class Telling : public KyPixelConverter {
public:
    Telling() : KyPixelConverter(0x0002F801, 0x0002F802, 3, 5, 1, 1) {}

    std::uint32_t Convert(const KyRGBFilter& filter, const std::uint8_t* source, std::uint32_t a, std::uint32_t b,
                          std::uint8_t* destination, std::uint32_t c, std::uint32_t d, std::uint32_t e, std::uint32_t f,
                          std::uint32_t g, std::uint32_t h) const override {
        usedFilter = &filter;
        return Convert(source, a, b, destination, c, d, e, f, g, h) + 1;
    }
    std::uint32_t Convert(const std::uint8_t* source, std::uint32_t a, std::uint32_t b, std::uint8_t* destination,
                          std::uint32_t c, std::uint32_t d, std::uint32_t e, std::uint32_t f, std::uint32_t g,
                          std::uint32_t h) const override {
        arguments = {a, b, c, d, e, f, g, h};
        return Convert(source, destination, 1) - 100;
    }
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        pointers = {source, destination};
        return 200 + count;
    }
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override {
        return Convert(source, destination, 101);
    }

    mutable std::vector<std::uint32_t> arguments;
    mutable std::array<const std::uint8_t*, 2> pointers = {};
    mutable const KyRGBFilter* usedFilter = nullptr;
};

std::int64_t TakeID(KyPixelType* type) {
    const std::int64_t id = KyPixelType_GetTypeID(type);
    KyPixelType_Destroy(type);
    return id;
}

TEST(Flat, FlagsHaveTheirPublishedValuesInBothInterfaces) {
    const auto values = [](const auto&... flags) { return std::vector<std::uint32_t>{std::uint32_t{flags}...}; };
    const std::vector<std::uint32_t> published = {0x1, 0x10, 0x20, 0x40, 0x80, 0x100};
    EXPECT_EQ(published, values(KY_FLAG_INVERT_DEINTERLACER, KY_FLAG_BAYER_GRBG, KY_FLAG_BAYER_GBRG, KY_FLAG_BAYER_RGGB,
                                KY_FLAG_BAYER_BGGR, KY_FLAG_BAYER_INTERPOLATE));
    EXPECT_EQ(published, values(KyPixelConverter::FLAG_INVERT_DEINTERLACER, KyPixelConverter::FLAG_BAYER_GRBG,
                                KyPixelConverter::FLAG_BAYER_GBRG, KyPixelConverter::FLAG_BAYER_RGGB,
                                KyPixelConverter::FLAG_BAYER_BGGR, KyPixelConverter::FLAG_BAYER_INTERPOLATE));
}

TEST(FlatPixelFormat, FindsTypesByNamesAndNamesOfTypes) {
    std::int64_t type = 0;
    std::uint32_t flags = 0;
    EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelFormat_Find("BayerGB10Packed", &type, &flags));
    EXPECT_EQ(std::pair(std::int64_t{0x00420011}, std::uint32_t{KY_FLAG_BAYER_GBRG}), std::pair(type, flags));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelFormat_FindByPFNC(0x0108000B, &type, nullptr));
    EXPECT_EQ(0x00020010, type);
    char name[16] = "";
    EXPECT_EQ(KY_STATUS_SUCCESS, KyPixelFormat_GetName(type, KY_FLAG_BAYER_BGGR, KY_NAMES_FFMPEG, name, sizeof name));
    EXPECT_STREQ("bayer_bggr8", name);
    KyPixelFormatName known = {};
    EXPECT_TRUE(KyPixelFormat_EnumNames(0x00010005, 1, &known));
    EXPECT_STREQ("Y16", known.name);
    EXPECT_EQ(std::uint32_t{KY_NAMES_V4L2}, known.convention);

    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyPixelFormat_Find(nullptr, &type, &flags));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyPixelFormat_Find("Mono8", nullptr, &flags));
    EXPECT_STREQ("type is null", KyImage_GetError());
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyPixelFormat_FindByPFNC(0x0108000B, nullptr, nullptr));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyPixelFormat_GetName(type, 0, KY_NAMES_PFNC, nullptr, 16));
    EXPECT_FALSE(KyPixelFormat_EnumNames(type, 0, nullptr));
}

TEST(FlatPixelType, AnswersForNull) {
    const KyRGB24 other;
    KyPixelType_Destroy(nullptr);
    EXPECT_EQ(nullptr, KyPixelType_Clone(nullptr));
    EXPECT_EQ(INT64_C(4294967295), KyPixelType_GetTypeID(nullptr));
    EXPECT_EQ(0, KyPixelType_GetPixelBitSize(nullptr));
    EXPECT_EQ(0, KyPixelType_GetPixelByteSize(nullptr));
    EXPECT_FALSE(KyPixelType_IsBayerPattern(nullptr));
    EXPECT_EQ(0u, KyPixelType_GetBufferSizeFor(nullptr, 2, 2));
    EXPECT_FALSE(KyPixelType_HasConverterTo(nullptr, &other));
    EXPECT_FALSE(KyPixelType_HasConverterFrom(nullptr, &other));
    EXPECT_EQ(nullptr, KyPixelType_GetConverterTo(nullptr, &other));
    EXPECT_EQ(nullptr, KyPixelType_GetConverterFrom(nullptr, &other));
}

TEST(FlatPixelType, TellsWhatTheTypeIs) {
    const KyBayerRGB10 packed(0x00420011);
    EXPECT_EQ(0x00420011, TakeID(KyPixelType_Clone(&packed)));
    EXPECT_EQ(10, KyPixelType_GetPixelBitSize(&packed));
    EXPECT_EQ(2, KyPixelType_GetPixelByteSize(&packed));
    EXPECT_TRUE(KyPixelType_IsBayerPattern(&packed));
    EXPECT_EQ(15u, KyPixelType_GetBufferSizeFor(&packed, 3, 3));

    const KyBayerRGB8 bayer;
    const KyBGR32 bgr;
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(0x20010, 0x20007);
    EXPECT_TRUE(KyPixelType_HasConverterTo(&bayer, &bgr));
    EXPECT_FALSE(KyPixelType_HasConverterTo(&bgr, &bayer));
    EXPECT_TRUE(KyPixelType_HasConverterFrom(&bgr, &bayer));
    EXPECT_EQ(converter, KyPixelType_GetConverterTo(&bayer, &bgr));
    EXPECT_EQ(nullptr, KyPixelType_GetConverterTo(&bgr, &bayer));
    EXPECT_EQ(converter, KyPixelType_GetConverterFrom(&bgr, &bayer));
    EXPECT_EQ(nullptr, KyPixelType_GetConverterFrom(&bayer, &bgr));
}

TEST(FlatFactory, FindsTypesAndConverters) {
    EXPECT_TRUE(KyPixelTypeFactory_HasPixelType(KY_RGB24));
    EXPECT_FALSE(KyPixelTypeFactory_HasPixelType(INT64_C(4294967295)));
    EXPECT_STREQ("BGR 24-bits", KyPixelTypeFactory_GetPixelTypeName(KY_BGR24));
    EXPECT_STREQ("Unregistered pixel type", KyPixelTypeFactory_GetPixelTypeName(0));
    EXPECT_EQ(nullptr, KyPixelTypeFactory_CreatePixelType(0));
    EXPECT_TRUE(KyPixelTypeFactory_HasConverter(0x20010, KY_RGB16));
    EXPECT_FALSE(KyPixelTypeFactory_HasConverter(KY_RGB16, 0x20010));
    EXPECT_EQ(KyPixelTypeFactory::FindConverter(0x20010, 0x20001), KyPixelTypeFactory_GetConverter(0x20010, KY_RGB16));
    EXPECT_EQ(nullptr, KyPixelTypeFactory_GetConverter(KY_RGB16, 0x20010));

    EXPECT_EQ(0x00820002, TakeID(KyPixelTypeFactory_CreatePixelType2(24, 0x20000, 0, 0, 0, -1, 0, 0, 0)));
    EXPECT_EQ(0x00120011, TakeID(KyPixelTypeFactory_CreatePixelType2(10, 0x20000, 2, 0, 0, 0, 0, 256, 0)));
    EXPECT_EQ(0x02610002, TakeID(KyPixelTypeFactory_CreatePixelType2(10, 0x10000, 0, 7, 7, 0, 0x02000000, 0, 0)));
    EXPECT_EQ(nullptr, KyPixelTypeFactory_CreatePixelType2(24, 0x20000, 0, 0, 0, 0, 0, 0, 99));
}

TEST(FlatFactory, Enumerates) {
    std::int64_t other = 5, expected = 0;
    EXPECT_FALSE(KyPixelTypeFactory_EnumConverterFrom(0, 0x20010, nullptr));
    EXPECT_FALSE(KyPixelTypeFactory_EnumConverterTo(0, KY_RGB24, nullptr));
    EXPECT_FALSE(KyPixelTypeFactory_EnumConverterFrom(0, 0, &other));
    EXPECT_FALSE(KyPixelTypeFactory_EnumConverterTo(0, 0, &other));
    EXPECT_EQ(5, other);
    ASSERT_TRUE(KyPixelTypeFactory::EnumConverterFrom(2, 0x20010, expected));
    EXPECT_TRUE(KyPixelTypeFactory_EnumConverterFrom(2, 0x20010, &other));
    EXPECT_EQ(expected, other);
    ASSERT_TRUE(KyPixelTypeFactory::EnumConverterTo(1, KY_TYPE_RGB24, expected));
    EXPECT_TRUE(KyPixelTypeFactory_EnumConverterTo(1, KY_RGB24, &other));
    EXPECT_EQ(expected, other);
    EXPECT_FALSE(KyPixelTypeFactory_EnumPixelTypes(0, nullptr));
    EXPECT_TRUE(KyPixelTypeFactory_EnumPixelTypes(0, &other));
    EXPECT_EQ(KY_GRAYSCALE8, other);
    EXPECT_FALSE(KyPixelTypeFactory_EnumPixelTypes(100000, &other));
    EXPECT_EQ(KY_GRAYSCALE8, other);
}

TEST(FlatConverter, AnswersForNull) {
    const std::uint8_t source = 1;
    std::uint8_t destination = 7;
    const KyRGBFilter filter(8);
    EXPECT_EQ(0, KyPixelConverter_GetSourceType(nullptr));
    EXPECT_EQ(0, KyPixelConverter_GetDestinationType(nullptr));
    EXPECT_EQ(0u, KyPixelConverter_GetSourceByteSize(nullptr, 4));
    EXPECT_EQ(0u, KyPixelConverter_GetDestinationByteSize(nullptr, 4));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyPixelConverter_ConvertPixel(nullptr, &source, &destination));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyPixelConverter_ConvertLine(nullptr, &source, &destination, 1));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT,
              KyPixelConverter_ConvertArea(nullptr, &source, 1, 1, &destination, 1, 1, 1, 1, 0, 0));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT,
              KyPixelConverter_ConvertAreaFilter(nullptr, &filter, &source, 1, 1, &destination, 1, 1, 1, 1, 0, 0));
    EXPECT_EQ(7, destination);
}

TEST(FlatConverter, ForwardsItsArguments) {
    const Telling converter;
    const KyRGBFilter filter(8);
    const std::uint8_t source = 1;
    std::uint8_t destination = 7;
    const std::array<const std::uint8_t*, 2> pointers = {&source, &destination};
    const auto forwarded = [&] { return std::exchange(converter.pointers, {}) == pointers; };
    EXPECT_EQ(0x0002F801, KyPixelConverter_GetSourceType(&converter));
    EXPECT_EQ(0x0002F802, KyPixelConverter_GetDestinationType(&converter));
    EXPECT_EQ(12u, KyPixelConverter_GetSourceByteSize(&converter, 4));
    EXPECT_EQ(20u, KyPixelConverter_GetDestinationByteSize(&converter, 4));
    EXPECT_EQ(301u, KyPixelConverter_ConvertPixel(&converter, &source, &destination));
    EXPECT_TRUE(forwarded());
    EXPECT_EQ(209u, KyPixelConverter_ConvertLine(&converter, &source, &destination, 9));
    EXPECT_TRUE(forwarded());
    EXPECT_EQ(101u, KyPixelConverter_ConvertArea(&converter, &source, 1, 2, &destination, 3, 4, 5, 6, 7, 8));
    EXPECT_TRUE(forwarded());
    EXPECT_EQ((std::vector<std::uint32_t>{1, 2, 3, 4, 5, 6, 7, 8}), converter.arguments);
    EXPECT_EQ(102u,
              KyPixelConverter_ConvertAreaFilter(&converter, &filter, &source, 8, 7, &destination, 6, 5, 4, 3, 2, 1));
    EXPECT_TRUE(forwarded());
    EXPECT_EQ((std::vector<std::uint32_t>{8, 7, 6, 5, 4, 3, 2, 1}), converter.arguments);
    EXPECT_EQ(&filter, converter.usedFilter);
}

TEST(FlatFilter, AnswersForNull) {
    KyRGBFilter_Destroy(nullptr);
    EXPECT_EQ(nullptr, KyRGBFilter_Init(17));
    EXPECT_EQ(0u, KyRGBFilter_GetBitSize(nullptr));
    EXPECT_EQ(0u, KyRGBFilter_GetEntryCount(nullptr));
    for (const auto read : {KyRGBFilter_GetRedValue8, KyRGBFilter_GetGreenValue8, KyRGBFilter_GetBlueValue8})
        EXPECT_EQ(0, read(nullptr, 1));
    for (const auto read : {KyRGBFilter_GetRedValue16, KyRGBFilter_GetGreenValue16, KyRGBFilter_GetBlueValue16})
        EXPECT_EQ(0, read(nullptr, 1));
    for (const auto set : {KyRGBFilter_SetRedValue, KyRGBFilter_SetGreenValue, KyRGBFilter_SetBlueValue})
        EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, set(nullptr, 1, 1));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyRGBFilter_SetMultipliers(nullptr, 1, 1, 1, 0, 0, 0));
}

TEST(FlatFilter, SetsAndReadsEachColour) {
    KyRGBFilter* const filter = KyRGBFilter_Init(10);
    EXPECT_EQ(10u, KyRGBFilter_GetBitSize(filter));
    EXPECT_EQ(1024u, KyRGBFilter_GetEntryCount(filter));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyRGBFilter_SetMultipliers(filter, 0.5, 2.0, 1.5, 1, 2, 3));
    EXPECT_EQ(51, KyRGBFilter_GetRedValue16(filter, 100));
    EXPECT_EQ(402, KyRGBFilter_GetGreenValue16(filter, 200 + 1024));
    EXPECT_EQ(303, KyRGBFilter_GetBlueValue16(filter, 200));
    EXPECT_EQ(51, KyRGBFilter_GetRedValue8(filter, 100 + 256));
    EXPECT_EQ(255, KyRGBFilter_GetGreenValue8(filter, 200));
    EXPECT_EQ(153, KyRGBFilter_GetBlueValue8(filter, 100));

    EXPECT_EQ(KY_STATUS_SUCCESS, KyRGBFilter_SetRedValue(filter, 9, 21));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyRGBFilter_SetGreenValue(filter, 9, 22));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyRGBFilter_SetBlueValue(filter, 9, 23));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyRGBFilter_SetRedValue(filter, 1024, 0));
    EXPECT_EQ(21, KyRGBFilter_GetRedValue8(filter, 9));
    EXPECT_EQ(22, KyRGBFilter_GetGreenValue8(filter, 9));
    EXPECT_EQ(23, KyRGBFilter_GetBlueValue8(filter, 9));
    KyRGBFilter_Destroy(filter);
}

TEST(FlatCpuLevel, TellsAndSwitches) {
    const std::uint32_t original = KyCpuLevel_GetActive();
    ASSERT_EQ(KyCpuLevel::GetCount(), KyCpuLevel_GetCount());
    EXPECT_EQ(KyCpuLevel::GetName(original), KyCpuLevel_GetName(original));
    EXPECT_TRUE(KyCpuLevel_IsAvailable(original));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyCpuLevel_SetActive(0));
    EXPECT_EQ(0u, KyCpuLevel::GetActive());
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, KyCpuLevel_SetActive(99));
    EXPECT_EQ(KY_STATUS_SUCCESS, KyCpuLevel_SetActive(original));
}

TEST(FlatImage, ServesACProgram) { EXPECT_EQ(nullptr, UseImagesFromC()) << UseImagesFromC(); }

}  // namespace
