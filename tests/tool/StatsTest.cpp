#include "ToolTest.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace {

using Json = nlohmann::json;

class StatsTest : public ToolTest {
protected:
    Json RunJson(const std::string& arguments) const {
        const ToolResult result = Run(arguments + " --json");
        EXPECT_EQ(result.status, 0) << result.messages;
        return Json::parse(result.output);
    }
};

TEST_F(StatsTest, ChannelsOfAMosaicAreCountedApart) {
    Write("in.raw", {0xFF, 3, 8, 0, 0xFF, 3, 8, 0,  // red: saturated, green 8
                     16, 0, 1, 0, 20, 0, 2, 0});    // green, blue: 1 and 2
    const Json stats = RunJson("stats in.raw --type BayerRG10 --size 4x2");
    EXPECT_EQ(stats["bits"], 10);
    const char* const names[] = {"R", "Gr", "Gb", "B"};
    const int minima[] = {1023, 8, 16, 1}, maxima[] = {1023, 8, 20, 2}, used[] = {0x3FF, 8, 0x14, 3};
    for (std::size_t i = 0; i < 4; ++i) {
        const Json& channel = stats["channels"][i];
        EXPECT_EQ(channel["name"], names[i]);
        EXPECT_EQ(channel["minimum"], minima[i]);
        EXPECT_EQ(channel["maximum"], maxima[i]);
        EXPECT_EQ(channel["usedBits"], used[i]);
        EXPECT_EQ(channel["mean"], (minima[i] + maxima[i]) / 2.0);
        EXPECT_EQ(channel["saturated"], i == 0 ? 2 : 0);
    }
    // By the option, by place, and packed: the same numbers.
    EXPECT_EQ(RunJson("stats in.raw --type 0x20011 --bayer bggr --size 4x2")["channels"][0]["name"], "B");
    EXPECT_EQ(RunJson("stats in.raw --type 0x20011 --size 4x2")["channels"][3]["name"], "x1y1");
    Write("packed.raw", {0xFF, 0x03, 2, 5, 0});
    EXPECT_EQ(RunJson("stats packed.raw --type Mono10p --size 4x1")["channels"][0]["maximum"], 1023);
}

TEST_F(StatsTest, PercentilesAndHistogram) {
    Bytes ramp(256 * 4);
    for (std::size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<std::uint8_t>(i);
    Write("ramp.raw", ramp);
    const std::string input = "stats ramp.raw --type Mono8 --size 256x4 ";
    const Json gray = RunJson(input)["channels"][0];
    EXPECT_EQ(gray["percentiles"]["25"], 63);
    EXPECT_EQ(gray["percentiles"]["50"], 127);
    EXPECT_EQ(gray["percentiles"]["99"], 253);
    EXPECT_NEAR(gray["deviation"].get<double>(), 73.9, 0.01);

    ASSERT_EQ(Run(input + "--histogram h.png").status, 0);
    const DecodedPng picture = DecodePng("h.png");
    // Every other column has a value, and all of these are as high.
    EXPECT_GT(picture.samples[0], 100);
    EXPECT_LT(picture.samples[3], 100);
    ASSERT_EQ(Run(input + "--histogram h.svg").status, 0);
    EXPECT_NE(ReadText("h.svg").find("</svg>"), std::string::npos);
    EXPECT_EQ(Run(input + "--histogram h.raw").status, 2);
    EXPECT_EQ(Run("stats ramp.raw").status, 2) << "a raw file needs type and size";
}

TEST_F(StatsTest, ComparisonOfRawAndPictures) {
    Bytes rgb = MakeBytes(3 * 7 * 5);
    Write("a.raw", rgb);
    ASSERT_EQ(Run("convert a.raw --type RGB8 --size 7x5 -o a.png").status, 0);
    rgb[3 * (2 * 7 + 4) + 1] ^= 0x10;
    Write("b.raw", rgb);
    ASSERT_EQ(Run("convert b.raw --type RGB8 --size 7x5 -o b.ppm").status, 0);
    const std::string layout = " --type RGB8 --size 7x5";
    for (const std::string& files : {"a.raw b.raw" + layout, std::string("a.png b.ppm"), "a.png b.raw" + layout}) {
        const Json differences = RunJson("compare " + files);
        ASSERT_EQ(differences.size(), 4U);
        EXPECT_EQ(differences[0]["largest"], 0);
        EXPECT_TRUE(differences[0]["psnr"].is_null());
        EXPECT_EQ(differences[1]["largest"], 16);
        EXPECT_EQ(differences[1]["x"], 4);
        EXPECT_EQ(differences[1]["y"], 2);
        EXPECT_EQ(differences[3]["different"], 1);
        EXPECT_NEAR(differences[3]["psnr"].get<double>(), 10 * std::log10(255.0 * 255 * 105 / 256), 1e-9);
    }
    EXPECT_EQ(Run("compare a.png b.ppm --max-difference 16 --min-psnr 40").status, 0);
    EXPECT_EQ(Run("compare a.png b.ppm --max-difference 15").status, 1);
    EXPECT_EQ(Run("compare a.png b.ppm --min-psnr 50").status, 1);
    EXPECT_EQ(Run("compare a.png a.png --max-difference 0 --min-psnr 99").status, 0);
    ASSERT_EQ(Run("convert a.raw --type Mono8 --size 7x15 -o gray.png").status, 0);
    EXPECT_NE(Run("compare a.png gray.png").messages.find("7x15"), std::string::npos);
    EXPECT_NE(Run("compare a.raw b.ppm").messages.find("--type and --size"), std::string::npos);
}

}  // namespace
