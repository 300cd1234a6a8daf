#ifndef KYIMGLIB_TESTS_CONVERTERS_BAYER_BAYERCASE_H
#define KYIMGLIB_TESTS_CONVERTERS_BAYER_BAYERCASE_H

#include <KyImgLib/KyImgLib.h>
#include <tests/reference/Bayer.h>
#include <tests/support/GuardedBuffer.h>
#include <tests/support/Random.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

struct Order {
    const char* name;
    std::uint32_t flag;
};

inline constexpr std::array<Order, 4> kOrders = {{{"GRBG", KyPixelConverter::FLAG_BAYER_GRBG},
                                                  {"GBRG", KyPixelConverter::FLAG_BAYER_GBRG},
                                                  {"RGGB", KyPixelConverter::FLAG_BAYER_RGGB},
                                                  {"BGGR", KyPixelConverter::FLAG_BAYER_BGGR}}};

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

/// A converter of the family for samples at the end of `step` bytes. It registers itself only where its pair is free,
/// as it is for RGB48.
inline std::unique_ptr<KyPixelConverter> MakeBayerConverter(reference::Format format, const Samples& samples,
                                                            std::uint32_t step) {
    const bool swap = format == reference::Format::kBGR24 || format == reference::Format::kBGR32;
    const std::uint32_t pixelBytes = reference::BytesOf(format);
    if (samples.bytes == 2) {
        // Unregistered, so that a plain conversion takes the 16-bit filter and every bit of a word counts.
        const std::int64_t source = samples.bits == 16 ? 0x0002FFF0 : 0x00020012;
        if (pixelBytes == 2) return std::make_unique<KyBayerRGB16ToRGB16>(source, samples.shift, 0);
        if (pixelBytes == 3) return std::make_unique<KyBayerRGB16ToRGB24>(source, swap, samples.shift, 0);
        if (pixelBytes == 4) return std::make_unique<KyBayerRGB16ToRGB32>(source, swap, samples.shift, 0);
        return std::make_unique<KyBayerRGB16ToRGB48>(source, false, 0);
    }
    const std::int64_t source = 0x00020010;
    if (pixelBytes == 2) return std::make_unique<KyBayerRGB8ToRGB16>(source, step - 1, 0);
    if (pixelBytes == 3) return std::make_unique<KyBayerRGB8ToRGB24>(source, swap, step - 1, 0);
    return std::make_unique<KyBayerRGB8ToRGB32>(source, swap, step - 1, 0);
}

/// What a group of tests is run for: a source and a destination that kernels of their own serve.
struct BayerKind {
    reference::Format format;
    Samples samples;

    std::string Name() const {
        return (samples.bytes == 1 ? "Bytes" : "Words" + std::to_string(samples.bits)) + std::string("To") +
               reference::NameOf(format);
    }
};

inline std::vector<BayerKind> AllBayerKinds() {
    using enum reference::Format;
    std::vector<BayerKind> kinds;
    for (const reference::Format format : {kRGB16, kRGB24, kBGR24, kRGB32, kBGR32})
        for (const Samples& samples : {kByteSamples, Samples{2, 12, 4}}) kinds.push_back({format, samples});
    kinds.push_back({kRGB24, {2, 16, 8}});
    kinds.push_back({kRGB48, {2, 12, 0}});
    kinds.push_back({kRGB48, {2, 16, 0}});
    return kinds;
}

struct BayerCase {
    BayerKind kind;
    std::uint32_t step = kind.samples.bytes;
    Order order = kOrders[0];
    bool interpolate = true;
    const FilterCase* filter = nullptr;
    std::uint32_t width = 0, height = 0;                             ///< of the area
    std::uint32_t sourceWidth = 0, destinationWidth = 0, lines = 0;  ///< of the buffers
    std::uint32_t padding = 0;
    support::GuardedBuffer::Side sourceSide = support::GuardedBuffer::Side::kEnd;
    support::GuardedBuffer::Side destinationSide = support::GuardedBuffer::Side::kEnd;
    std::uint32_t sourceGap = 0, destinationGap = 0;

    std::string Describe() const {
        std::ostringstream text;
        text << kind.Name() << " step " << step << ' ' << order.name << (interpolate ? " interpolated" : " replicated")
             << ", filter " << filter->name << ", area " << width << " x " << height << " of " << sourceWidth << " x "
             << lines << " to lines of " << destinationWidth << " + " << padding << " bytes, gaps " << sourceGap
             << " and " << destinationGap << ", sides " << static_cast<int>(sourceSide) << " and "
             << static_cast<int>(destinationSide);
        return text.str();
    }
};

/// Converts between guarded buffers that hold not one byte more than the area needs, and compares with the reference
/// everything there is: pixels, padding and surroundings. Returns what differs; nothing when all is well.
inline std::string Difference(const KyPixelConverter& converter, const BayerCase& test, support::Random& random) {
    const std::uint32_t linesRead =
        test.interpolate ? std::min(test.height + 1, test.lines) : test.height - test.height % 2;
    const std::size_t sourceSize =
        linesRead == 0 ? 0 : (std::size_t{linesRead - 1} * test.sourceWidth + test.width) * test.step;
    support::GuardedBuffer source(sourceSize, test.sourceSide, test.sourceGap);
    auto samples = source.Accessible();
    random.Fill(samples);

    const std::uint32_t pixelSize = reference::BytesOf(test.kind.format);
    const std::size_t lineSize = std::size_t{test.destinationWidth} * pixelSize + test.padding;
    support::GuardedBuffer destination((test.height - 1) * lineSize + test.width * pixelSize, test.destinationSide,
                                       test.destinationGap);
    auto written = destination.Accessible();
    random.Fill(written);
    std::vector<std::uint8_t> expected(written.begin(), written.end());

    reference::ConvertBayer(
        {source.data(), test.sourceWidth, test.step, test.kind.samples.bytes, test.order.name, test.width, test.lines},
        test.interpolate, test.filter->tables, test.kind.format, expected.data() + destination.DataOffset(), lineSize,
        test.height);

    const std::uint32_t flags =
        test.order.flag | (test.interpolate ? std::uint32_t{KyPixelConverter::FLAG_BAYER_INTERPOLATE} : 0);
    const std::uint32_t status =
        test.filter->filter == nullptr
            ? converter.Convert(source.data(), test.sourceWidth, test.lines, destination.data(), test.destinationWidth,
                                test.lines, test.width, test.height, flags, test.padding)
            : converter.Convert(*test.filter->filter, source.data(), test.sourceWidth, test.lines, destination.data(),
                                test.destinationWidth, test.lines, test.width, test.height, flags, test.padding);
    if (status != KY_STATUS_SUCCESS) return test.Describe() + ": status " + std::to_string(status);
    if (std::memcmp(written.data(), expected.data(), expected.size()) == 0) return "";

    const auto place = std::mismatch(written.begin(), written.end(), expected.begin());
    const auto offset = place.first - written.begin() - static_cast<std::ptrdiff_t>(destination.DataOffset());
    return test.Describe() + ": byte " + std::to_string(offset) + " is " + std::to_string(*place.first) + ", not " +
           std::to_string(*place.second) + " (lines of " + std::to_string(lineSize) + ")";
}

#endif
