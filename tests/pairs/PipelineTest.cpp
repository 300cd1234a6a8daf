// A pipeline converts rows and tiles through all stages of a chain, which nobody must see: it has to equal the same stages,
// each called for whole images.
#include <tests/pairs/PairReference.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <stdexcept>

namespace {

/// Intermediate rows of this many bytes are wider than a tile.
constexpr std::uint32_t kWideRow = 24 * 1024;

/// Throws when there is none.
const KyPixelConverter& Registered(std::int64_t source, std::int64_t destination) {
    if (const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(source, destination))
        return *converter;
    throw std::out_of_range("no converter for " + Describe({source, destination}));
}

using Stages = std::vector<const KyPixelConverter*>;

/// Of a test: the first and the last type.
std::string NameOf(const Path& path) {
    return Describe({path.front()}).substr(2) + "_" + Describe({path.back()}).substr(2);
}

using Picture = std::vector<std::uint8_t>;

/// Of a source, beyond what conversions need: each takes its bytes from a place of its own, so that nothing is right for
/// having been left by an earlier one.
constexpr std::uint32_t kRoom = 4096;

constexpr std::size_t kSlack = 256;  // for pixels that groups have beyond the end

void Convert(const KyPixelConverter& converter, const AreaCase& test, const std::uint8_t* source,
             Picture& destination) {
    const std::uint32_t status = Converting(converter, test)(source, destination.data());
    if (status != KY_STATUS_SUCCESS) throw std::runtime_error(test.Describe() + ": status " + std::to_string(status));
}

Picture NewPicture(const KyPixelConverter& last, const AreaCase& test) {
    const std::size_t stride = last.GetDestinationByteSize(std::max(test.destinationWidth, test.sourceWidth));
    return Picture(test.destinationLines * (stride + test.padding) + kSlack, 0x5A);
}

Picture Converted(const KyPixelConverter& chain, const AreaCase& test, const std::uint8_t* source) {
    Picture picture = NewPicture(chain, test);
    Convert(chain, test, source, picture);
    return picture;
}

/// The stages of a chain, and how it is tested.
class Chain {
public:
    explicit Chain(const Path& types) : path(types) {
        for (std::size_t i = 0; i + 1 < path.size(); ++i) stages.push_back(&Registered(path[i], path[i + 1]));
    }

    /// An area of a wide image; intermediate rows take at least about `rowBytes`.
    AreaCase RandomCase(bool interpolated, std::uint32_t rowBytes, std::uint32_t height) {
        const std::uint32_t pixels = rowBytes / stages.front()->GetDestinationByteSize();
        AreaCase test = RandomPairCase(reference, random.Below(2) == 0, interpolated, 1, height, random);
        test.sourceWidth = pixels + random.Below(pixels / 8);
        test.width = random.Below(2) == 0 ? test.sourceWidth : 1 + random.Below(test.sourceWidth);
        test.destinationWidth = test.width + random.Below(2) * random.Below(40);
        test.height = height;
        test.sourceLines = height + random.Below(2) * random.Below(20);
        test.destinationLines = height + random.Below(2) * random.Below(20);
        reference.FitSource(test);
        return test;
    }

    const std::uint8_t* Pick(const AreaCase& test, const Picture& source) {
        if (reference.Needs(test).source + kRoom > source.size()) throw std::length_error("the source is too small");
        return source.data() + random.Below(kRoom);
    }

    Picture ByStages(const AreaCase& test, const std::uint8_t* source) const {
        AreaCase whole{test.Whole()};
        whole.filter = test.filter;
        Picture image, next;
        for (const KyPixelConverter* const stage : stages) {
            if (stage == stages.back()) break;
            next.assign(std::size_t{stage->GetDestinationByteSize(test.sourceWidth)} * test.sourceLines + kSlack, 0xA5);
            Convert(*stage, whole, image.empty() ? source : image.data(), next);
            image.swap(next);
        }
        Picture picture = NewPicture(*stages.back(), test);
        Convert(*stages.back(), test, image.data(), picture);
        return picture;
    }

    /// What differs when a converter does the same; nothing when all is well.
    std::string Run(const KyPixelConverter& converter, const AreaCase& test, const Picture& source) {
        const std::uint8_t* const from = Pick(test, source);
        const std::string difference = Difference(test, Converted(converter, test, from), ByStages(test, from));
        return difference.empty() ? "" : Describe(path) + difference;
    }

