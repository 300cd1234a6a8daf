// Chains of chains, built from either end.
#include <tests/pairs/ChainCase.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A chain, and those that are stages of it.
class Nest {
public:
    enum class Inner { kFirst, kSecond };

    Nest(const Stages& stages, Inner inner) {
        const bool isFirst = inner == Inner::kFirst;
        const KyPixelConverter* made = isFirst ? stages.front() : stages.back();
        for (std::size_t i = 1; i < stages.size(); ++i)
            made = isFirst ? Add(made, stages[i]) : Add(stages[stages.size() - 1 - i], made);
    }
    const KyPixelConverter& Outermost() const { return *chains.back(); }

private:
    const KyPixelConverter* Add(const KyPixelConverter* first, const KyPixelConverter* second) {
        // So that the new chain, which does not live long, is not the one that is registered.
        EXPECT_TRUE(KyPixelTypeFactory::HasConverter(first->GetSourceType(), second->GetDestinationType()));
        chains.push_back(std::make_unique<KyComplexConverter>(first, second));
        return chains.back().get();
    }

    std::vector<std::unique_ptr<KyComplexConverter>> chains;
};

class ChainShape : public testing::TestWithParam<Path> {};

TEST_P(ChainShape, DoesNotShow) {
    const Path path = GetParam();
    const Stages stages = StagesOf(path);
    const PairReference reference(path);
    const Nest first(stages, Nest::Inner::kFirst), second(stages, Nest::Inner::kSecond);
    const Source source(8 * kWideLine * 64);
    support::Random random(6);
    for (const KyPixelConverter* const chain : {&first.Outermost(), &second.Outermost()})
        for (const bool interpolated : {false, true})
            for (const std::uint32_t height : {1u, 2u, 7u, 8u, 9u, 10u, 16u, 17u, 33u, 40u})
                for (const std::uint32_t lineBytes : {kWideLine / 8, kWideLine}) {
                    AreaCase test = RandomChainCase(path, reference, interpolated, lineBytes, height, random);
                    test.sourceLines += test.sourceLines % 2;  // a second stage may look for fields
                    ASSERT_EQ("", Difference(*chain, stages, test, source.Pick(reference.Needs(test).source, random)))
                        << Describe(path);
                }
}

INSTANTIATE_TEST_SUITE_P(Paths, ChainShape,
                         testing::Values(Path{0x00220011, 0x00020011, KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR},
                                         Path{0x00420012, 0x00020012, KY_TYPE_RGB24, KY_TYPE_RGB32, KY_TYPE_RGB16},
                                         Path{0x10010001, 0x00010001, KY_TYPE_RGB24, KY_TYPE_BGR24},
                                         // more stages than follow one another in strips
                                         Path{0x00310005, 0x00110005, 0x00010005, 0x00010002, KY_TYPE_RGB24,
                                              KY_TYPE_BGR24},
                                         // an intermediate image of two fields
                                         Path{0x00210001, 0x00210001, KY_TYPE_RGB24, KY_TYPE_RGB32}),
                         [](const auto& test) { return NameOf(test.param); });

}  // namespace
