#include <tests/converters/bayer/BayerCase.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

namespace {

TEST(BayerThread, OneConverterServesManyThreads) {
    constexpr int threads = 8;
    for (const BayerKind& kind : AllBayerKinds()) {
        const std::vector<FilterCase> filters = AllFilters(kind.samples);
        const auto converter = MakeBayerConverter(kind.format, kind.samples, 1);
        std::vector<std::string> differences(threads);
        support::RunOnThreads(threads, [&](int thread) {
            support::Random random(static_cast<std::uint32_t>(thread));
            for (int round = 0; round < 40; ++round) {
                BayerCase test = {{}, kind};
                test.pattern = random.Pick(kPatterns);
                test.interpolate = random.Below(4) != 0;
                test.filter = &random.Pick(filters);
                test.width = 1 + random.Below(300);
                test.height = 1 + random.Below(20);
                test.sourceLines = test.destinationLines = test.height + random.Below(2);
                test.sourceWidth = test.destinationWidth = test.width + random.Below(5);
                auto& difference = differences[static_cast<std::size_t>(thread)];
                if (difference.empty()) difference = Difference(*converter, test, random);
            }
        });
        EXPECT_EQ(std::vector<std::string>(threads), differences);
    }
}

}  // namespace
