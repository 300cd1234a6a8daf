#include <tests/converters/Kind.h>
#include <tests/reference/Gray.h>

#include <utility>

namespace {

using reference::Format;
using reference::Taps;
using Converter = std::shared_ptr<const KyPixelConverter>;

constexpr std::int64_t kDualLines = 0x10000000;
/// Layouts of two taps by their place in an ID; a single tap is one part that is read forwards.
const std::pair<std::int64_t, Taps> kLayouts[] = {{0x01000000, {false, false}},
                                                  {0x02000000, {false, true}},
                                                  {0x04000000, {true, false}},
                                                  {0x08000000, {true, true}},
                                                  {0, {false}}};

std::string Numbered(const char* name, std::int64_t number) { return std::string(name) + " " + std::to_string(number); }

std::vector<Kind> Shifts() {
    std::vector<Kind> kinds;
    const reference::Layout words = {1, 2};
    for (const std::uint32_t shift : {4u, 0u, 6u, 15u, 20u, 33u}) {
        const reference::Reader right = reference::Gray(reference::WordShiftedRight(shift));
        Add(kinds, Numbered("right by", shift), 0x00110003, Format::kGray16, words, right, [&](std::int64_t type) {
            return std::make_shared<KyGrayscale16ToGrayscale16RightShift>(type, 0x00010003, shift);
        });
        Add(kinds, Numbered("left by", shift), 0x00010003, Format::kGray16, words,
            reference::Gray(reference::WordShiftedLeft(shift)), [&](std::int64_t type) {
                return std::make_shared<KyGrayscale16ToGrayscale16LeftShift>(type, 0x00110003, shift);
            });
        Add(kinds, Numbered("right by", shift), 0x00010003, Format::kGray8, words, right,
            [&](std::int64_t type) { return std::make_shared<KyGrayscale16ToGrayscale8>(type, shift); });
    }
    Add(kinds, "high bytes", 0x00110003, Format::kGray8, words, reference::Gray(reference::ByteOf(2, 1)),
        [](std::int64_t type) { return std::make_shared<KyGrayscale16NormalizedToGrayscale8>(type); });
    return kinds;
}

std::vector<Kind> ToRgb() {
    std::vector<Kind> kinds;
    for (const Format format : kRgbFormats) {
        for (const std::uint32_t n : {0u, 1u, 2u}) {
            Add(kinds, Numbered("last byte after", n), 0x00010001, format, {1, n + 1},
                reference::Gray(reference::ByteOf(n + 1, n)), [&](std::int64_t type) {
                    return MakeToRgb<KyGrayscale8ToRGB16, KyGrayscale8ToRGB24, KyGrayscale8ToRGB32>(type, format, n);
                });
            // With words, RGB16 alone has a rule of its own for one pixel.
            if (n == 0 || format == Format::kRGB16) kinds.back().readOne = reference::Gray(reference::ByteOf(n + 1, 0));
        }
        for (const std::uint32_t shift : {2u, 4u, 6u, 8u, 0u, 35u})
            Add(kinds, Numbered("word right by", shift), 0x00010004, format, {1, 2},
                reference::Gray(reference::WordShiftedRight(shift)), [&](std::int64_t type) {
                    return MakeToRgb<KyGrayscale16ToRGB16, KyGrayscale16ToRGB24, KyGrayscale16ToRGB32>(type, format,
                                                                                                       shift);
                });
    }
    return kinds;
}

std::vector<Kind> Packed() {
    std::vector<Kind> kinds;
    const reference::Layout pairs = {2, 3, true};
    const struct { std::uint32_t leftShift, mask, position; } numbers[] = {{2, 0x03, 4}, {4, 0x0F, 4}, {3, 0x1F, 2}};
    for (const auto& [layout, taps] : kLayouts) {
        const auto reader = [&taps = taps](const reference::Sample& sample) {
            return reference::GrayOfTaps(sample, taps, true);
        };
        const std::string name = Numbered("packed, layout", layout >> 24);
        for (const auto& [leftShift, mask, position] : numbers) {
            const auto shortShift = static_cast<short>(leftShift), shortPosition = static_cast<short>(position);
            const auto shortMask = static_cast<unsigned short>(mask);
            const std::string numbered = name + Numbered(", shift", leftShift);
            const auto to16 = [&](std::int64_t destination) {
                return [=](std::int64_t type) {
                    return std::make_shared<KyGrayscale16PackedToGrayscale16>(type, destination, shortShift, shortMask,
                                                                              shortPosition);
                };
            };
            Add(kinds, numbered, 0x00410003 + layout, Format::kGray16, pairs,
                reader(reference::Packed(leftShift, mask, position)), to16(0x00010003));
            if (position == 4)  // the numbers of a real type
                Add(kinds, numbered + " normalized", 0x00410003 + layout, Format::kGray16, pairs,
                    reader(reference::Packed(leftShift, mask, position, 8 - leftShift)), to16(0x00110003));
            if (layout != 0)
                Add(kinds, numbered + " left in their taps", 0x00410003 + layout, Format::kGray16, pairs,
                    reference::Gray(reference::Packed(leftShift, mask, position)), to16(0x00010003 + layout));
        }
        Add(kinds, name, 0x00410002 + layout, Format::kGray8, pairs, reader(reference::PackedHighByte()),
            [](std::int64_t type) {
                return std::make_shared<KyGrayscale16PackedToGrayscale8>(type, static_cast<unsigned short>(2),
                                                                         static_cast<unsigned short>(3));
            });
        for (const Format format : kRgbFormats)
            Add(kinds, name, 0x00410003 + layout, format, pairs, reader(reference::PackedHighByte()),
                [&](std::int64_t type) {
                    return MakeToRgb<KyGrayscale16PackedToRGB16, KyGrayscale16PackedToRGB24,
                                     KyGrayscale16PackedToRGB32>(type, format, 4u, 0x0Fu);
                });
    }
    Add(kinds, "GEV 10 bits", 0x00410008, Format::kGray16, pairs, reference::Gray(reference::Packed(2, 3, 4)),
        [](std::int64_t type) { return std::make_shared<KyGrayscale10PackedGEVToGrayscale10>(type); });
    Add(kinds, "GEV 12 bits", 0x00410009, Format::kGray16, pairs, reference::Gray(reference::Packed(4, 15, 4)),
        [](std::int64_t type) { return std::make_shared<KyGrayscale12PackedGEVToGrayscale12>(type); });
    Add(kinds, "GEV", 0x00410008, Format::kGray8, pairs, reference::Gray(reference::PackedHighByte()),
        [](std::int64_t type) { return std::make_shared<KyGrayscale16PackedGEVToGrayscale8>(type); });
    return kinds;
}

std::vector<Kind> DualTaps() {
    std::vector<Kind> kinds;
    const auto segmented = [&](Format format, std::uint32_t shift) {
        return [=](std::int64_t type) -> Converter {
            if (format == Format::kGray16)
                return std::make_shared<KyGrayscale16SegmentedToGrayscale16>(type, 0x00010003, shift);
            return std::make_shared<KyGrayscale16SegmentedToRGB24_32>(type, reference::IsBGR(format), shift,
                                                                      reference::BytesOf(format));
        };
    };
    const auto bytes = [](std::int64_t type) {
        return std::make_shared<KyDualGrayscale8ToGrayscale8>(type, 0x00010001);
    };
    const std::pair<Format, std::uint32_t> words[] = {{Format::kGray16, 0}, {Format::kGray16, 4}, {Format::kRGB24, 2},
                                                      {Format::kBGR24, 4},  {Format::kRGB32, 8},  {Format::kBGR32, 36}};
    for (const auto& [layout, taps] : kLayouts) {
        for (const auto& [format, shift] : words)
            Add(kinds, Numbered("words, layout", layout >> 24) + Numbered(", shift", shift), 0x00010003 + layout,
                format, {1, 2}, reference::GrayOfTaps(reference::WordShiftedRight(shift), taps),
                segmented(format, shift));
        Add(kinds, Numbered("bytes, layout", layout >> 24), 0x00010001 + layout, Format::kGray8, {1, 1},
            reference::GrayOfTaps(reference::ByteOf(1, 0), taps), bytes);
    }
    const auto addLines = [&](const std::string& name, Format format, std::uint32_t sampleBytes,
                              const reference::Sample& sample, Converter converter) {
        kinds.push_back({name + " to " + reference::NameOf(format),
                         std::move(converter),
                         format,
                         {1, 2 * sampleBytes, false, 0, sampleBytes},
                         reference::GrayOfLinePair(sample),
                         kByteSamples,
                         nullptr,
                         nullptr,
                         2});
    };
    for (const auto& [format, shift] : words)
        addLines(Numbered("words of two lines, shift", shift), format, 2, reference::WordShiftedRight(shift),
                 segmented(format, shift)(0x00010003 + kDualLines));
    addLines("bytes of two lines", Format::kGray8, 1, reference::ByteOf(1, 0),
             std::make_shared<KyDualLinesGrayscale8ToGrayscale8>(0x00010001 + kDualLines, 0x00010001));
    return kinds;
}

std::vector<Kind> QuadTaps() {
    const Taps taps = {false, true, false, true};
    std::vector<Kind> kinds;
    Add(kinds, "bytes of four taps", 0x00010006, Format::kGray8, {1, 1},
        reference::GrayOfTaps(reference::ByteOf(1, 0), taps),
        [](std::int64_t type) { return std::make_shared<Dalsa4x8ToGrayscale8>(type, 0x00010001); });
    Add(kinds, "words of four taps", 0x00010007, Format::kGray16, {1, 2},
        reference::GrayOfTaps(reference::WordShiftedRight(0), taps),
        [](std::int64_t type) { return std::make_shared<Dalsa4x16ToGrayscale16>(type, 0x00010002); });
    return kinds;
}

}  // namespace

std::vector<Group> GrayscaleGroups() {
    return {{"GrayShifts", Shifts},
            {"GrayToRGB", ToRgb},
            {"GrayPacked", Packed},
            {"GrayDualTaps", DualTaps},
            {"GrayQuadTaps", QuadTaps, 2}};
}
