#include "ToolTest.h"

#include <KyImgLib/KyImgLib.h>

#include <algorithm>
#include <map>

namespace {

struct Type {
    std::int64_t id;
    std::uint32_t filterBits;  ///< of what its converters pass through a filter
    std::uint32_t lineBytes;   ///< of 12 pixels
};

// Normalized words count by their high bytes, YUV becomes RGB of 8 bits first.
const Type kTypes[] = {
    {0x20001, 8, 24},  {0x20002, 8, 36},  {0x420002, 8, 36}, {0x20006, 8, 36},  {0x420006, 8, 36}, {0x20003, 8, 48},
    {0x20007, 8, 48},  {0x2000A, 8, 36},  {0x42000A, 8, 36}, {0x2000B, 8, 48},  {0x42000B, 8, 48}, {0x20004, 16, 72},
    {0x20005, 16, 96}, {0x20008, 10, 72}, {0x20009, 10, 96}, {0x2000C, 12, 72}, {0x2000D, 12, 96}, {0x120004, 8, 72},
    {0x120005, 8, 96}, {0x120008, 8, 72}, {0x120009, 8, 96}, {0x12000C, 8, 72}, {0x12000D, 8, 96}, {0x40001, 8, 24},
    {0x240001, 8, 24}, {0x40002, 8, 48},  {0x240002, 8, 48}, {0x140002, 8, 48}, {0x340002, 8, 48}, {0x440003, 8, 36},
    {0x640003, 8, 36}, {0x440005, 8, 36}, {0x640005, 8, 36}, {0x440006, 8, 18}, {0x640006, 8, 18},
};

constexpr std::uint32_t kWidth = 12, kHeight = 4;

std::string SizeText(std::uint32_t width, std::uint32_t height) {
    return " --size " + std::to_string(width) + "x" + std::to_string(height) + " ";
}

std::string CommandFor(std::int64_t type, std::uint32_t width, std::uint32_t height) {
    return "convert in.raw -q --type " + std::to_string(type) + SizeText(width, height);
}

class ColourTest : public ToolTest {};

TEST_F(ColourTest, EverySourceTakesItsOwnFilterAndSize) {
    for (const Type& type : kTypes) {
        SCOPED_TRACE(type.id);
        const Bytes frame = MakeBytes(type.lineBytes * kHeight);
        Write("in.raw", frame);
        // A copy would ignore the filter: here the same bytes under a name that has a converter.
        const std::int64_t source = type.id == 0x20002 ? 0x420002 : type.id;
        for (const std::int64_t destination : {KY_TYPE_RGB24, KY_TYPE_RGB16, KY_TYPE_RGB24_PLANAR}) {
            if (source == destination) continue;
            // A chain to planes would filter twice; they must be those of RGB24.
            const bool inPlanes = destination == KY_TYPE_RGB24_PLANAR;
            const KyPixelConverter* const converter =
                KyPixelTypeFactory::FindConverter(source, inPlanes ? KY_TYPE_RGB24 : destination);
            ASSERT_NE(converter, nullptr);
            KyRGBFilter filter(type.filterBits);
            ASSERT_EQ(filter.SetMultipliers(1.5, 1, 0.4, 3, 0, 200), KY_STATUS_SUCCESS);
            Bytes expected(std::size_t{converter->GetDestinationByteSize(kWidth)} * kHeight);
            converter->Convert(filter, frame.data(), kWidth, kHeight, expected.data(), kWidth, kHeight, kWidth, kHeight,
                               0, 0);
            if (inPlanes) expected = ToPlanes(expected);
            const ToolResult result =
                Run(CommandFor(type.id, kWidth, kHeight) + "--gain 1.5,1,0.4 --offset 3,0,200 -o out.raw --to " +
                    std::to_string(destination));
            EXPECT_EQ(result.status, 0) << result.messages;
            EXPECT_EQ(Read("out.raw"), expected);
        }
        const std::string most = std::to_string((1U << type.filterBits) - 1);
        EXPECT_NE(Run(CommandFor(type.id, kWidth, kHeight) + "--to RGB32 -o no.raw --offset 0,65536,0")
                      .messages.find(type.id == KY_TYPE_RGB32 ? "conversions of colours" : "from 0 to " + most),
                  std::string::npos);
        Write("in.raw", MakeBytes(type.lineBytes * kHeight - 1));
        EXPECT_NE(Run(CommandFor(type.id, kWidth, kHeight) + "-o no.raw")
                      .messages.find("needs " + std::to_string(type.lineBytes * kHeight)),
                  std::string::npos);
    }
    // Were one missing above, nobody would notice.
    std::size_t registered = 0;
    std::int64_t id = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumPixelTypes(index, id); ++index)
        registered += KyPixelTypeFactory::FindPixelType(id)->IsBayerPattern() || (id & KY_TYPE_PLANAR) != 0 ||
                              (id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE
                          ? 0U
                          : 1U;
    EXPECT_EQ(registered, std::size(kTypes));
}

/// Types whose pixels share their colour.
struct Group {
    std::int64_t id;
    std::uint32_t pixels, bytes;
};
const Group kGroups[] = {{0x40001, 2, 4},  {0x240001, 2, 4}, {0x40002, 2, 8},
                         {0x340002, 2, 8}, {0x440006, 4, 6}, {0x640006, 4, 6}};

/// Each line on its own, as wide as its groups. `lines` are those of the picture.
Bytes ConvertLines(const Group& group, const std::vector<Bytes>& lines, std::uint32_t width) {
    const KyPixelConverter& converter = *KyPixelTypeFactory::FindConverter(group.id, KY_TYPE_RGB24);
    Bytes picture;
    for (const Bytes& line : lines) {
        const auto wide = static_cast<std::uint32_t>(line.size()) / group.bytes * group.pixels;
        Bytes rgb(3 * wide);
        converter.Convert(line.data(), rgb.data(), wide);
        picture.insert(picture.end(), rgb.begin(), rgb.begin() + 3 * width);
    }
    return picture;
}

TEST_F(ColourTest, AnyWidthAndHeightOfPixelGroups) {
    for (const Group& group : kGroups)
        for (const std::uint32_t width : {1U, 3U, 6U, 7U})
            for (const std::uint32_t height : {1U, 5U}) {
                SCOPED_TRACE(std::to_string(group.id) + SizeText(width, height));
                const std::size_t lineBytes = (width + group.pixels - 1) / group.pixels * group.bytes;
                const Bytes random = MakeBytes(lineBytes * height);
                std::vector<Bytes> stored, shown(height);
                for (std::size_t y = 0; y < height; ++y)
                    stored.emplace_back(random.data() + y * lineBytes, random.data() + (y + 1) * lineBytes);
                // The first field has the even lines of the picture.
                const bool inFields = (group.id & KY_TYPE_INTERLACED) != 0;
                for (std::size_t y = 0; y < height; ++y)
                    shown[y] = stored[!inFields ? y : y % 2 == 0 ? y / 2 : (height + 1) / 2 + y / 2];
                const Bytes expected = ConvertLines(group, shown, width);

                Write("in.raw", random);
                const std::string command = CommandFor(group.id, width, height);
                ASSERT_EQ(Run(command + "-o out.png").messages, "");
                const DecodedPng picture = DecodePng("out.png");
                EXPECT_EQ(picture.width, width);
                EXPECT_EQ(picture.height, height);
                EXPECT_EQ(picture.samples, expected);

                Bytes padded;
                for (const Bytes& line : stored) {
                    padded.insert(padded.end(), line.begin(), line.end());
                    padded.insert(padded.end(), {0xAA, 0xBB, 0xCC});
                }
                Write("in.raw", padded);
                ASSERT_EQ(Run(command + "-o out.raw --line-bytes " + std::to_string(lineBytes + 3)).messages, "");
                EXPECT_EQ(Read("out.raw"), expected);

                // Bytes that stay bytes: whole groups without padding, and two fields become one frame.
                const std::int64_t plain = group.id & ~KY_TYPE_INTERLACED;
                ASSERT_EQ(Run(command + "--format raw -o out.yuv --line-bytes " + std::to_string(lineBytes + 3) +
                              " --to " + std::to_string(plain))
                              .messages,
                          "");
                Bytes joined;
                for (const Bytes& line : shown) joined.insert(joined.end(), line.begin(), line.end());
                EXPECT_EQ(Read("out.yuv"), joined);
            }
}

TEST_F(ColourTest, PaddedLinesOfOtherSources) {
    const std::map<std::string, std::uint32_t> sources = {
        {"RGB24", 21}, {"'RGB 48-bits'", 42}, {"0x20010 --bayer RGGB -i", 7}, {"0x10001", 7}};
    for (const auto& [type, lineBytes] : sources) {
        const Bytes frame = MakeBytes(lineBytes * 5);
        Bytes padded(11, 0xEE);  // a header
        for (std::size_t y = 0; y < 5; ++y) {
            padded.insert(padded.end(), frame.begin() + static_cast<std::ptrdiff_t>(y * lineBytes),
                          frame.begin() + static_cast<std::ptrdiff_t>((y + 1) * lineBytes));
            padded.resize(padded.size() + 2, 0xEE);
        }
        ASSERT_EQ(Run("convert -s 7x5 -o plain.ppm -t " + type, frame).messages, "");
        ASSERT_EQ(Run("convert -s 7x5 -o padded.ppm --skip-bytes 11 --line-bytes " + std::to_string(lineBytes + 2) +
                          " -t " + type,
                      padded)
                      .messages,
                  "");
        EXPECT_EQ(Read("padded.ppm"), Read("plain.ppm")) << type;
    }
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
