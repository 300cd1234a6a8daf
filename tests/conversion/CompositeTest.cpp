#include <tests/conversion/Recorder.h>

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

constexpr std::int64_t kEndType = 0x0002FF03;

class Chain : public KyComplexConverter {
public:
    using KyComplexConverter::GetContext;
    using KyComplexConverter::GetLinesPerConvert;
    using KyComplexConverter::GetPipeliningSize;
    using KyComplexConverter::KyComplexConverter;
    using KyComplexConverter::ReleaseContext;
};

/// All its forms fail with the same status.
class FailingConverter : public Recorder {
public:
    FailingConverter(std::int64_t source, std::int64_t destination, std::uint32_t result)
        : Recorder(source, destination) {
        status = result;
    }
    using Recorder::Convert;
    std::uint32_t Convert(const std::uint8_t* source, std::uint32_t, std::uint32_t, std::uint8_t* destination,
                          std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                          std::uint32_t) const override {
        return Convert(source, destination, 0);
    }
};

TEST(Composite, CombinesTheSizesOfItsStages) {
    const std::uint32_t cases[][3] = {{1, 1, 1},  {2, 4, 4}, {4, 2, 4}, {2, 3, 6},
                                      {4, 6, 24}, {0, 3, 3}, {5, 0, 5}, {0, 0, 1}};
    for (const auto& [a, b, combined] : cases) {
        Recorder first(kPlainType, kOtherType, 3, 5, a, b), second(kOtherType, kEndType, 7, 11, b, a);
        const Chain chain(&first, &second);
        EXPECT_EQ(combined, chain.GetPipeliningSize()) << a << ", " << b;
        EXPECT_EQ(combined, chain.GetLinesPerConvert()) << a << ", " << b;
        EXPECT_EQ(&first, &chain.GetFirst());
        EXPECT_EQ(&second, &chain.GetSecond());
        EXPECT_EQ((std::array{kPlainType, kEndType}), (std::array{chain.GetSourceType(), chain.GetDestinationType()}));
        EXPECT_EQ((std::array{3u, 33u}), (std::array{chain.GetSourceByteSize(), chain.GetSourceByteSize(11)}));
        EXPECT_EQ((std::array{11u, 22u}),
                  (std::array{chain.GetDestinationByteSize(), chain.GetDestinationByteSize(2)}));
    }
}

TEST(Composite, FirstStageConvertsTheWholeImageSecondTheArea) {
    Recorder first(kPlainType, kOtherType, 1, 2, 1, 1), second(kOtherType, kEndType, 2, 3, 1, 1);
    const Chain chain(&first, &second);
    std::array<std::uint8_t, 4000> source = {}, destination = {};
    EXPECT_EQ(KY_STATUS_SUCCESS, chain.Convert(source.data(), 64, 48, destination.data(), 20, 30, 10, 7, 0x41, 5));
    ASSERT_EQ(48u, first.calls.size());
    const Recorder::Call& write = first.calls[1];
    EXPECT_EQ(64u, write.count);
    EXPECT_EQ(source.data() + 64, write.source);
    EXPECT_EQ(first.calls[0].destination + 128, write.destination);
    EXPECT_EQ(48u, write.context.destinationHeight);

    ASSERT_EQ(7u, second.calls.size());
    const Recorder::Call& read = second.calls[1];
    EXPECT_EQ(10u, read.count);
    EXPECT_EQ(write.destination, read.source);
    EXPECT_EQ(destination.data() + 65, read.destination);
    EXPECT_EQ(48u, read.context.sourceHeight);
    EXPECT_EQ(30u, read.context.destinationHeight);
    EXPECT_EQ(0x41u, read.context.flags);
}

// Lines of packed pixels take whole bytes each, so an image of odd lines takes more than its pixels in one run.
TEST(Composite, IntermediateImageHasRoomForLinesThatAreRoundedUp) {
    const KyIdentityConverter deinterlacer(0x00610002, 0x00410002, 2, 2);
    Recorder second(0x00410002, kEndType, 2, 3, 1, 1);
    const Chain chain(&deinterlacer, &second);
    const std::array<std::uint8_t, 24> fields = {};
    std::array<std::uint8_t, 64> destination = {};
    EXPECT_EQ(KY_STATUS_SUCCESS, chain.Convert(fields.data(), 3, 4, destination.data(), 3, 4, 3, 4, 0, 0));
    ASSERT_EQ(4u, second.calls.size());
    EXPECT_EQ(KY_STATUS_SUCCESS, chain.Convert(fields.data(), destination.data(), 3));
}

TEST(Composite, BothStagesSeeTheFilterOrTheirOwnDefault) {
    const std::int64_t byteType = 0x00010001, wordType = 0x00010002;
    Recorder first(byteType, wordType), second(wordType, kEndType);
    const Chain chain(&first, &second);
    std::uint8_t source[4] = {}, destination[4];
    chain.Convert(source, 2, 2, destination, 2, 2, 2, 2, 0, 0);
    EXPECT_EQ(8u, first.calls.back().filterBits);
    EXPECT_EQ(10u, second.calls.back().filterBits);

    const KyRGBFilter filter(6);
    EXPECT_EQ(KY_STATUS_SUCCESS, chain.Convert(filter, source, 2, 2, destination, 2, 2, 2, 2, 0, 0));
    EXPECT_EQ(&filter, first.calls.back().context.filter);
    EXPECT_EQ(&filter, second.calls.back().context.filter);
    chain.Convert(source, 2, 2, destination, 2, 2, 2, 2, 0, 0);
    EXPECT_EQ(8u, first.calls.back().filterBits) << "no filter stays behind";
}

