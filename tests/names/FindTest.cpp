// Names against what the standards say: PFNC 2.4 and GigE Vision, linux/videodev2.h, GStreamer's and FFmpeg's lists.

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t kPatterns[] = {KY_FLAG_BAYER_GRBG, KY_FLAG_BAYER_RGGB, KY_FLAG_BAYER_GBRG, KY_FLAG_BAYER_BGGR};

struct Found {
    std::int64_t type;
    std::uint32_t bayerFlags;
    bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Found& found) {
    return stream << "0x" << std::hex << found.type << ", pattern 0x" << found.bayerFlags << std::dec;
}

Found Find(const std::string& name) {
    Found found = {};
    EXPECT_EQ(KyPixelFormat::Find(name.c_str(), found.type, &found.bayerFlags), KY_STATUS_SUCCESS)
        << KyImageConverter::GetError();
    return found;
}

Found FindByPFNC(std::uint32_t code) {
    Found found = {};
    EXPECT_EQ(KyPixelFormat::FindByPFNC(code, found.type, &found.bayerFlags), KY_STATUS_SUCCESS)
        << KyImageConverter::GetError();
    return found;
}

std::vector<std::string> Split(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

std::vector<KyPixelFormatName> NamesOf(std::int64_t type) {
    std::vector<KyPixelFormatName> names;
    KyPixelFormatName name = {};
    for (std::uint32_t i = 0; KyPixelFormat::EnumNames(type, i, name); ++i) names.push_back(name);
    return names;
}

std::vector<std::int64_t> AllTypes() {
    std::vector<std::int64_t> types;
    std::int64_t type = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumPixelTypes(i, type); ++i) types.push_back(type);
    return types;
}

class FindTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(KyExtendedTypes::Register(), KY_STATUS_SUCCESS); }
};

TEST_F(FindTest, NamesAndCodesOfPFNC) {
    const struct {
        const char* name;
        std::uint32_t code;
        std::int64_t type;
    } facts[] = {
        {"Mono8", 0x01080001, 0x00010001},
        {"Mono10", 0x01100003, 0x00010002},
        {"Mono12", 0x01100005, 0x00010003},
        {"Mono14", 0x01100025, 0x00010004},
        {"Mono16", 0x01100007, 0x00010005},
        {"Mono10Packed", 0x010C0004, 0x00410008},
        {"Mono12Packed", 0x010C0006, 0x00410009},
        {"Mono1p", 0x01010037, 0x100410007},
        {"Mono2p", 0x01020038, 0x100410008},
        {"Mono4p", 0x01040039, 0x100410009},
        {"Mono10p", 0x010A0046, 0x100410001},
        {"Mono12p", 0x010C0047, 0x100410002},
        {"Mono14p", 0x010E0104, 0x100410003},
        {"RGB8", 0x02180014, 0x00020002},
        {"BGR8", 0x02180015, 0x00020006},
        {"RGB8a32", 0x0220012D, 0x00020003},
        {"BGR8a32", 0x0220012E, 0x00020007},
        {"RGBa8", 0x02200016, 0x100020020},
        {"BGRa8", 0x02200017, 0x100020021},
        {"RGB10", 0x02300018, 0x00020008},
        {"RGB12", 0x0230001A, 0x0002000C},
        {"RGBa10", 0x0240005F, 0x00020009},
        {"RGBa12", 0x02400061, 0x0002000D},
        {"RGBa16", 0x02400064, 0x00020005},
        {"RGB8_Planar", 0x02180021, 0x00820002},
        {"BGR565p", 0x02100036, 0x100020034},
        {"RGB565p", 0x02100035, 0x100020035},
        {"RGB10_Planar", 0x02300022, 0x100820042},
        {"RGB12_Planar", 0x02300023, 0x100820043},
        {"RGB16_Planar", 0x02300024, 0x100820040},
        {"RGB10p32", 0x0220001D, 0x100020038},
        {"RGB10p", 0x021E005C, 0x10042003A},
        {"BGR10p", 0x021E0048, 0x10042003B},
        {"YUV422_8", 0x02100032, 0x00040001},
        {"YCbCr422_8", 0x0210003B, 0x100040101},
        {"YCbCr709_422_8", 0x02100041, 0x100040102},
        {"YUV422Packed", 0x0210001F, 0x100040110},
        {"YCbCr422_8_CbYCrY", 0x02100043, 0x100040111},
        {"YCbCr709_422_8_CbYCrY", 0x02100045, 0x100040112},
        {"YCbCr601_422_8", 0x0210003E, 0x00040001},
        {"YCbCr422_10", 0x02200065, 0x100040181},
        {"YCbCr422_12", 0x02200066, 0x100040191},
        {"YCbCr709_422_10", 0x02200095, 0x100040182},
        {"YCbCr601_422_10", 0x0220008D, 0x00040002},
        {"YUV8_UYV", 0x02180020, 0x00440003},
        {"YCbCr8", 0x0218005B, 0x100440141},
        {"YCbCr8_CbYCr", 0x0218003A, 0x100440151},
        {"YUV444Packed", 0x02180020, 0x00440003},
        {"YCbCr601_8_CbYCr", 0x0218003D, 0x00440003},
        {"YUV411Packed", 0x020C001E, 0x00440006},
        {"YCbCr411_8", 0x020C005A, 0x100440161},
        {"YCbCr411_8_CbYYCrYY", 0x020C003C, 0x100440171},
        {"YUV411_8_UYYVYY", 0x020C001E, 0x00440006},
        {"YCbCr601_411_8_CbYYCrYY", 0x020C003F, 0x00440006},
    };
    for (const auto& [name, code, type] : facts) {
        EXPECT_EQ(Find(name), (Found{type, 0})) << name;
        EXPECT_EQ(FindByPFNC(code), (Found{type, 0})) << name;
    }
    EXPECT_EQ(FindByPFNC(0x02300033), (Found{0x00020004, 0})) << "RGB16";
    EXPECT_EQ(Find("RGB16"), (Found{0x00020001, 0})) << "the short name comes before PFNC's";
}

