// The bytes of FFmpeg's formats, converted by the library and by FFmpeg.
#include <tests/interchange/PeerTest.h>

namespace {

using interchange::Bytes;
using interchange::Colours;
using interchange::IsYUV;
using interchange::Picture;
using interchange::Row;

class FFmpegTest : public interchange::PeerTest {
protected:
    void SetUp() override {
        PeerTest::SetUp();
        if (!interchange::Succeeds("ffmpeg -version")) GTEST_SKIP() << "needs FFmpeg: package ffmpeg";
    }

    /// FFmpeg as the library is: each pixel has the colour of its pair or quad, which has the mean colour of its pixels,
    /// and sums are rounded, not dithered. (It would give odd widths colours between two pairs, and each of its threads an
    /// edge of the mosaic.)
    Bytes ConvertByPeer(const Picture& source, const Picture& destination) const override {
        WriteFile("in.raw", source.bytes);
        Run("ffmpeg -nostdin -y -v error -filter_threads 1 -f rawvideo -pixel_format " + std::string(GetParam().from) +
            " -video_size " + std::to_string(source.width) + "x" + std::to_string(source.height) +
            " -i in.raw -vf scale=" + ColoursOfSource() +
            ":out_color_matrix=bt601:sws_dither=none:flags=" + (IsYUV(destination.type) ? "area" : "neighbor") +
            "+accurate_rnd+full_chroma_int+full_chroma_inp,format=" + GetParam().to + " -f rawvideo out.raw");
        Bytes result = ReadFile("out.raw");
        EXPECT_EQ(destination.bytes.size(), result.size());
        return result;
    }

private:
    /// The range says nothing where the name of a format does.
    static std::string ColoursOfSource() {
        switch (GetParam().colours) {
            case Colours::k601FullRange: return "in_color_matrix=bt601:in_range=pc";
            case Colours::k709: return "in_color_matrix=bt709";
            case Colours::k709FullRange: return "in_color_matrix=bt709:in_range=pc";
            default: return "in_color_matrix=bt601";
        }
    }
};

const Bytes kLow10 = {0xFF, 0x03}, kLow12 = {0xFF, 0x0F}, kHigh10 = {0xC0, 0xFF}, kBig10 = {0x03, 0xFF},
            kBig12 = {0x0F, 0xFF}, kBig14 = {0x3F, 0xFF};

/// Each of them rounds, truncates or has factors in its own way.
constexpr int kRounding = 1;
/// Of 10 bits the built-in type takes the upper 8: what is left is less than one step of Y (1.2) and of U or V (2.0).
constexpr int kLowBits = 3;
/// Blue above 512 is 0 in FFmpeg: its sums overflow. Y, U and V of no more than white do not reach that.
constexpr std::uint8_t kWhite = 235;

Row FromYUV(const char* from, const char* here = nullptr, Colours colours = Colours::k601) {
    return {.from = from, .to = "rgb24", .limit = kRounding, .highest = kWhite, .colours = colours, .here = here};
}

/// Samples in the upper bits of words.
Row FromYUVWords(const char* from, const char* here = nullptr) {
    Row row = FromYUV(from, here);
    row.sourceMask = kHigh10;
    return row;
}

const Row kRows[] = {
    {"rgb24", "bgr24"},
    {"bgr24", "rgb24"},
    {"rgba", "rgb24"},
    {"bgra", "rgb24"},
    {"argb", "rgb24"},
    {"abgr", "rgb24"},
    {"rgb0", "rgb24"},
    {"bgr0", "rgb24"},
    {"rgb24", "rgba"},
    {"rgb24", "bgra"},
    {"rgb24", "argb"},
    {"rgb24", "abgr"},
    {"rgb48le", "rgb24", kRounding},
    {"rgba64le", "rgb24", kRounding},
    {"rgb24", "rgb565le"},
    // Samples of 5 and 6 bits are rounded to 255 steps here, and widened by their own bits there.
    {.from = "rgb565le", .to = "rgb24", .resultMask = {0xF8, 0xFC, 0xF8}},

    {"gray10be", "gray10le", 0, kBig10},
    {"gray12be", "gray12le", 0, kBig12},
    {"gray14be", "gray14le", 0, kBig14},
    {"gray16be", "gray16le"},
    {"gray10le", "gray", 0, kLow10},
    {"gray12le", "gray", 0, kLow12},
    {"gray16le", "gray"},
    {"gray", "rgb24"},

    {"bayer_grbg8", "rgb24"},
    {"bayer_rggb8", "rgb24"},
    {"bayer_gbrg8", "rgb24"},
    {"bayer_bggr8", "rgb24"},
    {"bayer_grbg16le", "rgb24"},
    {"bayer_rggb16le", "rgb24"},
    {"bayer_gbrg16le", "rgb24"},
    {"bayer_bggr16le", "rgb24"},
    {"bayer_grbg16be", "rgb24"},
    {"bayer_rggb16be", "rgb24"},
    {"bayer_gbrg16be", "rgb24"},
    {"bayer_bggr16be", "rgb24"},

    // Built in: factors are multiples of 1/256, and of words the upper 8 bits count.
    FromYUV("yuyv422"),
    {.from = "y210le", .to = "rgb24", .limit = kLowBits, .sourceMask = kHigh10, .highest = kWhite},
    // Extended: exactly rounded.
    FromYUV("yuyv422", "YCbCr 8-bits 4:2:2, YUYV"),
    FromYUV("yuyv422", "YCbCr422_8", Colours::k601FullRange),
    FromYUV("yuyv422", "YCbCr709_422_8", Colours::k709),
    FromYUV("uyvy422"),
    FromYUV("uyvy422", "YCbCr422_8_CbYCrY", Colours::k601FullRange),
    FromYUV("uyvy422", "YCbCr709_422_8_CbYCrY", Colours::k709),
    FromYUV("yvyu422"),
    FromYUV("nv12"),
    FromYUV("nv12", "YCbCr 8-bits 4:2:0, NV12, BT.709, Full range", Colours::k709FullRange),
    FromYUV("nv21"),
    FromYUV("yuv420p"),
    FromYUV("yuvj420p"),
    FromYUV("yuv422p"),
    FromYUV("yuvj422p"),
    FromYUVWords("y210le", "YCbCr 10-bits 4:2:2, Y210"),
    FromYUVWords("p010le"),
    {"rgb24", "nv12", kRounding},
    {"bgr24", "yuv420p", kRounding},
};

TEST_P(FFmpegTest, SameAsTheLibrary) { CompareRow(238, 118); }

INSTANTIATE_TEST_SUITE_P(Formats, FFmpegTest, testing::ValuesIn(kRows), interchange::NameOf);

}  // namespace
