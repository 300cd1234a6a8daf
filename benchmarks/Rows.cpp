#include "Rows.h"

#include <KyImgLib/KyImgLib.h>

namespace kybench {

namespace {

constexpr std::int64_t kBayer8 = 0x00020010;
constexpr std::int64_t kBayer10 = 0x00020011;
constexpr std::int64_t kBayer12 = 0x00020012;
constexpr std::int64_t kGray10 = 0x00010002;
constexpr std::int64_t kGray12 = 0x00010003;
constexpr std::int64_t kBayer14 = 0x00020016;
constexpr std::int64_t kGray14 = 0x00010004;
constexpr std::int64_t kGray10GEV = 0x00410008;
constexpr std::int64_t kGray12GEV = 0x00410009;
constexpr std::int64_t kQuad8 = 0x00010006;
constexpr std::int64_t kQuad10 = 0x00010007;
constexpr std::uint32_t kReplicate = KyPixelConverter::FLAG_BAYER_GRBG;
constexpr std::uint32_t kBilinear = KyPixelConverter::FLAG_BAYER_GRBG | KyPixelConverter::FLAG_BAYER_INTERPOLATE;
constexpr std::int64_t kRGB48 = 0x0002000C;  // 3 x 12 bits
constexpr std::int64_t kYUV422 = 0x00040001;
constexpr std::int64_t kYUV422Words = 0x00040002;
constexpr std::int64_t kYUV444 = 0x00440003;
constexpr std::int64_t kYUV411 = 0x00440006;
constexpr std::int64_t kRGB24Packed = 0x00420002;
using enum Filter;

constexpr Row kRows[] = {
    {"Bayer8ToRGB16/replicate", kBayer8, KY_TYPE_RGB16, kReplicate, kNone},
    {"Bayer8ToRGB16/replicate", kBayer8, KY_TYPE_RGB16, kReplicate, kWhiteBalance},
    {"Bayer8ToRGB16/bilinear", kBayer8, KY_TYPE_RGB16, kBilinear, kNone},
    {"Bayer8ToRGB16/bilinear", kBayer8, KY_TYPE_RGB16, kBilinear, kWhiteBalance},
    {"Bayer8ToRGB24/replicate", kBayer8, KY_TYPE_RGB24, kReplicate, kNone},
    {"Bayer8ToRGB24/replicate", kBayer8, KY_TYPE_RGB24, kReplicate, kWhiteBalance},
    {"Bayer8ToRGB24/bilinear", kBayer8, KY_TYPE_RGB24, kBilinear, kNone},
    {"Bayer8ToRGB24/bilinear", kBayer8, KY_TYPE_RGB24, kBilinear, kWhiteBalance},
    {"Bayer8ToRGB32/replicate", kBayer8, KY_TYPE_RGB32, kReplicate, kNone},
    {"Bayer8ToRGB32/replicate", kBayer8, KY_TYPE_RGB32, kReplicate, kWhiteBalance},
    {"Bayer8ToRGB32/bilinear", kBayer8, KY_TYPE_RGB32, kBilinear, kNone},
    {"Bayer8ToRGB32/bilinear", kBayer8, KY_TYPE_RGB32, kBilinear, kWhiteBalance},
    {"Bayer10ToRGB24/bilinear", kBayer10, KY_TYPE_RGB24, kBilinear, kNone},
    {"Bayer10ToRGB24/bilinear", kBayer10, KY_TYPE_RGB24, kBilinear, kWhiteBalance},
    {"Bayer10ToRGB32/bilinear", kBayer10, KY_TYPE_RGB32, kBilinear, kNone},
    {"Bayer10ToRGB32/bilinear", kBayer10, KY_TYPE_RGB32, kBilinear, kWhiteBalance},
    {"Bayer12ToRGB24/bilinear", kBayer12, KY_TYPE_RGB24, kBilinear, kNone},
    {"Bayer12ToRGB24/bilinear", kBayer12, KY_TYPE_RGB24, kBilinear, kWhiteBalance},
    {"Bayer12ToRGB32/bilinear", kBayer12, KY_TYPE_RGB32, kBilinear, kNone},
    {"Bayer12ToRGB32/bilinear", kBayer12, KY_TYPE_RGB32, kBilinear, kWhiteBalance},
    {"Bayer12ToRGB48/bilinear", kBayer12, KY_TYPE_RGB48, kBilinear, kNone},
    {"Bayer12ToRGB48/bilinear", kBayer12, KY_TYPE_RGB48, kBilinear, kWhiteBalance},
    {"YUV422ToRGB16", kYUV422, KY_TYPE_RGB16, 0, kNone},
    {"YUV422ToRGB24", kYUV422, KY_TYPE_RGB24, 0, kNone},
    {"YUV422ToRGB24", kYUV422, KY_TYPE_RGB24, 0, kWhiteBalance},
    {"YUV422ToRGB32", kYUV422, KY_TYPE_RGB32, 0, kNone},
    {"YUV422WordsToRGB24", kYUV422Words, KY_TYPE_RGB24, 0, kNone},
    {"YUV444ToRGB24", kYUV444, KY_TYPE_RGB24, 0, kNone},
    {"YUV411ToRGB24", kYUV411, KY_TYPE_RGB24, 0, kNone},
    {"RGB16ToRGB24", KY_TYPE_RGB16, KY_TYPE_RGB24, 0, kNone},
    {"RGB24ToRGB16", KY_TYPE_RGB24, KY_TYPE_RGB16, 0, kNone},
    {"RGB24ToRGB24", kRGB24Packed, KY_TYPE_RGB24, 0, kNone},
    {"RGB24ToRGB24", kRGB24Packed, KY_TYPE_RGB24, 0, kWhiteBalance},
    {"RGB24ToBGR24", KY_TYPE_RGB24, KY_TYPE_BGR24, 0, kNone},
    {"RGB24ToRGB32", KY_TYPE_RGB24, KY_TYPE_RGB32, 0, kNone},
    {"RGB24ToRGB32", KY_TYPE_RGB24, KY_TYPE_RGB32, 0, kWhiteBalance},
    {"RGB24ToPlanar", KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR, 0, kNone},
    {"BGR32ToRGB24", KY_TYPE_BGR32, KY_TYPE_RGB24, 0, kNone},
    {"RGB48ToRGB24", kRGB48, KY_TYPE_RGB24, 0, kNone},
    {"RGB48ToRGB24", kRGB48, KY_TYPE_RGB24, 0, kWhiteBalance},

    {"RGB24ToRGB48Scaled", KY_TYPE_RGB24, KY_TYPE_RGB48_SCALED, 0, kNone},
    {"RGB24ToFloatPlanes", KY_TYPE_RGB24, KY_TYPE_RGB_FLOAT_PLANAR, 0, kNone},
    {"PlanesToRGB24", KY_TYPE_RGB24_PLANAR, KY_TYPE_RGB24, 0, kNone},
    {"Chain/Bayer8-RGB24-FloatPlanes/bilinear", kBayer8, KY_TYPE_RGB_FLOAT_PLANAR, kBilinear, kNone},
    {"RGB24ToRGBA64Scaled", KY_TYPE_RGB24, KY_TYPE_RGBA64_SCALED, 0, kNone},
    {"RGB24ToGray16Scaled", KY_TYPE_RGB24, KY_TYPE_MONO16_SCALED, 0, kNone},
    {"RGB48ToRGB48Scaled", kRGB48, KY_TYPE_RGB48_SCALED, 0, kNone},
    {"BGR565pToRGB24", KY_TYPE_BGR565P, KY_TYPE_RGB24, 0, kNone},
    {"RGB10p32ToRGB24", KY_TYPE_RGB10P32, KY_TYPE_RGB24, 0, kNone},
    {"RGB10pToRGB24", KY_TYPE_RGB10P, KY_TYPE_RGB24, 0, kNone},

    {"Gray8ToRGB16", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB16, 0, kNone},
    {"Gray8ToRGB24", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24, 0, kNone},
    {"Gray8ToRGB32", KY_TYPE_GRAYSCALE8, KY_TYPE_RGB32, 0, kNone},
    {"Gray12ToRGB32", kGray12, KY_TYPE_RGB32, 0, kNone},
    {"Gray12ToGray8", kGray12, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Gray10GEVToGray10", kGray10GEV, kGray10, 0, kNone},
    {"Gray12GEVToGray12", kGray12GEV, kGray12, 0, kNone},
    {"Gray12GEVToGray8", kGray12GEV, KY_TYPE_GRAYSCALE8, 0, kNone},

    {"Taps8/left-right", KY_TYPE_GRAYSCALE8 | KY_TAP_LEFT_RIGHT, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Taps8/left-right-inverted", KY_TYPE_GRAYSCALE8 | KY_TAP_LEFT_RIGHT_INVERTED, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Taps8/left-inverted-right", KY_TYPE_GRAYSCALE8 | KY_TAP_LEFT_INVERTED_RIGHT, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Taps8/both-inverted", KY_TYPE_GRAYSCALE8 | KY_TAP_LEFT_INVERTED_RIGHT_INVERTED, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Taps8/dual-lines", KY_TYPE_GRAYSCALE8 | KY_TAP_DUAL_LINES, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Taps8/quad", kQuad8, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"Taps10/quad", kQuad10, kGray10, 0, kNone},
    {"Taps12/both-inverted", kGray12 | KY_TAP_LEFT_INVERTED_RIGHT_INVERTED, kGray12, 0, kNone},
    {"Taps12ToRGB32/both-inverted", kGray12 | KY_TAP_LEFT_INVERTED_RIGHT_INVERTED, KY_TYPE_RGB32, 0, kNone},
    {"Taps12Packed/both-inverted", kGray12 | KY_TYPE_PACKED | KY_TAP_LEFT_INVERTED_RIGHT_INVERTED, kGray12, 0, kNone},

    {"Mono10pToGray10", KY_TYPE_MONO10P, kGray10, 0, kNone},
    {"Mono12pToGray12", KY_TYPE_MONO12P, kGray12, 0, kNone},
    {"Mono14pToGray14", KY_TYPE_MONO14P, kGray14, 0, kNone},
    {"Mono12BEToGray12", KY_TYPE_MONO12_BE, kGray12, 0, kNone},
    {"Mono1pToGray8", KY_TYPE_MONO1P, KY_TYPE_GRAYSCALE8, 0, kNone},
    {"BayerRAW10ToBayer10", KY_TYPE_BAYER10_MIPI, kBayer10, 0, kNone},
    {"BayerRAW14ToBayer14", KY_TYPE_BAYER14_MIPI, kBayer14, 0, kNone},
    {"Bayer12pToBayer12", KY_TYPE_BAYER12P, kBayer12, 0, kNone},
    {"Chain/Bayer12p-Bayer12-RGB24/bilinear", KY_TYPE_BAYER12P, KY_TYPE_RGB24, kBilinear, kNone},
    {"Chain/BayerRAW10-Bayer10-RGB24/bilinear", KY_TYPE_BAYER10_MIPI, KY_TYPE_RGB24, kBilinear, kNone},

    {"UYVYToRGB24", KY_TYPE_UYVY, KY_TYPE_RGB24, 0, kNone},
    {"UYVYToRGB32", KY_TYPE_UYVY, KY_TYPE_RGB32, 0, kNone},
    {"NV12ToRGB24", KY_TYPE_NV12, KY_TYPE_RGB24, 0, kNone},
    {"I420ToRGB24", KY_TYPE_I420, KY_TYPE_RGB24, 0, kNone},
    {"P010ToRGB24", KY_TYPE_P010, KY_TYPE_RGB24, 0, kNone},
    {"Y210ToRGB24", KY_TYPE_Y210, KY_TYPE_RGB24, 0, kNone},
    {"RGB24ToNV12", KY_TYPE_RGB24, KY_TYPE_NV12, 0, kNone},
    {"RGB24ToI420", KY_TYPE_RGB24, KY_TYPE_I420, 0, kNone},
    {"Chain/Bayer8-RGB24-NV12/bilinear", kBayer8, KY_TYPE_NV12, kBilinear, kNone},
    {"Bayer12PackedToBayer12", kBayer12 | KY_TYPE_PACKED, kBayer12, 0, kNone},
    {"TapsBayer8/left-right", kBayer8 | KY_TAP_LEFT_RIGHT, kBayer8, 0, kNone},
    {"Gray10ToRGB24", kGray10, KY_TYPE_RGB24, 0, kNone},
    {"Chain/Bayer12Packed-Bayer12-RGB24/bilinear", kBayer12 | KY_TYPE_PACKED, KY_TYPE_RGB24, kBilinear, kNone},
    {"Chain/TapsBayer8-Bayer8-RGB24/bilinear", kBayer8 | KY_TAP_LEFT_RIGHT, KY_TYPE_RGB24, kBilinear, kNone},
    {"Chain/Gray10GEV-Gray10-RGB24", kGray10GEV, KY_TYPE_RGB24, 0, kNone},
    {"Chain/YUV422-RGB24-Planar", kYUV422, KY_TYPE_RGB24_PLANAR, 0, kNone},
    {"Chain/BGR32-RGB24-Planar", KY_TYPE_BGR32, KY_TYPE_RGB24_PLANAR, 0, kNone},
};

constexpr Chain kChains[] = {
    {"Chain/Bayer8-RGB24-NV12/bilinear", {"Bayer8ToRGB24/bilinear", "RGB24ToNV12"}},
    {"Chain/Bayer12p-Bayer12-RGB24/bilinear", {"Bayer12pToBayer12", "Bayer12ToRGB24/bilinear"}},
    {"Chain/BayerRAW10-Bayer10-RGB24/bilinear", {"BayerRAW10ToBayer10", "Bayer10ToRGB24/bilinear"}},
    {"Chain/Bayer12Packed-Bayer12-RGB24/bilinear", {"Bayer12PackedToBayer12", "Bayer12ToRGB24/bilinear"}},
    {"Chain/TapsBayer8-Bayer8-RGB24/bilinear", {"TapsBayer8/left-right", "Bayer8ToRGB24/bilinear"}},
    {"Chain/Gray10GEV-Gray10-RGB24", {"Gray10GEVToGray10", "Gray10ToRGB24"}},
    {"Chain/YUV422-RGB24-Planar", {"YUV422ToRGB24", "RGB24ToPlanar"}},
    {"Chain/BGR32-RGB24-Planar", {"BGR32ToRGB24", "RGB24ToPlanar"}},
    {"Chain/Bayer8-RGB24-FloatPlanes/bilinear", {"Bayer8ToRGB24/bilinear", "RGB24ToFloatPlanes"}},
};

}  // namespace

std::span<const Row> AllRows() { return kRows; }

std::span<const Chain> AllChains() { return kChains; }

std::string NameOf(const Row& row, Size size) {
    const char* const filter = row.filter == kWhiteBalance ? "/wb/" : "/";
    return row.conversion + std::string(filter) + std::to_string(size.width) + "x" + std::to_string(size.height);
}

Row UnfilteredOf(const Row& row) {
    Row unfiltered = row;
    unfiltered.filter = kNone;
    return unfiltered;
}

}  // namespace kybench
