// What the classes promise to those who construct them or derive from them, and numbers worked out by hand, which hold the
// reference to the rules too.
#include <KyImgLib/KyImgLib.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Numbers = std::vector<std::int64_t>;
using Bytes = std::vector<std::uint8_t>;

/// Destination type, pipelining size and lines per convert, of which a derived class sees the latter two.
template <typename Converter, typename... Arguments>
Numbers NumbersOf(Arguments... arguments) {
    struct Opened : Converter {
        using Converter::Converter;
        using Converter::GetLinesPerConvert;
        using Converter::GetPipeliningSize;
    };
    const Opened made(0x0002FFF0, arguments...);
    return {made.GetDestinationType(), made.GetPipeliningSize(), made.GetLinesPerConvert()};
}

TEST(Class, TakesNumbersFromItsArguments) {
    EXPECT_EQ((Numbers{0x00010002, 2, 1}), (NumbersOf<KyGrayscale10PackedGEVToGrayscale10>()));
    EXPECT_EQ((Numbers{0x00010077, 4, 1}), (NumbersOf<KyGrayscale16ToGrayscale16RightShift>(0x00010077, 4u)));
    EXPECT_EQ((Numbers{0x00010001, 4, 1}), (NumbersOf<KyGrayscale16ToGrayscale8>(4u)));
    EXPECT_EQ((Numbers{0x00010001, 4, 1}), (NumbersOf<KyGrayscale16NormalizedToGrayscale8>()));
    EXPECT_EQ((Numbers{KY_TYPE_BGR32, 4, 1}), (NumbersOf<KyGrayscale8ToRGB32>(true, 2u)));
    EXPECT_EQ(2, NumbersOf<KyDualLinesGrayscale8ToGrayscale8>(0x00010001).back());
    EXPECT_EQ((Numbers{KY_TYPE_RGB16, 4, 1}), (NumbersOf<KyRGB24ToRGB16>(1u, false)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR24, 4, 1}), (NumbersOf<KyRGB48ToRGB24>(2u, true)));
    EXPECT_EQ((Numbers{0x00820002, 4, 1}), (NumbersOf<KyRGB24ToRGB24Planar>(1u, true)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR32, 4, 1}), (NumbersOf<KyRGB32ToRGB32>(true, 2u, false)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR24, 8, 1}), (NumbersOf<KyYUV8ToRGB24>(true, 1u)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR32, 4, 1}), (NumbersOf<KyYUV8411ToRGB32>(true)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR24, 4, 1}), (NumbersOf<KyYUV8444ToRGB24>(true, 0u, 1u, 0u, 2u)));
    EXPECT_EQ((Numbers{KY_TYPE_BGR32, 4, 1}), (NumbersOf<KyYUV10ToRGB32>(true, 8u)));
}

TEST(Class, ShowsItsFieldsToDerivedClasses) {
    struct Rgb : KyRGB24ToRGB32 {
        Rgb() : KyRGB24ToRGB32(0x00020006, true, 1, true) {}
        Numbers Fields() const {
            return {SourceIsBGR,         DestinationIsBGR,    ChannelBytes,   Shift,          DestinationIndex[0],
                    DestinationIndex[1], DestinationIndex[2], SourceIndex[0], SourceIndex[1], SourceIndex[2]};
        }
    };
    EXPECT_EQ((Numbers{1, 1, 2, 0, 2, 1, 0, 2, 1, 0}), Rgb().Fields());
    struct Words : KyRGB64ToRGB16 {
        Words() : KyRGB64ToRGB16(0x00020005, 9) {}
        Numbers Fields() const { return {SourceIsBGR, DestinationIsBGR, ChannelBytes, Shift, DestinationIndex[0]}; }
    };
    EXPECT_EQ((Numbers{0, 0, 1, 9, 0}), Words().Fields());
    struct Yuv : KyYUV8444ToRGB24 {
        Yuv() : KyYUV8444ToRGB24(0x00440003, true, 2, 5, 6, 7) {}
        Numbers Fields() const {
            return {DestinationIsBGR, ChannelBytes, DestinationIndex[0], DestinationIndex[2], YIndex, UIndex, VIndex};
        }
    };
    EXPECT_EQ((Numbers{1, 3, 2, 0, 5, 6, 7}), Yuv().Fields());
}

TEST(Class, YuvHasNoFormForOnePixel) {
    const auto convert = [](const KyPixelConverter& converter) { return converter.Convert(nullptr, nullptr); };
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, convert(KyYUV8ToRGB24(0x00040001, false, 0)));
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, convert(KyYUV8411ToRGB32(0x00440006, false)));
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, convert(KyYUV10ToRGB24(0x00040002, false, 2)));
}

Bytes Line(const KyPixelConverter& converter, const Bytes& source, std::uint32_t count) {
    Bytes line(converter.GetDestinationByteSize(count), 0xEE);
    EXPECT_EQ(KY_STATUS_SUCCESS, converter.Convert(source.data(), line.data(), count));
    return line;
}

TEST(GrayPixels, UnpackAndMoveTheirBits) {
    EXPECT_EQ((Bytes{0xFF, 0x03, 0x03, 0x02, 0xEE, 0xEE}),
              Line(KyGrayscale10PackedGEVToGrayscale10(0x08410008), {0xFF, 0x33, 0x80}, 3))
        << "whole pairs, in the order of the source whatever taps its ID names";
    EXPECT_EQ((Bytes{0xBD, 0x0A, 0xFC, 0x0E}),
              Line(KyGrayscale12PackedGEVToGrayscale12(0x04410009), {0xAB, 0xCD, 0xEF}, 2));
    EXPECT_EQ((Bytes{0xC0, 0xFF, 0x00, 0x8D}),
              Line(KyGrayscale16ToGrayscale16LeftShift(0x00010002, 0x00110002, 6), {0xFF, 0x0F, 0x34, 0x12}, 2));
    EXPECT_EQ((Bytes{255, 0}), Line(KyGrayscale16ToGrayscale8(0x00010002, 2), {0xFF, 0x03, 0x00, 0x04}, 2));
    EXPECT_EQ((Bytes{0xFF, 0xFF, 0x10, 0x84, 0x41, 0x08}), Line(KyGrayscale8ToRGB16(0x00010001, 0), {255, 128, 8}, 3));
}

TEST(GrayPixels, ComeFromTapsToTheirPlaces) {
    const auto dual = [](std::int64_t layout, std::uint32_t count) {
        return Line(KyDualGrayscale8ToGrayscale8(0x00010001 + layout, 0x00010001), {1, 2, 3, 4, 5, 6, 7}, count);
    };
    EXPECT_EQ((Bytes{1, 3, 5, 2, 4, 6}), dual(0x01000000, 6));
    EXPECT_EQ((Bytes{1, 3, 5, 6, 4, 2}), dual(0x02000000, 6));
    EXPECT_EQ((Bytes{5, 3, 1, 2, 4, 6}), dual(0x04000000, 6));
    EXPECT_EQ((Bytes{7, 5, 3, 1, 6, 4, 2}), dual(0x08000000, 7)) << "an odd line loses nothing";
    const Dalsa4x8ToGrayscale8 quad(0x00010006, 0x00010001);
    EXPECT_EQ((Bytes{1, 5, 6, 2, 3, 7, 8, 4}), Line(quad, {1, 2, 3, 4, 5, 6, 7, 8}, 8));
    EXPECT_EQ((Bytes{1, 5, 6, 2, 3, 4}), Line(quad, {1, 2, 3, 4, 5, 6}, 6));
}

}  // namespace
