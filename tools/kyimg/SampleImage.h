#ifndef KYIMG_SAMPLEIMAGE_H
#define KYIMG_SAMPLEIMAGE_H

#include "ConvertOptions.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kyimg {

/// The samples of a picture or a raw frame, as numbers.
struct SampleImage {
    std::uint32_t width = 0, height = 0;
    std::uint32_t bits = 8;             ///< of a sample
    std::vector<std::string> channels;  ///< names: of a mosaic those of the four sites of a cell, like R, Gr, Gb, B
    bool isMosaic = false;
    std::vector<std::uint16_t> samples;  ///< line by line; of colours, those of a pixel together

    std::size_t GetLineSize() const { return std::size_t{width} * (isMosaic ? 1 : channels.size()); }
    /// Index of the channel that a sample of a line belongs to.
    std::size_t GetChannel(std::size_t line, std::size_t sample) const {
        return isMosaic ? line % 2 * 2 + sample % 2 : sample % channels.size();
    }
    std::uint32_t GetLargest() const { return (1U << bits) - 1; }
};

/// The samples of a file: of a PNG, or of a PNM of the kinds P5 and P6, without alpha; otherwise of a raw frame as the options
/// describe it. Raw samples of gray, of mosaics and of RGB are those of the file; YCbCr counts as the RGB that it becomes.
/// Without a known Bayer pattern the channels of a mosaic are called by their places. Throws UsageError and Failure.
///
/// \param path  of the file, instead of the one in the options; "-" for a raw frame on standard input
SampleImage ReadSamples(const ConvertOptions& input, const std::string& path);

/// Those of a raw frame in memory, as kyimg::FrameReader reads it.
SampleImage SamplesOfFrame(const ConvertOptions& input, const std::vector<std::uint8_t>& frame);

}  // namespace kyimg

#endif
