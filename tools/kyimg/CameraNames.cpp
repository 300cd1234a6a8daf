#include "CameraNames.h"

#include <algorithm>
#include <sstream>

namespace kyimg {

namespace {

constexpr const char* kStandards[] = {"PFNC", "V4L2", "GStreamer", "FFmpeg"};

/// One layout of bytes. Names of a standard are separated by blanks; old GigE Vision names count as PFNC.
struct Layout {
    std::int64_t types[4];  // that have these bytes; the names mean the first
    const char* pattern;
    const char* names[4];  // by standard
};

// Only what is the same byte for byte. In particular:
// - the "p" formats of PFNC (Mono12p), those of MIPI and of V4L2 (Y12P) pack otherwise than "Packed" ones;
// - V4L2's and FFmpeg's big-endian words are other bytes;
// - the first component of PFNC's 5-6-5 is in the low bits, so it is BGR565p that has red in the high ones;
// - GigE Vision's YUV422Packed is U Y V Y, for which there is no type here.
// clang-format off
constexpr Layout kLayouts[] = {
    //                                                                  PFNC                V4L2    GStreamer      FFmpeg
    {{0x00010001},                                     "",     {"Mono8",                   "GREY", "GRAY8",       "gray"}},
    {{0x00010002},                                     "",     {"Mono10",                  "Y10",  "GRAY10_LE16", "gray10le"}},
    {{0x00010003},                                     "",     {"Mono12",                  "Y12",  "",            "gray12le"}},
    {{0x00010004},                                     "",     {"Mono14",                  "Y14",  "",            "gray14le"}},
    {{0x00010005, 0x00110005},                         "",     {"Mono16",                  "Y16",  "GRAY16_LE",   "gray16le"}},
    {{0x00410008, 0x00410002},                         "",     {"Mono10Packed",            "",     "",            ""}},
    {{0x00410009, 0x00410003},                         "",     {"Mono12Packed",            "",     "",            ""}},

    {{0x00020010},                                     "GRBG", {"BayerGR8",                "GRBG", "grbg",        "bayer_grbg8"}},
    {{0x00020010, 0x00020013},                         "RGGB", {"BayerRG8",                "RGGB", "rggb",        "bayer_rggb8"}},
    {{0x00020010},                                     "GBRG", {"BayerGB8",                "GBRG", "gbrg",        "bayer_gbrg8"}},
    {{0x00020010},                                     "BGGR", {"BayerBG8",                "BA81", "bggr",        "bayer_bggr8"}},
    {{0x00020011},                                     "GRBG", {"BayerGR10",               "BA10", "grbg10le",    ""}},
    {{0x00020011, 0x00020014},                         "RGGB", {"BayerRG10",               "RG10", "rggb10le",    ""}},
    {{0x00020011},                                     "GBRG", {"BayerGB10",               "GB10", "gbrg10le",    ""}},
    {{0x00020011},                                     "BGGR", {"BayerBG10",               "BG10", "bggr10le",    ""}},
    {{0x00020012},                                     "GRBG", {"BayerGR12",               "BA12", "grbg12le",    ""}},
    {{0x00020012, 0x00020015},                         "RGGB", {"BayerRG12",               "RG12", "rggb12le",    ""}},
    {{0x00020012},                                     "GBRG", {"BayerGB12",               "GB12", "gbrg12le",    ""}},
    {{0x00020012},                                     "BGGR", {"BayerBG12",               "BG12", "bggr12le",    ""}},
    {{0x00020016},                                     "GRBG", {"BayerGR14",               "GR14", "grbg14le",    ""}},
    {{0x00020016},                                     "RGGB", {"BayerRG14",               "RG14", "rggb14le",    ""}},
    {{0x00020016},                                     "GBRG", {"BayerGB14",               "GB14", "gbrg14le",    ""}},
    {{0x00020016},                                     "BGGR", {"BayerBG14",               "BG14", "bggr14le",    ""}},
    {{0x00420011},                                     "GRBG", {"BayerGR10Packed",         "",     "",            ""}},
    {{0x00420011, 0x00420014},                         "RGGB", {"BayerRG10Packed",         "",     "",            ""}},
    {{0x00420011},                                     "GBRG", {"BayerGB10Packed",         "",     "",            ""}},
    {{0x00420011},                                     "BGGR", {"BayerBG10Packed",         "",     "",            ""}},
    {{0x00420012},                                     "GRBG", {"BayerGR12Packed",         "",     "",            ""}},
    {{0x00420012, 0x00420015},                         "RGGB", {"BayerRG12Packed",         "",     "",            ""}},
    {{0x00420012},                                     "GBRG", {"BayerGB12Packed",         "",     "",            ""}},
    {{0x00420012},                                     "BGGR", {"BayerBG12Packed",         "",     "",            ""}},

    {{0x00020001},                                     "",     {"BGR565p",                 "RGBP", "RGB16",       "rgb565le"}},
    {{0x00020002, 0x00420002, 0x0002000A, 0x0042000A}, "",     {"RGB8 RGB8Packed",         "RGB3", "RGB",         "rgb24"}},
    {{0x00020006, 0x00420006},                         "",     {"BGR8 BGR8Packed",         "BGR3", "BGR",         "bgr24"}},
    {{0x00020003},                                     "",     {"RGB8a32",                 "XB24", "RGBx",        "rgb0"}},
    {{0x00020007},                                     "",     {"BGR8a32",                 "XR24", "BGRx",        "bgr0"}},
    {{0x0002000B, 0x0042000B},                         "",     {"RGBa8",                   "AB24", "RGBA",        "rgba"}},
    {{0x00020008},                                     "",     {"RGB10",                   "",     "",            ""}},
    {{0x0002000C},                                     "",     {"RGB12",                   "",     "",            ""}},
    {{0x00020004, 0x00120004},                         "",     {"RGB16",                   "",     "",            "rgb48le"}},
    {{0x00020009},                                     "",     {"RGBa10",                  "",     "",            ""}},
    {{0x0002000D},                                     "",     {"RGBa12",                  "",     "",            ""}},
    {{0x00020005, 0x00120005},                         "",     {"RGBa16",                  "",     "RGBA64_LE",   "rgba64le"}},
    {{0x00820002, 0x0082000A},                         "",     {"RGB8_Planar",             "",     "",            ""}},

    {{0x00040001}, "", {"YUV422_8 YCbCr422_8 YCbCr601_422_8",                              "YUYV", "YUY2",        "yuyv422"}},
    {{0x00040002}, "", {"YCbCr422_10 YCbCr601_422_10",                                     "",     "",            ""}},
    {{0x00140002}, "", {"",                                                                "Y210", "Y210",        "y210le"}},
    {{0x00440003}, "", {"YUV8_UYV YUV444Packed YCbCr8_CbYCr YCbCr601_8_CbYCr",             "",     "IYU2",        ""}},
    {{0x00440006}, "", {"YUV411_8_UYYVYY YUV411Packed YCbCr411_8_CbYYCrYY YCbCr601_411_8_CbYYCrYY",
                                                                                           "",     "IYU1",        "uyyvyy411"}},
};
// clang-format on

/// The names of a layout, as names for one of its types.
void AddNames(std::vector<CameraName>& all, const Layout& layout, std::int64_t type) {
    for (std::size_t standard = 0; standard < std::size(kStandards); ++standard) {
        std::istringstream names(layout.names[standard]);
        for (std::string name; names >> name;) all.push_back({name, kStandards[standard], layout.pattern, type});
    }
}

}  // namespace

const std::vector<CameraName>& AllCameraNames() {
    static const std::vector<CameraName> all = [] {
        std::vector<CameraName> names;
        for (const Layout& layout : kLayouts) AddNames(names, layout, layout.types[0]);
        return names;
    }();
    return all;
}

std::vector<CameraName> CameraNamesOf(std::int64_t type) {
    std::vector<CameraName> names;
    for (const Layout& layout : kLayouts)
        if (std::ranges::find(layout.types, type) != std::end(layout.types)) AddNames(names, layout, type);
    return names;
}

std::vector<std::pair<std::string, std::string>> DescribeCameraNames(std::int64_t type) {
    std::vector<std::pair<std::string, std::string>> texts;
    const std::vector<CameraName> names = CameraNamesOf(type);
    for (const char* const standard : kStandards) {
        std::string text;
        for (const CameraName& known : names)
            if (known.standard == standard) text += (text.empty() ? "" : ", ") + known.name;
        if (!text.empty()) texts.emplace_back(standard, text);
    }
    return texts;
}

}  // namespace kyimg
