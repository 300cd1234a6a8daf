// Names of types that are registered only when asked for.
#include <tests/names/Refused.h>

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <gtest/gtest.h>

namespace {

TEST(ExtendedNames, MeanNothingBeforeTheTypesAreRegistered) {
    if (KyPixelTypeFactory::HasPixelType(KY_TYPE_MONO12P)) GTEST_SKIP() << "another test has registered them";
    const std::string text = Refused("Mono12p", KY_STATUS_NOT_SUPPORTED);
    ExpectPart(text, "Mono12p (0x100410002) is not registered: call KyExtendedTypes_Register first");
    ExpectPart(text,
               "\"p\" formats (Mono12p) start with the low bits; \"Packed\" ones (Mono12Packed) are GigE Vision's");
    ExpectPart(Refused("pRAA", KY_STATUS_NOT_SUPPORTED), "pRAA (0x100420004 RGGB) is not registered");
    ExpectPart(Refused("0x100410002", KY_STATUS_NOT_SUPPORTED), "call KyExtendedTypes_Register first");
    ExpectPart(Refused("0x10041FFFF", KY_STATUS_BAD_ARGUMENT), "no pixel type 0x10041FFFF");
    std::int64_t type = -1;
    EXPECT_EQ(KyPixelFormat::FindByPFNC(0x010C0047, type), KY_STATUS_NOT_SUPPORTED);
    ExpectPart(KyImage_GetError(), "Mono12p (0x100410002) is not registered");

    // Names are known all the same.
    char buffer[16];
    EXPECT_EQ(KyPixelFormat::GetName(KY_TYPE_MONO12P, 0, KY_NAMES_PFNC, buffer, sizeof buffer), KY_STATUS_SUCCESS);
    EXPECT_STREQ(buffer, "Mono12p");
    EXPECT_EQ(KyPixelFormat::GetName(KY_TYPE_MONO12P, 0, KY_NAMES_DISPLAY, buffer, sizeof buffer),
              KY_STATUS_NOT_SUPPORTED);
    ExpectPart(KyImage_GetError(), "0x100410002 is not registered");

    EXPECT_EQ(KyPixelFormat::Find("RGBa8", type), KY_STATUS_SUCCESS);
    EXPECT_EQ(type, 0x0002000B) << "a type of the same bytes that is there";
    EXPECT_EQ(KyPixelFormat::Find("YCbCr422_8", type), KY_STATUS_SUCCESS);
    EXPECT_EQ(type, 0x00040001) << "the same bytes, though converted by BT.601 in limited range";
    EXPECT_EQ(KyPixelFormat::Find("rgb565le", type), KY_STATUS_SUCCESS);
    EXPECT_EQ(type, 0x00020001);
    ASSERT_EQ(KyExtendedTypes::Register(), KY_STATUS_SUCCESS);
    EXPECT_EQ(KyPixelFormat::Find("YCbCr422_8", type), KY_STATUS_SUCCESS);
    EXPECT_EQ(type, KY_TYPE_YUYV | KY_YCBCR_FULL_RANGE);
    EXPECT_EQ(KyPixelFormat::Find("RGBa8", type), KY_STATUS_SUCCESS);
    EXPECT_EQ(type, KY_TYPE_RGBA32);
    EXPECT_EQ(KyPixelFormat::Find("Mono12p", type), KY_STATUS_SUCCESS);
    EXPECT_EQ(type, KY_TYPE_MONO12P);
}

}  // namespace
