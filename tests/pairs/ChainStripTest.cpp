// Chains whose strips hold few lines of wide images, or many of narrow ones.
#include <tests/pairs/ChainCase.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <array>

namespace {

/// Pairs whose chains have something of everything.
const Path kEnds[] = {
    {0x00610002, KY_TYPE_RGB24},         // interlaced, packed
    {0x02610003, KY_TYPE_BGR32},         // interlaced, packed, of two outputs
    {0x00220011, KY_TYPE_RGB24},         // interlaced Bayer
    {0x00320014, KY_TYPE_RGB16},         // the same, normalized
    {0x00220011, KY_TYPE_RGB24_PLANAR},  // through two intermediate images
    {0x00420012, KY_TYPE_RGB24_PLANAR},  // packed Bayer
    {0x08420011, KY_TYPE_BGR24},         // packed Bayer of two outputs
    {0x01020010, KY_TYPE_RGB32},         // bytes of two outputs, Bayer
    {0x00020010, KY_TYPE_RGB24_PLANAR},  // Bayer first
    {0x10010001, KY_TYPE_RGB24_PLANAR},  // two lines at a time
    {0x00110007, KY_TYPE_GRAYSCALE8},    // four outputs
    {0x00410008, KY_TYPE_RGB16},         // packed as GigE Vision does it
    {0x00440006, KY_TYPE_RGB24_PLANAR},  // 4:1:1
    {0x00040001, KY_TYPE_RGB24_PLANAR},  // 4:2:2
    {0x00140002, KY_TYPE_RGB24_PLANAR},  // 4:2:2, words
    {0x00240001, KY_TYPE_RGB24_PLANAR},  // 4:2:2, interlaced
    {0x00640006, KY_TYPE_RGB24_PLANAR},  // 4:1:1, interlaced
    {0x00020001, KY_TYPE_RGB24_PLANAR},  // 5-6-5
};

class ChainStrips : public testing::TestWithParam<Path> {
protected:
    AreaCase RandomCase(bool interpolated, std::uint32_t lineBytes, std::uint32_t height) {
        return RandomChainCase(path, reference, interpolated, lineBytes, height, random);
    }
    std::string Run(const AreaCase& test, const Source& source) {
        const std::uint8_t* const from = source.Pick(reference.Needs(test).source, random);
        return Difference(test, Converted(chain, test, from), ConvertedByStages(stages, test, from));
    }

    const KyPixelConverter& chain = Registered(GetParam().front(), GetParam().back());
    const Path path = PathOf(chain);
    const PairReference reference{path};
    const Stages stages = StagesOf(path);
    support::Random random{5};
};

TEST_P(ChainStrips, OfWideLines) {
    EXPECT_NE(nullptr, dynamic_cast<const KyComplexConverter*>(&chain));
    const Source source(8 * kWideLine * 64);
    for (const bool interpolated : {false, true})
        for (std::uint32_t height = 1; height <= 40; ++height)
            ASSERT_EQ("", Run(RandomCase(interpolated, kWideLine, height), source)) << Describe(path);
}

TEST_P(ChainStrips, OfHighImages) {
    const Source source(16000000);
    for (const bool interpolated : {false, true})
        for (const std::uint32_t lineBytes : {500u, 3000u, 9000u, 3 * kWideLine})
            ASSERT_EQ("", Run(RandomCase(interpolated, lineBytes, std::min(1200u, 3000000 / lineBytes)), source))
                << Describe(path);
}

TEST_P(ChainStrips, OnManyThreads) {
    constexpr int kThreads = 3;
    struct Work {
        AreaCase test;
        const std::uint8_t* from;
        Picture expected;
        std::string difference;
    };
    const Source source(8 * kWideLine * 54);
    std::array<Work, kThreads> works;
    for (std::uint32_t i = 0; Work & work : works) {
        work.test = RandomCase(i % 2 == 0, 6000u << i, 30);
        work.from = source.Pick(reference.Needs(work.test).source, random);
        work.expected = ConvertedByStages(stages, work.test, work.from);
        ++i;
    }
    support::RunOnThreads(kThreads, [&](int thread) {
        Work& work = works[static_cast<std::size_t>(thread)];
        for (int round = 0; round < 20 && work.difference.empty(); ++round)
            work.difference = Difference(work.test, Converted(chain, work.test, work.from), work.expected);
    });
    for (const Work& work : works) EXPECT_EQ("", work.difference) << Describe(path);
}

INSTANTIATE_TEST_SUITE_P(Chains, ChainStrips, testing::ValuesIn(kEnds),
                         [](const auto& test) { return NameOf(test.param); });

}  // namespace
