#ifndef KYIMG_GUESS_COLOURCUES_H
#define KYIMG_GUESS_COLOURCUES_H

#include <cstdint>
#include <span>
#include <vector>

namespace kyimg {

/// The two samples of a cell that may be red or blue, and the green of the same cell.
struct ColourCell {
    std::uint16_t first, green, second;
};

/// How likely it is that the first sample is red and the second blue, from 0 to 1. No byte tells that; but in most scenes
/// strong colours stand out upwards in red and downwards in blue.
double LikelihoodOfRedFirst(std::span<const ColourCell> cells);

/// The four samples of a cell of a mosaic: two of a line, and the two below.
struct MosaicCell {
    std::uint16_t samples[4];
};

/// What a mosaic tells of its Bayer pattern.
struct PatternCues {
    double greenFirst;  ///< likelihood that green is the first sample and the last, and not the two others
    double
        differences[2];  ///< mean difference of the first and last sample, and of the two others, over the mean sample
    double redFirst[2];  ///< likelihood that the first of the two others is red: if green is first, and if it is not

    /// Of the flag of a pattern.
    double GetLikelihood(std::uint32_t bayerFlag) const;
};

PatternCues FindPatternCues(std::span<const MosaicCell> cells);

}  // namespace kyimg

#endif
