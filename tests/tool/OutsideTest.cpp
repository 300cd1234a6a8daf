// Frames that GStreamer made, converted by kyimg and compared with GStreamer's own RGB.

#include "ToolTest.h"

#include <cstdlib>

namespace {

constexpr std::uint32_t kWidth = 237, kHeight = 117;  // odd, so that lines end in the middle of a group

/// GStreamer's lines begin at multiples of four bytes.
constexpr std::uint32_t Padded(std::uint32_t bytes) { return (bytes + 3) / 4 * 4; }

class OutsideTest : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        for (const std::string element : {"videotestsrc", "videoconvert"})
            if (std::system(("gst-inspect-1.0 --exists " + element + " >/dev/null 2>&1").c_str()) != 0)
                GTEST_SKIP() << "needs GStreamer: packages gstreamer1.0-tools and gstreamer1.0-plugins-base";
    }

    /// in.raw: a test picture in `format`; own.raw: that frame in `ownFormat`, by GStreamer. Each pixel has the colour of
    /// its group there, as in the library; GStreamer would smooth colours and dither by itself.
    void MakeFrames(const std::string& pattern, const std::string& format, const std::string& ownFormat) const {
        const std::string size =
            ",width=" + std::to_string(kWidth) + ",height=" + std::to_string(kHeight) + ",colorimetry=bt601";
        const std::string command = "cd '" + (folder / "files").string() +
                                    "' && gst-launch-1.0 -q videotestsrc num-buffers=1 pattern=" + pattern +
                                    " ! video/x-raw,format=" + format + size +
                                    " ! tee name=t ! queue ! filesink location=in.raw t. ! queue !"
                                    " videoconvert dither=none chroma-mode=none ! video/x-raw,format=" +
                                    ownFormat + " ! filesink location=own.raw >&2";
        ASSERT_EQ(std::system(command.c_str()), 0);
    }

    /// What kyimg makes of in.raw.
    Bytes Convert(const std::string& type, std::uint32_t lineBytes, const std::string& destination) const {
        const ToolResult result = Run("convert in.raw -q --type " + type + " --size " + std::to_string(kWidth) + "x" +
                                      std::to_string(kHeight) + " --line-bytes " + std::to_string(lineBytes) +
                                      " --to " + destination + " --format raw -o out.raw");
        EXPECT_EQ(result.status, 0) << result.messages;
        return Read("out.raw");
    }

    /// The high bytes of own.raw in ARGB64.
    Bytes ReadOwn() const {
        const Bytes words = Read("own.raw");
        Bytes rgb;
        for (std::size_t pixel = 0; pixel + 8 <= words.size(); pixel += 8)
            rgb.insert(rgb.end(), {words[pixel + 3], words[pixel + 5], words[pixel + 7]});
        return rgb;
    }
};

/// The exact sums need no more than 1 for rounding. But GStreamer widens a byte of YUV to 257 times its value where 256
/// times would keep its meaning, which makes white 1 brighter and strong colours up to 2; and for what is left of 10 bits
/// after the library has taken the upper 8, less than one step of Y (1.2) and of U or V (2.0) is missing.
constexpr int kMostDifference = 3;

void ExpectNear(const Bytes& picture, const Bytes& own) {
    ASSERT_EQ(picture.size(), 3U * kWidth * kHeight);
    ASSERT_EQ(own.size(), picture.size());
    std::size_t sum = 0;
    for (std::size_t i = 0; i < own.size(); ++i) {
        const int difference = std::abs(picture[i] - own[i]);
        sum += static_cast<std::size_t>(difference);
        ASSERT_LE(difference, kMostDifference)
            << "channel " << i % 3 << " of pixel " << i / 3 % kWidth << " in line " << i / 3 / kWidth;
    }
    EXPECT_LT(sum, own.size()) << "a difference of 1 on the average is too much";
}

TEST_F(OutsideTest, Yuv) {
    struct Source {
        const char* format;
        const char* type;
        std::uint32_t lineBytes;
    };
    const Source sources[] = {
        {"YUY2", "0x40001", Padded((kWidth + 1) * 2)},
        {"IYU2", "0x440003", Padded(kWidth * 3)},
        {"Y210", "0x140002", Padded((kWidth + 1) * 4)},
        {"IYU1", "0x440006", Padded((kWidth + 3) / 4 * 6)},
    };
    for (const Source& source : sources)
        for (const std::string pattern : {"colors", "smpte"}) {
            SCOPED_TRACE(source.format + (" of pattern " + pattern));
            MakeFrames(pattern, source.format, "ARGB64");
            Bytes own = ReadOwn();
            // The library makes the red of the second to fourth pixel of a 4:1:1 group from the second one's Y.
            for (std::size_t pixel = 0; source.format == std::string("IYU1") && pixel < own.size() / 3; ++pixel)
                if (const std::size_t place = pixel % kWidth % 4; place > 1)
                    own[3 * pixel] = own[3 * (pixel - place + 1)];
            ExpectNear(Convert(source.type, source.lineBytes, "RGB24"), own);
        }
}

TEST_F(OutsideTest, Words565) {
    for (const std::string pattern : {"colors", "smpte"}) {
        SCOPED_TRACE(pattern);
        // To 5-6-5 both leave out low bits.
        MakeFrames(pattern, "RGB", "RGB16");
        const Bytes words = Convert("RGB24", Padded(kWidth * 3), "RGB16");
        const Bytes ownWords = Read("own.raw");
        constexpr std::size_t kOwnLine = Padded(kWidth * 2);
        ASSERT_EQ(words.size(), 2U * kWidth * kHeight);
        ASSERT_EQ(ownWords.size(), kOwnLine * kHeight);
        for (std::size_t y = 0; y < kHeight; ++y)
            ASSERT_TRUE(
                std::equal(&words[y * kWidth * 2], &words[y * kWidth * 2] + kWidth * 2, &ownWords[y * kOwnLine]))
                << "line " << y;

        // From 5-6-5 the library converts green only, and leaves the two low bits 0 that GStreamer fills with high ones.
        MakeFrames(pattern, "RGB16", "ARGB64");
        const Bytes own = ReadOwn();
        const Bytes rgb = Convert("RGB16", Padded(kWidth * 2), "RGB24");
        ASSERT_EQ(rgb.size(), own.size());
        for (std::size_t i = 1; i < own.size(); i += 3) ASSERT_EQ(rgb[i], own[i] & 0xFC) << "pixel " << i / 3;
        // A picture of the words themselves has all colours.
        ASSERT_EQ(
            Run("convert in.raw -t RGB16 -s 237x117 --line-bytes " + std::to_string(Padded(kWidth * 2)) + " -o out.png")
                .status,
            0);
        EXPECT_EQ(DecodePng("out.png").samples, own);
    }
}

}  // namespace
