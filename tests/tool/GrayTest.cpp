#include "ToolTest.h"

namespace {

using Words = std::vector<unsigned>;

/// Twelve bits of each of the pixels that `bytes` hold, two in each three.
Words Unpack12(const Bytes& bytes) {
    Words words;
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
        words.push_back(bytes[i] * 16U + bytes[i + 1] % 16);
        words.push_back(bytes[i + 2] * 16U + bytes[i + 1] / 16);
    }
    return words;
}

class GrayTest : public ToolTest {
protected:
    /// The words of a 16-bit gray PNG, and its size as text.
    Words DecodeWords(const std::string& name, std::string& size) const {
        const DecodedPng picture = DecodePng(name);
        size = std::to_string(picture.width) + "x" + std::to_string(picture.height);
        EXPECT_EQ(picture.channels, 1);
        EXPECT_EQ(picture.depth, 16);
        Words words;
        for (std::size_t i = 0; i + 1 < picture.samples.size(); i += 2)
            words.push_back(picture.samples[i] * 256U + picture.samples[i + 1]);
        return words;
    }
};

TEST_F(GrayTest, PackedPixelsBecomePicturesOf8And16Bits) {
    const Bytes packed = MakeBytes(6 * 4 / 2 * 3);
    const Words expected = Unpack12(packed);
    Write("in.raw", packed);
    for (const std::string type : {"0x410009", "0x410003"}) {
        const std::string command = "convert in.raw --size 6x4 -o out.png --type " + type;
        ASSERT_EQ(Run(command).status, 0) << type;
        const DecodedPng bytes = DecodePng("out.png");
        ASSERT_EQ(bytes.samples.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(bytes.samples[i], expected[i] / 16);

        ASSERT_EQ(Run(command + " --to 0x10003").status, 0) << type;
        std::string size;
        Words shown = DecodeWords("out.png", size);
        EXPECT_EQ(DecodePng("out.png").significantBits, 12);
        for (unsigned& word : shown) word /= 16;  // scaled up to the range of the PNG
        EXPECT_EQ(shown, expected);
    }
    // Left-aligned words fill the PNG's range as they are.
    ASSERT_EQ(Run("convert in.raw --size 6x4 -o out.png --type 0x410003 --to 0x110003").status, 0);
    std::string size;
    Words left = expected;
    for (unsigned& word : left) word *= 16;
    EXPECT_EQ(DecodeWords("out.png", size), left);
    EXPECT_EQ(size, "6x4");
}

TEST_F(GrayTest, LinesOfHalfAPairNeedToRunOn) {
    const Bytes packed = MakeBytes(5 * 3 / 2 * 3 + 3);  // 15 pixels in 8 pairs
    Words expected = Unpack12(packed);
    expected.resize(15);
    Write("in.raw", packed);
    const std::string command = "convert in.raw --type 0x410003 --size 5x3 --to 0x10003 -o out.png ";

    const ToolResult refused = Run(command);
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.messages.find("in lines of 9 bytes without --continuous needs 27"), std::string::npos)
        << refused.messages;
    EXPECT_EQ(ListFiles().count("out.png"), 0U);

    ASSERT_EQ(Run(command + "--continuous").status, 0);
    std::string size;
    Words shown = DecodeWords("out.png", size);
    for (unsigned& word : shown) word /= 16;
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(size, "5x3");

    // Colours, planes and mosaics too; a frame is whole pairs.
    const std::string rgb = "convert --size 5x3 --continuous --format raw -o - --type ";
    EXPECT_EQ(Run(rgb + "0x410003 --to RGB24", packed).output.size(), 45U);
    const std::string samples = Run(rgb + "0x420012 --to 0x20012", packed).output;
    EXPECT_EQ(samples.size(), 30U);
    EXPECT_EQ(Run(rgb + "0x420012 --bayer RGGB -i --gain 2,1,1 --to 0x820002", packed).output,
              Run("convert --size 5x3 --format raw -o - --bayer RGGB -i --gain 2,1,1 --type 0x20012 --to 0x820002",
                  {samples.begin(), samples.end()})
                  .output);
    Bytes shorter = packed;
    shorter.pop_back();
    EXPECT_NE(Run(rgb + "0x410003", shorter).messages.find("needs 24"), std::string::npos);
    EXPECT_NE(Run(rgb + "0x410003 --line-bytes 9", packed).messages.find("contradict"), std::string::npos);
    for (const std::string types :
         {"0x10003 --to 0x10003", "0x1410003 --to 0x10003", "0x610003 --to 0x10003", "0x40001 --to RGB24"}) {
        const ToolResult result = Run(rgb + types, packed);
        EXPECT_EQ(result.status, 2) << types;
        EXPECT_NE(result.messages.find("--continuous"), std::string::npos) << result.messages;
    }
}

TEST_F(GrayTest, OutputsComeBackInScanOrder) {
    const Bytes line = {0, 1, 2, 3, 4, 5, 6, 7};
    Write("taps.raw", {0, 7, 1, 6, 2, 5, 3, 4});
    ASSERT_EQ(Run("convert taps.raw --type 0x2010001 --size 8x1 -o out.png").status, 0);
    EXPECT_EQ(DecodePng("out.png").samples, line);

    Write("lines.raw", {0, 10, 1, 11, 2, 12, 99, 99, 99});  // three lines of three pixels, of which one has no partner
    const ToolResult result = Run("convert lines.raw --type 0x10010001 --size 3x3 -o out.png");
    ASSERT_EQ(result.status, 0) << result.messages;
    EXPECT_NE(result.messages.find("3x2"), std::string::npos) << result.messages;
    EXPECT_EQ(DecodePng("out.png").samples, (Bytes{0, 1, 2, 10, 11, 12}));
    ASSERT_EQ(Run("convert lines.raw --type 0x10010001 --size 3x3 --to 0x820002 --format raw -o out.raw").status, 0);
    EXPECT_EQ(Read("out.raw"), (Bytes{0, 1, 2, 10, 11, 12, 0, 1, 2, 10, 11, 12, 0, 1, 2, 10, 11, 12}));
    EXPECT_NE(Run("convert lines.raw --type 0x10010001 --size 9x1 -o no.png").messages.find("two lines"),
              std::string::npos);
}

}  // namespace
