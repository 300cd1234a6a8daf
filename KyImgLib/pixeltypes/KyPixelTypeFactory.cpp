#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/RegistryInternal.h>
#include <KyImgLib/platform/KyGate.h>
#include <KyImgLib/platform/KyString.h>
#include <KyImgLib/platform/NullReferenceInternal.h>

#include <list>
#include <map>
#include <memory>
#include <utility>

namespace {

using TypePair = std::pair<std::int64_t, std::int64_t>;

struct ConverterDeleter {
    void operator()(KyPixelConverter* converter) const { ky::DestroyConverter(converter); }
};

struct NamedType {
    std::unique_ptr<KyPixelType> type;
    KyString name;
};

struct Registry : KyObject {
    std::map<TypePair, const KyPixelConverter*> converters;  // not owned
    std::list<std::unique_ptr<KyPixelConverter, ConverterDeleter>> createdConverters;
    std::map<std::int64_t, NamedType> types;
};

Registry* registry = nullptr;
KyGate* gate = nullptr;

/// The first call comes while the library is loaded, by one thread, so the creation needs no lock of its own.
KyGate& Gate() {
    if (gate == nullptr) gate = new KyGate;
    return *gate;
}

/// The registry, created on first use; null when there is no memory. Called inside the gate.
Registry* OpenRegistry() {
    if (registry == nullptr) registry = new Registry;
    return registry;
}

/// A registering operation: runs `change` on the open registry inside the gate.
template <typename Change>
std::uint32_t Registering(Change change) noexcept {
    try {
        const KyGateGuard inside(Gate());
        Registry* const open = OpenRegistry();
        if (open == nullptr) return KY_STATUS_OUT_OF_MEMORY;
        return change(*open);
    } catch (...) {  // no memory, or an application's type that throws
        return KY_STATUS_OUT_OF_MEMORY;
    }
}

/// Adds one type with its identity converters, all or nothing.
class TypeRegistration {
public:
    TypeRegistration(Registry& where, std::int64_t typeId)
        : open(where), id(typeId), convertersBefore(where.createdConverters.size()) {}
    TypeRegistration(const TypeRegistration&) = delete;
    TypeRegistration& operator=(const TypeRegistration&) = delete;

    /// Unless everything was added, takes back what was.
    ~TypeRegistration() {
        if (isComplete) return;
        open.types.erase(id);
        while (open.createdConverters.size() > convertersBefore) {
            const KyPixelConverter* const created = open.createdConverters.back().get();
            std::erase_if(open.converters,
                          [created](const auto& entry) { return created != nullptr && entry.second == created; });
            open.createdConverters.pop_back();
        }
    }

    /// False, or std::bad_alloc, when there is no memory.
    bool Run(const KyPixelType& type, const char* name) {
        std::unique_ptr<KyPixelType> clone(type.Clone());
        if (clone == nullptr) return false;
        KyString text(name);
        if (name == nullptr) BuildPixelTypeName(id, type, type.IsBayerPattern(), text);
        open.types.emplace(id, NamedType{std::move(clone), std::move(text)});

        const std::uint32_t byteSize = type.GetPixelByteSize();
        const bool isInterlaced = (id & KY_TYPE_INTERLACED) != 0;
        isComplete = AddIdentityConverter(id, byteSize) &&
                     (!isInterlaced || AddIdentityConverter(KyDeinterlacedTypeID(id), byteSize));
        return isComplete;
    }

private:
    bool AddIdentityConverter(std::int64_t destination, std::uint32_t byteSize) {
        if (KyPixelTypeFactory::HasConverter(id, destination)) return true;
        open.createdConverters.emplace_back();
        open.createdConverters.back().reset(ky::CreateIdentityConverter(id, destination, byteSize));
        // It registers itself, and has no way to tell that it could not.
        return KyPixelTypeFactory::HasConverter(id, destination);
    }

