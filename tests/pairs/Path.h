#ifndef KYIMGLIB_TESTS_PAIRS_PATH_H
#define KYIMGLIB_TESTS_PAIRS_PATH_H

#include <KyImgLib/KyImgLib.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

/// Types that a picture goes through, from the first to the last.
using Path = std::vector<std::int64_t>;

/// A converter's two types, with all between them when it is a chain.
inline Path PathOf(const KyPixelConverter& converter) {
    const auto* const chain = dynamic_cast<const KyComplexConverter*>(&converter);
    if (chain == nullptr) return {converter.GetSourceType(), converter.GetDestinationType()};
    Path path = PathOf(chain->GetFirst());
    const Path rest = PathOf(chain->GetSecond());
    path.insert(path.end(), rest.begin() + 1, rest.end());
    return path;
}

inline std::string Describe(const Path& path) {
    std::string text;
    for (const std::int64_t type : path) {
        char id[20];
        std::snprintf(id, sizeof id, "%s0x%08X", text.empty() ? "" : " > ", static_cast<unsigned>(type));
        text += id;
    }
    return text;
}

#endif
