// What the Bayer classes promise to those who construct them, derive from them or call their line form.
#include <KyImgLib/KyImgLib.h>
#include <tests/support/Random.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t kInterpolate = KyPixelConverter::FLAG_BAYER_INTERPOLATE;
const std::int64_t kSource = 0x00020010;

/// A leaf class of an application's: sees what the area form calls, and opens what is protected.
class ApplicationBayer : public KyBayerRGB8ToRGB24 {
public:
    explicit ApplicationBayer(bool swap = false, std::uint32_t e = 0) : KyBayerRGB8ToRGB24(kSource, swap, e, 9) {}

    using KyBayerRGB8ToRGB24::blueIndex;
    using KyBayerRGB8ToRGB24::GetContext;
    using KyBayerRGB8ToRGB24::GetLinesPerConvert;
    using KyBayerRGB8ToRGB24::GetPipeliningSize;
    using KyBayerRGB8ToRGB24::greenIndex;
    using KyBayerRGB8ToRGB24::redIndex;
    using KyBayerRGB8ToRGB24::ReleaseContext;
    using KyBayerRGB8ToRGB24::reservedArgument;
    using KyBayerRGB8ToRGB24::shiftOrStep;

    mutable std::vector<std::uint32_t> interpolatedLines;
    mutable KyBayerGeometry geometry = {};

protected:
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override {
        interpolatedLines.push_back(GetContext()->lineIndex);
        ReleaseContext();
        geometry = GetGeometry();
        return KyBayerRGB8ToRGB24::ConvertInterpolated(source, destination, count);
    }
};

std::vector<std::uint8_t> ConvertWhole(const KyPixelConverter& converter, const std::vector<std::uint8_t>& mosaic,
                                       std::uint32_t width, std::uint32_t height, std::uint32_t flags) {
    std::vector<std::uint8_t> picture(converter.GetDestinationByteSize(width) * height, 0xEE);
    EXPECT_EQ(KY_STATUS_SUCCESS,
              converter.Convert(mosaic.data(), width, height, picture.data(), width, height, width, height, flags, 0));
    return picture;
}

TEST(BayerClass, TakesSizesAndIndexesFromItsArguments) {
    using Numbers = std::vector<std::int64_t>;
    const auto numbers = [](const ApplicationBayer& converter) {
        return Numbers{converter.GetDestinationType(), converter.GetSourceByteSize(10),
                       converter.GetPipeliningSize(),  converter.redIndex,
                       converter.greenIndex,           converter.blueIndex,
                       converter.shiftOrStep,          converter.reservedArgument};
    };
    EXPECT_EQ((Numbers{KY_TYPE_RGB24, 10, 8, 0, 1, 2, 1, 9}), numbers(ApplicationBayer()));
    EXPECT_EQ((Numbers{KY_TYPE_BGR24, 20, 8, 2, 1, 0, 2, 9}), numbers(ApplicationBayer(true, 1)));
    struct Words : KyBayerRGB16ToRGB24 {
        using KyBayerRGB16ToRGB24::GetPipeliningSize;
        using KyBayerRGB16ToRGB24::KyBayerRGB16ToRGB24;
    };
    EXPECT_EQ(2u, Words(0x00020012, false, 4, 0).GetPipeliningSize());
    EXPECT_EQ(0x00020004, KyBayerRGB16ToRGB48(0x00020012, false, 0).GetDestinationType());
    EXPECT_EQ(0x00120004, KyBayerRGB16ToRGB48(0x00020012, true, 0).GetDestinationType());

    const ApplicationBayer converter;
    EXPECT_EQ(2u, converter.GetLinesPerConvert());
    converter.GetContext()->flags = kInterpolate | KyPixelConverter::FLAG_BAYER_RGGB;
    EXPECT_EQ(1u, converter.GetLinesPerConvert());
    converter.ReleaseContext();
}

TEST(BayerClass, LineFormWithoutPatternFlagIsRefused) {
    const ApplicationBayer converter;
    const std::vector<std::uint8_t> mosaic(16, 1);
    std::vector<std::uint8_t> picture(64, 7);
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, converter.Convert(mosaic.data(), picture.data(), 4));
    EXPECT_EQ(KY_STATUS_NOT_SUPPORTED, converter.Convert(mosaic.data(), picture.data()));
    EXPECT_EQ(std::vector<std::uint8_t>(64, 7), picture);
}

