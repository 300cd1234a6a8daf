#ifndef KYIMGLIB_NAMES_NAMEREFUSALINTERNAL_H
#define KYIMGLIB_NAMES_NAMEREFUSALINTERNAL_H

#include <KyImgLib/names/NameSearchInternal.h>

#include <cstdint>
#include <string_view>
#include <vector>

/// What is said of names and codes that mean no type, or not one. Each returns the status and leaves its text (Refusal).
namespace ky {

/// A name that nothing is known by, or one of bytes that no type has.
std::uint32_t RefuseName(std::string_view name);
/// An ID that is not registered, as it was written.
std::uint32_t RefuseID(std::string_view text, std::int64_t id);
std::uint32_t RefuseAmbiguous(std::string_view name, const std::vector<Meaning>& meanings);
std::uint32_t RefuseCode(std::uint32_t code);
/// A type that the library knows names of, but that is not registered. The name may be null.
std::uint32_t RefuseUnregistered(const Meaning& meaning);
/// A type without a name in a convention.
std::uint32_t RefuseNameless(std::int64_t type, std::uint32_t pattern, std::uint32_t convention);

}  // namespace ky

#endif
