// Every converter at every level of this CPU, against the reference.
#include <tests/converters/Kind.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Emulation.h>
#include <tests/support/Threads.h>

#include <gtest/gtest.h>

#include <tuple>

namespace {

class LineKernel : public testing::TestWithParam<std::tuple<std::uint32_t, Group>> {
protected:
    /// What differs in an area of this size; nothing when all is well.
    std::string Run(const Kind& kind, Form form, std::uint32_t width, std::uint32_t height) {
        return Difference(kind, form, RandomCase(kind, width, height, random), random);
    }

    const support::ScopedCpuLevel level{std::get<0>(GetParam())};
    const std::vector<Kind> kinds = std::get<1>(GetParam()).kinds();
    support::Random random{1};
};

TEST_P(LineKernel, EveryWidth) {
    for (const Kind& kind : kinds)
        for (const std::uint32_t width : InterestingWidths())
            for (int rounds = kind.bayer ? 12 : 1; rounds > 0; --rounds)
                ASSERT_EQ("", Run(kind, Form::kArea, width, 1 + random.Below(6)));
}

TEST_P(LineKernel, ManyLines) {
    for (const Kind& kind : kinds)
        for (const std::uint32_t width : {3u, 31u, 1500u, 3000u})
            ASSERT_EQ("", Run(kind, Form::kArea, width, support::ManyLines()));
}

TEST_P(LineKernel, LineAndPixelFormsInsideAndOutsideOfAreas) {
    for (const Kind& kind : kinds)
        for (const Form form : {Form::kLine, Form::kPixel}) {
            if (form == Form::kPixel && kind.readOne == nullptr) continue;
            for (std::uint32_t width = 1; width < 130; width += 1 + random.Below(16)) {
                AreaCase test = RandomCase(kind, width, 2 + random.Below(3), random);
                // Of odd lines, calls for nearest-neighbour demosaicing may read the last pixel too.
                if (kind.bayer && !reference::BayerConversion::Interpolates(test.flags)) test.width -= width % 2;
                ASSERT_EQ("", Difference(kind, form, test, random));
            }
            // Planes and further lines have no places there.
            if (kind.format == reference::Format::kPlanar || kind.rows > 1) continue;
            for (std::uint32_t width = 1; width < 130; width += 1 + random.Below(16))
                ASSERT_EQ("", DifferenceOutside(kind, form, width, random));
        }
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LineKernel, testing::Combine(testing::ValuesIn(support::AvailableLevels()), testing::ValuesIn(AllGroups())),
    [](const auto& test) {
        return std::string(KyCpuLevel::GetName(std::get<0>(test.param))) + "_" + std::get<1>(test.param).name;
    });

/// Destinations of which a cache holds only a part may be written past it.
class Frame : public testing::TestWithParam<Group> {};

TEST_P(Frame, LargerThanTheCaches) {
    constexpr std::uint32_t width = 4093, bilinear = KyPixelConverter::FLAG_BAYER_INTERPOLATE;
    support::Random random(3);
    std::vector<Kind> kinds = GetParam().kinds();
    kinds.resize(GetParam().framesOf);
    std::vector<std::uint8_t> memory, otherMemory;
    for (const Kind& kind : kinds) {
        const bool planar = kind.format == reference::Format::kPlanar;
        const std::uint32_t pixelBytes = reference::BytesOf(kind.format),
                            height = 28000000 / width / (planar ? 3 : pixelBytes) * 2;
        const std::vector<std::uint8_t> source = random.Bytes(std::size_t{kind.layout.LineBytes(width)} * height + 64);
        const FilterCase& filter = FiltersOf(kind.samples)[1 + random.Below(2)];
        // Lines that are all aligned to 64 bytes, all a pixel or two after that, each at another pixel after it, and without gaps.
        const std::uint32_t toNext = 64 - width * pixelBytes % 64;
        const struct {
            std::uint32_t padding, start, flags;
        } places[] = {{toNext, 0, bilinear},
                      {toNext, pixelBytes, bilinear},
                      {toNext, 2 * pixelBytes, 0},
                      {pixelBytes, 0, bilinear},
                      {0, 5, 0}};
        for (const auto& place : places) {
            const reference::Area area = {width, height, width,         height,
                                          width, height, place.padding, kind.bayer ? place.flags | 0x40u : 0};
            const std::size_t stride = width * pixelBytes + (planar ? 0 : place.padding);
            const auto convert = [&](std::uint32_t level, std::vector<std::uint8_t>& bytes) {
                const support::ScopedCpuLevel active(level);
                bytes.assign(stride * height * (planar ? 3 : 1) + 192, 0xA5);
                std::uint8_t* const aligned = bytes.data() + 64 - reinterpret_cast<std::uintptr_t>(bytes.data()) % 64;
                kind.converter->Convert(*filter.filter, source.data(), width, height, aligned + place.start, width,
                                        height, width, height, area.flags, place.padding);
                return aligned + place.start;
            };
            const std::uint8_t* const scalar = convert(0, memory);
            const reference::LineConversion lines = {kind.format, kind.layout, kind.read};
            for (int sample = 0; sample < 10000 && !planar; ++sample) {
                const std::uint32_t x = random.Below(width / kind.layout.groupPixels * kind.layout.groupPixels),
                                    y = random.Below(height);
                const auto pixelOf = [&](const auto& conversion) {
                    return conversion.PixelAt(area, filter.tables, source.data(), x, y);
                };
                std::uint8_t expected[6];
                reference::Store(kind.format, kind.bayer ? pixelOf(*kind.bayer) : pixelOf(lines), expected);
                ASSERT_TRUE(std::equal(expected, expected + pixelBytes, scalar + y * stride + x * pixelBytes))
                    << kind.name << ": " << x << ", " << y << ", flags " << area.flags;
            }
            for (const std::uint32_t level : support::AvailableLevels()) {
                if (level == 0) continue;
                const std::uint8_t* const other = convert(level, otherMemory);
                ASSERT_EQ(0, std::memcmp(other, scalar, stride * height * (planar ? 3 : 1) + 64))
                    << kind.name << " at " << KyCpuLevel::GetName(level) << ", start " << place.start << ", padding "
                    << place.padding << ", flags " << area.flags;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Frame, testing::ValuesIn(AllGroups()),
                         [](const auto& test) { return test.param.name; });

TEST(BayerThread, OneConverterServesManyThreads) {
    constexpr int threads = 8;
    for (const Group& group : BayerGroups())
        for (const Kind& kind : group.kinds()) {
            FiltersOf(kind.samples);  // are made by one thread
            std::vector<std::string> differences(threads);
            support::RunOnThreads(threads, [&](int thread) {
                support::Random random(static_cast<std::uint32_t>(thread));
                auto& difference = differences[static_cast<std::size_t>(thread)];
                for (int round = 0; round < 40 && difference.empty(); ++round) {
                    AreaCase test = RandomCase(kind, 1 + random.Below(300), 1 + random.Below(20), random);
                    difference = Difference(kind, Form::kArea, test, random);
                }
            });
            EXPECT_EQ(std::vector<std::string>(threads), differences);
        }
}

}  // namespace
