// Every converter of lines at every level of this CPU, against the reference.
#include <tests/converters/Kind.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Emulation.h>

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
            ASSERT_EQ("", Difference(kind, Form::kArea, RandomCase(kind, width, support::ManyLines()), random));
}

TEST_P(LineKernel, LineAndPixelFormsInsideAndOutsideOfAreas) {
    for (const Kind& kind : kinds)
        for (const Form form : {Form::kLine, Form::kPixel}) {
            if (form == Form::kPixel && kind.readOne == nullptr) continue;
            for (std::uint32_t width = 1; width < 130; width += 1 + random.Below(16))
                ASSERT_EQ("", Difference(kind, form, RandomCase(kind, width, 2), random));
            // Planes and further lines have no places there.
            if (kind.format == reference::Format::kPlanar || kind.rows > 1) continue;
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
        // Words are read alike for every order and size of the destination.
        if (kind.layout.groupBytes % 2 != 0 || reference::IsBGR(kind.format) || reference::BytesOf(kind.format) == 4)
            continue;
        for (const std::size_t filter : {std::size_t{0}, FiltersOf(kind.samples).size() - 2}) {  // none and random
            AreaCase test;
            test.filter = &FiltersOf(kind.samples)[filter];
            test.width = test.sourceWidth = test.destinationWidth = 65536 * kind.layout.groupPixels;
            test.height = test.sourceLines = test.destinationLines = 1;
            ASSERT_EQ("", Difference(kind, Form::kArea, test, random, [&](std::span<std::uint8_t> source) {
                          FillWithAllWords(source, kind.layout.groupBytes / 2);
                      }));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LineKernel, testing::Combine(testing::ValuesIn(support::AvailableLevels()), testing::ValuesIn(AllGroups())),
    [](const auto& test) {
        return std::string(KyCpuLevel::GetName(std::get<0>(test.param))) + "_" + std::get<1>(test.param).name;
    });

/// Destinations of which a cache holds only a part may be written past it.
class LineFrame : public testing::TestWithParam<Group> {};

TEST_P(LineFrame, LargerThanTheCaches) {
    constexpr std::uint32_t width = 4093;
    support::Random random(3);
    std::vector<Kind> kinds = GetParam().kinds();
    kinds.resize(GetParam().framesOf);
    std::vector<std::uint8_t> memory, otherMemory;
    for (const Kind& kind : kinds) {
        const bool planar = kind.format == reference::Format::kPlanar;
        const std::uint32_t pixelBytes = reference::BytesOf(kind.format),
                            height = 56000000 / width / (planar ? 3 : pixelBytes);
        const std::size_t sourceLine = kind.layout.LineBytes(width);
        const std::vector<std::uint8_t> source = random.Bytes(sourceLine * height + 64);
        const FilterCase& filter = FiltersOf(kind.samples)[1 + random.Below(2)];
        // Lines that are all aligned to 64 bytes, all a pixel after that, each at another pixel after it, and without gaps.
        const std::uint32_t toNext = 64 - width * pixelBytes % 64;
        const struct {
            std::uint32_t padding, start;
        } places[] = {{toNext, 0}, {toNext, pixelBytes}, {pixelBytes, 0}, {0, 5}};
        for (const auto& place : places) {
            const std::size_t stride = width * pixelBytes + (planar ? 0 : place.padding);
            const auto convert = [&](std::uint32_t level, std::vector<std::uint8_t>& bytes) {
                const support::ScopedCpuLevel active(level);
                bytes.assign(stride * height * (planar ? 3 : 1) + 192, 0xA5);
                std::uint8_t* const aligned = bytes.data() + 64 - reinterpret_cast<std::uintptr_t>(bytes.data()) % 64;
                kind.converter->Convert(*filter.filter, source.data(), width, height, aligned + place.start, width,
                                        height, width, height, 0, place.padding);
                return aligned + place.start;
            };
            const std::uint8_t* const scalar = convert(0, memory);
            for (int sample = 0; sample < 10000 && !planar; ++sample) {
                const std::uint32_t x = random.Below(width / kind.layout.groupPixels * kind.layout.groupPixels),
                                    y = random.Below(height);
                std::uint8_t expected[6];
                const reference::Line line = {source.data() + y * sourceLine, width, filter.tables};
                reference::Store(kind.format, kind.read(line, x), expected);
                ASSERT_TRUE(std::equal(expected, expected + pixelBytes, scalar + y * stride + x * pixelBytes))
                    << kind.name << ": " << x << ", " << y;
            }
            for (const std::uint32_t level : support::AvailableLevels()) {
                if (level == 0) continue;
                const std::uint8_t* const other = convert(level, otherMemory);
                ASSERT_EQ(0, std::memcmp(other, scalar, stride * height * (planar ? 3 : 1) + 64))
                    << kind.name << " at " << KyCpuLevel::GetName(level) << ", start " << place.start << ", padding "
                    << place.padding;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, LineFrame, testing::ValuesIn(AllGroups()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
