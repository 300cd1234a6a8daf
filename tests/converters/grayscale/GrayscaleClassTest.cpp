// What the grayscale classes promise to those who construct them, and numbers worked out by hand.
#include <KyImgLib/KyImgLib.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Numbers = std::vector<std::int64_t>;
using Bytes = std::vector<std::uint8_t>;

/// Destination type, bytes of a source pixel, of a destination pixel, pipelining size and lines per convert.
template <typename Converter, typename... Arguments>
Numbers NumbersOf(Arguments... arguments) {
    struct Opened : Converter {
        using Converter::Converter;
        using Converter::GetLinesPerConvert;
        using Converter::GetPipeliningSize;
    };
    const Opened made(0x0001FFF0, arguments...);
    return {made.GetDestinationType(), made.GetSourceByteSize(), made.GetDestinationByteSize(),
            made.GetPipeliningSize(), made.GetLinesPerConvert()};
}

TEST(GrayscaleClass, TakesNumbersFromItsArguments) {
    EXPECT_EQ((Numbers{0x00010002, 2, 2, 2, 1}), (NumbersOf<KyGrayscale10PackedGEVToGrayscale10>()));
    EXPECT_EQ((Numbers{0x00010077, 2, 2, 4, 1}), (NumbersOf<KyGrayscale16ToGrayscale16RightShift>(0x00010077, 4u)));
    EXPECT_EQ((Numbers{0x00010001, 2, 1, 4, 1}), (NumbersOf<KyGrayscale16ToGrayscale8>(4u)));
    EXPECT_EQ((Numbers{0x00010001, 2, 1, 4, 1}), (NumbersOf<KyGrayscale16NormalizedToGrayscale8>()));
    EXPECT_EQ((Numbers{KY_TYPE_RGB24, 2, 3, 4, 1}), (NumbersOf<KyGrayscale8ToRGB24>(false, 1u)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR32, 3, 4, 4, 1}), (NumbersOf<KyGrayscale8ToRGB32>(true, 2u)));

    // Those whose pipelining size is open.
    const auto typeAndSizes = [](Numbers numbers) { return Numbers(numbers.begin(), numbers.begin() + 3); };
    EXPECT_EQ((Numbers{KY_TYPE_BGR24, 2, 3}), typeAndSizes(NumbersOf<KyGrayscale16ToRGB24>(true, 2u)));
    EXPECT_EQ((Numbers{KY_TYPE_RGB16, 2, 2}), typeAndSizes(NumbersOf<KyGrayscale16PackedToRGB16>(2u, 3u)));
    EXPECT_EQ((Numbers{KY_TYPE_RGB32, 2, 4}), typeAndSizes(NumbersOf<KyGrayscale16SegmentedToRGB24_32>(false, 2u, 4u)));
    EXPECT_EQ(2, NumbersOf<KyDualLinesGrayscale8ToGrayscale8>(0x00010001)[4]);
}

Bytes Line(const KyPixelConverter& converter, const Bytes& source, std::uint32_t count) {
    Bytes line(converter.GetDestinationByteSize(count), 0xEE);
    EXPECT_EQ(KY_STATUS_SUCCESS, converter.Convert(source.data(), line.data(), count));
    return line;
}

TEST(GrayscaleClass, UnpacksPairs) {
    const KyGrayscale10PackedGEVToGrayscale10 ten(0x00410008);
    EXPECT_EQ((Bytes{0xFF, 0x03, 0x03, 0x02}), Line(ten, {0xFF, 0x33, 0x80}, 2));
    EXPECT_EQ((Bytes{0xBD, 0x0A, 0xFC, 0x0E}),
              Line(KyGrayscale12PackedGEVToGrayscale12(0x00410009), {0xAB, 0xCD, 0xEF}, 2));
    EXPECT_EQ((Numbers{0, 0, 3, 6}), (Numbers{ten.GetSourceByteSize(0), ten.GetSourceByteSize(1),
                                              ten.GetSourceByteSize(2), ten.GetSourceByteSize(5)}));
    EXPECT_EQ((Bytes{0xFF, 0x03, 0x03, 0x02}),
              Line(KyGrayscale10PackedGEVToGrayscale10(0x08410008), {0xFF, 0x33, 0x80}, 2))
        << "in the order of the source, whatever taps its ID names";
    EXPECT_EQ((Bytes{0xBD, 0x0A, 0xFC, 0x0E}),
              Line(KyGrayscale12PackedGEVToGrayscale12(0x04410009), {0xAB, 0xCD, 0xEF}, 2));
    EXPECT_EQ((Bytes{0xEE, 0xEE}), Line(ten, {}, 1));
    EXPECT_EQ((Bytes{0xFF, 0x03, 0x03, 0x02, 0xEE, 0xEE}), Line(ten, {0xFF, 0x33, 0x80}, 3)) << "cut to pairs";
}

