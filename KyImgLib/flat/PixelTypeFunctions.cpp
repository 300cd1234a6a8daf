#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/flat/GuardInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>

using ky::Guarded;

namespace {

/// What a null type answers for its ID: the upper half is zero, so it is not -1.
constexpr int64_t kNoTypeID = 0xFFFFFFFF;

}  // namespace

void KyPixelType_Destroy(KyPixelType* type) { delete type; }

KyPixelType* KyPixelType_Clone(const KyPixelType* type) {
    return Guarded(type, static_cast<KyPixelType*>(nullptr), [](auto& t) { return t.Clone(); });
}

int64_t KyPixelType_GetTypeID(const KyPixelType* type) {
    return Guarded(type, kNoTypeID, [](auto& t) { return t.GetTypeID(); });
}

uint16_t KyPixelType_GetPixelBitSize(const KyPixelType* type) {
    return Guarded(type, uint16_t{0}, [](auto& t) { return t.GetPixelBitSize(); });
}

uint16_t KyPixelType_GetPixelByteSize(const KyPixelType* type) {
    return Guarded(type, uint16_t{0}, [](auto& t) { return t.GetPixelByteSize(); });
}

bool KyPixelType_IsBayerPattern(const KyPixelType* type) {
    return Guarded(type, false, [](auto& t) { return t.IsBayerPattern(); });
}

uint32_t KyPixelType_GetBufferSizeFor(const KyPixelType* type, uint32_t width, uint32_t height) {
    return Guarded(type, uint32_t{0}, [=](auto& t) { return t.GetBufferSizeFor(width, height); });
}

bool KyPixelType_HasConverterTo(const KyPixelType* type, const KyPixelType* other) {
    return Guarded(type, false, [=](auto& t) { return t.HasConverterTo(*other); });
}

bool KyPixelType_HasConverterFrom(const KyPixelType* type, const KyPixelType* other) {
    return Guarded(type, false, [=](auto& t) { return t.HasConverterFrom(*other); });
}

const KyPixelConverter* KyPixelType_GetConverterTo(const KyPixelType* type, const KyPixelType* other) {
    return Guarded(type, static_cast<const KyPixelConverter*>(nullptr),
                   [=](auto& t) { return t.FindConverterTo(*other); });
}

const KyPixelConverter* KyPixelType_GetConverterFrom(const KyPixelType* type, const KyPixelType* other) {
    return Guarded(type, static_cast<const KyPixelConverter*>(nullptr),
                   [=](auto& t) { return other->FindConverterTo(t); });
}
