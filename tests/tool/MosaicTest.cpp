#include "ToolTest.h"

#include <map>
#include <memory>

namespace {

constexpr std::uint32_t kWidth = 22, kHeight = 10;

/// 16-bit little-endian words, right-aligned.
Bytes MakeWords(unsigned bits) {
    Bytes words = MakeBytes(2 * kWidth * kHeight);
    for (std::size_t i = 1; i < words.size(); i += 2) words[i] &= static_cast<std::uint8_t>(0xFF >> (16 - bits));
    return words;
}

class MosaicTest : public ToolTest {};

TEST_F(MosaicTest, WordsKeepTheirDepthOrBecomeBytes) {
    const std::map<std::int64_t, unsigned> sources = {{0x20011, 10}, {0x20015, 12}, {0x20016, 14}};
    for (const auto& [source, bits] : sources) {
        SCOPED_TRACE(source);
        const Bytes mosaic = MakeWords(bits);
        Write("in.raw", mosaic);
        const std::string command =
            "convert in.raw --bayer BGGR -i --gain 1.5,1,0.5 --size 22x10 --type " + std::to_string(source) + " --to ";
        KyRGBFilter filter(bits);
        ASSERT_EQ(filter.SetMultipliers(1.5, 1, 0.5), KY_STATUS_SUCCESS);
        const auto expected = [&, id = source](std::int64_t destination) {
            return ConvertHere(id, mosaic, kWidth, kHeight, destination, 0x180, &filter);
        };
        ASSERT_EQ(Run(command + "RGB24 -o out.png").status, 0);
        EXPECT_EQ(DecodePng("out.png").samples, expected(KY_TYPE_RGB24));
        const Bytes words = expected(KY_TYPE_RGB48);
        ASSERT_EQ(Run(command + "RGB48 -o out.raw").status, 0);
        EXPECT_EQ(Read("out.raw"), words);
        Bytes swapped, scaled;
        for (std::size_t i = 0; i < words.size(); i += 2) {
            const unsigned word = words[i] | static_cast<unsigned>(words[i + 1]) << 8;
            const unsigned wide = word << (16 - bits) | word >> (2 * bits - 16);
            swapped.insert(swapped.end(), {words[i + 1], words[i]});
            scaled.insert(scaled.end(), {static_cast<std::uint8_t>(wide >> 8), static_cast<std::uint8_t>(wide)});
        }
        ASSERT_EQ(Run(command + "RGB48 -o out.png").status, 0);
        const DecodedPng picture = DecodePng("out.png");
        EXPECT_EQ(picture.depth, 16);
        EXPECT_EQ(picture.significantBits, static_cast<int>(bits));
        EXPECT_EQ(picture.samples, scaled);
        ASSERT_EQ(Run(command + "RGB48 -o out.ppm").status, 0);
        EXPECT_EQ(ReadText("out.ppm"), "P6\n22 10\n" + std::to_string((1 << bits) - 1) + "\n" + Text(swapped));
    }
}

TEST_F(MosaicTest, SheetHasWhatConvertMakesWithEachBayerPattern) {
    Write("in.raw", MakeWords(12));
    const std::string source = "in.raw --type 0x20012 --size 22x10 --gain 2,1,1.5 ";
    for (const bool interpolate : {true, false}) {
        ASSERT_EQ(Run("patterns " + source + (interpolate ? "" : "--demosaic nearest")).messages, "");
        const DecodedPng sheet = DecodePng("patterns.png");
        const auto sheetAt = [&sheet](std::size_t x, std::size_t y) {
            return &sheet.samples[3 * (y * sheet.width + x)];
        };
        std::map<char, std::set<std::string>> letters;
        std::set<std::string> pictures;
        std::size_t quadrant = 0;
        for (const std::string pattern : {"GRBG", "GBRG", "RGGB", "BGGR"}) {
            ASSERT_EQ(
                Run("convert " + source + "-o tile.png --bayer " + pattern + (interpolate ? "" : " --demosaic nearest"))
                    .status,
                0);
            const Bytes tile = DecodePng("tile.png").samples;
            pictures.insert({tile.begin(), tile.end()});
            std::vector<std::pair<std::size_t, std::size_t>> places;
            for (std::size_t y = 0; y + kHeight <= sheet.height; ++y)
                for (std::size_t x = 0; x + kWidth <= sheet.width; ++x) {
                    std::size_t row = 0;
                    while (row < kHeight &&
                           std::equal(sheetAt(x, y + row), sheetAt(x, y + row) + 3 * kWidth, &tile[row * 3 * kWidth]))
                        ++row;
                    if (row == kHeight) places.emplace_back(x, y);
                }
            ASSERT_EQ(places.size(), 1U) << pattern;
            const auto [left, top] = places[0];
            EXPECT_EQ(left >= sheet.width / 2, quadrant % 2 == 1) << pattern;
            EXPECT_EQ(top >= sheet.height / 2, quadrant / 2 == 1) << pattern;
            ++quadrant;
            for (std::size_t i = 0; i < 4; ++i) {  // letters are 12 pixels wide with the gap, and right above the tile
                std::string letter;
                for (std::size_t y = top - 18; y < top; ++y)
                    letter.insert(letter.end(), sheetAt(left + 12 * i, y), sheetAt(left + 12 * (i + 1), y));
                letters[pattern[i]].insert(letter);
            }
        }
        EXPECT_EQ(pictures.size(), 4U);
        for (const char letter : {'R', 'G', 'B'}) EXPECT_EQ(letters[letter].size(), 1U) << letter;
        EXPECT_TRUE(letters['R'] != letters['G'] && letters['G'] != letters['B'] && letters['B'] != letters['R']);
    }
}

TEST_F(MosaicTest, SheetOfLargeFrameShrinksAndRightPatternHasTheColour) {
    constexpr std::uint32_t kWide = 1700, kLines = 60;
    Bytes film(std::size_t{2} * kWide * kLines, 0);  // a first, black frame
    for (std::uint32_t i = 0; i < kWide * kLines; ++i) {
        const std::uint32_t site = i / kWide % 2 + i % kWide % 2;  // RGGB
        film.insert(film.end(), {0, static_cast<std::uint8_t>(site == 0 ? 48 : site == 1 ? 32 : 8)});
    }
    const std::string command = "patterns --type 0x20016 --size 1700x60 ";
    const std::string png = Run(command + "--frame 2 --format png -o -", film).output;
    Write("sheet.png", {png.begin(), png.end()});
    const DecodedPng sheet = DecodePng("sheet.png");
    ASSERT_EQ(sheet.width, 2 * (1700U / 3) + 24);
    EXPECT_LT(sheet.height, 2 * (20U + 40));
    const auto at = [&sheet](std::size_t x, std::size_t y) {
        const std::uint8_t* const pixel = &sheet.samples[3 * (y * sheet.width + x)];
        return Bytes(pixel, pixel + 3);
    };
    // The middle of a tile's lower edge, 8 pixels above the gap.
    const std::size_t left = sheet.width / 4, right = 3 * left, top = sheet.height / 2 - 12, bottom = sheet.height - 16;
    EXPECT_EQ(Run("orders --type 0x20016 --size 1700x60 --frame 2 --format png -o -", film).output, png) << "an alias";
    EXPECT_EQ(at(left, bottom), (Bytes{192, 128, 32}));
    EXPECT_EQ(at(right, bottom), (Bytes{32, 128, 192}));
    for (const std::size_t x : {left, right}) {  // green where red and blue are, and the mean of these for green
        EXPECT_EQ(at(x, top)[0], 128);
        EXPECT_EQ(at(x, top)[1], 112);
        EXPECT_EQ(at(x, top)[2], 128);
    }

    EXPECT_NE(Run(command, film).messages.find("holds more than the 204000 bytes"), std::string::npos);
    EXPECT_EQ(Run(command + "--frame 3", film).status, 1);
    EXPECT_EQ(Run(command + "--frame 1 -o patterns.raw", film).status, 2);
    EXPECT_NE(Run("patterns --type 0x10001 --size 4x4", film).messages.find("only Bayer mosaics"), std::string::npos);
    EXPECT_EQ(ListFiles(), std::set<std::string>{"sheet.png"});
}

}  // namespace