    Registry& open;
    const std::int64_t id;
    const std::size_t convertersBefore;
    bool isComplete = false;
};

/// The `index`-th of the registered pairs that qualify, in key order; null past the end.
template <typename Qualifies>
const TypePair* NthPair(std::uint32_t index, Qualifies qualifies) {
    if (registry == nullptr) return nullptr;
    for (const auto& [pair, converter] : registry->converters)
        if (qualifies(pair) && index-- == 0) return &pair;
    return nullptr;
}

}  // namespace

void ky::DestroyRegistry() {
    {
        const KyGateGuard inside(Gate());
        delete registry;
        registry = nullptr;
    }
    delete gate;
    gate = nullptr;
}

std::uint32_t KyPixelTypeFactory::RegisterPixelType(const std::int64_t& id, const KyPixelType* type, const char* name) {
    return Registering([&](Registry& open) -> std::uint32_t {
        if (open.types.count(id) != 0) return KY_STATUS_BAD_ARGUMENT;

        TypeRegistration registration(open, id);
        return registration.Run(*type, name) ? KY_STATUS_SUCCESS : KY_STATUS_OUT_OF_MEMORY;
    });
}

std::uint32_t KyPixelTypeFactory::RegisterPixelConverter(const std::int64_t& sourceId,
                                                         const std::int64_t& destinationId,
                                                         const KyPixelConverter* converter) {
    return Registering([&](Registry& open) -> std::uint32_t {
        const bool added = open.converters.try_emplace(TypePair(sourceId, destinationId), converter).second;
        return added ? KY_STATUS_SUCCESS : KY_STATUS_BAD_ARGUMENT;
    });
}

std::uint32_t KyPixelTypeFactory::RegisterPixelConverter(const KyPixelConverter& converter) {
    return RegisterPixelConverter(ky::SourceTypeOf(converter), ky::DestinationTypeOf(converter), &converter);
}

std::uint32_t KyPixelTypeFactory::ReplacePixelConverter(const KyPixelConverter& converter,
                                                        const KyPixelConverter** previous) {
    return Registering([&](Registry& open) -> std::uint32_t {
        const KyPixelConverter*& entry =
            open.converters[TypePair(ky::SourceTypeOf(converter), ky::DestinationTypeOf(converter))];
        if (previous != nullptr) *previous = entry;
        entry = &converter;
        return KY_STATUS_SUCCESS;
    });
}

std::uint32_t KyPixelTypeFactory::ClonePixelConverters(const std::int64_t& sourceId, const std::int64_t& newSourceId) {
    return Registering([&](Registry& open) -> std::uint32_t {
        bool cloned = false;
        // Entries added on the way have another source (or are there already), so the walk stays within its range.
        for (const auto& [pair, converter] : open.converters)
            if (pair.first == sourceId)
                cloned |= open.converters.emplace(TypePair(newSourceId, pair.second), converter).second;
        return cloned ? KY_STATUS_SUCCESS : KY_STATUS_NOTHING_CLONED;
    });
}

const KyPixelType* KyPixelTypeFactory::FindPixelType(const std::int64_t& id) {
    const KyGateGuard inside(Gate());
    if (registry == nullptr) return nullptr;
    const auto found = registry->types.find(id);
    return found == registry->types.end() ? nullptr : found->second.type.get();
}

KY_MAY_RETURN_NULL_REFERENCE const KyPixelType& KyPixelTypeFactory::GetPixelType(const std::int64_t& id) {
    return ky::ReferenceOrNull(FindPixelType(id));
}

bool KyPixelTypeFactory::HasPixelType(const std::int64_t& id) { return FindPixelType(id) != nullptr; }

KyPixelType* KyPixelTypeFactory::CreatePixelType(const std::int64_t& id) {
    const KyPixelType* const type = FindPixelType(id);
    return type == nullptr ? nullptr : type->Clone();
}

