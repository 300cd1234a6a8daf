#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/flat/GuardInternal.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

using ky::Guarded;

namespace {
constexpr KyPixelType* kNoType = nullptr;
}

uint32_t KyExtendedTypes_Register(void) { return KyExtendedTypes::Register(); }

bool KyPixelTypeFactory_EnumPixelTypes(uint32_t index, int64_t* id) {
    return Guarded(id, false, [=](auto& found) { return KyPixelTypeFactory::EnumPixelTypes(index, found); });
}

bool KyPixelTypeFactory_HasPixelType(int64_t id) { return KyPixelTypeFactory::HasPixelType(id); }

const char* KyPixelTypeFactory_GetPixelTypeName(int64_t id) { return KyPixelTypeFactory::GetPixelTypeName(id); }

KyPixelType* KyPixelTypeFactory_CreatePixelType(int64_t id) {
    return Guarded(kNoType, [=] { return KyPixelTypeFactory::CreatePixelType(id); });
}

KyPixelType* KyPixelTypeFactory_CreatePixelType2(uint32_t bitSize, int64_t colourSpace, int normalized, int packed,
                                                 int interlaced, int planar, int64_t tapLayout, int isBayer,
                                                 uint32_t index) {
    return Guarded(kNoType, [=] {
        return KyPixelTypeFactory::CreatePixelType(bitSize, colourSpace, normalized != 0, packed != 0, interlaced != 0,
                                                   planar != 0, tapLayout, isBayer != 0, index);
    });
}

bool KyPixelTypeFactory_HasConverter(int64_t sourceId, int64_t destinationId) {
    return KyPixelTypeFactory::HasConverter(sourceId, destinationId);
}

const KyPixelConverter* KyPixelTypeFactory_GetConverter(int64_t sourceId, int64_t destinationId) {
    return KyPixelTypeFactory::FindConverter(sourceId, destinationId);
}

bool KyPixelTypeFactory_EnumConverterFrom(uint32_t index, int64_t sourceId, int64_t* destinationId) {
    return Guarded(destinationId, false,
                   [=](auto& found) { return KyPixelTypeFactory::EnumConverterFrom(index, sourceId, found); });
}

bool KyPixelTypeFactory_EnumConverterTo(uint32_t index, int64_t destinationId, int64_t* sourceId) {
    return Guarded(sourceId, false,
                   [=](auto& found) { return KyPixelTypeFactory::EnumConverterTo(index, destinationId, found); });
}