TEST_F(FindTest, BayerNamesAndCodesOfPFNC) {
    const struct {
        const char* depth;
        std::int64_t type;
        std::uint32_t codes[4];  // GR, RG, GB, BG
    } facts[] = {
        {"8", 0x00020010, {0x01080008, 0x01080009, 0x0108000A, 0x0108000B}},
        {"10", 0x00020011, {0x0110000C, 0x0110000D, 0x0110000E, 0x0110000F}},
        {"12", 0x00020012, {0x01100010, 0x01100011, 0x01100012, 0x01100013}},
        {"14", 0x00020016, {0x01100109, 0x0110010A, 0x0110010B, 0x0110010C}},
        {"16", 0x10002000E, {0x0110002E, 0x0110002F, 0x01100030, 0x01100031}},
        {"10Packed", 0x00420011, {0x010C0026, 0x010C0027, 0x010C0028, 0x010C0029}},
        {"12Packed", 0x00420012, {0x010C002A, 0x010C002B, 0x010C002C, 0x010C002D}},
        {"10p", 0x100420001, {0x010A0056, 0x010A0058, 0x010A0054, 0x010A0052}},
        {"12p", 0x100420002, {0x010C0057, 0x010C0059, 0x010C0055, 0x010C0053}},
        {"14p", 0x100420003, {0x010E0105, 0x010E0106, 0x010E0107, 0x010E0108}},
    };
    const char* const colours[] = {"GR", "RG", "GB", "BG"};
    for (const auto& [depth, type, codes] : facts)
        for (std::size_t i = 0; i < 4; ++i) {
            const std::string name = std::string("Bayer") + colours[i] + depth;
            EXPECT_EQ(Find(name), (Found{type, kPatterns[i]})) << name;
            EXPECT_EQ(FindByPFNC(codes[i]), (Found{type, kPatterns[i]})) << name;
        }
}

