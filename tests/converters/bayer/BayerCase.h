#ifndef KYIMGLIB_TESTS_CONVERTERS_BAYER_BAYERCASE_H
#define KYIMGLIB_TESTS_CONVERTERS_BAYER_BAYERCASE_H

#include <KyImgLib/KyImgLib.h>
#include <tests/converters/AreaCase.h>
#include <tests/reference/Bayer.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

struct Pattern {
    const char* name;
    std::uint32_t flag;
};

inline constexpr std::array<Pattern, 4> kPatterns = {{{"GRBG", KyPixelConverter::FLAG_BAYER_GRBG},
                                                      {"GBRG", KyPixelConverter::FLAG_BAYER_GBRG},
                                                      {"RGGB", KyPixelConverter::FLAG_BAYER_RGGB},
                                                      {"BGGR", KyPixelConverter::FLAG_BAYER_BGGR}}};

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

struct BayerCase : AreaCase {
    BayerKind kind;
    std::uint32_t step = kind.samples.bytes;
    Pattern pattern = kPatterns[0];
    bool interpolate = true;
};

inline std::string Difference(const KyPixelConverter& converter, const BayerCase& test, support::Random& random) {
    AreaCase area = test;
    area.flags = test.pattern.flag | (test.interpolate ? std::uint32_t{KyPixelConverter::FLAG_BAYER_INTERPOLATE} : 0);
    const reference::BayerConversion conversion = {test.kind.format, test.step, test.kind.samples.bytes};
    const reference::Extent needs = conversion.Needs(area, test.interpolate);
    const std::string difference = Difference(
        area, needs.source, needs.destination, random, Converting(converter, area),
        [&](const std::uint8_t* source, std::uint8_t* destination) {
            conversion.Convert(area, test.pattern.name, test.interpolate, test.filter->tables, source, destination);
        });
    return difference.empty() ? "" : test.kind.Name() + " step " + std::to_string(test.step) + difference;
}

#endif
