#include <KyImgLib/conversion/KyRGBFilter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

namespace {

std::vector<std::uint16_t> AllEntries(const KyRGBFilter& filter) {
    std::vector<std::uint16_t> entries;
    for (std::uint32_t i = 0; i < filter.GetEntryCount(); ++i)
        entries.insert(entries.end(), {filter.GetRedValue16(i), filter.GetGreenValue16(i), filter.GetBlueValue16(i)});
    for (std::uint32_t i = 0; i < 256; ++i)
        entries.insert(entries.end(), {filter.GetRedValue8(i), filter.GetGreenValue8(i), filter.GetBlueValue8(i)});
    return entries;
}

TEST(Filter, StartsAsTheIdentityOfAnySize) {
    for (std::uint32_t bits = 0; bits <= 16; ++bits) {
        const KyRGBFilter filter(bits);
        EXPECT_EQ(bits, filter.GetBitSize());
        ASSERT_EQ(1u << bits, filter.GetEntryCount());
        for (std::uint32_t i = 0; i < filter.GetEntryCount(); ++i) {
            ASSERT_EQ(i, filter.GetRedValue16(i));
            ASSERT_EQ(i, filter.GetGreenValue16(i));
            ASSERT_EQ(i, filter.GetBlueValue16(i));
        }
        for (std::uint32_t i = 0; i < 256; ++i)
            ASSERT_EQ(i < filter.GetEntryCount() ? i : 0, filter.GetGreenValue8(i)) << bits << " bits, entry " << i;
    }
    EXPECT_THROW(KyRGBFilter(17), std::length_error);
    EXPECT_THROW(KyRGBFilter(32), std::length_error);

    const KyRGBFilter byte(8), word(10);
    EXPECT_EQ(44, byte.GetRedValue16(300)) << "indexes wrap";
    EXPECT_EQ(300, word.GetRedValue16(300));
    EXPECT_EQ(44, word.GetRedValue8(300));
    EXPECT_EQ(1, word.GetBlueValue16(1025));
}

TEST(Filter, EntriesAreCutToIntegersAndLimited) {
    KyRGBFilter filter(8);
    EXPECT_EQ(KY_STATUS_SUCCESS, filter.SetMultipliers(0.5, 1.0, 3.0, 10, 0, 0));
    EXPECT_EQ(10, filter.GetRedValue16(0));
    EXPECT_EQ(10, filter.GetRedValue16(1));
    EXPECT_EQ(137, filter.GetRedValue8(255));
    EXPECT_EQ(200, filter.GetGreenValue8(200));
    EXPECT_EQ(252, filter.GetBlueValue8(84));
    EXPECT_EQ(255, filter.GetBlueValue8(86));

    filter.SetMultipliers(1.0, 2.0, 0.0);
    EXPECT_EQ(0, filter.GetRedValue8(0)) << "no offset of an earlier call";
    EXPECT_EQ(255, filter.GetGreenValue8(128));
    EXPECT_EQ(0, filter.GetBlueValue8(255));

    KyRGBFilter word(10);
    word.SetMultipliers(2.0, 2.0, 1.0, 0, 0, 65535);
    EXPECT_EQ(400, word.GetRedValue16(200));
    EXPECT_EQ(255, word.GetRedValue8(200));
    EXPECT_EQ(1023, word.GetRedValue16(512));
    EXPECT_EQ(1023, word.GetBlueValue16(0));
    EXPECT_EQ(255, word.GetBlueValue8(0));
}

// Multiplied and added in one rounding, as some CPUs can, this would be 201.
TEST(Filter, ProductAndSumAreRoundedApart) {
    KyRGBFilter filter(8);
    filter.SetMultipliers(1.0199999999999998, 1.0, 1.0, 100, 0, 0);
    EXPECT_EQ(202, filter.GetRedValue16(100));
}

TEST(Filter, GainsBelowZeroChangeNothing) {
    KyRGBFilter filter(9);
    filter.SetMultipliers(1.5, 0.3, 2.0, 4, 5, 6);
    const std::vector<std::uint16_t> before = AllEntries(filter);
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, filter.SetMultipliers(-0.1, 1.0, 1.0));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, filter.SetMultipliers(1.0, -1e-300, 1.0, 1, 1, 1));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, filter.SetMultipliers(1.0, 1.0, -std::numeric_limits<double>::infinity()));
    EXPECT_EQ(before, AllEntries(filter));
}

