#ifndef KYIMGLIB_CONVERTERS_COLOUR_RGBBITSINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_RGBBITSINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>

namespace ky {

/// How the samples of an RGB source lie in bits.
enum class RGBBits : std::uint8_t {
    k565,
    k555,
    k10Bits32,     ///< three of 10 bits in a double word
    k10BitStream,  ///< three of 10 bits a pixel in a stream, four pixels in 15 bytes
    kThreeWords,
    kFourWords,  ///< of which the last is ignored
};

struct RGBBitsFormat {
    std::int64_t id;
    RGBBits layout;
    bool isBGR;                  ///< blue is in the lowest bits, or comes first
    std::uint8_t bits = 10;      ///< of a sample as word
    std::uint8_t wordShift = 0;  ///< of words: to the right, before anything else
};

/// Bytes that pixels share.
PixelGroup GroupOf(RGBBits layout);

/// To RGB of bytes: samples become v * 255 / largest, rounded to nearest, and then pass the filter. Not from words.
class RGBBitsToRGB final : public KyPixelConverter {
public:
    using KyPixelConverter::GetSourceByteSize;

    RGBBitsToRGB(const RGBBitsFormat& source, std::int64_t destinationType);

    /// Bytes of so many pixels, whole groups.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;

private:
    const PixelGroup group;
};

/// From samples of 10 and more bits to RGB48 of as many bits, through the filter.
class RGBBitsToRGB48 final : public KyPixelConverter {
public:
    using KyPixelConverter::GetSourceByteSize;

    explicit RGBBitsToRGB48(const RGBBitsFormat& source);

    /// Bytes of so many pixels, whole groups.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;

private:
    const PixelGroup group;
};

}  // namespace ky

#endif
