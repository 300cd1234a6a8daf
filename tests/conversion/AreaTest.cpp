// How an area conversion walks an image and what it tells its line calls.
#include <tests/conversion/Recorder.h>

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace {

using Offsets = std::vector<std::pair<std::ptrdiff_t, std::ptrdiff_t>>;

class Area : public testing::Test {
protected:
    /// Source and destination offset of each line call.
    Offsets Walk(const Recorder& recorder, std::uint32_t sourceWidth, std::uint32_t sourceHeight,
                 std::uint32_t destinationWidth, std::uint32_t width, std::uint32_t height, std::uint32_t flags = 0,
                 std::uint32_t padding = 0) {
        recorder.calls.clear();
        EXPECT_EQ(KY_STATUS_SUCCESS, recorder.Convert(source.data(), sourceWidth, sourceHeight, destination.data(),
                                                      destinationWidth, 8, width, height, flags, padding));
        Offsets offsets;
        for (const Recorder::Call& call : recorder.calls) {
            EXPECT_EQ(width, call.count);
            offsets.emplace_back(call.source - source.data(), call.destination - destination.data());
        }
        return offsets;
    }

    static std::vector<std::uint32_t> LineIndexes(const Recorder& recorder) {
        std::vector<std::uint32_t> indexes;
        for (const Recorder::Call& call : recorder.calls) indexes.push_back(call.context.lineIndex);
        return indexes;
    }

    std::array<std::uint8_t, 1000> source = {}, destination = {};
};

TEST_F(Area, WalksLinesAndFillsTheContext) {
    Recorder recorder(kPlainType, kOtherType, 2, 3, 1, 1);
    recorder.status = KY_STATUS_NOT_SUPPORTED;  // which no area conversion reports
    EXPECT_EQ((Offsets{{0, 0}, {20, 25}, {40, 50}}), Walk(recorder, 10, 9, 6, 5, 3, 0, 7));
    EXPECT_EQ((std::vector<std::uint32_t>{0, 1, 2}), LineIndexes(recorder));

    const Recorder::Call& call = recorder.calls.back();
    EXPECT_EQ(20u, call.context.sourceLineSize);
    EXPECT_EQ(9u, call.context.sourceHeight);
    EXPECT_EQ(25u, call.context.destinationLineSize);
    EXPECT_EQ(8u, call.context.destinationHeight);
    EXPECT_EQ(0u, call.context.planeOffsets[1]);
}

TEST_F(Area, RoundsTheHeightDownToWholeSteps) {
    const Recorder pairs(kPlainType, kOtherType, 2);
    EXPECT_EQ((Offsets{{0, 0}, {20, 20}}), Walk(pairs, 10, 8, 10, 10, 5));
    EXPECT_EQ((std::vector<std::uint32_t>{0, 2}), LineIndexes(pairs));
    EXPECT_EQ(Offsets{}, Walk(pairs, 10, 8, 10, 10, 1));
    EXPECT_EQ((Offsets{{0, 0}}), Walk(Recorder(kPlainType, kOtherType, 6), 10, 8, 10, 10, 11));
    EXPECT_EQ((Offsets{{0, 0}, {10, 10}}), Walk(Recorder(kPlainType, kOtherType, 0), 10, 8, 10, 10, 2)) << "0 is 1";
}

TEST_F(Area, WeavesTheFieldsOfAnInterlacedSource) {
    const Recorder recorder(kInterlacedType, kPlainType, 2);  // lines per convert have no say
    const Offsets firstOnEven = {{0, 0}, {10, 24}, {20, 48}, {35, 12}, {45, 36}, {55, 60}};
    EXPECT_EQ(firstOnEven, Walk(recorder, 10, 7, 12, 10, 7));
    EXPECT_EQ((std::vector<std::uint32_t>{0, 2, 4, 0, 2, 4}), LineIndexes(recorder));

    const Offsets secondOnEven = {{35, 0}, {45, 24}, {55, 48}, {0, 12}, {10, 36}, {20, 60}};
    EXPECT_EQ(secondOnEven, Walk(recorder, 10, 7, 12, 10, 7, KyPixelConverter::FLAG_INVERT_DEINTERLACER));
    EXPECT_EQ((Offsets{{0, 0}, {7, 5}}), Walk(recorder, 5, 3, 5, 5, 2)) << "half of 15 bytes is 7";
    EXPECT_EQ((Offsets{{0, 0}, {5, 5}}),
              Walk(Recorder(kPlainType, kOtherType), 5, 3, 5, 5, 2, KyPixelConverter::FLAG_INVERT_DEINTERLACER))
        << "the flag concerns interlaced sources only";
}

TEST_F(Area, PlanarDestinationHasLinesOfTheSourceWidth) {
    const Recorder recorder(kPlainType, kPlanarType, 3, 1, 1, 1);
    EXPECT_EQ((Offsets{{0, 0}, {30, 10}}), Walk(recorder, 10, 2, 12, 10, 2, 0, 5));
    const KyPixelConverterContext& context = recorder.calls.back().context;
    EXPECT_EQ(10u, context.destinationLineSize);
    EXPECT_EQ(0u, context.planeOffsets[0]);
    EXPECT_EQ(12u * 8, context.planeOffsets[1]);
    EXPECT_EQ(2u * 12 * 8, context.planeOffsets[2]);

    const Recorder planarSource(kPlanarType, kPlanarType | 1, 1, 1, 1, 1);
    EXPECT_EQ((Offsets{{0, 0}, {10, 17}}), Walk(planarSource, 10, 2, 12, 10, 2, 0, 5));
    EXPECT_EQ(0u, planarSource.calls.back().context.planeOffsets[1]);
}

TEST_F(Area, AddsABayerPatternWhereNoneIsGiven) {
    const Recorder recorder;
    const auto seen = [&](std::uint32_t flags) {
        Walk(recorder, 1, 1, 1, 1, 1, flags);
        return recorder.calls.back().context.flags;
    };
    EXPECT_EQ(0x10u, seen(0));
    EXPECT_EQ(0x110u, seen(0x100));
    for (const std::uint32_t flags : {0x20u, 0x40u, 0x80u, 0x1C0u, 0xFFFFFFFFu}) EXPECT_EQ(flags, seen(flags));
}

TEST_F(Area, ChoosesTheDefaultFilterByTheBitSizeOfTheSource) {
    const auto bitsOfFilter = [&](std::uint16_t bits, std::int64_t id) {
        const KyPixelType type(id, bits, 1, false);
        if (bits != 0) KyPixelTypeFactory::RegisterPixelType(id, &type, nullptr);
        const Recorder recorder(id, kOtherType);
        Walk(recorder, 1, 1, 1, 1, 1);
        return recorder.calls.back().filterBits;
    };
    for (std::uint16_t bits = 8; bits <= 16; bits += 2) EXPECT_EQ(bits, bitsOfFilter(bits, 0x0001FF10 + bits));
    EXPECT_EQ(16u, bitsOfFilter(9, 0x0001FF20)) << "every other size";
    EXPECT_EQ(16u, bitsOfFilter(0, 0x0001FF21)) << "not registered";
}

/// A converter of the library with another line form.
class OwnLines final : public KyGrayscale8ToRGB24 {
public:
    OwnLines() : KyGrayscale8ToRGB24(KY_TYPE_GRAYSCALE8, false, 0) {}
    using KyPixelConverter::Convert;
    std::uint32_t Convert(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override { return ++lineCalls; }

    mutable std::uint32_t lineCalls = 0;
};

/// One that changes nothing.
class SameLines final : public KyGrayscale8ToRGB24 {
public:
    SameLines() : KyGrayscale8ToRGB24(KY_TYPE_GRAYSCALE8, false, 0) {}
};

TEST_F(Area, CallsTheLineFormOfDerivedClasses) {
    const OwnLines own;
    own.Convert(source.data(), 10, 4, destination.data(), 11, 4, 9, 4, 0, 1);
    EXPECT_EQ(4u, own.lineCalls);
    EXPECT_EQ(0, destination[0]);

    source[0] = 7;
    SameLines().Convert(source.data(), 10, 4, destination.data(), 11, 4, 9, 4, 0, 1);
    EXPECT_EQ(7, destination[2]);
}

}  // namespace
