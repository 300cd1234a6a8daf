// What is said of names that mean no type.
#include <tests/names/Refused.h>

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

namespace {

/// Names of other bytes, which are easily taken for those of a type.
TEST(NameRefusal, NamesOfOtherBytesSayTheDifference) {
    ASSERT_EQ(KyExtendedTypes::Register(), KY_STATUS_SUCCESS);
    const std::pair<const char*, const char*> cases[] = {
        {"YCbCr2020_422_8", "BT.2020"},
        {"Y41P", "eight pixels in 12 bytes"},
        {"NV24", "U and V of every pixel"},
        {"yuv444p", "a sample for four pixels or for each"},
        {"yuv420p10le", "words with 10 bits"},
        {"Y10BPACK", "from the highest one on; Mono10p starts with the lowest"},
        {"ip3r", "25 pixels in 32 bytes"},
        {"BGR16", "16-bit words B, G, R"},
        {"rgb565be", "big-endian"},
        {"rgb48be", "big-endian, those of rgb48le (0x00020004) are little-endian"},
        {"Y12_BE", "big-endian, those of Y12 (0x00010003) are little-endian"},
        {"monow", "highest bit"},
        {"MJPG", "compressed"},
    };
    for (const auto& [name, part] : cases)
        ExpectPart(Refused(name, KY_STATUS_NOT_SUPPORTED), std::string("no pixel type for \"") + name + "\"");
    for (const auto& [name, part] : cases) ExpectPart(Refused(name, KY_STATUS_NOT_SUPPORTED), part);
}

TEST(NameRefusal, UnknownNamesTellThoseThatComeNear) {
    ASSERT_EQ(KyExtendedTypes::Register(), KY_STATUS_SUCCESS);
    const std::pair<const char*, const char*> cases[] = {
        {"Mono12Packd", "did you mean Mono12Packed (0x00410009)"},
        {"BayerRG9", "BayerRG8 (0x00020010 RGGB)"},
        {"bayer 8", "did you mean Bayer RGB 8-bits (0x00020010)"},
        {"Mono14Packed",
         "\"Packed\" ones (Mono12Packed) are GigE Vision's, with the low bits of two samples in the middle"},
        {"Mono12g", "\"g\" ones (Mono12g) and MIPI CSI-2 (V4L2 Y12P) have them in the last byte"},
        {"BayerRG10pmsb", "BayerRG10p (0x100420001 RGGB)"},
        {"GRAY8_BE", "unknown pixel type"},
        {"nonsense", "unknown pixel type \"nonsense\"; no name comes near it"},
        {"", "unknown pixel type \"\""},
        {" -\n", "unknown pixel type \" -?\""},
        {"0x2FFFF", "no pixel type 0x2FFFF"},
        {"-1", "no pixel type -1"},
        {"99999999999999999999", "unknown pixel type \"99999999999999999999\""},
        {"0x01080009", "as a PFNC value it is BayerRG8 (0x00020010 RGGB)"},
    };
    for (const auto& [name, part] : cases) ExpectPart(Refused(name, KY_STATUS_BAD_ARGUMENT), part);
    ExpectPart(Refused(std::string(100000, 'x').c_str(), KY_STATUS_BAD_ARGUMENT), std::string(80, 'x') + "...\"");
    ExpectPart(Refused(nullptr, KY_STATUS_BAD_ARGUMENT), "name is null");
}

TEST(NameRefusal, CodesOfPFNC) {
    const struct {
        std::uint32_t code, status;
        const char* part;
    } cases[] = {
        {0x0230005E, KY_STATUS_NOT_SUPPORTED, "(RGB14): its samples have 14 bits"},
        {0x0110FFFF, KY_STATUS_BAD_ARGUMENT, "unknown PFNC value 0x0110FFFF, of 16 bits for each pixel"},
        {0x810C0001, KY_STATUS_BAD_ARGUMENT, "0x810C0001, a camera maker's own, of 12 bits"},
        {0, KY_STATUS_BAD_ARGUMENT, "0x00000000"},
    };
    for (const auto& [code, status, part] : cases) {
        std::int64_t type = -1;
        std::uint32_t bayerFlags = 99;
        EXPECT_EQ(KyPixelFormat::FindByPFNC(code, type, &bayerFlags), status) << part;
        EXPECT_TRUE(type == -1 && bayerFlags == 99);
        ExpectPart(KyImage_GetError(), part);
    }
}

TEST(NameRefusal, NamesOfTypes) {
    const auto expect = [](std::int64_t type, std::uint32_t flags, std::uint32_t convention, std::size_t size,
                           std::uint32_t status, const char* text) {
        char buffer[128];
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(KyPixelFormat::GetName(type, flags, convention, buffer, size), status) << text;
        if (status == KY_STATUS_SUCCESS) {
            EXPECT_STREQ(buffer, text);
        } else {
            EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, 'x')) << text;
            EXPECT_STREQ(KyImage_GetError(), text);
        }
    };
    const std::uint32_t rggb = KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE;
    expect(0x00020010, rggb, KY_NAMES_DISPLAY, 128, KY_STATUS_SUCCESS, "Bayer RGB 8-bits");
    expect(0x00020010, rggb, KY_NAMES_PFNC, 9, KY_STATUS_SUCCESS, "BayerRG8");
    expect(0x00020010, KY_FLAG_BAYER_BGGR, KY_NAMES_V4L2, 128, KY_STATUS_SUCCESS, "BA81");
    expect(0x00020010, KY_FLAG_BAYER_GBRG, KY_NAMES_GSTREAMER, 128, KY_STATUS_SUCCESS, "gbrg");
    expect(0x00020010, 0, KY_NAMES_FFMPEG, 128, KY_STATUS_SUCCESS, "bayer_grbg8");
    expect(0x00020013, 0, KY_NAMES_PFNC, 128, KY_STATUS_SUCCESS, "BayerRG8");
    expect(0x00010001, rggb, KY_NAMES_PFNC, 128, KY_STATUS_SUCCESS, "Mono8");
    expect(0x0042000A, 0, KY_NAMES_PFNC, 128, KY_STATUS_SUCCESS, "RGB8");

    expect(0x00020010, rggb, KY_NAMES_PFNC, 8, KY_STATUS_BAD_ARGUMENT, "buffer has 8 bytes: BayerRG8 needs 9");
    expect(0x00020010, rggb, KY_NAMES_PFNC, 0, KY_STATUS_BAD_ARGUMENT, "buffer has 0 bytes: BayerRG8 needs 9");
    expect(0x00020010, 0, 5, 128, KY_STATUS_BAD_ARGUMENT, "convention is 5: expected KY_NAMES_..., 0 to 4");
    expect(0x00020010, KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_GRBG, KY_NAMES_PFNC, 128, KY_STATUS_BAD_ARGUMENT,
           "bayerFlags has several patterns: expected one or none");
    expect(0x00420011, rggb, KY_NAMES_V4L2, 128, KY_STATUS_NOT_SUPPORTED,
           "0x00420011 (Bayer RGB 10-bits, Packed) has no V4L2 name for RGGB");
    expect(0x00020013, KY_FLAG_BAYER_GRBG, KY_NAMES_PFNC, 128, KY_STATUS_NOT_SUPPORTED,
           "0x00020013 (Bayer RGGB 8-bits (deprecated)) has no PFNC name for GRBG");
    expect(0x00440005, 0, KY_NAMES_PFNC, 128, KY_STATUS_NOT_SUPPORTED,
           "0x00440005 (YCrCb 8-bits 4:4:4, Packed) has no PFNC name");
    expect(0, 0, KY_NAMES_PFNC, 128, KY_STATUS_NOT_SUPPORTED, "0x00000000 (Unregistered pixel type) has no PFNC name");
    expect(0x0002FFFF, 0, KY_NAMES_DISPLAY, 128, KY_STATUS_NOT_SUPPORTED, "0x0002FFFF is not registered");
    EXPECT_EQ(KyPixelFormat::GetName(0x00010001, 0, KY_NAMES_PFNC, nullptr, 128), KY_STATUS_BAD_ARGUMENT);

    KyPixelFormatName name = {"untouched", 0, 0, 0};
    for (const std::int64_t type : {0x00440005, 0x0002FFFF, 0}) EXPECT_FALSE(KyPixelFormat::EnumNames(type, 0, name));
    EXPECT_FALSE(KyPixelFormat::EnumNames(0x00010001, 4, name));
    EXPECT_STREQ(name.name, "untouched");

    char buffer[128];
    std::int64_t type = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumPixelTypes(i, type); ++i)
        EXPECT_EQ(KyPixelFormat::GetName(type, 0, KY_NAMES_DISPLAY, buffer, sizeof buffer), KY_STATUS_SUCCESS);
}

}  // namespace
