// Every kernel of the Bayer families at every level of this CPU, against the reference.
#include <tests/converters/bayer/BayerCase.h>
#include <tests/support/CpuLevels.h>
#include <tests/support/Emulation.h>

#include <gtest/gtest.h>

#include <tuple>

namespace {

class BayerKernel : public testing::TestWithParam<std::tuple<std::uint32_t, BayerKind>> {
protected:
    BayerKernel() : level(std::get<0>(GetParam())), kind(std::get<1>(GetParam())) {
        for (std::uint32_t step = 1; step <= 3; ++step)
            converters.push_back(MakeBayerConverter(kind.format, kind.samples, step));
    }

    /// An area and everything around it that a test leaves open.
    BayerCase RandomCase(bool interpolate, std::uint32_t width, std::uint32_t height) {
        BayerCase test = {RandomArea(random, filters, width, height), kind};
        if (kind.samples.bytes == 1 && random.Below(2) == 0) test.step = 1 + random.Below(3);
        test.pattern = random.Pick(kPatterns);
        test.interpolate = interpolate;
        return test;
    }

    std::string Run(const BayerCase& test) { return Difference(*converters[test.step - 1], test, random); }

    const support::ScopedCpuLevel level;
    const BayerKind kind;
    support::Random random{1};
    const std::vector<FilterCase> filters = AllFilters(kind.samples);
    std::vector<std::unique_ptr<KyPixelConverter>> converters;
};

TEST_P(BayerKernel, EveryWidthAndHeight) {
    for (const std::uint32_t width : InterestingWidths())
        for (std::uint32_t height = 1; height <= 6; ++height)
            for (const bool interpolate : {false, true})
                for (int round = 0; round < 2; ++round) ASSERT_EQ("", Run(RandomCase(interpolate, width, height)));
}

TEST_P(BayerKernel, ManyLines) {
    for (const bool interpolate : {false, true})
        for (const std::uint32_t step : {1u, 2u}) {
            BayerCase test = RandomCase(interpolate, 3000, support::ManyLines());
            test.step = std::max(step, kind.samples.bytes);
            ASSERT_EQ("", Run(test));
        }
}

INSTANTIATE_TEST_SUITE_P(Levels, BayerKernel,
                         testing::Combine(testing::ValuesIn(support::AvailableLevels()),
                                          testing::ValuesIn(AllBayerKinds())),
                         [](const auto& test) {
                             return std::string(KyCpuLevel::GetName(std::get<0>(test.param))) + "_" +
                                    std::get<1>(test.param).Name();
                         });

/// Destinations of which a cache holds only a part may be written past it, where their lines are aligned alike.
class BayerFrame : public testing::TestWithParam<BayerKind> {};

TEST_P(BayerFrame, LargerThanTheCaches) {
    const BayerKind kind = GetParam();
    const std::uint32_t pixelSize = reference::BytesOf(kind.format), width = 4093,
                        height = 56000000 / (pixelSize + 1) / width;
    const std::vector<FilterCase> filters = AllFilters(kind.samples);
    support::Random random(3);
    const std::vector<std::uint8_t> mosaic = random.Bytes(std::size_t{width} * height * 2);

    // Lines that start at a multiple of 64 bytes, reach one after an even number of pixels, and after an odd one.
    const struct {
        bool interpolate;
        std::uint32_t step, start;
    } cases[] = {{true, 1, 0}, {true, 2, 8}, {false, 1, 8}, {true, 1, pixelSize}};
    for (const auto& frame : cases) {
        const std::uint32_t step = std::max(frame.step, kind.samples.bytes);
        const auto converter = MakeBayerConverter(kind.format, kind.samples, step);
        const FilterCase& filter = filters[frame.step == 1 ? 2 : 1];
        const std::uint32_t padding = 64 - width * pixelSize % 64;
        const std::uint32_t flags = KyPixelConverter::FLAG_BAYER_RGGB |
                                    (frame.interpolate ? std::uint32_t{KyPixelConverter::FLAG_BAYER_INTERPOLATE} : 0);
        const std::size_t stride = width * pixelSize + padding, size = stride * height;
        const auto convert = [&](std::uint32_t level, std::vector<std::uint8_t>& memory) {
            const support::ScopedCpuLevel active(level);
            memory.assign(size + 128, 0xA5);
            std::uint8_t* const aligned = memory.data() + 64 - reinterpret_cast<std::uintptr_t>(memory.data()) % 64;
            converter->Convert(*filter.filter, mosaic.data(), width, height, aligned + frame.start, width, height,
                               width, height, flags, padding);
            return aligned + frame.start;
        };
        std::vector<std::uint8_t> memory, otherMemory;
        const std::uint8_t* const scalar = convert(0, memory);
        const reference::BayerImage image = {mosaic.data(), width, step, kind.samples.bytes, "RGGB", width, height};
        for (int sample = 0; sample < 10000; ++sample) {
            const std::uint32_t x = random.Below(width - 1), y = random.Below(height - height % 2);
            const reference::Rgb pixel = reference::BayerPixel(image, frame.interpolate, x, y);
            std::uint8_t expected[6];
            reference::Store(kind.format, filter.tables.Apply(pixel), expected);
            ASSERT_TRUE(std::equal(expected, expected + pixelSize, scalar + y * stride + x * pixelSize))
                << x << ", " << y;
        }
        for (const std::uint32_t level : support::AvailableLevels())
            ASSERT_EQ(0, std::memcmp(convert(level, otherMemory), scalar, size))
                << KyCpuLevel::GetName(level) << ", step " << frame.step << ", start " << frame.start;
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, BayerFrame, testing::ValuesIn(AllBayerKinds()),
                         [](const auto& test) { return test.param.Name(); });

}  // namespace
