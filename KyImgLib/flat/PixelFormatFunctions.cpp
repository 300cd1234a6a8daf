#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/names/KyPixelFormat.h>
#include <KyImgLib/names/NameTableInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

// Conversions, which define the flags, come above names.
static_assert(ky::kGRBG == KY_FLAG_BAYER_GRBG && ky::kGBRG == KY_FLAG_BAYER_GBRG && ky::kRGGB == KY_FLAG_BAYER_RGGB &&
              ky::kBGGR == KY_FLAG_BAYER_BGGR);

uint32_t KyPixelFormat_Find(const char* name, int64_t* type, uint32_t* bayerFlags) {
    if (type == nullptr) return ky::Refusal(KY_STATUS_BAD_ARGUMENT) << "type is null";
    return KyPixelFormat::Find(name, *type, bayerFlags);
}

uint32_t KyPixelFormat_FindByPFNC(uint32_t code, int64_t* type, uint32_t* bayerFlags) {
    if (type == nullptr) return ky::Refusal(KY_STATUS_BAD_ARGUMENT) << "type is null";
    return KyPixelFormat::FindByPFNC(code, *type, bayerFlags);
}

uint32_t KyPixelFormat_GetName(int64_t type, uint32_t bayerFlags, uint32_t convention, char* buffer, size_t size) {
    return KyPixelFormat::GetName(type, bayerFlags, convention, buffer, size);
}

bool KyPixelFormat_EnumNames(int64_t type, uint32_t index, KyPixelFormatName* name) {
    return name != nullptr && KyPixelFormat::EnumNames(type, index, *name);
}
