#include "Picture.h"

#include "Errors.h"
#include "ImageSizes.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>

namespace kyimg {

namespace {

bool IsOneOf(std::int64_t id, std::initializer_list<std::int64_t> ids) {
    return std::ranges::find(ids, id) != ids.end();
}

constexpr std::int64_t kNoOrdinaryLines = KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK;

std::optional<PictureLayout> GrayLayout(std::int64_t id, std::uint32_t bits, std::size_t pixelBytes) {
    const std::int64_t index = id & KY_TYPE_INDEX_MASK;
    const bool isFourTaps = (id & KY_COLOUR_SPACE_GRAYSCALE) != 0 && (index == 0x06 || index == 0x07);
    if (isFourTaps || (id & KY_TYPE_PACKED) != 0) return std::nullopt;
    const bool isBigEndian =
        IsOneOf(id, {KY_TYPE_MONO10_BE, KY_TYPE_MONO12_BE, KY_TYPE_MONO14_BE, KY_TYPE_MONO16_BE, KY_TYPE_BAYER10_BE,
                     KY_TYPE_BAYER12_BE, KY_TYPE_BAYER14_BE, KY_TYPE_BAYER16_BE});
    return PictureLayout{1, bits, false, isBigEndian, pixelBytes, {0}};
}

std::optional<PictureLayout> PlanarLayout(std::int64_t id, std::size_t planePixels) {
    const auto planesOf = [planePixels](std::uint32_t bits, std::array<std::size_t, 3> planes) {
        const std::size_t sampleBytes = bits > 8 ? 2 : 1, plane = sampleBytes * planePixels;
        return PictureLayout{3,     bits,        false,
                             false, sampleBytes, {planes[0] * plane, planes[1] * plane, planes[2] * plane}};
    };
    switch (id) {
        case KY_TYPE_RGB24_PLANAR:
        case KY_TYPE_PLANAR | 0x0002000A: return planesOf(8, {0, 1, 2});
        case KY_TYPE_GBR24_PLANAR: return planesOf(8, {2, 0, 1});
        case KY_TYPE_RGB10_PLANAR: return planesOf(10, {0, 1, 2});
        case KY_TYPE_RGB12_PLANAR: return planesOf(12, {0, 1, 2});
        case KY_TYPE_RGB48_PLANAR_SCALED: return planesOf(16, {0, 1, 2});
        default: return std::nullopt;
    }
}

std::optional<PictureLayout> ColourLayout(std::int64_t id, std::uint32_t bits, std::size_t pixelBytes) {
    const auto pixelsOf = [pixelBytes](std::uint32_t channels, std::uint32_t sampleBits,
                                       std::array<std::size_t, 4> places) {
        const std::size_t bytes = sampleBits > 8 ? 2 : 1;
        return PictureLayout{channels,   sampleBits,
                             false,      false,
                             pixelBytes, {places[0] * bytes, places[1] * bytes, places[2] * bytes, places[3] * bytes}};
    };
    switch (id & KY_TYPE_INDEX_MASK) {
        case 0x01:
        case 0x34: return PictureLayout{3, 8, true, false, pixelBytes, {}};
        case 0x02:  // RGB24
        case 0x03:  // RGB32
        case 0x0A:  // 3 x 8
        case 0x0B: return pixelsOf(3, 8, {0, 1, 2});
        case 0x06:  // BGR24
        case 0x07: return pixelsOf(3, 8, {2, 1, 0});
        case 0x20: return pixelsOf(4, 8, {0, 1, 2, 3});  // RGBA
        case 0x21: return pixelsOf(4, 8, {2, 1, 0, 3});
        case 0x22: return pixelsOf(4, 8, {1, 2, 3, 0});
        case 0x23: return pixelsOf(4, 8, {3, 2, 1, 0});
        case 0x04:  // RGB48
        case 0x05:
        case 0x30: return pixelsOf(3, 16, {0, 1, 2});  // and scaled
        case 0x31:
        case 0x32: return pixelsOf(4, 16, {0, 1, 2, 3});  // RGBA64
        case 0x08:                                        // 10 or 12 bits in words
        case 0x09:
        case 0x0C:
        case 0x0D: return pixelsOf(3, bits, {0, 1, 2});
        default: return std::nullopt;
    }
}

/// Widens a field of a 5-6-5 word so that its largest value becomes 255.
std::uint8_t Widen(std::uint32_t word, std::uint32_t lowestBit, std::uint32_t bits) {
    const std::uint32_t value = word >> lowestBit & ((1U << bits) - 1);
    return static_cast<std::uint8_t>(value << (8 - bits) | value >> (2 * bits - 8));
}

void Expand565(const std::uint8_t* line, std::uint32_t width, std::uint8_t* row) {
    for (std::uint32_t x = 0; x < width; ++x) {
        const std::uint32_t word = line[2 * x] | static_cast<std::uint32_t>(line[2 * x + 1]) << 8;
        *row++ = Widen(word, 11, 5);
        *row++ = Widen(word, 5, 6);
        *row++ = Widen(word, 0, 5);
    }
}

}  // namespace

std::optional<PictureLayout> FindPictureLayout(const ConvertedFrame& frame) {
    const std::int64_t id = frame.type;
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(id);
    if (type == nullptr || (id & kNoOrdinaryLines) != 0) return std::nullopt;
    const std::size_t pixelBytes = SizeOf(MakeImage(id, 1, 1));
    // Normalized samples fill their words.
    const std::uint32_t bits = (id & KY_TYPE_NORMALIZED) != 0 ? 16 : type->GetPixelBitSize();
    if ((id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE || type->IsBayerPattern())
        return GrayLayout(id, bits, pixelBytes);
    if ((id & KY_COLOUR_SPACE_MASK) != KY_COLOUR_SPACE_RGB) return std::nullopt;
    auto layout = (id & KY_TYPE_PLANAR) != 0 ? PlanarLayout(id, std::size_t{frame.width} * frame.height)
                                             : ColourLayout(id, bits, pixelBytes);
    if (layout && frame.sampleBits != 0) layout->bits = frame.sampleBits;
    return layout;
}

PictureRows::PictureRows(const ConvertedFrame& convertedFrame, const Form& wantedForm)
    : frame(convertedFrame), layout(), form(wantedForm) {
    const auto found = FindPictureLayout(frame);
    if (!found) throw Failure(fmt::format("{} is no picture", DescribeType(frame.type)));
    layout = *found;
    channels = form.hasAlpha ? layout.channels : std::min(layout.channels, 3U);
}

bool PictureRows::IsInterleavedAlready() const {
    const std::size_t sampleBytes = GetSampleBytes();
    for (std::uint32_t channel = 0; channel < channels; ++channel)
        if (layout.channelBytes[channel] != channel * sampleBytes) return false;
    return layout.pixelBytes == channels * sampleBytes;
}

void PictureRows::CopyRow(std::uint32_t y, std::uint8_t* row) const {
    const std::uint8_t* const line = frame.bytes.data() + y * layout.pixelBytes * frame.width;
    if (layout.is565) return Expand565(line, frame.width, row);
    if (IsInterleavedAlready()) {
        std::memcpy(row, line, GetRowSize());
    } else if (GetSampleBytes() == 1) {
        Interleave<std::uint8_t>(line, row);
    } else {
        Interleave<std::uint16_t>(line, row);
    }
    if (GetSampleBytes() == 2) AdjustWords(row);
}

template <typename Sample>
void PictureRows::Interleave(const std::uint8_t* line, std::uint8_t* row) const {
    const std::size_t rowPixelBytes = channels * sizeof(Sample);
    for (std::uint32_t channel = 0; channel < channels; ++channel) {
        const std::uint8_t* sample = line + layout.channelBytes[channel];
        std::uint8_t* out = row + channel * sizeof(Sample);
        for (std::uint32_t x = 0; x < frame.width; ++x, sample += layout.pixelBytes, out += rowPixelBytes)
            std::memcpy(out, sample, sizeof(Sample));
    }
}

void PictureRows::AdjustWords(std::uint8_t* row) const {
    // The unused high bits, which are 0 in a proper frame, must not exceed the picture's range.
    const std::uint32_t mask = (1U << layout.bits) - 1;
    // The highest bits of a sample fill the low end, so that the largest one becomes 65535.
    const std::uint32_t up = form.isFullRange ? 16 - layout.bits : 0;
    const std::size_t rowSize = GetRowSize();
    const std::size_t lowIn = layout.isBigEndian ? 1 : 0, lowOut = form.isBigEndian ? 1 : 0;
    for (std::size_t i = 0; i < rowSize; i += 2) {
        const std::uint32_t value = (row[i + lowIn] | static_cast<std::uint32_t>(row[i + 1 - lowIn]) << 8) & mask;
        const std::uint32_t wide = value << up | value >> (layout.bits - up);
        row[i + lowOut] = static_cast<std::uint8_t>(wide);
        row[i + 1 - lowOut] = static_cast<std::uint8_t>(wide >> 8);
    }
}

}  // namespace kyimg