std::uint32_t KyPixelTypeFactory::CountPixelTypes(std::uint32_t bitSize, std::int64_t colourSpace, bool normalized,
                                                  bool packed, bool interlaced, bool planar, std::int64_t tapLayout,
                                                  bool isBayer) {
    const KyGateGuard inside(Gate());
    if (OpenRegistry() == nullptr) return 0;
    std::uint32_t count = 0;
    for (const auto& [id, named] : registry->types)
        if (MatchesPixelTypeAttributes(*named.type, bitSize, colourSpace, normalized, packed, interlaced, planar,
                                       tapLayout) &&
            named.type->IsBayerPattern() == isBayer)
            ++count;
    return count;
}

KyPixelType* KyPixelTypeFactory::CreatePixelType(std::uint32_t bitSize, std::int64_t colourSpace, bool normalized,
                                                 bool packed, bool interlaced, bool planar, std::int64_t tapLayout,
                                                 bool isBayer, std::uint32_t index) {
    const KyGateGuard inside(Gate());
    if (OpenRegistry() == nullptr) return nullptr;
    for (const auto& [id, named] : registry->types)
        if (MatchesPixelTypeAttributes(*named.type, bitSize, colourSpace, normalized, packed, interlaced, planar,
                                       tapLayout) &&
            named.type->IsBayerPattern() == isBayer && index-- == 0)
            return named.type->Clone();
    return nullptr;
}

const char* KyPixelTypeFactory::GetPixelTypeName(const std::int64_t& id) {
    constexpr const char* kUnregistered = "Unregistered pixel type";
    const KyGateGuard inside(Gate());
    if (registry == nullptr) return kUnregistered;
    const auto found = registry->types.find(id);
    return found == registry->types.end() ? kUnregistered : found->second.name.c_str();
}

bool KyPixelTypeFactory::EnumPixelTypes(std::uint32_t index, std::int64_t& id) {
    const KyGateGuard inside(Gate());
    if (registry == nullptr || index >= registry->types.size()) return false;
    id = std::next(registry->types.begin(), index)->first;
    return true;
}

const KyPixelConverter* KyPixelTypeFactory::FindConverter(const std::int64_t& sourceId,
                                                          const std::int64_t& destinationId) {
    const KyGateGuard inside(Gate());
    if (registry == nullptr) return nullptr;
    const auto found = registry->converters.find(TypePair(sourceId, destinationId));
    return found == registry->converters.end() ? nullptr : found->second;
}

KY_MAY_RETURN_NULL_REFERENCE const KyPixelConverter& KyPixelTypeFactory::GetConverter(
    const std::int64_t& sourceId, const std::int64_t& destinationId) {
    return ky::ReferenceOrNull(FindConverter(sourceId, destinationId));
}

bool KyPixelTypeFactory::HasConverter(const std::int64_t& sourceId, const std::int64_t& destinationId) {
    const KyGateGuard inside(Gate());
    return registry != nullptr && registry->converters.count(TypePair(sourceId, destinationId)) != 0;
}

bool KyPixelTypeFactory::EnumConverters(std::uint32_t index, std::int64_t& sourceId, std::int64_t& destinationId) {
    const KyGateGuard inside(Gate());
    const TypePair* const pair = NthPair(index, [](const TypePair&) { return true; });
    if (pair == nullptr) return false;
    sourceId = pair->first;
    destinationId = pair->second;
    return true;
}

bool KyPixelTypeFactory::EnumConverterFrom(std::uint32_t index, const std::int64_t& sourceId,
                                           std::int64_t& destinationId) {
    const KyGateGuard inside(Gate());
    const TypePair* const pair = NthPair(index, [&](const TypePair& candidate) { return candidate.first == sourceId; });
    if (pair == nullptr) return false;
    destinationId = pair->second;
    return true;
}

bool KyPixelTypeFactory::EnumConverterTo(std::uint32_t index, const std::int64_t& destinationId,
                                         std::int64_t& sourceId) {
    const KyGateGuard inside(Gate());
    const TypePair* const pair =
        NthPair(index, [&](const TypePair& candidate) { return candidate.second == destinationId; });
    if (pair == nullptr) return false;
    sourceId = pair->first;
    return true;
}
