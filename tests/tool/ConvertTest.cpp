#include "ToolTest.h"

namespace {

constexpr std::uint32_t kWidth = 21, kHeight = 9;

const std::string kCommand = "convert in.raw --type 0x20010 --size 21x9 ";

class ConvertTest : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        Write("in.raw", mosaic);
    }

    Bytes Expected(std::int64_t type, std::uint32_t flags) const {
        return ConvertHere(0x20010, mosaic, kWidth, kHeight, type, flags);
    }

    const Bytes mosaic = MakeBytes(kWidth * kHeight);
};

TEST_F(ConvertTest, PictureIsTheLibrarysWithEveryBayerPatternAndDemosaicing) {
    struct Pattern {
        const char* name;
        std::uint32_t flag;
    };
    for (const Pattern& pattern :
         {Pattern{"GRBG", 0x10}, Pattern{"gbrg", 0x20}, Pattern{"RGGB", 0x40}, Pattern{"BGGR", 0x80}})
        for (const bool interpolate : {false, true}) {
            const std::string options =
                std::string("--bayer ") + pattern.name + (interpolate ? "" : " --demosaic nearest");
            const ToolResult result = Run(kCommand + options + " -o out.png");
            ASSERT_EQ(result.status, 0) << result.messages;
            EXPECT_EQ(result.messages, "");
            const DecodedPng picture = DecodePng("out.png");
            EXPECT_EQ(picture.width, kWidth);
            EXPECT_EQ(picture.height, kHeight);
            EXPECT_EQ(picture.samples, Expected(KY_TYPE_RGB24, pattern.flag | (interpolate ? 0x100 : 0))) << options;
        }
}

TEST_F(ConvertTest, EveryDestinationShowsTheSamePicture) {
    const Bytes rgb = Expected(KY_TYPE_RGB24, 0x140);
    for (const std::string type :
         {"RGB24", "BGR24", "RGB32", "BGR32", "0x20007", "131078", "'bgr 24'", "'RGB 24-bits'"}) {
        ASSERT_EQ(Run(kCommand + "--bayer RGGB -i -o out.png --to " + type).status, 0) << type;
        EXPECT_EQ(DecodePng("out.png").samples, rgb) << type;
    }
    ASSERT_EQ(Run(kCommand + "--bayer RGGB -i -o out.png --to rgb16").status, 0);
    const Bytes expanded = DecodePng("out.png").samples;
    ASSERT_EQ(expanded.size(), rgb.size());
    for (std::size_t i = 0; i < rgb.size(); ++i) {
        const int bits = i % 3 == 1 ? 6 : 5;
        EXPECT_EQ(expanded[i] >> (8 - bits), rgb[i] >> (8 - bits));
        // White must stay white and black black.
        EXPECT_EQ(expanded[i] & (0xFF >> bits), expanded[i] >> bits & (0xFF >> bits));
    }
}

TEST_F(ConvertTest, PpmAndRawHoldTheSameBytes) {
    ASSERT_EQ(Run(kCommand + "--bayer GRBG --demosaic nearest -o out.ppm").status, 0);
    EXPECT_EQ(ReadText("out.ppm"), "P6\n21 9\n255\n" + Text(Expected(KY_TYPE_RGB24, 0x10)));
    for (const std::int64_t type : {KY_TYPE_RGB16, KY_TYPE_BGR24, KY_TYPE_RGB32}) {
        ASSERT_EQ(Run(kCommand + "--bayer GRBG -i --format raw -o out.bin --to " + std::to_string(type)).status, 0);
        EXPECT_EQ(Read("out.bin"), Expected(type, 0x110)) << type;
    }
}

