#ifndef KYIMG_TYPENAMES_H
#define KYIMG_TYPENAMES_H

#include <cstdint>
#include <string>
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

/// The registered type that a person means by `text`: its ID in hexadecimal (0x...) or decimal, one of the short names
/// RGB16, RGB24, BGR24, RGB32, BGR32, the library name, or a name of another standard (CameraNames.h). In names only letters
/// and digits count, in either case, and "bits" may be left out. Throws UsageError, which suggests names that come near.
std::int64_t FindType(const std::string& text);

/// The Bayer pattern that `text` says beside the type: "RGGB" of BayerRG8. Empty when it says none, as an ID or a library
/// name.
std::string FindBayerPattern(const std::string& text);

}  // namespace kyimg

#endif
