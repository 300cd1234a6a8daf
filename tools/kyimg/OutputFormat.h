#ifndef KYIMG_OUTPUTFORMAT_H
#define KYIMG_OUTPUTFORMAT_H

#include "ByteSink.h"
#include "Picture.h"
#include "PngWriter.h"
#include "TiffWriter.h"

#include <string>

namespace kyimg {

enum class OutputFormat {
    Png,
    Tiff,
    Jpeg,
    Pnm,  ///< PPM for colour, PGM for gray
    Npy,
    Dng,  ///< a mosaic that is not demosaiced
    Raw   ///< the bytes of the destination type as they are
};

/// How hard the formats that compress try.
struct Encoding {
    PngCompression png = PngCompression::Default;
    TiffCompression tiff = TiffCompression::None;
    int jpegQuality = 90;
};

/// The format called `name`, like "png" or "ppm", or, when that is empty, the one that the extension of `path` calls for; in
/// any case of letters. Throws UsageError, also for a format that this program was built without.
OutputFormat FindOutputFormat(const std::string& path, const std::string& name);

/// "png, tiff, jpeg": the names of the formats that can be written, and of those that this program was built without.
///@{
std::string ListFormats();
std::string ListMissingFormats();
///@}

/// Throws UsageError when files of the format cannot hold such a frame, whose bytes need not be there yet; it tells which
/// can.
void CheckHolds(OutputFormat format, const ConvertedFrame& frame);

/// Whether a file of the format is complete with a single frame, so that a second one cannot follow it in a stream.
bool HoldsOneFrame(OutputFormat format);

/// Writes the contents of a file. Throws Failure.
void Encode(OutputFormat format, const Encoding& encoding, const ConvertedFrame& frame, const ByteSink& sink);

}  // namespace kyimg

#endif