TEST(BayerClass, LinesFromTheLastOneOfTheDestinationOnHaveNoneBelow) {
    support::Random random(8);
    const KyBayerRGB8ToRGB24 converter(kSource, false, 0, 0);
    const ApplicationBayer byLines;
    const std::vector<std::uint8_t> mosaic = random.Bytes(40 * 9);
    for (const std::uint32_t destinationHeight : {0u, 1u, 4u, 8u, 9u}) {
        std::vector<std::uint8_t> picture(120 * 8), expected = picture;
        converter.Convert(mosaic.data(), 40, 9, picture.data(), 40, destinationHeight, 40, 8, kInterpolate, 0);
        byLines.Convert(mosaic.data(), 40, 9, expected.data(), 40, destinationHeight, 40, 8, kInterpolate, 0);
        EXPECT_EQ(expected, picture) << destinationHeight;
    }
}

TEST(BayerClass, AreaFormCallsAnOverriddenKernel) {
    support::Random random(6);
    const ApplicationBayer converter;
    const KyBayerRGB8ToRGB24 original(kSource, false, 0, 0);
    const std::vector<std::uint8_t> mosaic = random.Bytes(19 * 4);
    EXPECT_EQ(ConvertWhole(original, mosaic, 19, 4, kInterpolate),
              ConvertWhole(converter, mosaic, 19, 4, kInterpolate));
    EXPECT_EQ((std::vector<std::uint32_t>{0, 1, 2, 3}), converter.interpolatedLines);
    ConvertWhole(converter, mosaic, 19, 4, 0);
    EXPECT_EQ(4u, converter.interpolatedLines.size()) << "not called without interpolation";
}

TEST(BayerClass, TellsDerivedClassesTheRowTypesAndNeighbours) {
    const ApplicationBayer converter;
    const auto rowTypes = [&](std::uint32_t flags) {
        ConvertWhole(converter, std::vector<std::uint8_t>(26), 13, 2, flags | kInterpolate);
        return std::pair(converter.geometry.evenRowType, converter.geometry.oddRowType);
    };
    EXPECT_EQ(std::pair(0u, 3u), rowTypes(0));
    EXPECT_EQ(std::pair(0u, 3u), rowTypes(0xF0)) << "the first of several patterns counts";
    EXPECT_EQ(std::pair(1u, 2u), rowTypes(0xE0));
    EXPECT_EQ(std::pair(2u, 1u), rowTypes(0xC0));
    EXPECT_EQ(std::pair(3u, 0u), rowTypes(0x80));

    const std::int32_t groups[] = {-13, -14, -12, 0, -1, 1, 13, 12, 14};
    for (int group = 0; group < 9; ++group)
        for (int k = 0; k < 4; ++k)
            EXPECT_EQ(2 * k + groups[group], converter.geometry.neighbourOffsets[4 * group + k]) << group << ", " << k;
}

// Numbers worked out by hand, which hold the reference to the rules too.
TEST(BayerPixels, FollowFromTheirNeighbours) {
    const std::vector<std::uint8_t> mosaic = {10, 20, 30,   // G R G
                                              40, 50, 61,   // B G B
                                              70, 81, 92};  // G R G
    const std::vector<std::uint8_t> picture =
        ConvertWhole(KyBayerRGB8ToRGB24(kSource, false, 0, 0), mosaic, 3, 3, kInterpolate);
    const std::vector<std::uint8_t> expected = {20, 10, 40, 20, 30, 50, 20, 30, 61,  //
                                                50, 43, 40, 50, 50, 50, 50, 57, 61,  //
                                                81, 70, 40, 81, 70, 50, 81, 92, 61};
    EXPECT_EQ(expected, picture);

    const std::vector<std::uint8_t> cells =
        ConvertWhole(KyBayerRGB8ToRGB24(kSource, false, 0, 0), {10, 20, 40, 50}, 2, 2, 0);
    EXPECT_EQ((std::vector<std::uint8_t>{20, 10, 40, 20, 50, 40, 20, 10, 40, 20, 50, 40}), cells);
    EXPECT_EQ((std::vector<std::uint8_t>{0x21, 0x08, 0x21, 0x08, 0x21, 0x08, 0x21, 0x08}),
              ConvertWhole(KyBayerRGB8ToRGB16(kSource, 0, 0), {4, 8, 8, 4}, 2, 2, kInterpolate))
        << "16 bits hold red high";
}

}  // namespace