TEST(Filter, GainsThatAreNoNumbers) {
    KyRGBFilter filter(8);
    EXPECT_EQ(KY_STATUS_SUCCESS, filter.SetMultipliers(std::nan(""), std::numeric_limits<double>::infinity(), -0.0));
    EXPECT_EQ(0, filter.GetRedValue8(0));
    EXPECT_EQ(0, filter.GetRedValue8(255));
    EXPECT_EQ(0, filter.GetGreenValue8(0)) << "0 x infinity is no number";
    EXPECT_EQ(255, filter.GetGreenValue8(1));
    EXPECT_EQ(0, filter.GetBlueValue8(255));
}

TEST(Filter, SetsSingleEntriesOfEachColour) {
    KyRGBFilter filter(10);
    EXPECT_EQ(KY_STATUS_SUCCESS, filter.SetRedValue(255, 1023));
    EXPECT_EQ(KY_STATUS_SUCCESS, filter.SetGreenValue(256, 7));
    EXPECT_EQ(KY_STATUS_SUCCESS, filter.SetBlueValue(3, 254));
    EXPECT_EQ(1023, filter.GetRedValue16(255));
    EXPECT_EQ(255, filter.GetRedValue8(255));
    EXPECT_EQ(7, filter.GetGreenValue16(256));
    EXPECT_EQ(0, filter.GetGreenValue8(0)) << "the 8-bit view ends at entry 255";
    EXPECT_EQ(254, filter.GetBlueValue8(3));
    EXPECT_EQ(3, filter.GetRedValue16(3));

    const std::vector<std::uint16_t> before = AllEntries(filter);
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, filter.SetRedValue(1024, 0));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, filter.SetGreenValue(0, 1024));
    EXPECT_EQ(KY_STATUS_BAD_ARGUMENT, filter.SetBlueValue(0xFFFFFFFF, 65535));
    EXPECT_EQ(before, AllEntries(filter));
}

TEST(Filter, CopiesShareTheirTables) {
    // Copies are never destroyed: the original's destructor frees the tables of all.
    alignas(KyRGBFilter) unsigned char place[sizeof(KyRGBFilter)];
    alignas(KyRGBFilter) unsigned char assignedPlace[sizeof(KyRGBFilter)];
    KyRGBFilter* const original = new KyRGBFilter(8);
    KyRGBFilter* const copy = new (place) KyRGBFilter(*original);
    KyRGBFilter* const assigned = new (assignedPlace) KyRGBFilter(*original);
    *assigned = *copy;
    assigned->SetRedValue(9, 99);
    copy->SetMultipliers(1.0, 0.5, 1.0);
    EXPECT_EQ(9, original->GetRedValue16(9)) << "the later change counts";
    EXPECT_EQ(50, original->GetGreenValue8(100));
    EXPECT_EQ(50, assigned->GetGreenValue8(100));
    delete original;
}

/// Sees every entry that SetMultipliers sets, and may hold values back.
class LimitedFilter : public KyRGBFilter {
public:
    using KyRGBFilter::KyRGBFilter;

    std::uint32_t SetRedValue(std::uint32_t index, std::uint16_t value) override {
        ++redCalls;
        return KyRGBFilter::SetRedValue(index, value > 100 ? std::uint16_t{100} : value);
    }

    int redCalls = 0;
};

TEST(Filter, DerivedSettersSeeEveryEntry) {
    LimitedFilter filter(8);
    filter.SetMultipliers(2.0, 2.0, 2.0);
    EXPECT_EQ(256, filter.redCalls);
    EXPECT_EQ(100, filter.GetRedValue8(90));
    EXPECT_EQ(180, filter.GetGreenValue8(90));
}

}  // namespace
