#include "ToolTest.h"

namespace {

struct Type {
    std::int64_t id;
    std::uint32_t filterBits;  ///< of what its converters pass through a filter
    std::uint32_t lineBytes;   ///< of 12 pixels
};

// Normalized words count by their high bytes, YUV becomes RGB of 8 bits first.
const Type kTypes[] = {
    {0x20001, 8, 24},  {0x20002, 8, 36},  {0x420006, 8, 36}, {0x20003, 8, 48},  {0x2000B, 8, 48},
    {0x20004, 16, 72}, {0x20009, 10, 96}, {0x2000C, 12, 72}, {0x120008, 8, 72}, {0x120005, 8, 96},
    {0x240001, 8, 24}, {0x40002, 8, 48},  {0x140002, 8, 48}, {0x440003, 8, 36}, {0x640006, 8, 18},
};

constexpr std::uint32_t kWidth = 12, kHeight = 4;

std::string CommandFor(std::int64_t type, std::uint32_t width, std::uint32_t height) {
    return "convert in.raw -q --type " + std::to_string(type) + " --size " + std::to_string(width) + "x" +
           std::to_string(height) + " ";
}

class ColourTest : public ToolTest {
protected:
    ColourTest() { KyExtendedTypes::Register(); }  // as the tool does
};

TEST_F(ColourTest, EverySourceTakesItsOwnFilterAndSize) {
    for (const Type& type : kTypes) {
        SCOPED_TRACE(type.id);
        const Bytes frame = MakeBytes(type.lineBytes * kHeight);
        Write("in.raw", frame);
        // A copy would ignore the filter: here the same bytes under a name that has a converter.
        const std::int64_t source = type.id == KY_TYPE_RGB24 ? KY_TYPE_RGB24 | KY_TYPE_PACKED : type.id;
        KyRGBFilter filter(type.filterBits);
        ASSERT_EQ(filter.SetMultipliers(1.5, 1, 0.4, 3, 0, 200), KY_STATUS_SUCCESS);
        const std::string command =
            CommandFor(type.id, kWidth, kHeight) + "--gain 1.5,1,0.4 --offset 3,0,200 --format raw -o - --to ";
        const Bytes rgb = ConvertHere(source, frame, kWidth, kHeight, KY_TYPE_RGB24, 0, &filter);
        EXPECT_EQ(Run(command + "RGB24").output, Text(rgb));
        // A chain to planes would filter twice; they must be those of RGB24.
        EXPECT_EQ(Run(command + "0x820002").output, Text(ToPlanes(rgb)));
        const std::string most = std::to_string((1U << type.filterBits) - 1);
        EXPECT_NE(Run(CommandFor(type.id, kWidth, kHeight) + "--to RGB32 -o no.raw --offset 0,65536,0")
                      .messages.find(type.id == KY_TYPE_RGB32 ? "conversions of colours" : "from 0 to " + most),
                  std::string::npos);
        Write("in.raw", MakeBytes(type.lineBytes * kHeight - 1));
        EXPECT_NE(Run(CommandFor(type.id, kWidth, kHeight) + "-o no.raw")
                      .messages.find("needs " + std::to_string(type.lineBytes * kHeight)),
                  std::string::npos);
    }
}

TEST_F(ColourTest, LinesMayBePaddedAndFieldsOfUnlikeHeight) {
    struct {
        std::int64_t id, plain;  ///< the same pixels line by line; of Bayer types also unpacked
        std::uint32_t filterBits;
    } const sources[] = {{0x40001, 0x40001, 8},   {0x340002, 0x140002, 8},  {0x640006, 0x440006, 8},
                         {0x420012, 0x20012, 12}, {0x8420011, 0x20011, 10}, {0x1120012, 0x20012, 12},
                         {0x220014, 0x20014, 10}, {0x320011, 0x20011, 10}};
    for (const auto& source : sources)
        for (const auto& [width, height] : {std::pair(3U, 5U), {6U, 5U}, {7U, 2U}, {22U, 9U}}) {
            const std::int64_t inLines = source.id & ~KY_TYPE_INTERLACED;
            const std::size_t lineBytes = SizeHere(inLines, width, 1);
            const Bytes stored = MakeBytes(lineBytes * height);
            Bytes shown, padded;
            for (std::size_t y = 0; y < height; ++y) {
                // The first field has the even lines of the picture, and of an odd number one more.
                const std::size_t from = source.id == inLines ? y : y % 2 == 0 ? y / 2 : (height + 1) / 2 + y / 2;
                shown.insert(shown.end(), &stored[from * lineBytes], &stored[from * lineBytes] + lineBytes);
                padded.insert(padded.end(), &stored[y * lineBytes], &stored[y * lineBytes] + lineBytes);
                padded.insert(padded.end(), {0xAA, 0xBB, 0xCC});
            }
            const bool isBayer = (source.plain & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_RGB,
                       bilinear = width % 2 != 0;
            KyRGBFilter filter(source.filterBits);
            filter.SetMultipliers(1.7, 1, 0.6, 3, 0, 9);
            const Bytes plain = ConvertHere(inLines, shown, width, height, source.plain);
            const Bytes expected =
                ConvertHere(source.plain, plain, width, height, KY_TYPE_RGB24, bilinear ? 0x140 : 0x40, &filter);

            const std::string command = CommandFor(source.id, width, height);
            const std::string options =
                std::string("--gain 1.7,1,0.6 --offset 3,0,9 ") + (!isBayer   ? ""
                                                                   : bilinear ? "--bayer RGGB -i "
                                                                              : "--bayer RGGB --demosaic nearest ");
            SCOPED_TRACE(command + options);
            Write("in.raw", stored);
            ASSERT_EQ(Run(command + options + "-o out.png").messages, "");
            EXPECT_EQ(DecodePng("out.png").samples, expected);
            Write("in.raw", padded);
            const std::string padding = "--format raw -o - --line-bytes " + std::to_string(lineBytes + 3) + " --to ";
            EXPECT_EQ(Run(command + options + padding + "0x820002").output, Text(ToPlanes(expected)));
            // Without colours: whole groups without padding, and two fields become one frame.
            EXPECT_EQ(Run(command + padding + std::to_string(source.plain)).output, Text(plain));
        }
}

/// Lines of a plane may be longer than those of another, and are padded in another way.
TEST_F(ColourTest, PlanesOfUnlikeSize) {
    constexpr std::size_t kStride = 8;
    struct {
        const char* name;
        std::vector<std::pair<std::size_t, std::size_t>> planes;  ///< bytes of a line, and stride, for each line of 5x3
    } const sources[] = {{"NV12", {{5, 8}, {5, 8}, {5, 8}, {6, 8}, {6, 8}}},
                         {"NV16", {{5, 8}, {5, 8}, {5, 8}, {6, 8}, {6, 8}, {6, 8}}},
                         {"I420", {{5, 8}, {5, 8}, {5, 8}, {3, 4}, {3, 4}, {3, 4}, {3, 4}}},
                         {"0x820002", {{5, 8}, {5, 8}, {5, 8}, {5, 8}, {5, 8}, {5, 8}, {5, 8}, {5, 8}, {5, 8}}}};
    EXPECT_NE(Run("convert in.raw -t NV12 -s 5x3 -o no.raw --line-bytes 7").messages.find("even number"),
              std::string::npos);
    for (const auto& source : sources) {
        SCOPED_TRACE(source.name);
        Bytes tight, padded;
        for (const auto& [bytes, stride] : source.planes) {
            const Bytes line = MakeBytes(tight.size() + bytes);
            tight.insert(tight.end(), line.end() - static_cast<std::ptrdiff_t>(bytes), line.end());
            padded.insert(padded.end(), line.end() - static_cast<std::ptrdiff_t>(bytes), line.end());
            padded.insert(padded.end(), stride - bytes, 0xAA);
        }
        std::int64_t type = 0;
        ASSERT_EQ(KyExtendedTypes::Register(), KY_STATUS_SUCCESS);
        ASSERT_EQ(KyPixelFormat::Find(source.name, type), KY_STATUS_SUCCESS);
        const std::int64_t to = type == KY_TYPE_RGB24_PLANAR ? type : KY_TYPE_RGB24;
        const Bytes expected = ConvertHere(type, tight, 5, 3, to);
        const std::string command = "--format raw -o - --to " + std::to_string(to);
        Write("in.raw", tight);
        EXPECT_EQ(Run(CommandFor(type, 5, 3) + command).output, Text(expected));
        // Two frames: the second begins where the padding of the first one ends.
        Write("in.raw", Bytes(padded.size(), 0x55));
        std::ofstream(folder / "files" / "in.raw", std::ios::app | std::ios::binary) << Text(padded);
        EXPECT_EQ(
            Run(CommandFor(type, 5, 3) + "--frames 2-2 --line-bytes " + std::to_string(kStride) + " " + command).output,
            Text(expected));
    }
}

/// In conversions only green counts; a picture of the words themselves has all colours.
TEST_F(ColourTest, WordsOf565AsAPicture) {
    Write("in.raw", {0x00, 0xF8, 0xE0, 0x07, 0x1F, 0x00, 0xFF, 0xFF, 0x10, 0x84, 0, 0});
    ASSERT_EQ(Run("convert in.raw -t RGB16 -s 3x2 -o out.png").messages, "");
    EXPECT_EQ(DecodePng("out.png").samples,
              (Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 132, 130, 132, 0, 0, 0}));
}

TEST_F(ColourTest, DeepColourKeepsItsDepth) {
    Write("in.raw", {0xFF, 0x03, 0x55, 0x02, 0x00, 0x00});
    for (const auto& [type, bits, most] : {std::tuple("0x20008", 10, "1023"), {"0x2000C", 12, "4095"}}) {
        ASSERT_EQ(Run(std::string("convert in.raw -s 1x1 -o out.ppm --type ") + type + " --to " + type).messages, "");
        EXPECT_EQ(ReadText("out.ppm"), std::string("P6\n1 1\n") + most + "\n\x03\xFF\x02\x55" + std::string(2, '\0'));
        ASSERT_EQ(Run(std::string("convert in.raw -s 1x1 -o out.png --type ") + type + " --to " + type).messages, "");
        EXPECT_EQ(DecodePng("out.png").significantBits, bits);
    }
    ASSERT_EQ(Run("convert in.raw -s 1x1 -o out.png --type 0x20004 --to 0x20004").messages, "");
    EXPECT_EQ(DecodePng("out.png").samples, (Bytes{0x03, 0xFF, 0x02, 0x55, 0, 0}));
}

}  // namespace
