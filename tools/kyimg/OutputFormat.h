#ifndef KYIMG_OUTPUTFORMAT_H
#define KYIMG_OUTPUTFORMAT_H

#include "Picture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kyimg {

enum class OutputFormat {
    Png,
    Pnm,  ///< PPM for colour, PGM for gray
    Raw   ///< the bytes of the destination type as they are
};

/// The format called `name` (png, ppm, pgm, pnm, raw) or, when that is empty, the one that the extension of `path` calls
/// for. Throws UsageError.
OutputFormat FindOutputFormat(const std::string& path, const std::string& name);

/// The file contents. Throws Failure.
std::vector<std::uint8_t> Encode(OutputFormat format, const ConvertedFrame& frame);

}  // namespace kyimg

#endif
