#include <tests/converters/Kind.h>
#include <tests/reference/Colour.h>

namespace {

using reference::Format;
using reference::Places;
using Converter = std::shared_ptr<const KyPixelConverter>;

template <std::uint32_t channels>
std::vector<Kind> FromBytes() {
    std::vector<Kind> kinds;
    for (const std::uint32_t extra : {0u, 1u, 2u})
        for (const bool swapped : {false, true}) {
            const Places places = swapped ? Places{2, 1, 0} : Places{0, 1, 2};
            const std::uint32_t unit = extra + 1;
            const auto add = [&](Format format, const auto& make) {
                Add(kinds, (swapped ? "BGR" : "RGB") + std::to_string(channels) + "x" + std::to_string(unit) + " bytes",
                    (channels == 3 ? 0x00020002 : 0x00020003) + (swapped ? 4 : 0), format, {1, channels * unit},
                    reference::RgbBytes(channels, unit, extra, places), make);
                kinds.back().readOne = reference::RgbBytes(channels, unit, 0, places);
            };
            for (const Format format : kRgbFormats)
                add(format, [&](std::int64_t type) {
                    return channels == 3
                               ? MakeToRgb<KyRGB24ToRGB16, KyRGB24ToRGB24, KyRGB24ToRGB32>(type, format, extra, swapped)
                               : MakeToRgb<KyRGB32ToRGB16, KyRGB32ToRGB24, KyRGB32ToRGB32>(type, format, extra,
                                                                                           swapped);
                });
            if (channels == 3)
                add(Format::kPlanar,
                    [&](std::int64_t type) { return std::make_shared<KyRGB24ToRGB24Planar>(type, extra, swapped); });
        }
    return kinds;
}

template <std::uint32_t channels, typename To16, typename To24, typename To32>
std::vector<Kind> FromWords() {
    const struct {
        std::int64_t type;
        std::uint32_t bits, shift;
    } sources[] = {{0x00020004, 16, 8}, {0x00020008, 10, 2}, {0x0002000C, 12, 4},
                   {0x0002000C, 12, 0}, {0x00020004, 16, 0}, {0x00020004, 16, 20}};
    std::vector<Kind> kinds;
    for (const auto& source : sources)
        for (const Format format : kRgbFormats) {
            const std::int64_t type = source.type + (channels == 4 ? 1 : 0);
            const bool swap = reference::IsBGR(format);
            Converter converter;
            if (format == Format::kRGB16)
                converter = std::make_shared<To16>(type, source.shift);
            else if (reference::BytesOf(format) == 3)
                converter = std::make_shared<To24>(type, source.shift, swap);
            else
                converter = std::make_shared<To32>(type, source.shift, swap);
            const reference::Reader reader = reference::RgbWords(channels);
            kinds.push_back({std::to_string(channels) + " words of " + std::to_string(source.bits) + " bits, shift " +
                                 std::to_string(source.shift) + ", to " + reference::NameOf(format),
                             converter,
                             format,
                             {1, 2 * channels},
                             reader,
                             {2, source.bits, source.shift},
                             reader});
        }
    return kinds;
}

std::vector<Kind> From565() {
    std::vector<Kind> kinds;
    for (const Format format : {Format::kRGB24, Format::kBGR24, Format::kRGB32, Format::kBGR32}) {
        const bool swap = reference::IsBGR(format), to24 = reference::BytesOf(format) == 3;
        const auto make = [&](std::int64_t type) -> Converter {
            if (to24) return std::make_shared<KyRGB16ToRGB24>(type, swap);
            return std::make_shared<KyRGB16ToRGB32>(type, swap);
        };
        Add(kinds, "5-6-5", 0x00020001, format, {1, 2},
            to24 ? reference::Rgb565ExpandedFirst() : reference::Rgb565FilteredFirst(), make);
        kinds.back().readOne = reference::Rgb565FilteredFirst();
    }
    return kinds;
}

/// A kind for each destination of a YUV family.
template <typename MakeConverter>
void AddYuv(std::vector<Kind>& kinds, const std::string& name, std::int64_t type, reference::Layout layout,
            const reference::Reader& reader, const MakeConverter& make) {
    for (const Format format : kRgbFormats)
        Add(kinds, name, type, format, layout, reader, [&](std::int64_t source) { return make(source, format); });
}

std::vector<Kind> FromYuv422() {
    std::vector<Kind> kinds;
    for (const std::uint32_t extra : {0u, 1u, 2u})
        AddYuv(kinds, "4:2:2, extra " + std::to_string(extra), 0x00040001, {2, 4 * (extra + 1)},
               reference::Yuv422(extra + 1, [=](const std::uint8_t* sample) { return unsigned{sample[extra]}; }),
               [&](std::int64_t type, Format format) {
                   return MakeToRgb<KyYUV8ToRGB16, KyYUV8ToRGB24, KyYUV8ToRGB32>(type, format, extra);
               });
    return kinds;
}

std::vector<Kind> FromYuv422Words() {
    std::vector<Kind> kinds;
    for (const std::uint32_t shift : {2u, 8u, 0u, 1u, 13u, 16u})
        AddYuv(kinds, "4:2:2 words, shift " + std::to_string(shift), 0x00040002, {2, 8},
               reference::Yuv422(
                   2, [=](const std::uint8_t* sample) { return reference::LoadWord(sample) >> shift & 0xFF; }),
               [&](std::int64_t type, Format format) {
                   return MakeToRgb<KyYUV10ToRGB16, KyYUV10ToRGB24, KyYUV10ToRGB32>(type, format, shift);
               });
    return kinds;
}

std::vector<Kind> FromYuv411() {
    std::vector<Kind> kinds;
    AddYuv(kinds, "4:1:1", 0x00440006, {4, 6}, reference::Yuv411(), [](std::int64_t type, Format format) {
        return MakeToRgb<KyYUV8411ToRGB16, KyYUV8411ToRGB24, KyYUV8411ToRGB32>(type, format);
    });
    return kinds;
}

std::vector<Kind> FromYuv444() {
    const struct {
        std::uint32_t extra;
        Places yuv;
    } sources[] = {{0, {1, 0, 2}}, {0, {0, 2, 1}}, {0, {2, 2, 0}}, {0, {7, 0, 4}},
                   {1, {0, 2, 4}}, {1, {2, 0, 1}}, {2, {6, 3, 0}}, {1, {4, 1, 5}}};
    std::vector<Kind> kinds;
    for (const auto& source : sources) {
        const std::uint32_t extra = source.extra;
        const Places yuv = source.yuv;
        const std::uint32_t pixel = 3 * (extra + 1), end = extra + 1 + *std::max_element(yuv.begin(), yuv.end());
        AddYuv(kinds,
               "4:4:4, extra " + std::to_string(extra) + " at " + std::to_string(yuv[0]) + std::to_string(yuv[1]) +
                   std::to_string(yuv[2]),
               0x00440003, {1, pixel, false, std::max(end, pixel) - pixel, 3}, reference::Yuv444(extra, yuv),
               [&](std::int64_t type, Format format) {
                   return MakeToRgb<KyYUV8444ToRGB16, KyYUV8444ToRGB24, KyYUV8444ToRGB32>(type, format, extra, yuv[0],
                                                                                          yuv[1], yuv[2]);
               });
    }
    return kinds;
}

}  // namespace

std::vector<Group> ColourGroups() {
    return {{"RGB24", FromBytes<3>, 6},
            {"RGB32", FromBytes<4>},
            {"RGB48", FromWords<3, KyRGB48ToRGB16, KyRGB48ToRGB24, KyRGB48ToRGB32>},
            {"RGB64", FromWords<4, KyRGB64ToRGB16, KyRGB64ToRGB24, KyRGB64ToRGB32>},
            {"RGB16", From565},
            {"YUV422", FromYuv422},
            {"YUV422Words", FromYuv422Words},
            {"YUV411", FromYuv411},
            {"YUV444", FromYuv444}};
}
