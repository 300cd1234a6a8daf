#ifndef KYIMGLIB_PIXELTYPES_REGISTRYINTERNAL_H
#define KYIMGLIB_PIXELTYPES_REGISTRYINTERNAL_H

#include <cstdint>

class KyPixelConverter;

/// What the registry needs of converters. Pixel types come below converters in the order of the folders, so the
/// registry declares it here and conversion/ supplies it.
namespace ky {

const std::int64_t& SourceTypeOf(const KyPixelConverter& converter);
const std::int64_t& DestinationTypeOf(const KyPixelConverter& converter);

/// A new identity converter, registered by its own constructor where the pair is free; null when there is no memory.
KyPixelConverter* CreateIdentityConverter(std::int64_t sourceId, std::int64_t destinationId, std::uint32_t byteSize);
void DestroyConverter(KyPixelConverter* converter);

/// Destroys the registry with everything it owns. Later lookups find nothing. Called once, when the library is unloaded.
void DestroyRegistry();

}  // namespace ky

#endif