    const Path path;
    Stages stages;

private:
    const PairReference reference{path};
    support::Random random{5};
};

/// Pairs whose chains have something of everything.
const Path kEnds[] = {
    {0x00610002, KY_TYPE_RGB24},         // interlaced, packed
    {0x02610003, KY_TYPE_BGR32},         // interlaced, packed, of two taps
    {0x00220011, KY_TYPE_RGB24},         // interlaced Bayer
    {0x00320014, KY_TYPE_RGB16},         // the same, normalized
    {0x00220011, KY_TYPE_RGB24_PLANAR},  // through two intermediate images
    {0x00420012, KY_TYPE_RGB24_PLANAR},  // packed Bayer
    {0x08420011, KY_TYPE_BGR24},         // packed Bayer of two taps
    {0x01020010, KY_TYPE_RGB32},         // bytes of two taps, Bayer
    {0x00020010, KY_TYPE_RGB24_PLANAR},  // Bayer first
    {0x10010001, KY_TYPE_RGB24_PLANAR},  // two lines at a time
    {0x00110007, KY_TYPE_GRAYSCALE8},    // four taps
    {0x00410008, KY_TYPE_RGB16},         // packed as GigE Vision does it
    {0x00440006, KY_TYPE_RGB24_PLANAR},  // 4:1:1
    {0x00040001, KY_TYPE_RGB24_PLANAR},  // 4:2:2
    {0x00140002, KY_TYPE_RGB24_PLANAR},  // 4:2:2, words
    {0x00240001, KY_TYPE_RGB24_PLANAR},  // 4:2:2, interlaced
    {0x00640006, KY_TYPE_RGB24_PLANAR},  // 4:1:1, interlaced
    {0x00020001, KY_TYPE_RGB24_PLANAR},  // 5-6-5
};

class PipelineRows : public testing::TestWithParam<Path> {
protected:
    const KyPixelConverter& registered = Registered(GetParam().front(), GetParam().back());
    Chain chain{PathOf(registered)};
};

TEST_P(PipelineRows, AreMadeInTilesAndBatches) {
    EXPECT_NE(nullptr, dynamic_cast<const KyComplexConverter*>(&registered));
    const Picture source = support::Random(12).Bytes(16000000 + kRoom);
    for (const bool interpolated : {false, true}) {
        for (std::uint32_t height = 1; height <= 40; ++height)
            ASSERT_EQ("", chain.Run(registered, chain.RandomCase(interpolated, kWideRow, height), source));
        for (const std::uint32_t rowBytes : {500u, 3000u, 9000u, 3 * kWideRow}) {
            const AreaCase test = chain.RandomCase(interpolated, rowBytes, std::min(1200u, 3000000 / rowBytes));
            ASSERT_EQ("", chain.Run(registered, test, source));
        }
    }
}

/// The last stage uses streaming stores, and stages prefetch the source.
TEST(PipelineFrame, IsLargerThanTheCaches) {
    const Path ends[] = {{0x00420012, KY_TYPE_RGB24_PLANAR}, {0x01020010, KY_TYPE_RGB32},
                         {0x00040001, KY_TYPE_RGB24_PLANAR}, {0x00640006, KY_TYPE_RGB24_PLANAR},
                         {0x02610003, KY_TYPE_BGR32},        {0x00610002, KY_TYPE_RGB24},
                         {0x00220011, KY_TYPE_RGB24}};
    const Picture source = support::Random(12).Bytes(4600 * 3600 * 2 + kRoom);
    for (const Path& path : ends) {
        const KyPixelConverter& registered = Registered(path.front(), path.back());
        Chain chain{PathOf(registered)};
        for (const bool rowsAreAligned : {false, true}) {  // and Bayer can stream them
            AreaCase test = chain.RandomCase(true, 4000 * chain.stages.front()->GetDestinationByteSize(), 3500);
            if (rowsAreAligned) test.sourceWidth -= test.sourceWidth % 64;
            test.width = test.destinationWidth = test.sourceWidth;
            test.height = test.sourceLines = test.destinationLines = 55 * 64;  // so planes are aligned
            test.padding = 0;
            EXPECT_EQ("", chain.Run(registered, test, source));
        }
    }
}

/// Conversions that have begun at one level go on at another.
TEST(PipelineFrame, IsTheSameWhileTheLevelChanges) {
    const support::ScopedCpuLevel before(KyCpuLevel::GetActive());
    const Path ends[] = {{0x00420012, KY_TYPE_RGB24}, {0x00410008, KY_TYPE_RGB16}, {0x00020003, KY_TYPE_RGB24_PLANAR}};
    const Picture source = support::Random(12).Bytes(8 * kWideRow * 10 + kRoom);
    for (const Path& path : ends) {
        const KyPixelConverter& registered = Registered(path.front(), path.back());
        Chain chain{PathOf(registered)};
        const AreaCase test = chain.RandomCase(true, 6000, 10);
        const std::uint8_t* const from = chain.Pick(test, source);
        const Picture expected = chain.ByStages(test, from);
        std::string difference;
        std::atomic<bool> isDone = false;
        support::RunOnThreads(2, [&](int thread) {
            while (thread == 0 && !isDone)
                for (const std::uint32_t level : support::AvailableLevels()) KyCpuLevel::SetActive(level);
            if (thread == 0) return;
            for (int round = 0; round < 1000 && difference.empty(); ++round)
                difference = Difference(test, Converted(registered, test, from), expected);
            isDone = true;
        });
        EXPECT_EQ("", difference) << Describe(chain.path);
    }
}

TEST_P(PipelineRows, AreMadeOnManyThreads) {
    const Picture source = support::Random(12).Bytes(8 * kWideRow * 54 + kRoom);
    struct {
        AreaCase test;
        const std::uint8_t* from;
        Picture expected;
        std::string difference;
    } works[3];
    for (std::uint32_t i = 0; auto& [test, from, expected, difference] : works) {
        test = chain.RandomCase(i % 2 == 0, 6000u << i, 30);
        from = chain.Pick(test, source);
        expected = chain.ByStages(test, from);
        ++i;
    }
    support::RunOnThreads(3, [&](int thread) {
        auto& [test, from, expected, difference] = works[thread];
        for (int round = 0; round < 20 && difference.empty(); ++round)
            difference = Difference(test, Converted(registered, test, from), expected);
    });
    for (const auto& work : works) EXPECT_EQ("", work.difference) << Describe(chain.path);
}

INSTANTIATE_TEST_SUITE_P(Chains, PipelineRows, testing::ValuesIn(kEnds),
                         [](const auto& test) { return NameOf(test.param); });

/// Chains of chains, built from the first two stages on or from the last two.
class Nest {
public:
    Nest(const Stages& stages, bool fromTheFirst) {
        const KyPixelConverter* made = fromTheFirst ? stages.front() : stages.back();
        for (std::size_t i = 1; i < stages.size(); ++i)
            made = fromTheFirst ? Add(made, stages[i]) : Add(stages[stages.size() - 1 - i], made);
    }
    const KyPixelConverter& Outermost() const { return *chains.back(); }

private:
    const KyPixelConverter* Add(const KyPixelConverter* first, const KyPixelConverter* second) {
        // The pair has one, so that the new chain, which does not live long, is not the one that is registered.
        Registered(first->GetSourceType(), second->GetDestinationType());
        return chains.emplace_back(std::make_unique<KyComplexConverter>(first, second)).get();
    }