TEST_F(FindTest, NamesOfDriversAndPrograms) {
    const std::pair<std::int64_t, const char*> gray[] = {
        {0x00010001, "GREY GRAY8 gray"},
        {0x00010002, "Y10 GRAY10_LE16 gray10le"},
        {0x00010003, "Y12 gray12le"},
        {0x00010004, "Y14 gray14le"},
        {0x00010005, "Y16 GRAY16_LE gray16le"},
        {0x100410004, "Y10P"},
        {0x100410005, "Y12P"},
        {0x100410006, "Y14P"},
        {0x10001000A, "gray10be"},
        {0x10001000B, "gray12be"},
        {0x10001000C, "gray14be"},
        {0x10001000D, "Y16_BE GRAY16_BE gray16be"},
        {0x00020001, "RGB16"},
        {0x100020034, "RGBP rgb565le"},
        {0x100020035, "bgr565le"},
        {0x100820044, "GBR gbrp"},
        {0x100020036, "XR15 RGB15 rgb555le"},
        {0x100020037, "XB15 BGR15 bgr555le"},
        {0x100020038, "RGB10x2_LE x2bgr10le"},
        {0x100020039, "BGR10x2_LE x2rgb10le"},
        {0x00020002, "RGB3 RGB rgb24"},
        {0x00020006, "BGR3 BGR bgr24"},
        {0x00020003, "XB24 RGBx rgb0"},
        {0x00020007, "XR24 BGRx bgr0"},
        {0x100020020, "AB24 RGBA rgba"},
        {0x100020021, "AR24 BGRA bgra"},
        {0x100020022, "BA24 ARGB argb"},
        {0x100020023, "RA24 ABGR abgr"},
        {0x00020004, "rgb48le"},
        {0x00020005, "RGBA64_LE rgba64le"},
        {0x00040001, "YUYV YUY2 yuyv422"},
        {0x00140002, "Y210 y210le"},
        {0x00440003, "IYU2"},
        {0x00440006, "IYU1 uyyvyy411"},
    };
    for (const auto& [type, names] : gray)
        for (const std::string& name : Split(names)) EXPECT_EQ(Find(name), (Found{type, 0})) << name;

    const std::pair<std::int64_t, const char*> bayer[] = {
        // GRBG, RGGB, GBRG, BGGR
        {0x00020010, "GRBG RGGB GBRG BA81"},
        {0x00020010, "grbg rggb gbrg bggr"},
        {0x00020010, "bayer_grbg8 bayer_rggb8 bayer_gbrg8 bayer_bggr8"},
        {0x00020011, "BA10 RG10 GB10 BG10"},
        {0x00020011, "grbg10le rggb10le gbrg10le bggr10le"},
        {0x00020012, "BA12 RG12 GB12 BG12"},
        {0x00020012, "grbg12le rggb12le gbrg12le bggr12le"},
        {0x00020016, "GR14 RG14 GB14 BG14"},
        {0x00020016, "grbg14le rggb14le gbrg14le bggr14le"},
        {0x10002000E, "GR16 RG16 GB16 BYR2"},
        {0x10002000E, "grbg16le rggb16le gbrg16le bggr16le"},
        {0x10002000E, "bayer_grbg16le bayer_rggb16le bayer_gbrg16le bayer_bggr16le"},
        {0x100420004, "pgAA pRAA pGAA pBAA"},
        {0x100420005, "pgCC pRCC pGCC pBCC"},
        {0x100420006, "pgEE pREE pGEE pBEE"},
        {0x10002000A, "grbg10be rggb10be gbrg10be bggr10be"},
        {0x10002000B, "grbg12be rggb12be gbrg12be bggr12be"},
        {0x10002000C, "grbg14be rggb14be gbrg14be bggr14be"},
        {0x10002000D, "grbg16be rggb16be gbrg16be bggr16be"},
        {0x10002000D, "bayer_grbg16be bayer_rggb16be bayer_gbrg16be bayer_bggr16be"},
    };
    for (const auto& [type, names] : bayer)
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_EQ(Find(Split(names)[i]), (Found{type, kPatterns[i]})) << Split(names)[i];
}

TEST_F(FindTest, NamesOfTheLibrary) {
    for (const std::int64_t type : AllTypes()) {
        const char* const name = KyPixelTypeFactory::GetPixelTypeName(type);
        // RGB 32-bits is the name of two types.
        EXPECT_EQ(Find(name).type, type == KY_TYPE_BGR32 ? KY_TYPE_RGB32 : type) << name;
        const bool isNamedRGGB = std::string(name).find("RGGB") != std::string::npos;
        const std::uint32_t expected = isNamedRGGB ? std::uint32_t{KY_FLAG_BAYER_RGGB} : 0;
        EXPECT_EQ(Find(name).bayerFlags, expected) << name;
        char text[32];
        std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(type));
        EXPECT_EQ(Find(text).type, type);
        EXPECT_EQ(Find(std::to_string(type)), (Found{type, expected}));
    }
    const std::pair<const char*, std::int64_t> shortNames[] = {{"RGB16", KY_TYPE_RGB16},
                                                               {"rgb24", KY_TYPE_RGB24},
                                                               {"BGR24", KY_TYPE_BGR24},
                                                               {"RGB32", KY_TYPE_RGB32},
                                                               {"bgr32", KY_TYPE_BGR32}};
    for (const auto& [name, type] : shortNames) EXPECT_EQ(Find(name).type, type) << name;
}

