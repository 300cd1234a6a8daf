// What a filter says about its tables must be what they hold: conversions compute by it instead of looking values up.
#include <KyImgLib/conversion/FilterRecordInternal.h>
#include <tests/support/Random.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

const ky::FilterRecord& Known(const KyRGBFilter& filter) { return ky::FilterRecord::Of(filter); }

/// Whether a shape tells what the table holds: whether it is the identity, and no line that it is not.
bool IsTrue(const ky::FilterShape8& shape, const std::uint8_t* table) {
    bool isIdentity = true, isLine = shape.shift >= 8 && shape.shift <= 16;
    for (std::uint32_t i = 0; i < 256; ++i) {
        const std::uint32_t line = shape.offset + (shape.addsIndex ? i : 0) + (i * shape.multiplier >> shape.shift);
        const auto* const end = shape.exceptions + shape.exceptionCount;
        isIdentity &= table[i] == i;
        isLine &= table[i] + (std::find(shape.exceptions, end, i) != end ? 1u : 0u) == std::min(line, 255u);
    }
    return shape.isIdentity == isIdentity && (isLine || !shape.isLinear);
}

/// The same for a table of words. Says whether the shape is linear.
bool CheckWords(const ky::FilterShape16& shape, const std::uint16_t* table, std::uint32_t entryCount) {
    bool isIdentity = true, isLine = true;
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        const std::uint64_t line =
            shape.offset + std::uint64_t{i} * shape.wholeGain + (std::uint64_t{i} * shape.fractionGain >> 32);
        isIdentity &= table[i] == i;
        isLine &= table[i] == (i > shape.last ? entryCount - 1 : line);
    }
    EXPECT_EQ(isIdentity, shape.isIdentity);
    EXPECT_TRUE(isLine || !shape.isLinear);
    return shape.isLinear;
}

/// The shapes of all three channels are what the tables hold, and linear where they have to be.
void Check(const KyRGBFilter& filter, bool mustBeLinear) {
    const ky::FilterRecord& known = Known(filter);
    for (const auto& [shape, table] :
         {std::pair(&known.red.view, known.red8), {&known.green.view, known.green8}, {&known.blue.view, known.blue8}}) {
        EXPECT_TRUE(IsTrue(*shape, table));
        EXPECT_TRUE(shape->isLinear || !mustBeLinear);
    }
}

TEST(FilterShape, NewFiltersAreTheIdentityFromEightBitsOn) {
    for (std::uint32_t bits = 0; bits <= 16; ++bits) {
        SCOPED_TRACE(bits);
        const KyRGBFilter filter(bits);
        Check(filter, bits >= 8);
        EXPECT_EQ(bits >= 8, Known(filter).blue.view.isIdentity);
    }
}

TEST(FilterShape, FollowsSingleEntries) {
    KyRGBFilter filter(10);
    filter.SetGreenValue(20, 21);
    Check(filter, false);
    EXPECT_TRUE(Known(filter).red.view.isIdentity);
    EXPECT_FALSE(Known(filter).green.view.isIdentity);
    EXPECT_FALSE(Known(filter).green.view.isLinear);
    filter.SetGreenValue(20, 1000);
    filter.SetGreenValue(255, 900);
    filter.SetGreenValue(300, 0);
    EXPECT_FALSE(Known(filter).green.view.isIdentity);
    filter.SetGreenValue(20, 20);
    Check(filter, true);
    EXPECT_TRUE(Known(filter).green.view.isIdentity) << "entries beyond a byte have no part in it";

    support::Random random(1);
    for (int round = 0; round < 2000; ++round) {
        const std::uint32_t index = random.Below(300);
        filter.SetBlueValue(index, static_cast<std::uint16_t>(random.Below(2) == 0 ? index : random.Below(300)));
        ASSERT_TRUE(IsTrue(Known(filter).blue.view, Known(filter).blue8));
    }
}

TEST(FilterShape, GainsOfAByteFilterAreLinear) {
    support::Random random(2);
    const auto gain = [&] { return random.Real(random.Pick(std::vector<double>{1.0, 2.0, 4.0, 300.0})); };
    const auto offset = [&] { return static_cast<std::uint16_t>(random.Below(2) * random.Below(300)); };
    KyRGBFilter filter(8);
    for (int round = 0; round < 5000 && !testing::Test::HasFailure(); ++round) {
        const double red = gain(), green = gain(), blue = gain();
        const std::uint16_t redOffset = offset(), greenOffset = offset();
        SCOPED_TRACE(testing::Message() << red << ", " << green << ", " << blue << ", " << redOffset << ", "
                                        << greenOffset);
        filter.SetMultipliers(red, green, blue, redOffset, greenOffset, 0);
        Check(filter, true);
    }
    // Rounding to double makes a product reach an integer at one index and miss it at a multiple of that index.
    for (int hundredths = 0; hundredths <= 800 && !testing::Test::HasFailure(); ++hundredths) {
        SCOPED_TRACE(hundredths);
        filter.SetMultipliers(hundredths / 100.0, hundredths / 100.0, hundredths / 100.0, 0, 3, 200);
        Check(filter, true);
    }
    for (const double extreme :
         {0.0, 1e-300, 1.0 / 255, 255.0 / 256, 256.0, 1e300, std::numeric_limits<double>::infinity()}) {
        SCOPED_TRACE(extreme);
        filter.SetMultipliers(extreme, extreme, extreme, 0, 1, 65535);
        Check(filter, true);
    }
}

TEST(FilterShape, TablesOfWords) {
    support::Random random(5);
    for (const std::uint32_t bits : {0u, 1u, 9u, 10u, 12u, 14u, 16u}) {
        SCOPED_TRACE(bits);
        KyRGBFilter filter(bits);
        const std::uint32_t entries = filter.GetEntryCount();
        EXPECT_TRUE(CheckWords(Known(filter).red.table, Known(filter).red16, entries));
        for (const double gain : {0.37, 1.0, 1.9, 3.999, 50.0}) {
            const double red = gain * random.Real(1.0) + 1e-3, green = gain;
            filter.SetMultipliers(red, green, 1.0, 0, 5, 0);
            SCOPED_TRACE(testing::Message() << red << ", " << green);
            EXPECT_TRUE(CheckWords(Known(filter).red.table, Known(filter).red16, entries) || bits == 0);
            CheckWords(Known(filter).green.table, Known(filter).green16, entries);
        }
        if (bits < 9) continue;
        EXPECT_TRUE(Known(filter).blue.table.isIdentity);
        filter.SetBlueValue(300, 301);
        EXPECT_FALSE(CheckWords(Known(filter).blue.table, Known(filter).blue16, entries));
        filter.SetBlueValue(300, 300);
        EXPECT_TRUE(CheckWords(Known(filter).blue.table, Known(filter).blue16, entries));
    }
}

TEST(FilterShape, OtherFiltersPromiseNothingFalse) {
    support::Random random(4);
    const auto fraction = [&] { return static_cast<double>(random.Below(600)) / (1 + random.Below(255)); };
    for (const std::uint32_t bits : {8u, 8u, 8u, 0u, 4u, 7u, 9u, 16u}) {
        SCOPED_TRACE(bits);
        KyRGBFilter filter(bits);
        for (int round = 0; round < 100; ++round) {
            filter.SetMultipliers(fraction(), fraction() * (1 - 1e-15), round / 20.0, 0, 3,
                                  static_cast<std::uint16_t>(random.Below(50)));
            Check(filter, false);
        }
    }
}

}  // namespace
