#ifndef KYIMG_SOURCELINES_H
#define KYIMG_SOURCELINES_H

#include "ConvertOptions.h"

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kyimg {

/// The type whose converter serves `source`. RGB24 and BGR24 have three bytes for a pixel, and become themselves as their
/// packed twins do: a filter counts, while a copy would reckon with a fourth byte.
std::int64_t TypeToConvertFrom(std::int64_t source, std::int64_t destination);

/// How the lines of a frame lie in a file, and in the memory that a converter reads.
///
/// A line of YUV 4:2:2 holds whole pairs of pixels and one of 4:1:1 whole groups of four: the colour of its last pixels
/// is in there. The library counts single pixels instead, so it is told of a wider image. Of an interlaced frame with an
/// odd number of lines, the first field has one more; the library wants two fields of equal size.
class SourceLines {
public:
    /// \param wantedLineBytes  from one line of the file to the next; 0: the lines follow one another
    ///
    /// Throws UsageError when lines of a frame have more bytes than that, Failure for frames too large for the library.
    SourceLines(const KyPixelConverter& converter, ImageSize size, std::uint64_t wantedLineBytes);

    /// Of the file.
    ///@{
    std::uint64_t GetLineBytes() const { return fileLineBytes; }
    std::uint64_t GetFrameBytes() const { return fileLineBytes * fileLines; }
    bool HasPadding() const { return fileLineBytes != lineBytes; }
    ///@}

    /// The bytes of a line without padding.
    std::size_t GetOwnLineBytes() const { return lineBytes; }
    /// A line has more pixels than the image is wide.
    bool IsWidened() const { return isWidened; }

    /// What the converter must be told of as the size of the source, and convert.
    ImageSize GetConverted() const { return converted; }

    /// The frame as the converter reads it: `frame` itself or, when its lines lie otherwise, `scratch`, filled from it.
    const std::uint8_t* Arrange(const std::vector<std::uint8_t>& frame, std::vector<std::uint8_t>& scratch) const;

private:
    std::size_t lineBytes;
    std::uint64_t fileLineBytes;
    std::uint32_t fileLines;
    ImageSize converted;
    bool isWidened;
};

}  // namespace kyimg

#endif
