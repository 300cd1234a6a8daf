#include "ToolTest.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::uint32_t kWidth = 8, kHeight = 6;

/// A gray ramp as a sensor of 10 bits sees it, GRBG: black level 64, red a half of green, blue a quarter.
Bytes MakeRamp() {
    Bytes words;
    for (std::uint32_t y = 0; y < kHeight; ++y)
        for (std::uint32_t x = 0; x < kWidth; ++x) {
            const unsigned light = 16 * (x / 2 + y / 2 * 4);
            const unsigned divisor = y % 2 == x % 2 ? 1 : x % 2 == 1 ? 2 : 4;
            const unsigned sample = 64 + light * 4 / divisor;
            words.insert(words.end(), {static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8)});
        }
    return words;
}

class LooksTest : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        Write("in.raw", MakeRamp());
    }

    Bytes Convert(const std::string& options) const {
        const ToolResult result =
            Run("convert in.raw -q --type BayerGR10 --size 8x6 --demosaic nearest -o out.ppm " + options);
        EXPECT_EQ(result.status, 0) << result.messages;
        const Bytes file = Read("out.ppm");
        return {file.begin() + static_cast<std::ptrdiff_t>(Text(file).find("255\n") + 4), file.end()};
    }
};

TEST_F(LooksTest, BlackLevelAndWhiteBalanceMakeTheRampGray) {
    const ToolResult told = Run(
        "convert in.raw --type BayerGR10 --size 8x6 --demosaic nearest --black auto --white-balance auto -o out.png");
    EXPECT_NE(told.messages.find("black level 64 found"), std::string::npos) << told.messages;
    EXPECT_NE(told.messages.find("--gain 2.00,1.00,4.00"), std::string::npos) << told.messages;
    const Bytes found = DecodePng("out.png").samples;
    for (std::size_t i = 0; i < found.size(); i += 3) {
        EXPECT_NEAR(found[i], found[i + 1], 1) << i;
        EXPECT_NEAR(found[i], found[i + 2], 1) << i;
    }
    EXPECT_EQ(found[0], 0);
    EXPECT_EQ(Convert("--black 64 --gain 2,1,4"), found) << "what was told does the same";
}

TEST_F(LooksTest, GammaLevelsAndTableComeInThisOrder) {
    const Bytes plain = Convert("--black 64 --gain 2,1,4");
    const Bytes encoded = Convert("--black 64 --gain 2,1,4 --gamma 2");
    for (std::size_t i = 0; i < plain.size(); i += 3)
        EXPECT_NEAR(encoded[i], 255 * std::sqrt(plain[i] / 255.0), 8) << static_cast<int>(plain[i]);
    const Bytes levelled = Convert("--black 64 --gain 2,1,4 --auto-levels 0,100");
    EXPECT_EQ(*std::ranges::max_element(levelled), 255);
    EXPECT_EQ(*std::ranges::min_element(levelled), 0);

    std::string table = "# negative\n";
    for (int i = 0; i < 1024; ++i) table += std::to_string(1023 - i) + (i % 2 == 0 ? " 0 1023\n" : "\t0,1023\n");
    Write("table.txt", {table.begin(), table.end()});
    const Bytes mapped = Convert("--black 64 --gain 2,1,4 --table table.txt");
    for (std::size_t i = 0; i < plain.size(); i += 3) {
        EXPECT_NEAR(mapped[i], 255 - plain[i], 1);
        EXPECT_EQ(mapped[i + 1], 0);
        EXPECT_EQ(mapped[i + 2], 255);
    }
    EXPECT_NE(Run("convert in.raw --type Mono8 --size 12x8 --table table.txt -o o.png").messages.find("256 entries"),
              std::string::npos);
}

TEST_F(LooksTest, GrayIsCorrectedAsWell) {
    Write("gray.raw", {0x40, 0, 0x80, 0, 0, 1, 0xFF, 3});  // 64, 128, 256, 1023
    const std::string command = "convert gray.raw --type Mono10 --size 2x2 --format raw -o - ";
    const std::string wide = command + "--to Mono10 ";
    EXPECT_EQ(Run(wide + "--gain 1.5").output, Text({0x60, 0, 0xC0, 0, 0x80, 1, 0xFF, 3}));
    EXPECT_EQ(Run(wide + "--gain 2 --offset 3").output, Text({0x83, 0, 3, 1, 3, 2, 0xFF, 3}));
    EXPECT_EQ(Run(command + "--black 64").output, Text({0, 17, 51, 255}));
    EXPECT_EQ(Run(command + "--black 64 --to RGB24").output, Text({0, 0, 0, 17, 17, 17, 51, 51, 51, 255, 255, 255}));
    EXPECT_NE(Run(command + "--white-balance auto").messages.find("gray has none"), std::string::npos);
}

TEST_F(LooksTest, PartsKeepTheirColoursAndTurn) {
    const Bytes all = Convert("");
    const Bytes part = Convert("--crop 2,2,4x4");
    for (std::size_t y = 0; y < 4; ++y)
        EXPECT_TRUE(std::equal(&part[y * 12], &part[y * 12] + 12, &all[((y + 2) * kWidth + 2) * 3])) << y;
    // Beginning at the other sites of the cell, the pattern follows: still more green than red, and more red than blue.
    const Bytes odd = Convert("--crop 3,1,4x4 --black 64");
    for (std::size_t i = 24; i < odd.size(); i += 3) EXPECT_TRUE(odd[i + 1] > odd[i] && odd[i] > odd[i + 2]) << i;

    Write("rgb.raw", {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 6, 6});  // 1 2 3 over 4 5 6
    const auto turned = [this](const std::string& options) {
        std::string samples;
        const Bytes bytes = [&] {
            EXPECT_EQ(Run("convert rgb.raw --type RGB8 --size 3x2 -o o.png " + options).status, 0);
            return DecodePng("o.png").samples;
        }();
        for (std::size_t i = 0; i < bytes.size(); i += 3) samples += std::to_string(bytes[i]);
        return samples + " " + std::to_string(DecodePng("o.png").width);
    };
    EXPECT_EQ(turned("--rotate 90"), "415263 2");
    EXPECT_EQ(turned("--rotate 180"), "654321 3");
    EXPECT_EQ(turned("--rotate 270"), "362514 2");
    EXPECT_EQ(turned("--flip horizontal"), "321654 3");
    EXPECT_EQ(turned("--flip vertical"), "456123 3");
    EXPECT_EQ(turned("--shrink 2"), "3 1");
    EXPECT_EQ(turned("--rotate 90 --flip horizontal"), "142536 2");
}

TEST_F(LooksTest, WrongValuesAreTold) {
    const std::string command = "convert in.raw --type BayerGR10 --size 8x6 -o o.png ";
    for (const char* const options :
         {"--white-balance sun", "--black -3", "--black dark", "--gamma 0", "--gamma srg", "--auto-levels 5",
          "--gain 1,2", "--auto-levels 90,10", "--crop 1,2", "--crop 5,0,4x6", "--rotate 45", "--flip over",
          "--shrink 7", "--to BayerGR10 --rotate 90", "--to BayerGR10 --gamma 2"}) {
        const ToolResult result = Run(command + options);
        EXPECT_EQ(result.status, 2) << options;
        const std::string option(options);
        const std::size_t last = option.rfind("--");
        EXPECT_NE(result.messages.find(option.substr(last, option.find(' ', last) - last)), std::string::npos)
            << result.messages;
    }
    EXPECT_EQ(Run(command + "--table missing.txt").status, 1);
}

}  // namespace
