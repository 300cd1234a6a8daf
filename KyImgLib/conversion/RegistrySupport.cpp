// What the registry of pixel types needs of converters.
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/RegistryInternal.h>

namespace ky {

const std::int64_t& SourceTypeOf(const KyPixelConverter& converter) { return converter.GetSourceType(); }

const std::int64_t& DestinationTypeOf(const KyPixelConverter& converter) { return converter.GetDestinationType(); }

KyPixelConverter* CreateIdentityConverter(std::int64_t sourceId, std::int64_t destinationId, std::uint32_t byteSize) {
    return new KyIdentityConverter(sourceId, destinationId, byteSize, byteSize);
}

void DestroyConverter(KyPixelConverter* converter) { delete converter; }

}  // namespace ky
