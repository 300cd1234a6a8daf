// What the colour classes promise to those who construct them or derive from them.
#include <KyImgLib/KyImgLib.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Numbers = std::vector<std::int64_t>;

/// A leaf class of an application's opens what is protected.
template <typename Converter>
struct Opened : Converter {
    using Converter::Converter;
    using Converter::GetLinesPerConvert;
    using Converter::GetPipeliningSize;
};

/// Destination type, bytes of a source pixel, of a destination pixel, pipelining size and lines per convert. (Types and sizes
/// of what is registered are in the catalogue's listing.)
template <typename Converter, typename... Arguments>
Numbers NumbersOf(Arguments... arguments) {
    const Opened<Converter> made(0x0002FFF0, arguments...);
    EXPECT_EQ(0x0002FFF0, made.GetSourceType());
    EXPECT_EQ(10 * made.GetDestinationByteSize(), made.GetDestinationByteSize(10));
    return {made.GetDestinationType(), made.GetSourceByteSize(), made.GetDestinationByteSize(),
            made.GetPipeliningSize(), made.GetLinesPerConvert()};
}

TEST(ColourClass, TakesNumbersFromItsArguments) {
    const auto rgb = [](std::int64_t type, std::int64_t source, std::int64_t destination) {
        return Numbers{type, source, destination, 4, 1};
    };
    EXPECT_EQ(rgb(KY_TYPE_RGB16, 6, 2), (NumbersOf<KyRGB24ToRGB16>(1u, false)));
    EXPECT_EQ(rgb(KY_TYPE_RGB16, 6, 2), (NumbersOf<KyRGB48ToRGB16>(8u)));
    EXPECT_EQ(rgb(KY_TYPE_BGR24, 9, 3), (NumbersOf<KyRGB24ToRGB24>(true, 2u, false)));
    EXPECT_EQ(rgb(KY_TYPE_BGR24, 6, 3), (NumbersOf<KyRGB48ToRGB24>(2u, true)));
    EXPECT_EQ(rgb(0x00820002, 6, 3), (NumbersOf<KyRGB24ToRGB24Planar>(1u, true)));
    EXPECT_EQ(rgb(KY_TYPE_BGR32, 12, 4), (NumbersOf<KyRGB32ToRGB32>(true, 2u, false)));
    EXPECT_EQ(rgb(KY_TYPE_BGR32, 8, 4), (NumbersOf<KyRGB64ToRGB32>(4u, true)));

    EXPECT_EQ((Numbers{KY_TYPE_BGR24, 4, 3, 8, 1}), (NumbersOf<KyYUV8ToRGB24>(true, 1u)));
    EXPECT_EQ((Numbers{KY_TYPE_RGB32, 6, 4, 8, 1}), (NumbersOf<KyYUV8ToRGB32>(false, 2u)));
    EXPECT_EQ(rgb(KY_TYPE_BGR32, 2, 4), (NumbersOf<KyYUV8411ToRGB32>(true)));
    EXPECT_EQ(rgb(KY_TYPE_BGR24, 3, 3), (NumbersOf<KyYUV8444ToRGB24>(true, 0u, 1u, 0u, 2u)));
    EXPECT_EQ(rgb(KY_TYPE_BGR32, 4, 4), (NumbersOf<KyYUV10ToRGB32>(true, 8u)));
}

TEST(ColourClass, LinesOfFourPixelGroupsAreRoundedDown) {
    const KyYUV8411ToRGB24 converter(0x00440006, false);
    const auto sizes = [&](const auto&... counts) { return Numbers{converter.GetSourceByteSize(counts)...}; };
    EXPECT_EQ((Numbers{0, 1, 3, 6, 7}), sizes(0u, 1u, 2u, 4u, 5u));
}

TEST(ColourClass, ShowsItsFieldsToDerivedClasses) {
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

TEST(ColourClass, YuvHasNoFormForOnePixel) {
    const auto convert = [](const KyPixelConverter& converter) { return converter.Convert(nullptr, nullptr); };
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, convert(KyYUV8ToRGB24(0x00040001, false, 0)));
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, convert(KyYUV8411ToRGB32(0x00440006, false)));
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, convert(KyYUV10ToRGB24(0x00040002, false, 2)));
}

// With the entries 0 of red and blue, so that the constants of 5-6-5 sources show; pure red, and green 33 of 63.
TEST(ColourClass, From565OnlyGreenIsConverted) {
    using Bytes = std::vector<std::uint8_t>;
    KyRGBFilter filter(8);
    filter.SetMultipliers(1, 1, 1, 5, 0, 40);
    const std::uint8_t source[] = {0x00, 0xF8, 0x20, 0x04};
    const auto area = [&](const KyPixelConverter& converter) {
        Bytes pixels(2 * converter.GetDestinationByteSize(), 0xEE);
        converter.Convert(filter, source, 2, 1, pixels.data(), 2, 1, 2, 1, 0, 0);
        return pixels;
    };
    EXPECT_EQ((Bytes{5, 0, 40, 5, 132, 40}), area(KyRGB16ToRGB24(0x00020001, false)));
    EXPECT_EQ((Bytes{40, 0, 5, 40, 132, 5}), area(KyRGB16ToRGB24(0x00020001, true)));
    EXPECT_EQ((Bytes{40, 0, 0, 0, 40, 132, 0, 0}), area(KyRGB16ToRGB32(0x00020001, false)))
        << "blue 40 is beyond five bits";
}

}  // namespace
