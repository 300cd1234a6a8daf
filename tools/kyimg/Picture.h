#ifndef KYIMG_PICTURE_H
#define KYIMG_PICTURE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kyimg {

/// What the file of a Bayer mosaic that is not demosaiced says of it.
struct Mosaic {
    std::uint32_t bayerFlag = 0;                 ///< pattern: a flag of KyPixelConverter; 0: not known
    float black = 0;                             ///< value of a sample without light
    std::optional<std::array<double, 3>> gains;  ///< for red, green and blue, that make a white object white
};

/// The result of a conversion: an image whose lines follow one another without padding.
struct ConvertedFrame {
    std::int64_t type = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t sampleBits = 0;  ///< significant bits, in the low end, of samples that could have more; 0: as many
    Mosaic mosaic;
    std::vector<std::uint8_t> bytes;
};

/// How the pixels of a type become the samples of an ordinary picture: gray, or red, green, blue and perhaps alpha.
struct PictureLayout {
    std::uint32_t channels;       ///< 1, 3 or, with alpha, 4
    std::uint32_t bits;           ///< significant bits of a sample, in the low end of its 1 or 2 bytes
    bool is565;                   ///< 16-bit words 5-6-5, to be expanded; the rest does not apply
    bool isBigEndian;             ///< words have their high byte first
    std::size_t pixelBytes;       ///< from one pixel to the next
    std::size_t channelBytes[4];  ///< from the start of a pixel to each channel; for planes, from the start of the line

    std::size_t GetSampleBytes() const { return bits > 8 ? 2 : 1; }
};

/// How to show a frame of a registered type, whose bytes need not be there yet. Nothing for types that only a conversion
/// makes visible: YUV, packed gray, interlaced, those of several taps.
std::optional<PictureLayout> FindPictureLayout(const ConvertedFrame& frame);

/// A frame's rows as picture files keep them: interleaved samples of one byte or of two, 16-bit words.
class PictureRows {
public:
    /// What a file format wants.
    struct Form {
        bool hasAlpha = false;     ///< an alpha that the frame has is kept; otherwise left out
        bool isFullRange = false;  ///< samples of 10, 12 or 14 bits are scaled to 16: 65535 for the largest
        bool isBigEndian = false;  ///< words have their high byte first
    };

    /// Throws Failure when the frame's type has no layout. The frame must outlive this object.
    PictureRows(const ConvertedFrame& frame, const Form& form);

    std::uint32_t GetWidth() const { return frame.width; }
    std::uint32_t GetHeight() const { return frame.height; }
    std::uint32_t GetChannels() const { return channels; }
    /// Significant bits of a sample, however many it is scaled to.
    std::uint32_t GetBits() const { return layout.bits; }
    std::size_t GetSampleBytes() const { return layout.GetSampleBytes(); }
    std::size_t GetRowSize() const { return GetSampleBytes() * channels * frame.width; }

    /// Writes line `y`: GetRowSize() bytes.
    void CopyRow(std::uint32_t y, std::uint8_t* row) const;

private:
    bool IsInterleavedAlready() const;
    template <typename Sample>
    void Interleave(const std::uint8_t* line, std::uint8_t* row) const;
    void AdjustWords(std::uint8_t* row) const;

    const ConvertedFrame& frame;
    PictureLayout layout;
    Form form;
    std::uint32_t channels;
};

}  // namespace kyimg

#endif
