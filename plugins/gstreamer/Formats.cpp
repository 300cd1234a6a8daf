#include <plugins/gstreamer/Formats.h>

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>

namespace kygst {

namespace {

struct RawRow {
    const char* name;
    std::int64_t source, destination;
};

/// Several types have the bytes of one format. As sources stand those that pass colours through a filter also where the format
/// stays the same (RGBx as RGB8_4, BGRx as BGRA and the other way around), and the YCbCr types that are exact and know all
/// colorimetries. As destinations stand those that use the full range of their words.
constexpr RawRow kRaw[] = {
    {"RGB", KY_RGB24 | KY_TYPE_PACKED, KY_RGB24},
    {"BGR", KY_BGR24 | KY_TYPE_PACKED, KY_BGR24},
    {"BGRx", KY_BGRA32, KY_BGR32},
    {"RGBx", 0x0002000B, KY_RGB32},
    {"BGRA", KY_BGR32, KY_BGRA32},
    {"RGBA", 0x0002000B, KY_RGBA32},
    {"ARGB", KY_ARGB32, KY_ARGB32},
    {"ABGR", KY_ABGR32, KY_ABGR32},
    {"xRGB", KY_ARGB32, KY_ARGB32},
    {"xBGR", KY_ABGR32, KY_ABGR32},
    {"RGBP", 0x0082000A, KY_RGB24_PLANAR},
    {"RGBA64_LE", 0x00020005, KY_RGBA64_SCALED},
    {"I420", KY_I420, KY_I420},
    {"NV12", KY_NV12, KY_NV12},
    {"RGB16", KY_BGR565P, KY_RGB16},
    {"GRAY16_LE", 0x00010005, KY_MONO16_SCALED},
    {"GRAY8", KY_GRAYSCALE8, KY_GRAYSCALE8},
    // Input only.
    {"GBR", KY_GBR24_PLANAR, 0},
    {"BGR16", KY_RGB565P, 0},
    {"RGB15", KY_BGR555P, 0},
    {"BGR15", KY_RGB555P, 0},
    {"RGB10x2_LE", KY_RGB10P32, 0},
    {"BGR10x2_LE", KY_BGR10P32, 0},
    {"GRAY10_LE16", 0x00010002, 0},
    {"GRAY16_BE", KY_MONO16_BE, 0},
    {"YUY2", KY_YUYV, 0},
    {"UYVY", KY_UYVY, 0},
    {"YVYU", KY_YVYU, 0},
    {"VYUY", KY_VYUY, 0},
    {"Y210", KY_Y210, 0},
    {"v308", KY_YUV444, 0},
    {"IYU1", KY_UYYVYY411, 0},
    {"IYU2", KY_UYV444, 0},
    {"NV21", KY_NV21, 0},
    {"NV16", KY_NV16, 0},
    {"YV12", KY_YV12, 0},
    {"P010_10LE", KY_P010, 0},
    {"Y42B", KY_I422, 0},
};

std::vector<Format> MakeRawFormats() {
    std::vector<Format> formats;
    for (const RawRow& row : kRaw)
        if (gst_video_format_from_string(row.name) != GST_VIDEO_FORMAT_UNKNOWN)
            formats.push_back({row.name, row.source, row.destination, 0});
    return formats;
}

std::vector<Format> MakeBayerFormats() {
    std::vector<Format> formats;
    for (const char* const bits : {"", "10le", "12le", "14le", "16le", "10be", "12be", "14be", "16be"})
        for (const char* const pattern : {"bggr", "gbrg", "grbg", "rggb"}) {
            Format format = {std::string(pattern) + bits, 0, 0, 0};
            if (KyPixelFormat_Find(format.name.c_str(), &format.source, &format.bayerPattern) == KY_STATUS_SUCCESS)
                formats.push_back(format);
        }
    return formats;
}

}  // namespace

const std::vector<Format>& RawFormats() {
    static const std::vector<Format> formats = MakeRawFormats();
    return formats;
}

const std::vector<Format>& BayerFormats() {
    static const std::vector<Format> formats = MakeBayerFormats();
    return formats;
}

const Format* FindFormat(const std::vector<Format>& formats, const char* name) {
    const auto found = std::find_if(formats.begin(), formats.end(), [=](const Format& f) { return f.name == name; });
    return found == formats.end() ? nullptr : &*found;
}

bool ApplyColorimetry(const GstVideoInfo& info, std::int64_t& type) {
    if ((type & KY_COLOUR_SPACE_MASK) != KY_COLOUR_SPACE_YUV) return true;
    const GstVideoColorMatrix matrix = info.colorimetry.matrix;
    if (matrix != GST_VIDEO_COLOR_MATRIX_BT601 && matrix != GST_VIDEO_COLOR_MATRIX_BT709) return false;
    if (matrix == GST_VIDEO_COLOR_MATRIX_BT709) type |= KY_BT709;
    if (info.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255) type |= KY_FULL_RANGE;
    return true;
}

}  // namespace kygst
