#ifndef KYIMGLIB_TESTS_CONVERTERS_AREACASE_H
#define KYIMGLIB_TESTS_CONVERTERS_AREACASE_H

#include <KyImgLib/KyImgLib.h>
#include <tests/converters/FilterCase.h>
#include <tests/reference/Area.h>
#include <tests/support/Emulation.h>
#include <tests/support/GuardedBuffer.h>
#include <tests/support/Random.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

/// An area, the buffers around it, and where those lie in memory.
struct AreaCase : reference::Area {
    const FilterCase* filter = nullptr;
    support::GuardedBuffer::Side sourceSide = support::GuardedBuffer::Side::kEnd;
    support::GuardedBuffer::Side destinationSide = support::GuardedBuffer::Side::kEnd;
    std::uint32_t sourceGap = 0, destinationGap = 0;

    std::string Describe() const {
        std::ostringstream text;
        text << " filter " << filter->name << ", area " << width << " x " << height << " of " << sourceWidth << " x "
             << sourceLines << " to " << destinationWidth << " x " << destinationLines << " + " << padding
             << " bytes, flags " << std::hex << flags << std::dec << ", gaps " << sourceGap << " and " << destinationGap
             << ", sides " << static_cast<int>(sourceSide) << " and " << static_cast<int>(destinationSide);
        return text.str();
    }
};

/// Everything that a test leaves open.
inline AreaCase RandomArea(support::Random& random, const std::vector<FilterCase>& filters, std::uint32_t width,
                           std::uint32_t height) {
    using Side = support::GuardedBuffer::Side;
    constexpr std::array<Side, 2> sides = {Side::kStart, Side::kEnd};
    AreaCase test;
    test.filter = &random.Pick(filters);
    test.width = width;
    test.height = height;
    test.sourceLines = test.destinationLines = height + random.Below(3);
    test.sourceWidth = width + random.Below(2) * random.Below(40);
    test.destinationWidth = width + random.Below(2) * random.Below(40);
    test.padding = random.Below(2) * random.Below(70);
    test.sourceSide = random.Pick(sides);
    test.destinationSide = random.Pick(sides);
    test.sourceGap = random.Below(2) * random.Below(130);
    test.destinationGap = random.Below(2) * random.Below(130);
    return test;
}

/// Widths that end anywhere in vectors of any size, alone and after many whole ones.
inline std::vector<std::uint32_t> InterestingWidths() {
    std::vector<std::uint32_t> widths;
    const std::uint32_t stride = support::Stride();
    for (std::uint32_t width = 1; width <= 70; width += stride) widths.push_back(width);
    for (const std::uint32_t around : {95u, 129u, 192u, 257u, 321u, 640u, 1000u})
        for (std::uint32_t width = around - 2; width <= around + 2; width += stride) widths.push_back(width);
    return widths;
}

/// Works from a source to a destination: a conversion, or what it is expected to do.
using Conversion = std::function<std::uint32_t(const std::uint8_t* source, std::uint8_t* destination)>;

/// The area form with or without filter.
inline Conversion Converting(const KyPixelConverter& converter, const AreaCase& test) {
    return [&](const std::uint8_t* source, std::uint8_t* destination) {
        return test.filter->filter == nullptr
                   ? converter.Convert(source, test.sourceWidth, test.sourceLines, destination, test.destinationWidth,
                                       test.destinationLines, test.width, test.height, test.flags, test.padding)
                   : converter.Convert(*test.filter->filter, source, test.sourceWidth, test.sourceLines, destination,
                                       test.destinationWidth, test.destinationLines, test.width, test.height,
                                       test.flags, test.padding);
    };
}

/// Tells the first byte that differs, counted from the offset; nothing when all is well.
inline std::string Difference(const AreaCase& test, std::span<const std::uint8_t> written,
                              std::span<const std::uint8_t> expected, std::size_t offset = 0) {
    if (std::memcmp(written.data(), expected.data(), expected.size()) == 0) return "";
    const auto place = std::mismatch(written.begin(), written.end(), expected.begin());
    return test.Describe() + ": byte " +
           std::to_string(place.first - written.begin() - static_cast<std::ptrdiff_t>(offset)) + " is " +
           std::to_string(*place.first) + ", not " + std::to_string(*place.second);
}

/// Converts between guarded buffers that hold not one byte more than is needed, and compares with the expectation
/// everything there is: pixels, padding and surroundings. Returns what differs; nothing when all is well. The source is
/// random.
template <typename Expectation>
std::string Difference(const AreaCase& test, std::size_t sourceSize, std::size_t destinationSize,
                       support::Random& random, const Conversion& convert, Expectation expect) {
    support::GuardedBuffer source(sourceSize, test.sourceSide, test.sourceGap);
    auto surroundings = source.Accessible();
    random.Fill(surroundings);

    support::GuardedBuffer destination(destinationSize, test.destinationSide, test.destinationGap);
    auto written = destination.Accessible();
    random.Fill(written);
    std::vector<std::uint8_t> expected(written.begin(), written.end());
    expect(source.data(), expected.data() + destination.DataOffset());

    const std::uint32_t status = convert(source.data(), destination.data());
    if (status != KY_STATUS_SUCCESS) return test.Describe() + ": status " + std::to_string(status);
    return Difference(test, written, expected, destination.DataOffset());
}

#endif
