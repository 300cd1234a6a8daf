#ifndef KYIMG_SOURCEFRAME_H
#define KYIMG_SOURCEFRAME_H

#include "ConvertOptions.h"

#include <KyImgLib/images/KyImage.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace kyimg {

/// A frame as it lies in a file, described as an image of the library.
///
/// Files may hold what an image cannot be: interlaced frames with an odd number of lines, whose first field has the line
/// more, are an image of one line more, which follows the frame in the buffer. Of dual lines both must be there: a last odd
/// one is left out. Where packed pairs of pixels run on over the ends of lines, the frame is an image of a single line.
class SourceFrame {
public:
    /// Throws UsageError for options that do not go with the type or with each other, Failure for sizes that do not.
    SourceFrame(std::int64_t type, ImageSize size, const ConvertOptions& options);

    /// "1920x1080 Bayer RGB 8-bits", and how its lines lie when that does not follow from the width alone
    std::string Describe() const;

    /// Bytes of a frame in the file, and of the buffer that it is read into.
    std::uint64_t GetFileBytes() const { return fileBytes; }
    std::uint64_t GetBufferBytes() const;

    /// Without data and size.
    const KyImage& GetImage() const { return image; }
    /// The size of the picture.
    ImageSize GetShown() const { return shown; }
    /// The last one of dual lines that has no partner.
    bool LeavesOutLine() const { return shown.height != size.height; }
    bool IsContinuous() const { return isContinuous; }

private:
    void JoinLines(const ConvertOptions& options);
    void PlaceLines(const ConvertOptions& options);

    ImageSize size;   ///< as the user gives it
    ImageSize shown;  ///< of which the picture is made
    KyImage image;
    std::uint64_t fileBytes = 0;
    bool isContinuous;
    std::string linesText;
};

}  // namespace kyimg

#endif
