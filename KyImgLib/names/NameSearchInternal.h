#ifndef KYIMGLIB_NAMES_NAMESEARCHINTERNAL_H
#define KYIMGLIB_NAMES_NAMESEARCHINTERNAL_H

#include <KyImgLib/names/NameTableInternal.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ky {

/// A name, and what it stands for.
struct Meaning {
    const char* name;
    std::int64_t type;
    std::uint32_t bayerFlags;  ///< the pattern that the name says; 0: none
};

/// What of a name counts in a comparison that is not exact: letters, in either case, and digits, without "bits".
std::string Essence(std::string_view name);

/// What `name` may mean, best kind of match first: all meanings of that kind, each once. Types need not be registered.
std::vector<Meaning> FindMeanings(std::string_view name);

/// What a PFNC code means. The type need not be registered.
std::optional<Meaning> FindCode(std::uint32_t code);

/// A format that no type has, by its name or by its PFNC code; null for others.
const AbsentFormat* FindAbsent(std::string_view name);
const AbsentFormat* FindAbsent(std::uint32_t code);

/// Up to three names of registered types that come near, the nearest one first.
std::vector<Meaning> FindNear(std::string_view name);

}  // namespace ky

#endif