TEST_F(FindTest, SpellingIsLenientUnlessItMatters) {
    EXPECT_EQ(Find("bayer rgb 10, PACKED").type, 0x00420011);
    EXPECT_EQ(Find("mono12packed").type, 0x00410009);
    EXPECT_EQ(Find("ycbcr601-411-8-CbYYCrYY").type, 0x00440006);
    EXPECT_EQ(Find("'Y16 '").type, 0x00010005) << "with the blank of V4L2";
    EXPECT_EQ(Find("Y16-BE").type, 0x10001000D);
    EXPECT_EQ(Find("PRAA"), (Found{0x100420004, KY_FLAG_BAYER_RGGB}));

    // These two differ in nothing but case, so another case means neither.
    EXPECT_NE(Find("pgAA"), Find("pGAA"));
    Found found = {-1, 99};
    EXPECT_EQ(KyPixelFormat::Find("pgaa", found.type, &found.bayerFlags), KY_STATUS_BAD_ARGUMENT);
    EXPECT_EQ(found, (Found{-1, 99}));
    EXPECT_STREQ(KyImageConverter::GetError(), "\"pgaa\" may mean pgAA (0x100420004 GRBG) or pGAA (0x100420004 GBRG)");

    // Two types of an application may have one name.
    const KyPixelType type(0x0002F7F0, 8, 1, false);
    for (const std::int64_t id : {0x0002F7F0, 0x0002F7F1}) KyPixelTypeFactory::RegisterPixelType(id, &type, "Twin");
    EXPECT_EQ(KyPixelFormat::Find("Twin", found.type), KY_STATUS_BAD_ARGUMENT);
    EXPECT_STREQ(KyImageConverter::GetError(), "\"Twin\" may mean Twin (0x0002F7F0) or Twin (0x0002F7F1)");
}

/// A name that is listed for several types stands for the same bytes in all of them, and finds one of them.
TEST_F(FindTest, ListedNamesAreFound) {
    std::map<std::string, std::set<std::size_t>> sizes;
    std::set<std::uint32_t> codes;
    for (const std::int64_t type : AllTypes()) {
        for (const KyPixelFormatName& known : NamesOf(type)) {
            SCOPED_TRACE(known.name);
            EXPECT_EQ(known.bayerFlags != 0, KyPixelTypeFactory::FindPixelType(type)->IsBayerPattern());
            EXPECT_EQ(known.pfncCode != 0, known.convention == KY_NAMES_PFNC);
            EXPECT_EQ(type & (KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK), 0);
            if (known.pfncCode != 0) {
                const Found found = FindByPFNC(known.pfncCode);
                EXPECT_EQ(found.bayerFlags, known.bayerFlags);
                const auto names = NamesOf(found.type);
                EXPECT_TRUE(std::ranges::any_of(names, [&](const auto& of) { return of.name == known.name; }));
                // The code tells colour or not, and the bits of a pixel.
                const bool isGray = (type & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE || known.bayerFlags != 0;
                EXPECT_EQ(known.pfncCode >> 24, isGray ? 1U : 2U);
                codes.insert(known.pfncCode);
            }
            if (std::string(known.name) != "RGB16") {
                const Found found = Find(known.name);
                const auto names = NamesOf(found.type);
                EXPECT_EQ(found.bayerFlags, known.bayerFlags);
                EXPECT_TRUE(std::ranges::any_of(names, [&](const auto& of) { return of.name == known.name; }));
            }
            const KyImage image = {type, 8, 2, nullptr, 0, 0, 0};
            std::size_t bytes = 0;
            ASSERT_EQ(KyImage_GetSize(&image, &bytes), KY_STATUS_SUCCESS);
            if (known.pfncCode != 0) {
                EXPECT_EQ((known.pfncCode >> 16 & 0xFF) * 16 / 8, bytes);
            }
            // PFNC and GStreamer mean different bytes by RGB16.
            if (std::string(known.name) != "RGB16") sizes[known.name].insert(bytes);
        }
    }
    for (const auto& [name, of] : sizes) EXPECT_EQ(of.size(), 1U) << name;
    EXPECT_GT(codes.size(), 70U);
}

}  // namespace
