#ifndef KYIMG_FRAMEWRITER_H
#define KYIMG_FRAMEWRITER_H

#include "ConvertOptions.h"
#include "OutputFile.h"
#include "OutputFormat.h"
#include "Picture.h"

#include <cstdint>

namespace kyimg {

/// Writes results where and how the command line says. The options must outlive this object.
class FrameWriter {
public:
    /// Throws UsageError for a format that is not known or cannot go there, Failure when the output must not be written.
    FrameWriter(const ConvertOptions& options, const FrameRange& range);

    OutputFormat GetFormat() const { return format; }

    /// Throws UsageError when the format cannot hold such a frame, which has no bytes yet.
    void Check(const ConvertedFrame& frame) const { CheckHolds(format, frame); }

    /// Writes the result of the frame with this number in the input: of several, to a file of its own. Throws Failure.
    void Write(const ConvertedFrame& frame, std::uint64_t number) const;

private:
    std::string PathOf(std::uint64_t number) const;

    const ConvertOptions& options;
    OutputLimits limits;
    OutputFormat format;
    bool isNumbered;  ///< whether names of files get the number of the frame
};

/// Writes a picture in the format that the path's extension names. Throws UsageError when it names none, Failure when the
/// picture cannot be written.
void WritePicture(const std::string& path, const OutputLimits& limits, const ConvertedFrame& picture);

}  // namespace kyimg

#endif
