#include "Picture.h"

#include "Errors.h"
#include "ImageSizes.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

namespace kyimg {

namespace {

constexpr std::int64_t kNoOrdinaryLines = KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK;

std::optional<PictureLayout> GrayLayout(std::int64_t id, std::uint32_t bits, std::size_t pixelBytes) {
    const std::int64_t index = id & KY_TYPE_INDEX_MASK;
    const bool isFourTaps = (id & KY_COLOUR_SPACE_GRAYSCALE) != 0 && (index == 0x06 || index == 0x07);
    if (isFourTaps || (id & KY_TYPE_PACKED) != 0) return std::nullopt;
    return PictureLayout{1, bits, false, pixelBytes, {0}};
}

std::optional<PictureLayout> ColourLayout(std::int64_t id, std::uint32_t bits, std::size_t pixelBytes,
                                          std::size_t planeBytes) {
    if ((id & KY_TYPE_PLANAR) != 0) {
        const std::int64_t index = id & ~KY_TYPE_PLANAR;
        if (index != KY_TYPE_RGB24 && index != 0x0002000A) return std::nullopt;
        return PictureLayout{3, 8, false, 1, {0, planeBytes, 2 * planeBytes}};
    }
    switch (id & KY_TYPE_INDEX_MASK) {
        case 0x01:
        case 0x34: return PictureLayout{3, 8, true, pixelBytes, {}};
        case 0x02:  // RGB24
        case 0x03:  // RGB32
        case 0x0A:  // 3 x 8
        case 0x0B: return PictureLayout{3, 8, false, pixelBytes, {0, 1, 2}};
        case 0x06:  // BGR24
        case 0x07: return PictureLayout{3, 8, false, pixelBytes, {2, 1, 0}};
        case 0x04:  // RGB48
        case 0x05:
        case 0x30:  // and scaled
        case 0x31:
        case 0x32: return PictureLayout{3, 16, false, pixelBytes, {0, 2, 4}};
        case 0x08:  // 10 or 12 bits in words
        case 0x09:
        case 0x0C:
        case 0x0D: return PictureLayout{3, bits, false, pixelBytes, {0, 2, 4}};
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
    auto layout = ColourLayout(id, bits, pixelBytes, std::size_t{frame.width} * frame.height);
    if (layout && frame.sampleBits != 0) layout->bits = frame.sampleBits;
    return layout;
}

PictureRows::PictureRows(const ConvertedFrame& convertedFrame) : frame(convertedFrame), layout() {
    const auto found = FindPictureLayout(frame);
    if (!found) throw Failure(fmt::format("{} is no picture", DescribeType(frame.type)));
    layout = *found;
}

void PictureRows::CopyRow(std::uint32_t y, std::uint8_t* row) const {
    const std::uint8_t* const line = frame.bytes.data() + y * layout.pixelBytes * frame.width;
    if (layout.is565) return Expand565(line, frame.width, row);

    const std::size_t sampleBytes = layout.GetSampleBytes();
    const std::size_t rowPixelBytes = layout.channels * sampleBytes;
    const std::uint32_t unusedBits = 16 - layout.bits;
    for (std::uint32_t channel = 0; channel < layout.channels; ++channel) {
        const std::uint8_t* sample = line + layout.channelBytes[channel];
        std::uint8_t* out = row + channel * sampleBytes;
        for (std::uint32_t x = 0; x < frame.width; ++x, sample += layout.pixelBytes, out += rowPixelBytes) {
            if (sampleBytes == 1) {
                out[0] = sample[0];
            } else {  // the unused high bits, which are 0 in a proper frame, must not exceed the picture's range
                out[0] = static_cast<std::uint8_t>(sample[1] & (0xFF >> unusedBits));
                out[1] = sample[0];
            }
        }
    }
}

}  // namespace kyimg
