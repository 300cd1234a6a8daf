#ifndef KYIMGLIB_PIXELTYPES_TYPETEXTINTERNAL_H
#define KYIMGLIB_PIXELTYPES_TYPETEXTINTERNAL_H

#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/platform/RefusalInternal.h>

namespace ky {

/// A pixel type in the text of a refusal: 0x00420012 (Bayer RGB 12-bits, Packed).
struct TypeText {
    std::int64_t id;
};

inline Refusal& operator<<(Refusal& refusal, TypeText type) noexcept {
    return refusal << Hexadecimal{static_cast<std::uint64_t>(type.id)} << " ("
                   << KyPixelTypeFactory::GetPixelTypeName(type.id) << ")";
}
inline Refusal& operator<<(Refusal&& refusal, TypeText type) noexcept { return refusal << type; }

}  // namespace ky

#endif
