// The bytes of GStreamer's formats, converted by the library and by GStreamer.
#include <tests/interchange/PeerTest.h>

#include <algorithm>
#include <cctype>

namespace {

using interchange::Bytes;
using interchange::IsYUV;
using interchange::LineBytes;
using interchange::Picture;
using interchange::Row;

/// Lines begin at multiples of four bytes in GStreamer.
std::size_t StrideOf(const Picture& picture) { return (LineBytes(picture) + 3) / 4 * 4; }

/// Lines of `lineBytes` that begin `from` bytes apart, `to` bytes apart.
Bytes ChangeStride(const Bytes& bytes, std::size_t lineBytes, std::size_t from, std::size_t to) {
    const std::size_t lines = bytes.size() / from;
    Bytes result(lines * to);
    for (std::size_t y = 0; y < lines; ++y) std::copy_n(&bytes[y * from], lineBytes, &result[y * to]);
    return result;
}

/// RGB of ARGB64.
Bytes HighBytes(const Bytes& words) {
    Bytes rgb;
    for (std::size_t pixel = 0; pixel + 8 <= words.size(); pixel += 8)
        rgb.insert(rgb.end(), {words[pixel + 3], words[pixel + 5], words[pixel + 7]});
    return rgb;
}

class GStreamerTest : public interchange::PeerTest {
protected:
    void SetUp() override {
        PeerTest::SetUp();
        for (const char* const element : {"rawvideoparse", "videoconvert"})
            if (!interchange::Succeeds(std::string("gst-inspect-1.0 --exists ") + element))
                GTEST_SKIP() << "needs GStreamer: packages gstreamer1.0-tools and gstreamer1.0-plugins-base";
    }

    Bytes ConvertByPeer(const Picture& source, const Picture& destination) const override {
        WriteFile("in.raw", ChangeStride(source.bytes, LineBytes(source), LineBytes(source), StrideOf(source)));
        std::string parsed = GetParam().from;  // GRAY16_BE is gray16-be there
        std::ranges::transform(parsed, parsed.begin(),
                               [](unsigned char c) { return c == '_' ? '-' : std::tolower(c); });
        // In bytes, GStreamer's sums of YUV are up to 6 away from the exact ones.
        Run("gst-launch-1.0 -q filesrc location=in.raw ! rawvideoparse format=" + parsed +
            " width=" + std::to_string(source.width) + " height=" + std::to_string(source.height) +
            (IsYUV(source.type) ? " colorimetry=bt601" : "") +
            " ! videoconvert dither=none chroma-mode=" + (IsYUV(destination.type) ? "full" : "none") +
            " ! video/x-raw,format=" + (IsYUV(source.type) ? "ARGB64" : GetParam().to) +
            (IsYUV(destination.type) ? ",colorimetry=bt601,chroma-site=jpeg" : "") +
            " ! filesink location=out.raw >&2");
        const Bytes result = ReadFile("out.raw");
        if (IsYUV(source.type)) return HighBytes(result);
        EXPECT_EQ(destination.bytes.size() / LineBytes(destination) * StrideOf(destination), result.size());
        return ChangeStride(result, LineBytes(destination), StrideOf(destination), LineBytes(destination));
    }
};

/// For rounding 1 would do. But GStreamer widens a byte of YUV to 257 times its value where 256 times would keep its meaning,
/// which makes white 1 brighter and strong colours up to 2.
constexpr int kWidened = 3;
/// Of 10 bits the built-in type takes the upper 8: what is left is less than one step of Y (1.2) and of U or V (2.0).
constexpr int kWidenedWords = 4;

const Row kRows[] = {
    {"RGB", "BGR"},
    {"BGR", "RGB"},
    {"RGBA", "RGB"},
    {"BGRA", "RGB"},
    {"ARGB", "RGB"},
    {"ABGR", "RGB"},
    {"RGBx", "RGB"},
    {"BGRx", "RGB"},
    {"RGB", "RGBA"},
    {"RGB", "BGRA"},
    {"RGB", "ARGB"},
    {"RGB", "ABGR"},
    {"RGBA64_LE", "RGB"},
    {"RGB", "RGB16"},
    // From 5-6-5 the library converts green only, and leaves its two low bits 0.
    {.from = "RGB16", .to = "RGB", .resultMask = {0, 0xFC, 0}},
    {"GRAY16_BE", "GRAY16_LE"},
    {"GRAY16_LE", "GRAY8"},
    {"YUY2", "RGB", kWidened},
    {"Y210", "RGB", kWidenedWords},
    // The built-in type makes the red of the second to fourth pixel of a 4:1:1 group from the second one's Y.
    {.from = "IYU1",
     .to = "RGB",
     .limit = kWidened,
     .resultMask = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0xFF, 0xFF, 0, 0xFF, 0xFF}},
    {"IYU2", "RGB", kWidened},
    // Extended: exactly rounded, and all bits count.
    {.from = "YUY2", .to = "RGB", .limit = kWidened, .here = "YCbCr 8-bits 4:2:2, YUYV"},
    {"UYVY", "RGB", kWidened},
    {"YVYU", "RGB", kWidened},
    {"VYUY", "RGB", kWidened},
    {"v308", "RGB", kWidened},
    {.from = "IYU2", .to = "RGB", .limit = kWidened, .here = "YCbCr 8-bits 4:4:4, UYV"},
    {.from = "IYU1", .to = "RGB", .limit = kWidened, .here = "YCbCr 8-bits 4:1:1, UYYVYY"},
    {.from = "Y210", .to = "RGB", .limit = kWidened, .here = "YCbCr 10-bits 4:2:2, Y210"},
    {"NV12", "RGB", kWidened},
    {"NV21", "RGB", kWidened},
    {"NV16", "RGB", kWidened},
    {"I420", "RGB", kWidened},
    {"YV12", "RGB", kWidened},
    {"Y42B", "RGB", kWidened},
    {"P010_10LE", "RGB", kWidened, {0xC0, 0xFF}},
    {"RGB", "NV12", 2},
    {"RGB", "I420", 2},
};

/// Sizes at which lines end within groups; of planes, at which none needs padding.
TEST_P(GStreamerTest, SameAsTheLibrary) {
    std::int64_t from = 0, to = 0;
    KyPixelFormat::Find(GetParam().from, from);
    KyPixelFormat::Find(GetParam().to, to);
    const bool isVYUY =
        GetParam().from == std::string("VYUY");  // of an odd width GStreamer takes U for V in the last pixel
    if (isVYUY || ((from | to) & KY_TYPE_PLANAR) != 0)
        CompareRow(240, 118);
    else
        CompareRow(237, 117);
}

INSTANTIATE_TEST_SUITE_P(Formats, GStreamerTest, testing::ValuesIn(kRows), interchange::NameOf);

}  // namespace
