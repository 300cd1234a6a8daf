// What the library registers while it is loaded. Nothing here registers anything of its own.
#include <tests/catalogue/Listing.h>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Factory = KyPixelTypeFactory;

std::string Describe(std::int64_t id) {
    const KyPixelType& type = *Factory::FindPixelType(id);
    EXPECT_EQ(id, type.GetTypeID());
    char text[200];
    std::snprintf(text, sizeof text, "0x%08X  %2u bits  %u bytes  %s  %s", static_cast<unsigned>(id),
                  unsigned{type.GetPixelBitSize()}, unsigned{type.GetPixelByteSize()},
                  type.IsBayerPattern() ? "Bayer" : "-----", Factory::GetPixelTypeName(id));
    return text;
}

TEST(Catalogue, TypesAreThePublishedOnes) {
    std::vector<std::string> lines;
    for (const std::int64_t id : AllTypes()) lines.push_back(Describe(id));
    EXPECT_EQ(162u, lines.size());
    const std::string difference = DifferenceToGolden("types.golden.txt", lines);
    EXPECT_TRUE(difference.empty()) << difference;
}

TEST(Catalogue, EveryTypeHasItsIdentityConverters) {
    for (const std::int64_t id : AllTypes()) {
        for (const std::int64_t destination : {id, KyDeinterlacedTypeID(id)}) {
            const KyPixelConverter* const converter = Factory::FindConverter(id, destination);
            ASSERT_NE(nullptr, converter) << Factory::GetPixelTypeName(id);
            EXPECT_NE(nullptr, dynamic_cast<const KyIdentityConverter*>(converter)) << Factory::GetPixelTypeName(id);
            EXPECT_EQ(destination, converter->GetDestinationType());
            EXPECT_EQ(Factory::FindPixelType(id)->GetBufferSizeFor(7, 1), converter->GetSourceByteSize(7));
        }
    }
}

TEST(Catalogue, ConvertersStandUnderTheirOwnTypes) {
    std::int64_t source = 0, destination = 0;
    std::pair<std::int64_t, std::int64_t> before = {-1, -1};
    std::uint32_t count = 0;
    for (; Factory::EnumConverters(count, source, destination); ++count) {
        EXPECT_LT(before, std::pair(source, destination)) << "in ascending order";
        before = {source, destination};
        const KyPixelConverter* const converter = Factory::FindConverter(source, destination);
        ASSERT_NE(nullptr, converter);
        EXPECT_EQ(source, converter->GetSourceType());
        EXPECT_EQ(destination, converter->GetDestinationType());
        EXPECT_TRUE(Factory::HasPixelType(source)) << std::hex << source;
        EXPECT_TRUE(Factory::HasPixelType(destination)) << std::hex << destination;
    }
    EXPECT_GE(count, 162u);
}

TEST(Catalogue, BayerSourcesOfEightSignificantBits) {
    // Sources, and how many bytes a sample takes: of normalized words the high byte is converted.
    const std::pair<std::int64_t, std::uint32_t> sources[] = {{0x00020010, 1}, {0x00020013, 1}, {0x00120011, 2},
                                                              {0x00120012, 2}, {0x00120014, 2}, {0x00120015, 2},
                                                              {0x00120016, 2}};
    const auto find = [](std::int64_t source, std::int64_t destination) {
        const KyPixelConverter* const converter = Factory::FindConverter(source, destination);
        EXPECT_NE(nullptr, converter) << std::hex << source << " to " << destination;
        return converter;
    };
    for (const auto& [source, bytes] : sources) {
        SCOPED_TRACE(Factory::GetPixelTypeName(source));
        EXPECT_NE(nullptr, dynamic_cast<const KyBayerRGB8ToRGB16*>(find(source, KY_TYPE_RGB16)));
        EXPECT_NE(nullptr, dynamic_cast<const KyBayerRGB8ToRGB24*>(find(source, KY_TYPE_RGB24)));
        EXPECT_NE(nullptr, dynamic_cast<const KyBayerRGB8ToRGB24*>(find(source, KY_TYPE_BGR24)));
        EXPECT_NE(nullptr, dynamic_cast<const KyBayerRGB8ToRGB32*>(find(source, KY_TYPE_RGB32)));
        EXPECT_NE(nullptr, dynamic_cast<const KyBayerRGB8ToRGB32*>(find(source, KY_TYPE_BGR32)));
        EXPECT_EQ(10 * bytes, find(source, KY_TYPE_RGB24)->GetSourceByteSize(10));
    }
}

TEST(Catalogue, BayerSourcesOfWords) {
    // A full sample of the source's size must come out as a full byte.
    const std::pair<std::int64_t, std::uint8_t> sources[] = {
        {0x00020011, 0x03}, {0x00020014, 0x03}, {0x00020012, 0x0F}, {0x00020015, 0x0F}, {0x00020016, 0x3F}};
    for (const auto& [source, high] : sources)
        for (const std::int64_t destination :
             {KY_TYPE_RGB16, KY_TYPE_RGB24, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32}) {
            SCOPED_TRACE(testing::Message() << std::hex << source << " to " << destination);
            const KyPixelConverter* const converter = Factory::FindConverter(source, destination);
            ASSERT_NE(nullptr, converter);
            const std::uint8_t mosaic[] = {0xFF, high, 0xFF, high, 0xFF, high, 0xFF, high};
            std::uint8_t picture[16] = {};
            converter->Convert(mosaic, 2, 2, picture, 2, 2, 2, 2, 0, 0);
            const std::uint32_t colourBytes = std::min(converter->GetDestinationByteSize(), 3u);
            EXPECT_TRUE(std::all_of(picture, picture + colourBytes, [](std::uint8_t byte) { return byte == 0xFF; }));
        }
    EXPECT_FALSE(Factory::HasConverter(0x00020012, KY_TYPE_RGB48)) << "constructed by those who need it";
}

TEST(Catalogue, TypesAreFoundByAttributes) {
    const auto id = [](const KyPixelType* created) {
        const std::unique_ptr<const KyPixelType> type(created);
        return type == nullptr ? 0 : type->GetTypeID();
    };
    EXPECT_EQ(2u, Factory::CountPixelTypes(10, 0x20000, false, true, false, false, 0, true));
    EXPECT_EQ(0x00420011, id(Factory::CreatePixelType(10, 0x20000, false, true, false, false, 0, true, 0)));
    EXPECT_EQ(0x00420014, id(Factory::CreatePixelType(10, 0x20000, false, true, false, false, 0, true, 1)));
    EXPECT_EQ(0x00010002, id(Factory::CreatePixelType(10, 0x10000, false, false, false, false, 0, false, 0)));
    EXPECT_EQ(0x00010007, id(Factory::CreatePixelType(10, 0x10000, false, false, false, false, 0, false, 1)));
    EXPECT_EQ(0, id(Factory::CreatePixelType(10, 0x10000, false, false, false, false, 0, false, 2)));
    EXPECT_EQ(0u, Factory::CountPixelTypes(10, 2, false, true, false, false, 0, true));
    for (const std::int64_t unregistered : {0x40003, 0x40005, 0x40006, 0x2000E, 0x40004})
        EXPECT_FALSE(Factory::HasPixelType(unregistered));
}

}  // namespace
