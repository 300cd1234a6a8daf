#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/pixeltypes/RegistryInternal.h>
#include <KyImgLib/pixeltypes/catalogue/Catalogue.h>
#include <KyImgLib/platform/CpuCacheInternal.h>
#include <KyImgLib/platform/KyCpuLevel.h>

namespace ky {

namespace {

/// Everything the library builds while it is loaded, in one defined order. It goes down in the reverse one: the
/// converters, the last one first, then the registry, then what PrepareConversion() made.
class Library {
public:
    Library() {
        KyCpuLevel::GetActive();
        LastLevelCacheSize();
        PrepareConversion();
        RegisterBuiltInTypes();
        converters = ConstructBuiltInConverters();
    }

    ~Library() {
        while (!converters.empty()) converters.pop_back();
        DestroyRegistry();
    }

private:
    BuiltInConverters converters;
};

const Library library;

}  // namespace

}  // namespace ky
