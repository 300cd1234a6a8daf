#ifndef KYIMGLIB_KERNELS_PIXELBAND_H
#define KYIMGLIB_KERNELS_PIXELBAND_H

#include <KyImgLib/lines/FetchAhead.h>
#include <KyImgLib/lines/LineStage.h>

#include <cstddef>
#include <cstdint>

namespace ky {

/// Lines of pixels that are converted without regard to their neighbours, and where they go.
struct PixelBand {
    const std::uint8_t* source;  ///< first pixel of the first line
    std::ptrdiff_t sourceLine;   ///< bytes from a line to the next one
    std::uint8_t* destination;
    std::ptrdiff_t destinationLine;  ///< bytes from a line to the next one
    std::size_t width;               ///< pixels of each line; whole groups, where pixels share samples
    std::uint32_t lines;
    bool isLarge;             ///< reads and writes more than the caches hold
    FetchAhead ahead;         ///< with each line
    LineJoint* joint;         ///< null where the source is in memory and nothing is asked
    std::uint32_t lineIndex;  ///< of the first line, for the joint
};

}  // namespace ky

#endif
