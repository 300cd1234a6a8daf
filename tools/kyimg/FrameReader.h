#ifndef KYIMG_FRAMEREADER_H
#define KYIMG_FRAMEREADER_H

#include "ConvertOptions.h"
#include "RawInput.h"
#include "SourceFrame.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kyimg {

/// The wanted frames of an input, one after the other.
class FrameReader {
public:
    /// Opens the input. Throws Failure when its size already tells that it does not fit, so that nothing is written.
    ///
    /// \param severalHint  the option to suggest for an input that seems to hold several frames, like "--frames all"
    FrameReader(const ConvertOptions& options, const SourceFrame& source, const FrameRange& range,
                const std::string& severalHint);

    /// Reads the next wanted frame; false at the end. Throws Failure.
    bool Next();

    /// What Next() read, in a buffer as the source wants it.
    const std::vector<std::uint8_t>& GetFrame() const { return frame; }
    /// Its number; the first frame of the input is 1.
    std::uint64_t GetNumber() const { return number; }

private:
    void CheckInputSize(std::uint64_t available) const;
    bool Read();
    std::uint64_t Fill();

    const SourceFrame& source;
    FrameRange range;
    std::string severalHint;
    RawInput input;
    std::vector<std::uint8_t> frame;
    std::uint64_t number = 0;
};

}  // namespace kyimg

#endif
