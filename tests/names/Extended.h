#ifndef TESTS_NAMES_EXTENDED_H
#define TESTS_NAMES_EXTENDED_H

#include <KyImgLib/KyImgLib.h>

#include <string>

/// Registers the types of KyExtendedTypes.h, as far as names need them: without converters.
inline void RegisterExtended() {
    const auto add = [](std::int64_t fields, bool isBayer, std::int64_t first, std::int64_t last) {
        for (std::int64_t id = (KY_TYPE_EXTENDED | fields) + first; id <= (KY_TYPE_EXTENDED | fields) + last; ++id) {
            const KyPixelType type(id, 16, 2, isBayer);
            KyPixelTypeFactory::RegisterPixelType(id, &type, ("Extended type " + std::to_string(id)).c_str());
        }
    };
    add(0x00410000, false, 0x1, 0x9);
    add(0x00420000, true, 0x1, 0x6);
    add(0x00010000, false, 0xA, 0xD);
    add(0x00020000, true, 0xA, 0xE);
}

#endif
