#include "ToolTest.h"

namespace {

class GrayTest : public ToolTest {};

TEST_F(GrayTest, LinesOfHalfAPairNeedToRunOn) {
    const Bytes packed = MakeBytes(24);  // 15 pixels in 8 pairs
    const auto convert = [this](const std::string& arguments, const Bytes& frame) {
        return Run("convert --size 5x3 --format raw -o - --type " + arguments, frame);
    };
    const ToolResult refused = convert("0x410003", packed);
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.messages.find("in lines of 9 bytes without --continuous needs 27"), std::string::npos)
        << refused.messages;

    // Words, colours, planes and mosaics; a frame is whole pairs.
    EXPECT_EQ(convert("0x410003 --continuous --to 0x10003", packed).output,
              Text(ConvertHere(0x410003, packed, 15, 1, 0x10003)));
    EXPECT_EQ(convert("0x410003 --continuous --to RGB24", packed).output,
              Text(ConvertHere(0x410003, packed, 15, 1, KY_TYPE_RGB24)));
    const Bytes samples = ConvertHere(0x420012, packed, 15, 1, 0x20012);
    EXPECT_EQ(convert("0x420012 --continuous --to 0x20012", packed).output, Text(samples));
    const std::string toPlanes = " --bayer RGGB -i --gain 2,1,1 --to 0x820002";
    EXPECT_EQ(convert("0x420012 --continuous" + toPlanes, packed).output,
              convert("0x20012" + toPlanes, samples).output);
    Bytes shorter = packed;
    shorter.pop_back();
    EXPECT_NE(convert("0x410003 --continuous", shorter).messages.find("needs 24"), std::string::npos);
    EXPECT_NE(convert("0x410003 --continuous --line-bytes 9", packed).messages.find("contradict"), std::string::npos);
    for (const std::string types :
         {"0x10003 --to 0x10003", "0x1410003 --to 0x10003", "0x610003 --to 0x10003", "0x40001 --to RGB24"}) {
        const ToolResult result = convert(types + " --continuous", packed);
        EXPECT_EQ(result.status, 2) << types;
        EXPECT_NE(result.messages.find("--continuous"), std::string::npos) << result.messages;
    }
}

TEST_F(GrayTest, DualLinesWithoutAPartnerAreLeftOut) {
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
