#ifndef KYIMG_GUESS_CODINGCOST_H
#define KYIMG_GUESS_CODINGCOST_H

#include "SampleWindows.h"

#include <span>

namespace kyimg {

/// Bits per sample that a lossless coder would need for the windows when their samples are the components told: each sample is
/// predicted from those of the same component to the left and above. A wrong idea of the samples predicts badly.
///
/// \param components  of successive samples, over and over; red and blue are predicted from the green of their pixel, too
/// \param step        samples and lines to the neighbours of the same component: 2 for a mosaic, else 1
double BitsPerSample(std::span<const SampleWindow> windows, const char* components, std::size_t step,
                     std::uint32_t sampleBits);

}  // namespace kyimg

#endif
