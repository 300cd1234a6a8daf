#ifndef KYIMG_CAMERANAMES_H
#define KYIMG_CAMERANAMES_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kyimg {

/// The name of a type by one of the standards that cameras, drivers and other programs use for the same bytes.
struct CameraName {
    std::string name;
    std::string standard;  ///< PFNC (GenICam and GigE Vision), V4L2, GStreamer or FFmpeg
    std::string pattern;   ///< Bayer pattern, like "RGGB"; empty for other types
    std::int64_t type;     ///< the type that the name means
};

/// Each name once, with the type that it means.
const std::vector<CameraName>& AllCameraNames();

/// The names for the bytes of a type. Several types may have the same bytes; a name means only one of them.
std::vector<CameraName> CameraNamesOf(std::int64_t type);

/// What to say of a type's names, standard by standard: {"PFNC", "BayerGR8, BayerRG8, BayerGB8, BayerBG8"}.
std::vector<std::pair<std::string, std::string>> DescribeCameraNames(std::int64_t type);

}  // namespace kyimg

#endif
