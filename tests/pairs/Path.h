#ifndef KYIMGLIB_TESTS_PAIRS_PATH_H
#define KYIMGLIB_TESTS_PAIRS_PATH_H

#include <KyImgLib/KyImgLib.h>
#include <tests/reference/TypeFormat.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

/// Types that a picture goes through, from the first to the last.
using Path = std::vector<std::int64_t>;

/// The type between the two stages of a registered chain; 0 for a converter that is none. A chain goes through the plain
/// type of its source, which only loses what the destination has no place for either, else through RGB24.
inline std::int64_t IntermediateType(std::int64_t source, std::int64_t destination) {
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(source, destination);
    if (dynamic_cast<const KyComplexConverter*>(converter) == nullptr) return 0;
    const std::int64_t plain = reference::TypeFormat(source).PlainType();
    for (const std::int64_t way : {plain, plain | (source & KY_TYPE_NORMALIZED), KY_TYPE_RGB24})
        if (way != source && way != destination && KyPixelTypeFactory::HasConverter(source, way) &&
            KyPixelTypeFactory::HasConverter(way, destination))
            return way;
    return 0;
}

/// With the chains that are stages of a chain resolved too.
inline Path PathOf(std::int64_t source, std::int64_t destination) {
    const std::int64_t between = IntermediateType(source, destination);
    if (between == 0) return {source, destination};
    Path path = PathOf(source, between);
    const Path rest = PathOf(between, destination);
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
