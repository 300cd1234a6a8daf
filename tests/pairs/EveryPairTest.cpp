// Every registered pair at every level of this CPU, against a reference that knows nothing but the IDs on its way.
#include <tests/pairs/PairReference.h>
#include <tests/support/CpuLevels.h>

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <set>
#include <utility>

namespace {

using Pair = std::pair<std::int64_t, std::int64_t>;

std::set<Pair> RegisteredPairs() {
    std::set<Pair> pairs;
    Pair pair;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumConverters(i, pair.first, pair.second); ++i) pairs.insert(pair);
    return pairs;
}

const char* KindOf(const Pair& pair) {
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(pair.first, pair.second);
    if (dynamic_cast<const KyComplexConverter*>(converter) != nullptr) return "chained";
    return dynamic_cast<const KyIdentityConverter*>(converter) != nullptr ? "identity" : "direct";
}

/// What differs in some areas of one pair; nothing when all is well.
std::string DifferenceOf(const Pair& pair, support::Random& random) try {
    const KyPixelConverter& converter = *KyPixelTypeFactory::FindConverter(pair.first, pair.second);
    const Path path = PathOf(converter);
    const PairReference reference(path);
    for (const bool filtered : {false, true})
        for (const bool interpolated : {false, true})
            for (const auto& [width, height] : {Pair{9, 11}, Pair{90, 11}, Pair{2500, 7}}) {
                if (width == 2500 && path.size() == 2) continue;  // only pipelines of several kernels have tiles
                const AreaCase test =
                    RandomPairCase(reference, filtered, interpolated, static_cast<std::uint32_t>(width),
                                   static_cast<std::uint32_t>(height), random);
                const reference::Extent needs = reference.Needs(test);
                const std::string difference =
                    Difference(test, needs.source, needs.destination, random, Converting(converter, test),
                               [&](const std::uint8_t* source, std::uint8_t* destination) {
                                   reference.Convert(test, source, destination);
                               });
                if (!difference.empty()) return Describe(path) + difference;
            }
    return "";
} catch (const std::exception& error) {
    return error.what();
}

class EveryPair : public testing::TestWithParam<std::uint32_t> {};

TEST_P(EveryPair, ConvertsAsItsTypesSay) {
    const support::ScopedCpuLevel level(GetParam());
    support::Random random(7);
    const std::set<Pair> registered = RegisteredPairs();
    std::set<Pair> walked;
    std::map<std::string, int> counts;
    for (const Pair& pair : registered) {
        const std::string difference = DifferenceOf(pair, random);
        EXPECT_EQ("", difference);
        if (!difference.empty()) continue;
        walked.insert(pair);
        ++counts[KindOf(pair)];
    }
    std::cout << "walked " << walked.size() << " of " << registered.size() << " pairs:";
    for (const auto& [kind, count] : counts) std::cout << " " << count << " " << kind;
    std::cout << std::endl;
    EXPECT_EQ(registered, walked);
    EXPECT_EQ(registered, RegisteredPairs()) << "the walk itself registers nothing";
    EXPECT_EQ(3u, counts.size()) << "there are direct pairs, chains and identities";
}

INSTANTIATE_TEST_SUITE_P(Levels, EveryPair, testing::ValuesIn(support::AvailableLevels()),
                         [](const auto& test) { return KyCpuLevel::GetName(test.param); });

}  // namespace