    std::vector<std::unique_ptr<KyComplexConverter>> chains;
};

class PipelineNesting : public testing::TestWithParam<Path> {};

TEST_P(PipelineNesting, DoesNotShow) {
    Chain chain(GetParam());
    const Picture source = support::Random(12).Bytes(8 * kWideRow * 64 + kRoom);
    for (const bool fromTheFirst : {false, true}) {
        const Nest nest(chain.stages, fromTheFirst);
        for (const bool interpolated : {false, true})
            for (const std::uint32_t height : {1u, 2u, 7u, 8u, 9u, 10u, 16u, 17u, 33u, 40u})
                for (const std::uint32_t rowBytes : {kWideRow / 8, kWideRow}) {
                    AreaCase test = chain.RandomCase(interpolated, rowBytes, height);
                    test.sourceLines += test.sourceLines % 2;  // a second stage may look for fields
                    ASSERT_EQ("", chain.Run(nest.Outermost(), test, source));
                }
    }
}

INSTANTIATE_TEST_SUITE_P(Paths, PipelineNesting,
                         testing::Values(Path{0x00220011, 0x00020011, KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR},
                                         Path{0x00420012, 0x00020012, KY_TYPE_RGB24, KY_TYPE_RGB32, KY_TYPE_RGB16},
                                         Path{0x10010001, 0x00010001, KY_TYPE_RGB24, KY_TYPE_BGR24},
                                         // more stages than a pipeline has kernels
                                         Path{0x00310005, 0x00110005, 0x00010005, 0x00010002, KY_TYPE_RGB24,
                                              KY_TYPE_BGR24},
                                         // an intermediate image of two fields
                                         Path{0x00210001, 0x00210001, KY_TYPE_RGB24, KY_TYPE_RGB32}),
                         [](const auto& test) { return NameOf(test.param); });

}  // namespace