TEST(Composite, LineFormGivesBothStagesTheIntermediateLines) {
    Recorder first(kPlainType, kOtherType, 1, 2, 1, 2), second(kOtherType, kEndType, 5, 3, 1, 3);
    const Chain chain(&first, &second);
    std::uint8_t source[1] = {}, destination[1] = {};
    KyPixelConverterContext* const context = chain.GetContext();
    context->sourceLineSize = 1000;
    context->sourceHeight = 70;
    EXPECT_EQ(KY_STATUS_SUCCESS, chain.Convert(source, destination, 9));
    EXPECT_EQ(18u, context->destinationLineSize);
    EXPECT_EQ(45u, context->sourceLineSize) << "both stay as the stages saw them";
    chain.ReleaseContext();

    ASSERT_EQ(1u, first.calls.size());
    ASSERT_EQ(1u, second.calls.size());
    EXPECT_EQ(first.calls[0].destination, second.calls[0].source);
    for (const Recorder::Call& call : {first.calls[0], second.calls[0]}) {
        EXPECT_EQ(9u, call.count);
        EXPECT_EQ(18u, call.context.destinationLineSize);
        EXPECT_EQ(45u, call.context.sourceLineSize);
        EXPECT_EQ(70u, call.context.sourceHeight);
        EXPECT_EQ(5u, call.context.referenceCount) << "the caller's, three of the chain's and the stage's own";
    }
}

TEST(Composite, ReturnsTheStatusOfTheStageThatFails) {
    std::uint8_t source[4] = {}, destination[4] = {};
    const auto results = [&](const Chain& chain) {
        return std::array{chain.Convert(source, 2, 2, destination, 2, 2, 2, 2, 0, 0),
                          chain.Convert(source, destination, 2), chain.Convert(source, destination)};
    };
    FailingConverter first(kPlainType, kOtherType, 77), second(kOtherType, kEndType, 78);
    Recorder good(kPlainType, kOtherType);
    EXPECT_EQ((std::array{77u, 77u, 77u}), results(Chain(&first, &second)));
    EXPECT_EQ(3u, first.calls.size());
    EXPECT_EQ(0u, second.calls.size()) << "not run after a failure";
    EXPECT_EQ((std::array{78u, 78u, 78u}), results(Chain(&good, &second)));

    EXPECT_EQ(1u, good.GetContext()->referenceCount) << "failures release what they took";
    good.ReleaseContext();
}

TEST(Composite, KeepsItsBuffer) {
    Recorder first(kPlainType, kOtherType), second(kOtherType, kEndType);
    const Chain chain(&first, &second);
    std::array<std::uint8_t, 1200> source = {}, destination = {};
    chain.Convert(source.data(), 40, 30, destination.data(), 40, 30, 40, 30, 0, 0);
    std::uint8_t* const buffer = first.calls.front().destination;
    first.calls.clear();
    chain.Convert(source.data(), 10, 10, destination.data(), 10, 10, 10, 10, 0, 0);
    EXPECT_EQ(buffer, first.calls.front().destination);
    chain.Convert(source.data(), destination.data(), 40);
    EXPECT_EQ(buffer, first.calls.back().destination);
}

/// Writes its number to all lines but the last one of an odd number.
class LinePairs final : public KyPixelConverter {
public:
    explicit LinePairs(std::uint8_t value) : KyPixelConverter(kPlainType, kOtherType, 1, 1, 1, 2), number(value) {}
    using KyPixelConverter::Convert;
    std::uint32_t Convert(const std::uint8_t*, std::uint8_t* destination, std::uint32_t count) const override {
        std::fill_n(destination, 2 * count, number);
        return KY_STATUS_SUCCESS;
    }

private:
    std::uint8_t number;
};

TEST(Composite, LinesThatTheFirstStageLeavesOutAreZero) {
    // Through the pooled image of stages that the library does not know, ...
    const LinePairs first(9);
    const KyIdentityConverter second(kOtherType, kEndType, 1, 1);
    const KyComplexConverter chain(&first, &second);
    std::array<std::uint8_t, 8 * 4> source = {}, destination = {};
    chain.Convert(source.data(), 8, 4, destination.data(), 8, 4, 8, 4, 0, 0);
    EXPECT_EQ(9, destination[24]);
    destination.fill(1);
    chain.Convert(source.data(), 8, 3, destination.data(), 8, 3, 8, 3, 0, 0);
    EXPECT_EQ(9, destination[15]);
    EXPECT_EQ(0, destination[16]);
    EXPECT_EQ(0, destination[23]);

    // and through the rows of those that it does: nearest-neighbour demosaicing leaves an odd line and an odd pixel out.
    const KyPixelConverter* const demosaic = KyPixelTypeFactory::FindConverter(0x00020010, KY_TYPE_RGB24_PLANAR);
    for (const std::uint32_t width : {5u, 64u, 1501u}) {
        SCOPED_TRACE(width);
        std::vector<std::uint8_t> mosaic(width * 8, 200), planes(width * 8 * 3);
        demosaic->Convert(mosaic.data(), width, 8, planes.data(), width, 8, width, 8, 0, 0);
        EXPECT_EQ(200, planes[0]);
        std::fill(planes.begin(), planes.end(), std::uint8_t{1});
        demosaic->Convert(mosaic.data(), width, 7, planes.data(), width, 7, width, 7, 0, 0);
        EXPECT_EQ(200, planes[std::size_t{width} * 6 - 1 - width % 2]);
        EXPECT_EQ(0, planes[std::size_t{width} * 6]);
        EXPECT_EQ(width % 2 != 0 ? 0 : 200, planes[width - 1]);
    }
}

}  // namespace
