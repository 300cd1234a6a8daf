#ifndef PLUGINS_GSTREAMER_FORMATS_H
#define PLUGINS_GSTREAMER_FORMATS_H

#include <gst/video/video.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kygst {

/// A format of video/x-raw or video/x-bayer, as the library knows it.
struct Format {
    std::string name;
    std::int64_t source;         ///< pixel type of input
    std::int64_t destination;    ///< pixel type of output; 0: none
    std::uint32_t bayerPattern;  ///< KY_FLAG_BAYER_... of video/x-bayer
};

/// Formats of video/x-raw that this GStreamer has, those that are preferred as output of colours first.
const std::vector<Format>& RawFormats();
/// Formats of video/x-bayer.
const std::vector<Format>& BayerFormats();
/// The one of that name; null when there is none.
const Format* FindFormat(const std::vector<Format>& formats, const char* name);

/// Makes a YCbCr type its variant for the matrix and range in `info`. False where the library has no such variant.
bool ApplyColorimetry(const GstVideoInfo& info, std::int64_t& type);

}  // namespace kygst

#endif
