#include <KyImgLib/names/NameTableInternal.h>

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <algorithm>
#include <iterator>

namespace ky {

namespace {

constexpr std::int64_t kFull = KY_YCBCR_FULL_RANGE, k709 = KY_YCBCR_BT709;

// Only what is the same byte for byte; what is not, but has a name that is easily taken for one of these, stands below.
// clang-format off
constexpr FormatNames kFormats[] = {
    // types, Bayer pattern, PFNC, V4L2, GStreamer, FFmpeg

    // Grayscale: bytes, then LSB-aligned little-endian words.
    {{0x00010001}, 0, {{"Mono8", 0x01080001}}, "GREY", "GRAY8", "gray"},
    {{0x00010002}, 0, {{"Mono10", 0x01100003}}, "Y10", "GRAY10_LE16", "gray10le"},
    {{0x00010003}, 0, {{"Mono12", 0x01100005}}, "Y12", nullptr, "gray12le"},
    {{0x00010004}, 0, {{"Mono14", 0x01100025}}, "Y14", nullptr, "gray14le"},
    {{0x00010005, 0x00110005, KY_TYPE_MONO16_SCALED}, 0, {{"Mono16", 0x01100007}}, "Y16", "GRAY16_LE", "gray16le"},
    // GigE Vision's pairs in three bytes.
    {{0x00410008, 0x00410002}, 0, {{"Mono10Packed", 0x010C0004}}, nullptr, nullptr, nullptr},
    {{0x00410009, 0x00410003}, 0, {{"Mono12Packed", 0x010C0006}}, nullptr, nullptr, nullptr},
    // PFNC's "p" formats.
    {{KY_TYPE_MONO1P}, 0, {{"Mono1p", 0x01010037}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_MONO2P}, 0, {{"Mono2p", 0x01020038}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_MONO4P}, 0, {{"Mono4p", 0x01040039}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_MONO10P}, 0, {{"Mono10p", 0x010A0046}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_MONO12P}, 0, {{"Mono12p", 0x010C0047}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_MONO14P}, 0, {{"Mono14p", 0x010E0104}}, nullptr, nullptr, nullptr},
    // MIPI CSI-2.
    {{KY_TYPE_MONO10_MIPI}, 0, {}, "Y10P", nullptr, nullptr},
    {{KY_TYPE_MONO12_MIPI}, 0, {}, "Y12P", nullptr, nullptr},
    {{KY_TYPE_MONO14_MIPI}, 0, {}, "Y14P", nullptr, nullptr},
    // Big-endian words.
    {{KY_TYPE_MONO10_BE}, 0, {}, nullptr, nullptr, "gray10be"},
    {{KY_TYPE_MONO12_BE}, 0, {}, nullptr, nullptr, "gray12be"},
    {{KY_TYPE_MONO14_BE}, 0, {}, nullptr, nullptr, "gray14be"},
    {{KY_TYPE_MONO16_BE}, 0, {}, "Y16_BE", "GRAY16_BE", "gray16be"},

    // Bayer mosaics: bytes, then LSB-aligned little-endian words.
    {{0x00020010}, kGRBG, {{"BayerGR8", 0x01080008}}, "GRBG", "grbg", "bayer_grbg8"},
    {{0x00020010, 0x00020013}, kRGGB, {{"BayerRG8", 0x01080009}}, "RGGB", "rggb", "bayer_rggb8"},
    {{0x00020010}, kGBRG, {{"BayerGB8", 0x0108000A}}, "GBRG", "gbrg", "bayer_gbrg8"},
    {{0x00020010}, kBGGR, {{"BayerBG8", 0x0108000B}}, "BA81", "bggr", "bayer_bggr8"},
    {{0x00020011}, kGRBG, {{"BayerGR10", 0x0110000C}}, "BA10", "grbg10le", nullptr},
    {{0x00020011, 0x00020014}, kRGGB, {{"BayerRG10", 0x0110000D}}, "RG10", "rggb10le", nullptr},
    {{0x00020011}, kGBRG, {{"BayerGB10", 0x0110000E}}, "GB10", "gbrg10le", nullptr},
    {{0x00020011}, kBGGR, {{"BayerBG10", 0x0110000F}}, "BG10", "bggr10le", nullptr},
    {{0x00020012}, kGRBG, {{"BayerGR12", 0x01100010}}, "BA12", "grbg12le", nullptr},
    {{0x00020012, 0x00020015}, kRGGB, {{"BayerRG12", 0x01100011}}, "RG12", "rggb12le", nullptr},
    {{0x00020012}, kGBRG, {{"BayerGB12", 0x01100012}}, "GB12", "gbrg12le", nullptr},
    {{0x00020012}, kBGGR, {{"BayerBG12", 0x01100013}}, "BG12", "bggr12le", nullptr},
    {{0x00020016}, kGRBG, {{"BayerGR14", 0x01100109}}, "GR14", "grbg14le", nullptr},
    {{0x00020016}, kRGGB, {{"BayerRG14", 0x0110010A}}, "RG14", "rggb14le", nullptr},
    {{0x00020016}, kGBRG, {{"BayerGB14", 0x0110010B}}, "GB14", "gbrg14le", nullptr},
    {{0x00020016}, kBGGR, {{"BayerBG14", 0x0110010C}}, "BG14", "bggr14le", nullptr},
    {{KY_TYPE_BAYER16}, kGRBG, {{"BayerGR16", 0x0110002E}}, "GR16", "grbg16le", "bayer_grbg16le"},
    {{KY_TYPE_BAYER16}, kRGGB, {{"BayerRG16", 0x0110002F}}, "RG16", "rggb16le", "bayer_rggb16le"},
    {{KY_TYPE_BAYER16}, kGBRG, {{"BayerGB16", 0x01100030}}, "GB16", "gbrg16le", "bayer_gbrg16le"},
    {{KY_TYPE_BAYER16}, kBGGR, {{"BayerBG16", 0x01100031}}, "BYR2", "bggr16le", "bayer_bggr16le"},
    // GigE Vision's pairs in three bytes.
    {{0x00420011}, kGRBG, {{"BayerGR10Packed", 0x010C0026}}, nullptr, nullptr, nullptr},
    {{0x00420011, 0x00420014}, kRGGB, {{"BayerRG10Packed", 0x010C0027}}, nullptr, nullptr, nullptr},
    {{0x00420011}, kGBRG, {{"BayerGB10Packed", 0x010C0028}}, nullptr, nullptr, nullptr},
    {{0x00420011}, kBGGR, {{"BayerBG10Packed", 0x010C0029}}, nullptr, nullptr, nullptr},
    {{0x00420012}, kGRBG, {{"BayerGR12Packed", 0x010C002A}}, nullptr, nullptr, nullptr},
    {{0x00420012, 0x00420015}, kRGGB, {{"BayerRG12Packed", 0x010C002B}}, nullptr, nullptr, nullptr},
    {{0x00420012}, kGBRG, {{"BayerGB12Packed", 0x010C002C}}, nullptr, nullptr, nullptr},
    {{0x00420012}, kBGGR, {{"BayerBG12Packed", 0x010C002D}}, nullptr, nullptr, nullptr},
    // PFNC's "p" formats.
    {{KY_TYPE_BAYER10P}, kGRBG, {{"BayerGR10p", 0x010A0056}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER10P}, kRGGB, {{"BayerRG10p", 0x010A0058}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER10P}, kGBRG, {{"BayerGB10p", 0x010A0054}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER10P}, kBGGR, {{"BayerBG10p", 0x010A0052}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER12P}, kGRBG, {{"BayerGR12p", 0x010C0057}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER12P}, kRGGB, {{"BayerRG12p", 0x010C0059}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER12P}, kGBRG, {{"BayerGB12p", 0x010C0055}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER12P}, kBGGR, {{"BayerBG12p", 0x010C0053}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER14P}, kGRBG, {{"BayerGR14p", 0x010E0105}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER14P}, kRGGB, {{"BayerRG14p", 0x010E0106}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER14P}, kGBRG, {{"BayerGB14p", 0x010E0107}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BAYER14P}, kBGGR, {{"BayerBG14p", 0x010E0108}}, nullptr, nullptr, nullptr},
    // MIPI CSI-2.
    {{KY_TYPE_BAYER10_MIPI}, kGRBG, {}, "pgAA", nullptr, nullptr},
    {{KY_TYPE_BAYER10_MIPI}, kRGGB, {}, "pRAA", nullptr, nullptr},
    {{KY_TYPE_BAYER10_MIPI}, kGBRG, {}, "pGAA", nullptr, nullptr},
    {{KY_TYPE_BAYER10_MIPI}, kBGGR, {}, "pBAA", nullptr, nullptr},
    {{KY_TYPE_BAYER12_MIPI}, kGRBG, {}, "pgCC", nullptr, nullptr},
    {{KY_TYPE_BAYER12_MIPI}, kRGGB, {}, "pRCC", nullptr, nullptr},
    {{KY_TYPE_BAYER12_MIPI}, kGBRG, {}, "pGCC", nullptr, nullptr},
    {{KY_TYPE_BAYER12_MIPI}, kBGGR, {}, "pBCC", nullptr, nullptr},
    {{KY_TYPE_BAYER14_MIPI}, kGRBG, {}, "pgEE", nullptr, nullptr},
    {{KY_TYPE_BAYER14_MIPI}, kRGGB, {}, "pREE", nullptr, nullptr},
    {{KY_TYPE_BAYER14_MIPI}, kGBRG, {}, "pGEE", nullptr, nullptr},
    {{KY_TYPE_BAYER14_MIPI}, kBGGR, {}, "pBEE", nullptr, nullptr},
    // Big-endian words.
    {{KY_TYPE_BAYER10_BE}, kGRBG, {}, nullptr, "grbg10be", nullptr},
    {{KY_TYPE_BAYER10_BE}, kRGGB, {}, nullptr, "rggb10be", nullptr},
    {{KY_TYPE_BAYER10_BE}, kGBRG, {}, nullptr, "gbrg10be", nullptr},
    {{KY_TYPE_BAYER10_BE}, kBGGR, {}, nullptr, "bggr10be", nullptr},
    {{KY_TYPE_BAYER12_BE}, kGRBG, {}, nullptr, "grbg12be", nullptr},
    {{KY_TYPE_BAYER12_BE}, kRGGB, {}, nullptr, "rggb12be", nullptr},
    {{KY_TYPE_BAYER12_BE}, kGBRG, {}, nullptr, "gbrg12be", nullptr},
    {{KY_TYPE_BAYER12_BE}, kBGGR, {}, nullptr, "bggr12be", nullptr},
    {{KY_TYPE_BAYER14_BE}, kGRBG, {}, nullptr, "grbg14be", nullptr},
    {{KY_TYPE_BAYER14_BE}, kRGGB, {}, nullptr, "rggb14be", nullptr},
    {{KY_TYPE_BAYER14_BE}, kGBRG, {}, nullptr, "gbrg14be", nullptr},
    {{KY_TYPE_BAYER14_BE}, kBGGR, {}, nullptr, "bggr14be", nullptr},
    {{KY_TYPE_BAYER16_BE}, kGRBG, {}, nullptr, "grbg16be", "bayer_grbg16be"},
    {{KY_TYPE_BAYER16_BE}, kRGGB, {}, nullptr, "rggb16be", "bayer_rggb16be"},
    {{KY_TYPE_BAYER16_BE}, kGBRG, {}, nullptr, "gbrg16be", "bayer_gbrg16be"},
    {{KY_TYPE_BAYER16_BE}, kBGGR, {}, nullptr, "bggr16be", "bayer_bggr16be"},

    // RGB and BGR. The first component of PFNC's 5-6-5 is in the low bits, so it is BGR565p that has red in the high ones.
    {{KY_TYPE_BGR565P, 0x00020001}, 0, {{"BGR565p", 0x02100036}}, "RGBP", "RGB16", "rgb565le"},
    {{KY_TYPE_RGB565P}, 0, {{"RGB565p", 0x02100035}}, nullptr, nullptr, "bgr565le"},
    {{KY_TYPE_BGR555P}, 0, {}, "XR15", "RGB15", "rgb555le"},
    {{KY_TYPE_RGB555P}, 0, {}, "XB15", "BGR15", "bgr555le"},
    {{KY_TYPE_RGB10P32}, 0, {{"RGB10p32", 0x0220001D}}, nullptr, "RGB10x2_LE", "x2bgr10le"},
    {{KY_TYPE_BGR10P32}, 0, {}, nullptr, "BGR10x2_LE", "x2rgb10le"},
    {{KY_TYPE_RGB10P}, 0, {{"RGB10p", 0x021E005C}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_BGR10P}, 0, {{"BGR10p", 0x021E0048}}, nullptr, nullptr, nullptr},
    {{0x00020002, 0x00420002, 0x0002000A, 0x0042000A}, 0,
     {{"RGB8", 0x02180014}, {"RGB8Packed", 0x02180014}},
     "RGB3", "RGB", "rgb24"},
    {{0x00020006, 0x00420006}, 0, {{"BGR8", 0x02180015}, {"BGR8Packed", 0x02180015}}, "BGR3", "BGR", "bgr24"},
    {{0x00020003}, 0, {{"RGB8a32", 0x0220012D}}, "XB24", "RGBx", "rgb0"},
    {{0x00020007}, 0, {{"BGR8a32", 0x0220012E}}, "XR24", "BGRx", "bgr0"},
    {{KY_TYPE_RGBA32, 0x0002000B, 0x0042000B}, 0, {{"RGBa8", 0x02200016}}, "AB24", "RGBA", "rgba"},
    {{KY_TYPE_BGRA32}, 0, {{"BGRa8", 0x02200017}}, "AR24", "BGRA", "bgra"},
    {{KY_TYPE_ARGB32}, 0, {}, "BA24", "ARGB", "argb"},
    {{KY_TYPE_ABGR32}, 0, {}, "RA24", "ABGR", "abgr"},
    {{0x00020008}, 0, {{"RGB10", 0x02300018}}, nullptr, nullptr, nullptr},
    {{0x0002000C}, 0, {{"RGB12", 0x0230001A}}, nullptr, nullptr, nullptr},
    {{0x00020004, 0x00120004, KY_TYPE_RGB48_SCALED}, 0, {{"RGB16", 0x02300033}}, nullptr, nullptr, "rgb48le"},
    {{0x00020009}, 0, {{"RGBa10", 0x0240005F}}, nullptr, nullptr, nullptr},
    {{0x0002000D}, 0, {{"RGBa12", 0x02400061}}, nullptr, nullptr, nullptr},
    {{0x00020005, 0x00120005, KY_TYPE_RGBA64_SCALED, KY_TYPE_RGBA64}, 0,
     {{"RGBa16", 0x02400064}},
     nullptr, "RGBA64_LE", "rgba64le"},
    {{0x00820002, 0x0082000A}, 0, {{"RGB8_Planar", 0x02180021}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_GBR24_PLANAR}, 0, {}, nullptr, "GBR", "gbrp"},
    {{KY_TYPE_RGB10_PLANAR}, 0, {{"RGB10_Planar", 0x02300022}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_RGB12_PLANAR}, 0, {{"RGB12_Planar", 0x02300023}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_RGB48_PLANAR_SCALED}, 0, {{"RGB16_Planar", 0x02300024}}, nullptr, nullptr, nullptr},

    // YUV. Names that say YUV, and those of V4L2, GStreamer and FFmpeg, are taken for BT.601 in limited range, as YCbCr601 is.
    // PFNC's YCbCr without a number is BT.601 in full range.
    {{0x00040001, KY_TYPE_YUYV}, 0,
     {{"YUV422_8", 0x02100032}, {"YCbCr601_422_8", 0x0210003E}},
     "YUYV", "YUY2", "yuyv422"},
    {{KY_TYPE_YUYV | kFull, 0x00040001}, 0, {{"YCbCr422_8", 0x0210003B}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YUYV | k709}, 0, {{"YCbCr709_422_8", 0x02100041}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_UYVY}, 0,
     {{"YUV422_8_UYVY", 0x0210001F}, {"YUV422Packed", 0x0210001F}, {"YCbCr601_422_8_CbYCrY", 0x02100044}},
     "UYVY", "UYVY", "uyvy422"},
    {{KY_TYPE_UYVY | kFull}, 0, {{"YCbCr422_8_CbYCrY", 0x02100043}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_UYVY | k709}, 0, {{"YCbCr709_422_8_CbYCrY", 0x02100045}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YVYU}, 0, {}, "YVYU", "YVYU", "yvyu422"},
    {{KY_TYPE_VYUY}, 0, {}, "VYUY", "VYUY", nullptr},
    {{0x00040002, KY_TYPE_YUYV10}, 0, {{"YCbCr601_422_10", 0x0220008D}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YUYV10 | kFull, 0x00040002}, 0, {{"YCbCr422_10", 0x02200065}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YUYV10 | k709}, 0, {{"YCbCr709_422_10", 0x02200095}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YUYV12}, 0, {{"YCbCr601_422_12", 0x0220008F}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YUYV12 | kFull}, 0, {{"YCbCr422_12", 0x02200066}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YUYV12 | k709}, 0, {{"YCbCr709_422_12", 0x02200097}}, nullptr, nullptr, nullptr},
    {{0x00140002, KY_TYPE_Y210}, 0, {}, "Y210", "Y210", "y210le"},
    {{KY_TYPE_YUV444}, 0, {}, "YUV3", "v308", nullptr},
    {{KY_TYPE_YUV444 | kFull}, 0, {{"YCbCr8", 0x0218005B}}, nullptr, nullptr, nullptr},
    {{0x00440003, KY_TYPE_UYV444}, 0,
     {{"YUV8_UYV", 0x02180020}, {"YUV444Packed", 0x02180020}, {"YCbCr601_8_CbYCr", 0x0218003D}},
     nullptr, "IYU2", nullptr},
    {{KY_TYPE_UYV444 | kFull, 0x00440003}, 0, {{"YCbCr8_CbYCr", 0x0218003A}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_UYV444 | k709}, 0, {{"YCbCr709_8_CbYCr", 0x02180040}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_YYUYYV411 | kFull}, 0, {{"YCbCr411_8", 0x020C005A}}, nullptr, nullptr, nullptr},
    {{0x00440006, KY_TYPE_UYYVYY411}, 0,
     {{"YUV411_8_UYYVYY", 0x020C001E}, {"YUV411Packed", 0x020C001E}, {"YCbCr601_411_8_CbYYCrYY", 0x020C003F}},
     nullptr, "IYU1", "uyyvyy411"},
    {{KY_TYPE_UYYVYY411 | kFull, 0x00440006}, 0, {{"YCbCr411_8_CbYYCrYY", 0x020C003C}}, nullptr, nullptr, nullptr},
    {{KY_TYPE_UYYVYY411 | k709}, 0, {{"YCbCr709_411_8_CbYYCrYY", 0x020C0042}}, nullptr, nullptr, nullptr},
    // In planes.
    {{KY_TYPE_NV12}, 0, {}, "NV12", "NV12", "nv12"},
    {{KY_TYPE_NV21}, 0, {}, "NV21", "NV21", "nv21"},
    {{KY_TYPE_NV16}, 0, {}, "NV16", "NV16", "nv16"},
    {{KY_TYPE_I420}, 0, {}, "YU12", "I420", "yuv420p"},
    {{KY_TYPE_I420 | kFull}, 0, {}, nullptr, nullptr, "yuvj420p"},
    {{KY_TYPE_YV12}, 0, {}, "YV12", "YV12", nullptr},
    {{KY_TYPE_P010}, 0, {}, "P010", "P010_10LE", "p010le"},
    {{KY_TYPE_I422}, 0, {}, "422P", "Y42B", "yuv422p"},
    {{KY_TYPE_I422 | kFull}, 0, {}, nullptr, nullptr, "yuvj422p"},
};
// clang-format on

constexpr AbsentFormat kAbsent[] = {
    {{{"YCbCr2020_422_8", 0}, {"YCbCr2020_422_10", 0}},
     "its colours are those of BT.2020, and YCbCr is converted by BT.601 or BT.709"},
    {{{"Y41P", 0}}, "its groups are eight pixels in 12 bytes, those of YUV411_8_UYYVYY (GStreamer IYU1) four in six"},
    {{{"NV61", 0}, {"NV24", 0}, {"NV42", 0}},
     "its second plane has V before U, or U and V of every pixel; that of NV16 has U before V of each pair of pixels"},
    {{{"Y41B", 0}, {"411P", 0}, {"yuv411p", 0}, {"Y444", 0}, {"yuv444p", 0}},
     "its planes of U and V have a sample for four pixels or for each; those of I420 and yuv422p have one for two"},
    {{{"I420_10LE", 0}, {"yuv420p10le", 0}, {"I422_10LE", 0}, {"yuv422p10le", 0}},
     "its planes are words with 10 bits; P010 and Y210 have 10 bits in other layouts, I420 and yuv422p have bytes"},
    {{{"Y10B", 0}, {"Y10BPACK", 0}},
     "it is a stream of bits from the highest one on; Mono10p starts with the lowest, Mono10Packed has pairs in three "
     "bytes and V4L2 Y10P has the low bits of four samples in a byte of their own"},
    {{{"ip3G", 0}, {"ip3r", 0}, {"ip3g", 0}, {"ip3b", 0}},
     "it has 25 pixels in 32 bytes; BayerGR10p and V4L2 pgAA have four in five"},
    {{{"BGR16", 0x0230004B}},
     "PFNC's has 16-bit words B, G, R and GStreamer's is 5-6-5 with red in the low bits, which is RGB565p; RGB16 is "
     "5-6-5 "
     "with red in the high ones, 0x00020004 has 16-bit words R, G, B"},
    {{{"BGR10", 0x02300019}, {"BGR12", 0x0230001B}, {"BGR14", 0x0230004A}, {"bgr48le", 0}, {"BGR6", 0}},
     "its words are B, G, R, those of RGB10, RGB12 and 0x00020004 (PFNC RGB16) are R, G, B"},
    {{{"BGRa10", 0x0240004C}, {"BGRa12", 0x0240004E}, {"BGRa14", 0x02400050}, {"BGRa16", 0x02400051}, {"bgra64le", 0}},
     "its words are B, G, R, those of RGBa10, RGBa12 and RGBa16 are R, G, B"},
    {{{"RGB14", 0x0230005E}, {"RGBa14", 0x02400063}},
     "its samples have 14 bits, those of types in this order 10, 12 or 16"},
    {{{"RGBR", 0}, {"rgb565be", 0}},
     "its words are big-endian, those of V4L2 RGBP (FFmpeg rgb565le) are little-endian"},
    {{{"monob", 0}, {"monow", 0}}, "its first pixel is in the highest bit of a byte, that of Mono1p in the lowest"},
    {{{"MJPG", 0}, {"JPEG", 0}, {"H264", 0}, {"H265", 0}, {"HEVC", 0}}, "it is compressed: decode it first"},
};

}  // namespace

std::span<const FormatNames> AllFormatNames() noexcept { return kFormats; }

std::span<const AbsentFormat> AllAbsentFormats() noexcept { return kAbsent; }

bool HasBytesOf(const FormatNames& format, std::int64_t type) noexcept {
    return type != 0 && std::ranges::find(format.types, type) != std::end(format.types);
}

bool NthName(const FormatNames& format, std::uint32_t index, KyPixelFormatName& name) noexcept {
    for (const auto& [text, code] : format.pfnc) {
        if (text == nullptr) break;
        if (index-- > 0) continue;
        name = {text, KY_NAMES_PFNC, format.bayerFlags, code};
        return true;
    }
    const char* const others[] = {format.v4l2, format.gstreamer, format.ffmpeg};
    for (std::uint32_t i = 0; i < 3; ++i) {
        if (others[i] == nullptr || index-- > 0) continue;
        name = {others[i], KY_NAMES_V4L2 + i, format.bayerFlags, 0};
        return true;
    }
    return false;
}

}  // namespace ky
