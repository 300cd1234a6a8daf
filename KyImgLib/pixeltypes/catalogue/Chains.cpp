#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

#include <vector>

namespace ky {

namespace {

constexpr std::int64_t kGray10 = 0x00010002, kGray12 = 0x00010003;

/// The type of single samples in scan order, right-aligned, not interlaced, that a grayscale or Bayer type is a variant of;
/// RGB24 for one whose pixels have several samples.
std::int64_t PlainType(const KyPixelType& type) {
    const std::int64_t id = type.GetTypeID();
    const bool isGrayscale = (id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE;
    if (!isGrayscale && !type.IsBayerPattern()) return KY_TYPE_RGB24;
    switch (id & (KY_COLOUR_SPACE_MASK | KY_TYPE_INDEX_MASK)) {
        case 0x00010006: return KY_TYPE_GRAYSCALE8;  // four taps
        case 0x00010007: return kGray10;
        case 0x00010008: return kGray10;  // packed as GigE Vision does it
        case 0x00010009: return kGray12;
        default: return id & (KY_COLOUR_SPACE_MASK | KY_TYPE_INDEX_MASK);
    }
}

/// What users want of a picture of some type.
std::vector<std::int64_t> WantedTypes(const KyPixelType& type) {
    std::vector<std::int64_t> wanted = {PlainType(type)};
    if ((type.GetTypeID() & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE) wanted.push_back(KY_TYPE_GRAYSCALE8);
    wanted.insert(wanted.end(),
                  {KY_TYPE_RGB24, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32, KY_TYPE_RGB16, KY_TYPE_RGB24_PLANAR});
    return wanted;
}

/// A converter through `intermediate`, when there are two that lead there and on.
bool AddChain(Constructor& construct, std::int64_t source, std::int64_t intermediate, std::int64_t destination) {
    if (source == intermediate || intermediate == destination) return false;
    const KyPixelConverter* const first = KyPixelTypeFactory::FindConverter(source, intermediate);
    const KyPixelConverter* const second = KyPixelTypeFactory::FindConverter(intermediate, destination);
    if (first == nullptr || second == nullptr) return false;
    construct.Add<KyComplexConverter>(first, second);
    return true;
}

void AddChainsFrom(Constructor& construct, const KyPixelType& type) {
    const std::int64_t source = type.GetTypeID();
    for (const std::int64_t destination : WantedTypes(type)) {
        if (KyPixelTypeFactory::HasConverter(source, destination)) continue;
        // The first that leads there: no more of the picture is lost than the destination asks for.
        const std::int64_t ways[] = {PlainType(type), PlainType(type) | (source & KY_TYPE_NORMALIZED), KY_TYPE_RGB24};
        for (const std::int64_t way : ways)
            if (AddChain(construct, source, way, destination)) break;
    }
}

}  // namespace

void ConstructChains(Constructor& construct) {
    std::vector<const KyPixelType*> types;
    std::int64_t id = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumPixelTypes(index, id); ++index)
        if ((id & KY_TYPE_PLANAR) == 0) types.push_back(KyPixelTypeFactory::FindPixelType(id));
    // Plain types first: chains from the others go on with theirs.
    for (const bool plain : {true, false})
        for (const KyPixelType* const type : types)
            if ((PlainType(*type) == type->GetTypeID()) == plain) AddChainsFrom(construct, *type);
}

}  // namespace ky