TEST_F(ConvertTest, GrayKeepsItsDepth) {
    Write("gray.raw", {0x00, 0x00, 0xFF, 0x03, 0x55, 0x02, 0x01, 0xFC});  // the last with stray high bits
    const std::string gray10 = "convert gray.raw --type 'grayscale 10-BITS' --size 2x2 --to 0x10002 ";
    ASSERT_EQ(Run(gray10 + "-o out.png").status, 0);
    const DecodedPng deep = DecodePng("out.png");
    EXPECT_EQ(deep.depth, 16);
    EXPECT_EQ(deep.channels, 1);
    EXPECT_EQ(deep.significantBits, 10);
    EXPECT_EQ(deep.samples, (Bytes{0x00, 0x00, 0xFF, 0xFF, 0x95, 0x65, 0x00, 0x40}));
    ASSERT_EQ(Run(gray10 + "-o out.pgm").status, 0);
    EXPECT_EQ(ReadText("out.pgm"), "P5\n2 2\n1023\n" + Text({0, 0, 3, 0xFF, 2, 0x55, 0, 1}));

    // Left-aligned words fill the PNG's range as they are.
    ASSERT_EQ(Run("convert gray.raw --type 0x110002 --size 2x2 --to 0x110002 -o out.png").status, 0);
    EXPECT_EQ(DecodePng("out.png").samples, (Bytes{0x00, 0x00, 0x03, 0xFF, 0x02, 0x55, 0xFC, 0x01}));

    // Gray is the default for gray, and a mosaic that stays one is gray as well.
    for (const std::string types : {"--type 0x10001", "--type 0x20010 --to 0x20010"}) {
        ASSERT_EQ(Run("convert in.raw --size 21x9 -o out.png " + types).status, 0);
        EXPECT_EQ(DecodePng("out.png").samples, mosaic);
    }
}

TEST_F(ConvertTest, PlanesOfASourceAreAPicture) {
    const Bytes rgb = MakeBytes(3 * 7 * 2);
    Write("planes.raw", ToPlanes(rgb));
    ASSERT_EQ(Run("convert planes.raw --type RGB8_Planar --size 7x2 --to RGB8_Planar -o out.png").messages, "");
    EXPECT_EQ(DecodePng("out.png").samples, rgb);
}

TEST_F(ConvertTest, AnyNumberOfThreadsWritesTheSame) {
    const Bytes large = MakeBytes(1201 * 901);
    const std::string command = "convert --type 0x20010 --size 1201x901 --bayer GRBG -i --to RGB16 --format raw -o - ";
    const std::string alone = Run(command + "--threads 1", large).output;
    ASSERT_EQ(alone.size(), 2U * 1201 * 901);
    for (const char* const options : {"", "--threads 3", "--threads 1000"}) {
        const ToolResult result = Run(command + options, large);
        EXPECT_EQ(result.status, 0) << result.messages;
        EXPECT_TRUE(result.output == alone) << options;
    }
}

TEST_F(ConvertTest, PipesCarryWhatFilesDo) {
    ASSERT_EQ(Run(kCommand + "--bayer GRBG -o file.png").status, 0);
    const std::string options = " --type 131088 --size 21x9 --bayer GRBG --format png -o ";
    for (const std::string& arguments : {options + "-", " -" + options + "-", options + "/dev/stdout"}) {
        if (arguments.ends_with("/dev/stdout") && !std::filesystem::exists("/dev/stdout")) continue;
        const ToolResult result = Run("convert" + arguments, mosaic);
        EXPECT_EQ(result.status, 0) << result.messages;
        EXPECT_EQ(result.output, ReadText("file.png")) << arguments;
    }
}

TEST_F(ConvertTest, FramesAreCountedAndNumbered) {
    Bytes film(3, 0xAA);  // a header to skip
    Bytes frames[3];
    for (std::uint8_t i = 0; i < 3; ++i) {
        frames[i] = mosaic;
        frames[i][0] = i;
        film.insert(film.end(), frames[i].begin(), frames[i].end());
    }
    Write("film.raw", film);
    const std::string command = "convert --type 0x20010 --size 21x9 --to 0x20010 --skip-bytes 3 ";
    for (const std::string source : {"film.raw ", ""}) {
        ASSERT_EQ(Run(command + source + "--frames all -o all.v1.raw", film).status, 0);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Read("all.v1-000" + std::to_string(i + 1) + ".raw"), frames[i]);
        ASSERT_EQ(Run(command + source + "--frames 2-2 --format raw -o -", film).output, Text(frames[1]));
        EXPECT_EQ(Run(command + source + "--frames 2 --format raw -o -", film).output,
                  Text(frames[0]) + Text(frames[1]));
        EXPECT_EQ(Run(command + source + "-o none.raw", film).status, 1);
    }
    EXPECT_EQ(ListFiles().count("none.raw"), 0U);
}

TEST_F(ConvertTest, LinesOfHalfAPairNeedToRunOn) {
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

TEST_F(ConvertTest, DualLinesWithoutAPartnerAreLeftOut) {
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
