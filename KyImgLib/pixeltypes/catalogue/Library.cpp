#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/RegistryInternal.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>
#include <KyImgLib/platform/CpuCacheInternal.h>
#include <KyImgLib/platform/KyCpuLevel.h>

#include <exception>
#include <mutex>

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
        extended.Clear();
        while (!converters.empty()) converters.pop_back();
        DestroyRegistry();
    }

    /// What an earlier call has made is kept; the next one makes the rest.
    std::uint32_t RegisterExtendedTypes() noexcept {
        try {
            const std::lock_guard lock(registering);
            if (!hasExtended) ConstructExtendedTypes(extended);
            hasExtended = true;
            return KY_STATUS_SUCCESS;
        } catch (const std::exception&) {
            return KY_STATUS_OUT_OF_MEMORY;
        }
    }

private:
    BuiltInConverters converters;
    std::mutex registering;
    Constructor extended;
    bool hasExtended = false;
};

Library library;

}  // namespace

}  // namespace ky

std::uint32_t KyExtendedTypes::Register() noexcept { return ky::library.RegisterExtendedTypes(); }
