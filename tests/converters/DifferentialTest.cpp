// Every converter of lines at every level of this CPU, against the reference.
#include <tests/converters/Kind.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <tuple>

namespace {

class LineKernel : public testing::TestWithParam<std::tuple<std::uint32_t, Group>> {
protected:
    AreaCase RandomCase(const Kind& kind, std::uint32_t width, std::uint32_t height) {
        AreaCase test = RandomArea(random, FiltersOf(kind.samples), width, height);
        test.flags = random.Below(2);
        return test;
    }

    const support::ScopedCpuLevel level{std::get<0>(GetParam())};
    const std::vector<Kind> kinds = std::get<1>(GetParam()).kinds();
    support::Random random{1};
};

TEST_P(LineKernel, EveryWidth) {
    for (const Kind& kind : kinds)
        for (const std::uint32_t width : InterestingWidths())
            ASSERT_EQ("", Difference(kind, Form::kArea, RandomCase(kind, width, 1 + random.Below(5)), random));
}

TEST_P(LineKernel, ManyLines) {
    for (const Kind& kind : kinds)
        for (const std::uint32_t width : {3u, 31u, 1500u})
            ASSERT_EQ("", Difference(kind, Form::kArea, RandomCase(kind, width, 41), random));
}

TEST_P(LineKernel, LineAndPixelFormsInsideAndOutsideOfAreas) {
    for (const Kind& kind : kinds)
        for (const Form form : {Form::kLine, Form::kPixel}) {
            if (form == Form::kPixel && kind.readOne == nullptr) continue;
            for (std::uint32_t width = 1; width < 130; width += 1 + random.Below(16))
                ASSERT_EQ("", Difference(kind, form, RandomCase(kind, width, 2), random));
            if (kind.format == reference::Format::kPlanar) continue;  // planes have no places there
            for (std::uint32_t width = 1; width < 130; width += 1 + random.Below(16))
                ASSERT_EQ("", DifferenceOutside(kind, form, width, random));
        }
}

/// Each 16-bit word of each group takes every value once, in an order of its own.
void FillWithAllWords(std::span<std::uint8_t> bytes, std::size_t wordsOfGroup) {
    for (std::size_t i = 0; i < bytes.size() / 2; ++i)
        reference::StoreWord(static_cast<unsigned>(i / wordsOfGroup + i % wordsOfGroup * 0x5555), &bytes[2 * i]);
}

TEST_P(LineKernel, EveryWord) {
    for (const Kind& kind : kinds) {
        if (kind.layout.groupBytes % 2 != 0) continue;
        for (const std::size_t filter : {std::size_t{0}, FiltersOf(kind.samples).size() - 2}) {  // none and random
            AreaCase test;
            test.filter = &FiltersOf(kind.samples)[filter];
            test.width = test.sourceWidth = test.destinationWidth = 65536 * kind.layout.groupPixels;
            test.height = test.lines = 1;
            ASSERT_EQ("", Difference(kind, Form::kArea, test, random, [&](std::span<std::uint8_t> source) {
                          FillWithAllWords(source, kind.layout.groupBytes / 2);
                      }));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, LineKernel,
                         testing::Combine(testing::ValuesIn(support::AvailableLevels()),
                                          testing::ValuesIn(AllGroups())),
                         [](const auto& test) {
                             return std::string(KyCpuLevel::GetName(std::get<0>(test.param))) + "_" +
                                    std::get<1>(test.param).name;
                         });

/// Destinations of which a cache holds only a part may be written past it.
class LineFrame : public testing::TestWithParam<Group> {};

TEST_P(LineFrame, LargerThanTheCaches) {
    support::Random random(3);
    const std::vector<Kind> kinds = GetParam().kinds();
    std::vector<reference::Format> seen;
    std::vector<std::uint8_t> source, frames[2];
    for (const Kind& kind : kinds) {
        // All writers after one reader, and every reader once.
        if (std::find(seen.begin(), seen.end(), kind.format) != seen.end()) continue;
        if (!seen.empty() && std::string(GetParam().name) != GroupsOfEveryWriter(kind.format)) continue;
        seen.push_back(kind.format);
    }
}

}  // namespace
