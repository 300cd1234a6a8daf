#ifndef KYIMG_PICTURE_H
#define KYIMG_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kyimg {

/// The result of a conversion: an image whose lines follow one another without padding.
struct ConvertedFrame {
    std::int64_t type = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t sampleBits = 0;  ///< significant bits, in the low end, of samples that could have more; 0: as many
    std::vector<std::uint8_t> bytes;
};

/// How the pixels of a type become the samples of an ordinary picture: gray, or red, green and blue.
struct PictureLayout {
    std::uint32_t channels;       ///< 1 or 3
    std::uint32_t bits;           ///< significant bits of a sample, in the low end of its 1 or 2 bytes
    bool is565;                   ///< 16-bit words 5-6-5, to be expanded; the rest does not apply
    std::size_t pixelBytes;       ///< from one pixel to the next
    std::size_t channelBytes[3];  ///< from the start of a pixel to each channel; for planes, from the start of the line

    std::size_t GetSampleBytes() const { return bits > 8 ? 2 : 1; }
};

/// How to show a frame of a registered type, whose bytes need not be there yet. Nothing for types that only a conversion
/// makes visible: YUV, packed gray, interlaced, those of several taps.
std::optional<PictureLayout> FindPictureLayout(const ConvertedFrame& frame);

/// A frame's rows as files keep them: samples of one byte, or of two with the high one first.
class PictureRows {
public:
    /// Throws Failure when the frame's type has no layout. The frame must outlive this object.
    explicit PictureRows(const ConvertedFrame& frame);

    const PictureLayout& GetLayout() const { return layout; }
    std::uint32_t GetWidth() const { return frame.width; }
    std::uint32_t GetHeight() const { return frame.height; }
    std::size_t GetRowSize() const { return layout.channels * layout.GetSampleBytes() * frame.width; }

    /// Writes line `y`: GetRowSize() bytes.
    void CopyRow(std::uint32_t y, std::uint8_t* row) const;

private:
    const ConvertedFrame& frame;
    PictureLayout layout;
};

}  // namespace kyimg

#endif
