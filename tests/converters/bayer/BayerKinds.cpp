#include <tests/converters/Kind.h>

namespace {

using reference::Format;

/// A kind of the family for samples at the end of `step` bytes.
Kind MakeKind(Format format, const Samples& samples, std::uint32_t step, std::shared_ptr<const KyPixelConverter> made) {
    return {std::to_string(samples.bits) + " bits at the end of " + std::to_string(step) + " bytes to " +
                reference::NameOf(format),
            std::move(made),
            format,
            {2, 2 * step},
            nullptr,
            samples,
            nullptr,
            nullptr,
            2,
            reference::BayerConversion{format, step, samples.bytes}};
}

std::vector<Kind> FromBytes() {
    std::vector<Kind> kinds;
    for (const std::uint32_t step : {1u, 2u, 3u})
        for (const Format format : kRgbFormats)
            kinds.push_back(MakeKind(format, kByteSamples, step,
                                     MakeToRgb<KyBayerRGB8ToRGB16, KyBayerRGB8ToRGB24, KyBayerRGB8ToRGB32>(
                                         0x00020010, format, step - 1, 0u)));
    return kinds;
}

std::vector<Kind> FromWords() {
    const Samples words12 = {2, 12, 4}, words16 = {2, 16, 8};
    // Unregistered, so that a plain conversion takes the 16-bit filter and every bit of a word counts.
    constexpr std::int64_t type12 = 0x00020012, type16 = 0x0002FFF0;
    std::vector<Kind> kinds;
    for (const Format format : kRgbFormats)
        kinds.push_back(MakeKind(format, words12, 2,
                                 MakeToRgb<KyBayerRGB16ToRGB16, KyBayerRGB16ToRGB24, KyBayerRGB16ToRGB32>(
                                     type12, format, words12.shift, 0u)));
    kinds.push_back(MakeKind(Format::kRGB48, {2, 12, 0}, 2, std::make_shared<KyBayerRGB16ToRGB48>(type12, false, 0)));
    // Red comes first whatever this flag, which only chooses the type.
    kinds.push_back(MakeKind(Format::kRGB48, {2, 16, 0}, 2, std::make_shared<KyBayerRGB16ToRGB48>(type16, true, 0)));
    kinds.push_back(
        MakeKind(Format::kRGB24, words16, 2, std::make_shared<KyBayerRGB16ToRGB24>(type16, false, words16.shift, 0)));
    return kinds;
}

}  // namespace

std::vector<Group> BayerGroups() { return {{"BayerBytes", FromBytes, 6}, {"BayerWords", FromWords, 8}}; }