TEST(GrayscaleClass, MovesBitsWithoutSaturation) {
    EXPECT_EQ((Bytes{0xC0, 0xFF, 0x00, 0x8D}),
              Line(KyGrayscale16ToGrayscale16LeftShift(0x00010002, 0x00110002, 6), {0xFF, 0x0F, 0x34, 0x12}, 2));
    EXPECT_EQ((Bytes{255, 0}), Line(KyGrayscale16ToGrayscale8(0x00010002, 2), {0xFF, 0x03, 0x00, 0x04}, 2));
    EXPECT_EQ((Bytes{44}), Line(KyGrayscale16ToGrayscale8(0x00010002, 0), {0x2C, 0x01}, 1));
    EXPECT_EQ((Bytes{0xAB}), Line(KyGrayscale16NormalizedToGrayscale8(0x00110003), {0xCD, 0xAB}, 1));
}

TEST(GrayscaleClass, ShowsGrayInEveryChannel) {
    const KyGrayscale8ToRGB16 to16(0x00010001, 0), highTo16(0x00110002, 1);
    EXPECT_EQ((Bytes{0xFF, 0xFF, 0x10, 0x84, 0x41, 0x08}), Line(to16, {255, 128, 8}, 3));
    EXPECT_EQ((Bytes{0x80, 0x80, 0x80, 0}), Line(KyGrayscale8ToRGB32(0x00010001, false, 0), {0x80}, 1));
    EXPECT_EQ((Bytes{0x12, 0x12, 0x12, 0xAB, 0xAB, 0xAB}),
              Line(KyGrayscale8ToRGB24(0x00110002, true, 1), {0x34, 0x12, 0xCD, 0xAB}, 2));
    const std::uint8_t word[] = {8, 255};
    std::uint8_t pixel[2];
    EXPECT_EQ(KY_STATUS_SUCCESS, highTo16.Convert(word, pixel));
    EXPECT_EQ(0x41, pixel[0]) << "one pixel is made of the first byte";
}

TEST(GrayscaleClass, PutsTapsInTheirPlaces) {
    const Bytes sent = {1, 2, 3, 4, 5, 6, 7};
    const auto dual = [&](std::int64_t layout, std::uint32_t count) {
        return Line(KyDualGrayscale8ToGrayscale8(0x00010001 + layout, 0x00010001), sent, count);
    };
    EXPECT_EQ((Bytes{1, 3, 5, 2, 4, 6}), dual(0x01000000, 6));
    EXPECT_EQ((Bytes{1, 3, 5, 6, 4, 2}), dual(0x02000000, 6));
    EXPECT_EQ((Bytes{5, 3, 1, 2, 4, 6}), dual(0x04000000, 6));
    EXPECT_EQ((Bytes{5, 3, 1, 6, 4, 2}), dual(0x08000000, 6));
    EXPECT_EQ((Bytes{7, 5, 3, 1, 6, 4, 2}), dual(0x08000000, 7)) << "an odd line loses nothing";
    const Dalsa4x8ToGrayscale8 quad(0x00010006, 0x00010001);
    EXPECT_EQ((Bytes{1, 5, 6, 2, 3, 7, 8, 4}), Line(quad, {1, 2, 3, 4, 5, 6, 7, 8}, 8));
    EXPECT_EQ((Bytes{1, 5, 6, 2, 3, 4}), Line(quad, {1, 2, 3, 4, 5, 6}, 6));

    EXPECT_EQ(
        (Bytes{1, 0, 5, 0, 6, 0, 2, 0, 3, 0, 7, 0, 8, 0, 4, 0}),
        Line(Dalsa4x16ToGrayscale16(0x00010007, 0x00010002), {1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0, 7, 0, 8, 0}, 8));
    // 0x123 to 0x128 in pairs.
    const KyGrayscale16PackedToGrayscale16 packed(0x08410003, 0x00110003, 4, 0x0F, 4);
    EXPECT_EQ((Bytes{0x70, 0x12, 0x50, 0x12, 0x30, 0x12, 0x80, 0x12, 0x60, 0x12, 0x40, 0x12}),
              Line(packed, {0x12, 0x43, 0x12, 0x12, 0x65, 0x12, 0x12, 0x87, 0x12}, 6));

    Bytes lines(6);
    KyDualLinesGrayscale8ToGrayscale8(0x10010001, 0x00010001)
        .Convert(sent.data(), 3, 2, lines.data(), 3, 2, 3, 2, 0, 0);
    EXPECT_EQ((Bytes{1, 3, 5, 2, 4, 6}), lines);
}

}  // namespace
