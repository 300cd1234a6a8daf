#ifndef KYIMGLIB_TESTS_CONVERTERS_FILTERCASE_H
#define KYIMGLIB_TESTS_CONVERTERS_FILTERCASE_H

#include <KyImgLib/KyImgLib.h>
#include <tests/reference/Pixels.h>
#include <tests/support/Random.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

/// A source of bytes or of words, and the way of its values to a byte.
struct Samples {
    std::uint32_t bytes;  ///< of a sample
    std::uint32_t bits;   ///< of the filter that a plain conversion uses
    std::uint32_t shift;
};

inline constexpr Samples kByteSamples = {1, 8, 0};

/// A filter, and what it has to do to samples. Without one, a conversion is plain.
struct FilterCase {
    std::string name;
    std::shared_ptr<KyRGBFilter> filter;
    reference::Tables tables;
};

inline FilterCase LinearFilter(const Samples& samples, const std::string& name, std::uint32_t bits,
                               std::array<double, 3> gains, std::array<std::uint16_t, 3> offsets) {
    auto filter = std::make_shared<KyRGBFilter>(bits);
    filter->SetMultipliers(gains[0], gains[1], gains[2], offsets[0], offsets[1], offsets[2]);
    const auto table = samples.bytes == 1 ? &reference::ByteTable : &reference::WordTable;
    return {name,
            filter,
            {table(bits, gains[0], offsets[0]), table(bits, gains[1], offsets[1]), table(bits, gains[2], offsets[2]),
             samples.shift}};
}

/// Tables without any rule; of 10 bits, so that many entries are more than a byte.
inline FilterCase RandomFilter(const Samples& samples, support::Random& random) {
    FilterCase made = LinearFilter(samples, "random", 10, {1, 1, 1}, {0, 0, 0});
    const auto entry = [&](unsigned& inTable) {
        const auto value = static_cast<std::uint16_t>(random.Below(random.Below(2) == 0 ? 256 : 1024));
        inTable = samples.bytes == 1 ? std::min<unsigned>(value, 255) : value;
        return value;
    };
    for (std::uint32_t i = 0; i < made.tables.red.size(); ++i) {
        made.filter->SetRedValue(i, entry(made.tables.red[i]));
        made.filter->SetGreenValue(i, entry(made.tables.green[i]));
        made.filter->SetBlueValue(i, entry(made.tables.blue[i]));
    }
    return made;
}

inline std::vector<FilterCase> AllFilters(const Samples& samples) {
    support::Random random(20);
    const std::uint32_t bits = samples.bits;
    const auto largest = static_cast<std::uint16_t>((1u << bits) - 1);
    const auto linear = [&](const std::string& name, std::uint32_t filterBits, std::array<double, 3> gains,
                            std::array<std::uint16_t, 3> offsets) {
        return LinearFilter(samples, name, filterBits, gains, offsets);
    };
    std::vector<FilterCase> filters = {linear("none", bits, {1, 1, 1}, {0, 0, 0}),
                                       linear("identity", bits, {1, 1, 1}, {0, 0, 0}),
                                       linear("white balance", bits, {1.9, 1.0, 1.6}, {0, 0, 0}),
                                       linear("offset", bits, {0.37, 1.25, 1}, {10, 3, 200}),
                                       linear("rounded", bits, {2.3, 0.35, 5.6}, {0, 0, 7}),
                                       linear("extreme", bits, {255.7, 0, 300}, {254, largest, 0}),
                                       linear("10 bits", 10, {2.2, 0.7, 1}, {0, 900, 0}),
                                       linear("16 bits", 16, {1.0001, 3.1415, 0.9999}, {0, 1, 65535}),
                                       linear("4 bits", 4, {1, 1.5, 2}, {0, 0, 3}),
                                       RandomFilter(samples, random)};
    // One channel that is no line among identities.
    filters.push_back(linear("one entry", bits, {1, 1, 1}, {0, 0, 0}));
    filters.back().filter->SetGreenValue(77, 200);
    filters.back().tables.green[77] = 200;
    filters.front().filter = nullptr;
    return filters;
}

#endif
