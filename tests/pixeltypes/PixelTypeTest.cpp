#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypes.h>
#include <tests/support/NullReference.h>

#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

namespace {

void ExpectType(const KyPixelType& type, std::int64_t id, std::uint16_t bits, std::uint16_t bytes, bool isBayer) {
    EXPECT_EQ(id, type.GetTypeID());
    EXPECT_EQ(bits, type.GetPixelBitSize()) << std::hex << id;
    EXPECT_EQ(bytes, type.GetPixelByteSize()) << std::hex << id;
    EXPECT_EQ(isBayer, type.IsBayerPattern()) << std::hex << id;
}

TEST(PixelType, ClassesFixSizesForAnyID) {
    ExpectType(KyGrayscale12(), 0x10003, 12, 2, false);
    ExpectType(KyGrayscale10_Packed_GEV(), 0x410008, 10, 2, false);
    ExpectType(KyRGB48_10Bits(), 0x20008, 10, 6, false);
    ExpectType(KyBayerRGB14(), 0x20016, 14, 2, true);
    ExpectType(KyYUV8_411(), 0x40006, 12, 2, false);
    ExpectType(KyBayerRGB10(0x08420011), 0x08420011, 10, 2, true);
    ExpectType(KyYUV10(0x0E32F1F1), 0x0E32F1F1, 20, 4, false);
}

TEST(PixelType, IsBayerOnlyInTheRGBColourSpace) {
    EXPECT_FALSE(KyBayerRGB10(0x10002).IsBayerPattern());
    EXPECT_FALSE(KyPixelType(0x40001, 8, 1, true).IsBayerPattern());
    EXPECT_TRUE(KyPixelType(0x00020002, 8, 1, true).IsBayerPattern());
    EXPECT_FALSE(KyGrayscale10(0x20011).IsBayerPattern());
}

TEST(PixelType, CloneIsAPlainObjectOfTheSameValues) {
    class Doubled : public KyBayerRGB10 {
    public:
        std::uint16_t GetPixelByteSize() const override { return 4; }
    };
    const std::unique_ptr<KyPixelType> clone(Doubled().Clone());
    ExpectType(*clone, 0x20011, 10, 4, true);
    const KyPixelType& plain = *clone;
    EXPECT_TRUE(typeid(plain) == typeid(KyPixelType));
}

TEST(PixelType, BufferSizes) {
    // Two packed samples of 10 or 12 bits share three bytes.
    EXPECT_EQ(15u, KyBayerRGB10(0x420011).GetBufferSizeFor(3, 3));
    EXPECT_EQ(12u, KyBayerRGB10(0x420011).GetBufferSizeFor(4, 2));
    EXPECT_EQ(3u, KyGrayscale12_Packed_GEV().GetBufferSizeFor(1, 1));
    EXPECT_EQ(6u, KyPixelType(0xC10002, 10, 2, false).GetBufferSizeFor(4, 1)) << "planar or not";
    EXPECT_EQ(0u, KyGrayscale12(0x410003).GetBufferSizeFor(0, 7));
    EXPECT_EQ(200u, KyGrayscale14(0x410004).GetBufferSizeFor(10, 10)) << "not of 14 bits";
    EXPECT_EQ(600u, KyRGB48_10Bits(0x420008).GetBufferSizeFor(10, 10)) << "not of RGB";
    EXPECT_EQ(200u, KyBayerRGB10().GetBufferSizeFor(10, 10)) << "not when loose";
    // Loose 24-bit pixels take four bytes.
    EXPECT_EQ(400u, KyRGB24().GetBufferSizeFor(10, 10));
    EXPECT_EQ(300u, KyBGR24(0x420006).GetBufferSizeFor(10, 10));
    EXPECT_EQ(400u, KyYUV8_444().GetBufferSizeFor(10, 10));
    EXPECT_EQ(300u, KyYUV8_444(0x440003).GetBufferSizeFor(10, 10));
    EXPECT_EQ(300u, KyRGB8_3().GetBufferSizeFor(10, 10)) << "8 bits, so not a 24-bit type";
    EXPECT_EQ(400u, KyRGB24(0x820002).GetBufferSizeFor(10, 10));
    // 32 bits that wrap.
    EXPECT_EQ(0u, KyRGB64().GetBufferSizeFor(65536, 65536));
    EXPECT_EQ(8u * (100000u * 100000u), KyRGB64().GetBufferSizeFor(100000, 100000));
}

TEST(PixelType, AsksTheRegistryForConverters) {
    const KyBayerRGB8 bayer;
    const KyRGB24 rgb;
    EXPECT_TRUE(bayer.HasConverterTo(rgb));
    EXPECT_TRUE(rgb.HasConverterFrom(bayer));
    EXPECT_FALSE(rgb.HasConverterTo(bayer));
    EXPECT_FALSE(bayer.HasConverterFrom(rgb));
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(0x20010, 0x20002);
    EXPECT_EQ(converter, &bayer.GetConverterTo(rgb));
    EXPECT_EQ(converter, &rgb.GetConverterFrom(bayer));
    EXPECT_EQ(nullptr, support::AddressOf(rgb.GetConverterTo(bayer)));
    EXPECT_EQ(nullptr, support::AddressOf(bayer.GetConverterFrom(rgb)));
}

}  // namespace
