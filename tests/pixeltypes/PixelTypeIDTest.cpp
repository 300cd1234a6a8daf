#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/KyPixelTypes.h>
#include <KyImgLib/platform/KyString.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string NameOf(std::int64_t id, const KyPixelType& type, bool isBayer = false) {
    KyString name("earlier text");
    BuildPixelTypeName(id, type, isBayer, name);
    return name.c_str();
}

TEST(PixelTypeName, TellsColourSpaceDepthFlagsAndTaps) {
    const KyGrayscale8 eight;
    const KyGrayscale10 ten;
    EXPECT_EQ("Grayscale 8-bits", NameOf(0x10001, eight));
    EXPECT_EQ("RGB 10-bits", NameOf(0x20001, ten));
    EXPECT_EQ("Bayer RGB 10-bits, Packed", NameOf(0x420011, ten, true));
    EXPECT_EQ("YUV 10-bits", NameOf(0x40001, ten, true)) << "Bayer says something of RGB only";
    EXPECT_EQ("Grayscale 10-bits, Normalized, Interlaced", NameOf(0x310002, ten));
    EXPECT_EQ("RGB 8-bits, Normalized, Interlaced, Packed, Planar", NameOf(0xF20002, eight)) << "not in order of bits";
    for (const std::int64_t unknown : {0x0, 0x30000, 0x50000, 0x60000, 0x70000})
        EXPECT_EQ("Unknown Colorspace 8-bits, Planar", NameOf(unknown | 0x800001, eight));

    EXPECT_EQ("Grayscale 8-bits, Dual Left+Right output", NameOf(0x01010001, eight));
    EXPECT_EQ("Grayscale 8-bits, Dual Left+Right Inverted output", NameOf(0x02010001, eight));
    EXPECT_EQ("Grayscale 8-bits, Dual Left Inverted+Right output", NameOf(0x04010001, eight));
    EXPECT_EQ("Grayscale 8-bits, Packed, Dual Left Inverted+Right Inverted output", NameOf(0x08410001, eight));
    EXPECT_EQ("Grayscale 8-bits, Dual Lines output", NameOf(0x10010001, eight));
    EXPECT_EQ("Grayscale 8-bits", NameOf(0x03010001, eight)) << "no layout has two bits";
    EXPECT_EQ("Grayscale 8-bits", NameOf(INT64_C(0x7FFFFFFFE0090001), eight)) << "other bits are not read";
    EXPECT_EQ("RGB 65535-bits", NameOf(0x20001, KyPixelType(0x20001, 65535, 1, false)));
}

TEST(PixelTypeAttributes, AllMustMatch) {
    const std::int64_t id = 0x04D20011;  // RGB, normalized, packed, planar, dual left inverted + right
    const KyPixelType type(id, 10, 2, true);
    const auto matches = [&type](std::uint32_t bits, std::int64_t space, bool normalized, bool packed, bool interlaced,
                                 bool planar, std::int64_t taps) {
        return MatchesPixelTypeAttributes(type, bits, space, normalized, packed, interlaced, planar, taps);
    };
    EXPECT_TRUE(matches(10, 0x20000, true, true, false, true, 0x04000000));
    EXPECT_FALSE(matches(12, 0x20000, true, true, false, true, 0x04000000));
    EXPECT_FALSE(matches(10, 0x10000, true, true, false, true, 0x04000000));
    EXPECT_FALSE(matches(10, 2, true, true, false, true, 0x04000000));
    EXPECT_FALSE(matches(10, 0x20000, false, true, false, true, 0x04000000));
    EXPECT_FALSE(matches(10, 0x20000, true, false, false, true, 0x04000000));
    EXPECT_FALSE(matches(10, 0x20000, true, true, true, true, 0x04000000));
    EXPECT_FALSE(matches(10, 0x20000, true, true, false, false, 0x04000000));
    EXPECT_FALSE(matches(10, 0x20000, true, true, false, true, 0));

    const KyPixelType strange(id | INT64_C(0x5500000020080000), 10, 2, false);
    EXPECT_TRUE(MatchesPixelTypeAttributes(strange, 10, 0x20000, true, true, false, true, 0x04000000))
        << "bits outside the fields and the Bayer property take no part";
}

TEST(PixelTypeID, DeinterlacedCounterpart) {
    static_assert(KyDeinterlacedTypeID(0x00320011) == 0x00120011);
    static_assert(KyDeinterlacedTypeID(0x00020011) == 0x00020011);
}

}  // namespace
