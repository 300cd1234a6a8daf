// A chain gives what its stages give one after the other, each for the whole image, whatever rows pass between them at a time.
#include <tests/converters/AreaCase.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using Side = support::GuardedBuffer::Side;

struct Size {
    std::uint32_t width, height;
};

constexpr std::size_t kSlack = 64;

/// The source ends, or begins, where nobody may read on.
void ExpectLikeItsStages(const KyPixelConverter& first, const KyPixelConverter& second, Size image, Size area,
                         std::uint32_t flags) {
    const KyComplexConverter chain(&first, &second);
    const FilterCase none = {"none", nullptr, {}};
    AreaCase test = {{area.width, area.height, image.width, image.height, image.width, image.height, 0, flags}, &none};
    const auto expect = [&](const std::uint8_t* source, std::uint8_t* destination) {
        const std::size_t lineSize = std::max(first.GetDestinationByteSize(image.width), 4 * image.width);
        std::vector<std::uint8_t> between(lineSize * image.height + kSlack);
        first.Convert(source, image.width, image.height, between.data(), image.width, image.height, image.width,
                      image.height, flags, 0);
        Converting(second, test)(between.data(), destination);
    };
    support::Random random(7);
    for (const Side side : {Side::kStart, Side::kEnd}) {
        test.sourceSide = side;
        ASSERT_EQ("", Difference(test, std::size_t{first.GetSourceByteSize(image.width)} * image.height,
                                 second.GetDestinationByteSize(image.width) * image.height + kSlack, random,
                                 Converting(chain, test), expect))
            << std::hex << first.GetSourceType() << " > " << second.GetSourceType() << " > "
            << second.GetDestinationType();
    }
}

const KyPixelConverter& Registered(std::int64_t source, std::int64_t destination) {
    return *KyPixelTypeFactory::FindConverter(source, destination);
}

constexpr std::uint32_t kBilinear = KyPixelConverter::FLAG_BAYER_INTERPOLATE;

TEST(Stages, InterlacedImagesOfOddHeight) {
    for (const Size image : {Size{8, 5}, Size{64, 7}, Size{131, 67}}) {
        ExpectLikeItsStages(Registered(0x00610003, 0x00010003), Registered(0x00010003, 0x00010001),
                            {image.width + image.width % 2, image.height}, {image.width, image.height}, 0);
        ExpectLikeItsStages(Registered(0x00320011, 0x00120011), Registered(0x00120011, KY_TYPE_RGB24), image, image,
                            kBilinear);
    }
    ExpectLikeItsStages(Registered(0x00340002, KY_TYPE_RGB24), Registered(KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR), {8, 5},
                        {8, 5}, 0);
}

TEST(Stages, PartsOfImagesBehindAStageThatCopies) {
    const KyGrayscale16ToGrayscale16RightShift shift(0x00110003, 0x00010003, 4);
    const KyIdentityConverter copy(0x00010003, 0x0001FFF3, 2, 2), copyFirst(0x0001FFF4, 0x00110003, 2, 2);
    ExpectLikeItsStages(shift, copy, {100, 8}, {10, 3}, 0);
    ExpectLikeItsStages(copyFirst, shift, {100, 8}, {10, 3}, 0);
    ExpectLikeItsStages(copyFirst, Registered(0x00110003, 0x00110003), {100, 8}, {10, 3}, 0);
    ExpectLikeItsStages(Registered(0x00020010, KY_TYPE_RGB24), KyIdentityConverter(KY_TYPE_RGB24, 0x0002FFF3, 3, 3),
                        {100, 8}, {31, 5}, kBilinear);
}

TEST(Stages, LinePairsBehindAnotherStage) {
    const KyDualGrayscale8ToGrayscale8 taps(0x01010001, 0x1001FFF5);
    const KyDualLinesGrayscale8ToGrayscale8 lines(0x1001FFF5, KY_TYPE_GRAYSCALE8);
    const KyIdentityConverter deinterlacer(0x0021FFF5, 0x1001FFF5, 1, 1);
    for (const Size image : {Size{64, 8}, Size{65, 6}, Size{6000, 6}}) {
        ExpectLikeItsStages(taps, lines, image, image, 0);
        ExpectLikeItsStages(deinterlacer, lines, image, image, 0);
        ExpectLikeItsStages(deinterlacer, lines, image, {image.width / 2, 4}, 0);
    }
}

TEST(Stages, GatheredBayerFieldsAreThoseOfBytes) {
    const Size image = {70, 8};
    // Of pairs of lines, the last one of a field reads and writes a line more.
    const std::vector<std::uint8_t> bytes = support::Random(3).Bytes(image.width * (image.height + 1));
    std::vector<std::uint8_t> words;
    for (const std::uint8_t byte : bytes) words.insert(words.end(), {0x77, byte});
    const KyBayerRGB8ToRGB24 fromBytes(0x0022FFF6, false, 0, 0), fromWords(0x0022FFF7, false, 1, 0);
    for (const std::uint32_t flags : {0u, kBilinear}) {
        std::vector<std::uint8_t> expected(3 * bytes.size()), result(expected.size());
        const auto convert = [&](const KyPixelConverter& converter, const std::vector<std::uint8_t>& source,
                                 std::vector<std::uint8_t>& to) {
            converter.Convert(source.data(), image.width, image.height, to.data(), image.width, image.height,
                              image.width, image.height, flags, 0);
        };
        convert(fromBytes, bytes, expected);
        convert(fromWords, words, result);
        EXPECT_EQ(expected, result) << flags;
    }
}

TEST(Stages, NothingIsWrittenOfNoColumns) {
    for (const auto& [from, to] :
         {std::pair{0x00020010, 0x00020002}, {0x00420012, 0x00820002}, {0x00040001, 0x00020003}}) {
        std::vector<std::uint8_t> source(64), destination(256, 0x5A);
        for (const std::uint32_t flags : {0u, kBilinear}) {
            Registered(from, to).Convert(source.data(), 4, 4, destination.data() + 64, 4, 4, 0, 4, flags, 0);
            EXPECT_EQ(std::vector<std::uint8_t>(256, 0x5A), destination) << std::hex << from << ", " << flags;
        }
    }
}

/// Destroyed after main(), as an application's static objects are.
struct ConvertsAtExit {
    bool isArmed = false;

    ~ConvertsAtExit() {
        std::vector<std::uint8_t> source(64), destination(256);
        if (isArmed)
            Registered(KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24_PLANAR)
                .Convert(source.data(), 8, 8, destination.data(), 8, 8, 8, 8, 0, 0);
    }
} convertsAtExit;

TEST(Stages, ConvertWhileAnApplicationEnds) { convertsAtExit.isArmed = true; }

}  // namespace
