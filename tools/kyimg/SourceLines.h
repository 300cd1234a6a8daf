#ifndef KYIMG_SOURCELINES_H
#define KYIMG_SOURCELINES_H

#include "ConvertOptions.h"

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kyimg {

/// How the lines of a frame lie in a file, and in the memory that a converter reads.
///
/// A line of YUV 4:2:2 holds whole pairs of pixels and one of 4:1:1 whole groups of four: the colour of its last pixels
/// is in there. The library counts single pixels instead, so it is told of a wider image. Of an interlaced frame with an
/// odd number of lines, the first field has one more; the library wants two fields of equal size. Of dual lines both must
/// be there: a last odd one is left out. Packed pixels are pairs in three bytes; where pairs run on
/// over the ends of lines, the whole frame is one line to the library, which ends with a whole pair.
class SourceLines {
public:
    /// Throws UsageError for options that do not go with the source or with each other, Failure for sizes that do not, and
    /// for frames too large for the library.
    SourceLines(const KyPixelConverter& converter, ImageSize size, const ConvertOptions& options);

    std::uint64_t GetFrameBytes() const { return fileStride * fileLines; }

    /// ", lines of 20 bytes": what the size in pixels does not tell; otherwise empty.
    std::string Describe() const;

    /// What the converter must be told of as the size of the source, and convert.
    ImageSize GetConverted() const { return converted; }
    /// The stride of what the converter makes, in pixels.
    std::uint32_t GetPixelStride() const { return pixelStride; }
    /// The size of the picture.
    ImageSize GetShown() const { return shown; }

    /// The frame as the converter reads it: `frame` itself or, when its lines lie otherwise, `scratch`, filled from it.
    const std::uint8_t* Arrange(const std::vector<std::uint8_t>& frame, std::vector<std::uint8_t>& scratch) const;

private:
    bool HasPadding() const { return fileStride != lineBytes; }
    void JoinLines();
    void WidenLines(const KyPixelConverter& converter);

    ImageSize shown;
    ImageSize converted;
    std::uint32_t pixelStride;
    bool isWidened = false;  ///< a line has more pixels than the picture is wide
    std::uint32_t fileLines;
    std::size_t lineBytes = 0;     ///< without padding
    std::uint64_t fileStride = 0;  ///< bytes from one line of the file to the next
};

}  // namespace kyimg

#endif
