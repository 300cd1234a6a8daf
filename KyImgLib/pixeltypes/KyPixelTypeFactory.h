#ifndef KYIMGLIB_PIXELTYPES_KYPIXELTYPEFACTORY_H
#define KYIMGLIB_PIXELTYPES_KYPIXELTYPEFACTORY_H

#include <KyImgLib/platform/KyExport.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstdint>

class KyPixelConverter;
class KyPixelType;

/// The process-wide registry of pixel types, their display names and the converters between them.
///
/// It is filled with everything built in while the library is loaded; applications add types and converters of
/// their own. Nothing is ever removed, so every pointer and reference that a lookup returns stays valid until the
/// library is unloaded (converters: for as long as their owner keeps them).
///
/// Every function may be called from any thread; one recursive lock serialises them. None throws.
/// Registering functions return a status code of KyStatus.h.
class KYIMGLIB_API KyPixelTypeFactory {
public:
    KyPixelTypeFactory() = delete;

    /// \name Registering
    ///@{

    /// Stores a clone of `type` (not null; the caller keeps its own object) under `id`, with a copy of `name`, or
    /// with the name that BuildPixelTypeName() makes when `name` is null.
    ///
    /// Creates the identity converter from `id` to itself and, for an interlaced ID, the one from `id` to its
    /// non-interlaced counterpart, unless the pair has a converter; the registry owns both.
    /// Returns KY_STATUS_SUCCESS; KY_STATUS_BAD_ARGUMENT when the ID is registered already (the first registration
    /// stays whole, name included); KY_STATUS_OUT_OF_MEMORY.
    static std::uint32_t RegisterPixelType(const std::int64_t& id, const KyPixelType* type, const char* name);

    /// Stores `converter`, which stays the caller's and must outlive every use, under the pair. A converter object
    /// does this by itself when it is constructed.
    /// Returns KY_STATUS_SUCCESS; KY_STATUS_BAD_ARGUMENT when the pair is taken (the first one stays);
    /// KY_STATUS_OUT_OF_MEMORY.
    static std::uint32_t RegisterPixelConverter(const std::int64_t& sourceId, const std::int64_t& destinationId,
                                                const KyPixelConverter* converter);
    /// The same under the converter's own source and destination type.
    static std::uint32_t RegisterPixelConverter(const KyPixelConverter& converter);

    /// Stores `converter` under its source and destination type whether or not the pair is taken. When `previous` is
    /// not null it receives the converter that was there, or null; that one is not deleted.
    /// Returns KY_STATUS_SUCCESS or KY_STATUS_OUT_OF_MEMORY.
    static std::uint32_t ReplacePixelConverter(const KyPixelConverter& converter, const KyPixelConverter** previous);

    /// Registers every converter from `sourceId` also from `newSourceId`, where that pair is free. Meant for a new ID
    /// whose buffers are laid out like the old one's: the converter objects are shared.
    /// Returns KY_STATUS_SUCCESS when at least one was added, otherwise KY_STATUS_NOTHING_CLONED.
    static std::uint32_t ClonePixelConverters(const std::int64_t& sourceId, const std::int64_t& newSourceId);
    ///@}

    /// \name Types
    ///@{

    /// The registered object, owned by the registry; null when the ID is not registered.
    static const KyPixelType* FindPixelType(const std::int64_t& id);
    /// The same as a reference, which is a null reference when the ID is not registered: a compiler may assume that
    /// cannot be, so check HasPixelType() first or use FindPixelType().
    static const KyPixelType& GetPixelType(const std::int64_t& id);
    static bool HasPixelType(const std::int64_t& id);

    /// A new clone of the registered object, owned by the caller; null when the ID is not registered.
    static KyPixelType* CreatePixelType(const std::int64_t& id);

    /// Number of registered types with exactly these attributes (MatchesPixelTypeAttributes()) and this Bayer
    /// property.
    static std::uint32_t CountPixelTypes(std::uint32_t bitSize, std::int64_t colourSpace, bool normalized, bool packed,
                                         bool interlaced, bool planar, std::int64_t tapLayout, bool isBayer);
    /// A new clone, owned by the caller, of the `index`-th (from 0, by ascending ID) of the types that
    /// CountPixelTypes() counts; null when there are not that many.
    static KyPixelType* CreatePixelType(std::uint32_t bitSize, std::int64_t colourSpace, bool normalized, bool packed,
                                        bool interlaced, bool planar, std::int64_t tapLayout, bool isBayer,
                                        std::uint32_t index);

    /// The display name, valid while the library is loaded; "Unregistered pixel type" for an unknown ID.
    static const char* GetPixelTypeName(const std::int64_t& id);

    /// Writes the ID of the `index`-th registered type (from 0, by ascending ID); false, and nothing written, at or
    /// past the end.
    static bool EnumPixelTypes(std::uint32_t index, std::int64_t& id);
    ///@}

    /// \name Converters
    ///@{

    /// The converter registered for the pair; null when there is none.
    static const KyPixelConverter* FindConverter(const std::int64_t& sourceId, const std::int64_t& destinationId);
    /// The same as a reference, which is a null reference when there is none; see GetPixelType().
    static const KyPixelConverter& GetConverter(const std::int64_t& sourceId, const std::int64_t& destinationId);
    static bool HasConverter(const std::int64_t& sourceId, const std::int64_t& destinationId);

    /// The `index`-th pair (from 0, by ascending source ID, then destination ID) of all, of those from `sourceId`, of
    /// those to `destinationId`. Past the end they return false and write nothing. Each call walks from the start.
    ///@{
    static bool EnumConverters(std::uint32_t index, std::int64_t& sourceId, std::int64_t& destinationId);
    static bool EnumConverterFrom(std::uint32_t index, const std::int64_t& sourceId, std::int64_t& destinationId);
    static bool EnumConverterTo(std::uint32_t index, const std::int64_t& destinationId, std::int64_t& sourceId);
    ///@}
    ///@}
};

#endif
