// The bytes of FFmpeg's formats, converted by the library and by FFmpeg.
#include <tests/interchange/PeerTest.h>

namespace {

using interchange::Bytes;
using interchange::Picture;
using interchange::Row;

class FFmpegTest : public interchange::PeerTest {
protected:
    void SetUp() override {
        PeerTest::SetUp();
        if (!interchange::Succeeds("ffmpeg -version")) GTEST_SKIP() << "needs FFmpeg: package ffmpeg";
    }

    /// FFmpeg as the library is: each pixel has the colour of its pair or quad, and sums are rounded, not dithered. (It
    /// would give odd widths colours between two pairs, and each of its threads an edge of the mosaic.)
    Bytes ConvertByPeer(const Picture& source, const Picture& destination) const override {
        WriteFile("in.raw", source.bytes);
        Run("ffmpeg -nostdin -y -v error -filter_threads 1 -f rawvideo -pixel_format " + std::string(GetParam().from) +
            " -video_size " + std::to_string(source.width) + "x" + std::to_string(source.height) +
            " -i in.raw -vf scale=in_color_matrix=bt601:out_color_matrix=bt601:sws_dither=none:"
            "flags=neighbor+accurate_rnd+full_chroma_int+full_chroma_inp,format=" +
            GetParam().to + " -f rawvideo out.raw");
        Bytes result = ReadFile("out.raw");
        EXPECT_EQ(destination.bytes.size(), result.size());
        return result;
    }
};

const Bytes kLow10 = {0xFF, 0x03}, kLow12 = {0xFF, 0x0F}, kHigh10 = {0xC0, 0xFF}, kBig10 = {0x03, 0xFF},
            kBig12 = {0x0F, 0xFF}, kBig14 = {0x3F, 0xFF};

/// FFmpeg rounds, the library truncates. Of YUV, the library's factors are multiples of 1/256.
constexpr int kRounding = 1;
/// Of 10 bits the library takes the upper 8: what is left is less than one step of Y (1.2) and of U or V (2.0).
constexpr int kLowBits = 3;
/// Blue above 512 is 0 in FFmpeg: its sums overflow. Y, U and V of no more than white do not reach that.
constexpr std::uint8_t kWhite = 235;

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
    // From 5-6-5 the library converts green only, and leaves its two low bits 0.
    {.from = "rgb565le", .to = "rgb24", .resultMask = {0, 0xFC, 0}},

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

    {.from = "yuyv422", .to = "rgb24", .limit = kRounding, .highest = kWhite},
    {.from = "y210le", .to = "rgb24", .limit = kLowBits, .sourceMask = kHigh10, .highest = kWhite},
};

TEST_P(FFmpegTest, SameAsTheLibrary) { CompareRow(238, 118); }

INSTANTIATE_TEST_SUITE_P(Formats, FFmpegTest, testing::ValuesIn(kRows), interchange::NameOf);

}  // namespace
