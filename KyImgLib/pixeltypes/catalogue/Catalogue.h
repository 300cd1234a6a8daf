#ifndef KYIMGLIB_PIXELTYPES_CATALOGUE_CATALOGUE_H
#define KYIMGLIB_PIXELTYPES_CATALOGUE_CATALOGUE_H

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <memory>
#include <vector>

namespace ky {

/// Registers every built-in pixel type under its ID and name.
void RegisterBuiltInTypes();

/// The built-in converters in the order of their construction. Each registers itself as it is constructed.
using BuiltInConverters = std::vector<std::unique_ptr<KyPixelConverter>>;
BuiltInConverters ConstructBuiltInConverters();

}  // namespace ky

#endif
