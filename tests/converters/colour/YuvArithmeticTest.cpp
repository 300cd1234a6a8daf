// Every sample that a YUV source can hold, at every level of this CPU.
#include <KyImgLib/KyImgLib.h>
#include <tests/reference/Colour.h>
#include <tests/support/CpuLevels.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

constexpr std::uint32_t kSide = 4096;

/// The triple with a number below 2 to the 24: V in its low byte, then U, then Y.
void StoreTriple(std::uint32_t number, std::uint8_t* y, std::uint8_t* u, std::uint8_t* v) {
    *v = static_cast<std::uint8_t>(number);
    *u = static_cast<std::uint8_t>(number >> 8);
    *y = static_cast<std::uint8_t>(number >> 16);
}

std::vector<std::uint8_t> ConvertAt(std::uint32_t level, const KyPixelConverter& converter,
                                    const std::vector<std::uint8_t>& source, std::uint32_t width) {
    const support::ScopedCpuLevel active(level);
    std::vector<std::uint8_t> picture(std::size_t{3} * width * kSide);
    converter.Convert(source.data(), width, kSide, picture.data(), width, kSide, width, kSide, 0, 0);
    return picture;
}

TEST(YuvArithmetic, EveryTripleOfSamplesIsExact) {
    constexpr std::size_t triples = std::size_t{kSide} * kSide;
    std::vector<std::uint8_t> samples(3 * triples), pairs(4 * triples), expected(3 * triples),
        expectedPairs(6 * triples);
    for (std::uint32_t i = 0; i < triples; ++i) {
        std::uint8_t* const triple = &samples[std::size_t{3} * i];
        StoreTriple(i, triple, triple + 1, triple + 2);
        reference::Store(reference::Format::kRGB24, reference::FromYUV(triple[0], triple[1], triple[2]),
                         &expected[std::size_t{3} * i]);
    }
    // In pairs, the second pixel has the triple of another Y.
    for (std::uint32_t i = 0; i < triples; ++i) {
        const std::uint32_t second = i ^ 0xA50000;
        std::uint8_t* const pair = &pairs[std::size_t{4} * i];
        StoreTriple(second, pair + 2, pair + 1, pair + 3);
        StoreTriple(i, pair, pair + 1, pair + 3);
        std::memcpy(&expectedPairs[std::size_t{6} * i], &expected[std::size_t{3} * i], 3);
        std::memcpy(&expectedPairs[std::size_t{6} * i + 3], &expected[std::size_t{3} * second], 3);
    }
    const KyYUV8444ToRGB24 from444(0x00440003, false, 0, 0, 1, 2);
    const KyYUV8ToRGB24 from422(0x00040001, false, 0);
    for (const std::uint32_t level : support::AvailableLevels()) {
        EXPECT_TRUE(ConvertAt(level, from444, samples, kSide) == expected) << KyCpuLevel::GetName(level);
        EXPECT_TRUE(ConvertAt(level, from422, pairs, 2 * kSide) == expectedPairs) << KyCpuLevel::GetName(level);
    }
}

// Numbers worked out by hand, which hold the reference to the rules too.
TEST(YuvArithmetic, FollowsFromTheSamples) {
    const auto convert = [](const KyPixelConverter& converter, const std::vector<std::uint8_t>& source,
                            std::uint32_t count) {
        std::vector<std::uint8_t> pixels(24, 0xEE);
        EXPECT_EQ(KY_STATUS_SUCCESS, converter.Convert(source.data(), pixels.data(), count));
        while (!pixels.empty() && pixels.back() == 0xEE) pixels.pop_back();
        return pixels;
    };
    using Bytes = std::vector<std::uint8_t>;
    const KyYUV8ToRGB24 rgb(0x00040001, false, 0), bgr(0x00040001, true, 0);
    EXPECT_EQ((Bytes{0, 0, 0, 255, 255, 255}), convert(rgb, {16, 128, 235, 128}, 2));
    EXPECT_EQ((Bytes{255, 125, 255, 255, 125, 255}), convert(rgb, {255, 255, 255, 255}, 2));
    EXPECT_EQ((Bytes{0, 135, 0, 0, 135, 0}), convert(bgr, {0, 0, 0, 0}, 1)) << "a pair is written whole";
    EXPECT_EQ((Bytes{0, 0, 203, 76, 0, 255}), convert(bgr, {16, 128, 81, 255}, 2));
    // Y 64 and 940, U and V 512; with a shift of 1, 0x1FF keeps its low byte.
    const KyYUV10ToRGB24 words(0x00040002, false, 2), wrapped(0x00040002, false, 1);
    EXPECT_EQ((Bytes{0, 0, 0, 255, 255, 255}), convert(words, {0x40, 0, 0, 2, 0xAC, 3, 0, 2}, 2));
    EXPECT_EQ((Bytes{255, 125, 255, 255, 125, 255}), convert(wrapped, {0xFF, 3, 0xFF, 3, 0xFF, 3, 0xFF, 3}, 1));
    // The red of the last two is that of Y 235.
    const Bytes group = convert(KyYUV8411ToRGB24(0x00440006, false), {128, 16, 235, 200, 16, 16}, 1);
    ASSERT_EQ(12u, group.size());
    EXPECT_EQ((Bytes{115, 255, 255, 255}), (Bytes{group[0], group[3], group[6], group[9]}));
    EXPECT_EQ(group[1], group[7]) << "green is of each pixel's own Y";
}

}  // namespace
