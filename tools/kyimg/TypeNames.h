#ifndef KYIMG_TYPENAMES_H
#define KYIMG_TYPENAMES_H

#include <KyImgLib/names/KyNames.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kyimg {

/// "0x00020010"
std::string FormatTypeID(std::int64_t id);

/// "Bayer RGB 8-bits (0x00020010)"
std::string DescribeType(std::int64_t id);

/// The library name; with the short name where another type has the same library name: "RGB 32-bits [BGR32]".
std::string LibraryName(std::int64_t id);

/// IDs of all registered types, ascending.
std::vector<std::int64_t> AllTypes();

/// A registered type as a person names it, and the Bayer pattern that the name says, a flag of a conversion; 0: none.
struct NamedType {
    std::int64_t id;
    std::uint32_t bayerFlags;
};

/// What KyPixelFormat::Find() makes of `text`. Throws UsageError with its text.
NamedType FindNamedType(const std::string& text);
inline std::int64_t FindType(const std::string& text) { return FindNamedType(text).id; }

/// The names that PFNC, V4L2, GStreamer and FFmpeg have for the bytes of a type.
std::vector<KyPixelFormatName> CameraNamesOf(std::int64_t type);

/// What to say of these, convention by convention: {"PFNC", "BayerGR8, BayerRG8, BayerGB8, BayerBG8"}.
std::vector<std::pair<std::string, std::string>> DescribeCameraNames(std::int64_t type);

/// "PFNC", "V4L2", "GStreamer" or "FFmpeg"
const char* ConventionText(std::uint32_t convention);

/// "RGGB" for the flag of a Bayer pattern; "" for 0.
const char* PatternText(std::uint32_t bayerFlags);

}  // namespace kyimg

#endif
