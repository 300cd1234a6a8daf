#ifndef KYIMGLIB_NAMES_NAMETABLEINTERNAL_H
#define KYIMGLIB_NAMES_NAMETABLEINTERNAL_H

#include <KyImgLib/names/KyNames.h>

#include <cstdint>
#include <span>

namespace ky {

/// Bayer patterns, as in KyPixelConverter::FLAG_BAYER_...: conversions come above names.
inline constexpr std::uint32_t kGRBG = 0x10;
inline constexpr std::uint32_t kGBRG = 0x20;
inline constexpr std::uint32_t kRGGB = 0x40;
inline constexpr std::uint32_t kBGGR = 0x80;

struct PfncName {
    const char* name;
    std::uint32_t code;  ///< 0: not a name of PFNC's list
};

/// The names of one layout of bytes; null where there is none.
struct FormatNames {
    std::int64_t types[4];     ///< that have these bytes, then zeros; the names mean the first that is registered
    std::uint32_t bayerFlags;  ///< the pattern that the names say; 0: not a mosaic
    PfncName pfnc[4];          ///< old names of GigE Vision, too
    const char* v4l2;
    const char* gstreamer;
    const char* ffmpeg;
};

/// Names of bytes that no type has.
struct AbsentFormat {
    PfncName names[8];
    const char* reason;
};

std::span<const FormatNames> AllFormatNames() noexcept;
std::span<const AbsentFormat> AllAbsentFormats() noexcept;

/// Whether a type has the bytes of a layout.
bool HasBytesOf(const FormatNames& format, std::int64_t type) noexcept;

/// The `index`-th name of a layout, conventions in the order of KY_NAMES_...; false past the end.
bool NthName(const FormatNames& format, std::uint32_t index, KyPixelFormatName& name) noexcept;

}  // namespace ky

#endif
