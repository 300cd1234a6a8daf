#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/converters/colour/ReorderInternal.h>
#include <KyImgLib/converters/colour/YCbCrInternal.h>
#include <KyImgLib/converters/grayscale/UnpackInternal.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>
#include <KyImgLib/pixeltypes/catalogue/ExtendedConstructor.h>

namespace ky {

namespace {

/// A type of single samples or of YCbCr.
void RegisterRow(const ExtendedType& row) {
    const bool isBayer = (row.id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_RGB;
    const PixelGroup& group = row.group;
    const std::uint32_t bytes =
        row.otherPlanes.count != 0 ? (row.bits + 7) / 8 : (group.bytes + group.pixels - 1) / group.pixels;
    RegisterType(KyPixelType(row.id, static_cast<std::uint16_t>(row.bits), static_cast<std::uint16_t>(bytes), isBayer),
                 row.name);
}

/// All that a mosaic of 16-bit words converts to: there is no plain type that does.
void AddBayer16(Constructor& construct) {
    constexpr std::uint32_t kShift = 8, kReserved = 0;
    constexpr std::int64_t kSource = KY_TYPE_BAYER16;
    AddMissing<KyBayerRGB16ToRGB16>(construct, kSource, KY_TYPE_RGB16, kSource, kShift, kReserved);
    AddMissing<KyBayerRGB16ToRGB24>(construct, kSource, KY_TYPE_RGB24, kSource, kRGB, kShift, kReserved);
    AddMissing<KyBayerRGB16ToRGB24>(construct, kSource, KY_TYPE_BGR24, kSource, kBGR, kShift, kReserved);
    AddMissing<KyBayerRGB16ToRGB32>(construct, kSource, KY_TYPE_RGB32, kSource, kRGB, kShift, kReserved);
    AddMissing<KyBayerRGB16ToRGB32>(construct, kSource, KY_TYPE_BGR32, kSource, kBGR, kShift, kReserved);
    AddMissing<KyBayerRGB16ToRGB48>(construct, kSource, KY_TYPE_RGB48, kSource, false, kReserved);
}

/// To colours of bytes; see ConstructWordDestinations for the others.
void AddYCbCr(Constructor& construct, const ExtendedType& row) {
    for (const std::int64_t colours : {KY_TYPE_RGB24, KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32})
        AddMissing<YCbCrToRGBConverter>(construct, row.id, colours, row.id, colours);
}

/// What everything that becomes RGB24 converts to.
constexpr std::int64_t kEncoderLayouts[] = {KY_TYPE_NV12, KY_TYPE_I420};

void AddEncoderTypes(Constructor& construct) {
    const std::vector<std::int64_t> sources = SourcesOf(KY_TYPE_RGB24);
    for (const std::int64_t layout : kEncoderLayouts)
        for (std::int64_t type = layout; type <= (layout | KY_YCBCR_FULL_RANGE | KY_YCBCR_BT709); ++type) {
            AddMissing<RGBToYCbCrConverter>(construct, KY_TYPE_RGB24, type, type, true);
            // The filter has been applied by what makes RGB24.
            const KyPixelConverter& unfiltered = construct.Add<RGBToYCbCrConverter>(type, false);
            for (const std::int64_t source : sources)
                if (source != type)
                    AddChain(construct, KyPixelTypeFactory::FindConverter(source, KY_TYPE_RGB24), &unfiltered);
        }
}

/// To the plain type, and from there to everything that it converts to but planes, for which see ConstructWordDestinations.
void AddConverters(Constructor& construct, const ExtendedType& row) {
    if (row.packing == Packing::kYCbCr) return AddYCbCr(construct, row);
    if (row.plain == row.id) return AddBayer16(construct);
    if (row.packing == Packing::kNone)
        AddMissing<KyIdentityConverter>(construct, row.id, row.plain, row.id, row.plain, row.group.bytes,
                                        row.group.bytes);
    else
        AddMissing<UnpackConverter>(construct, row.id, row.plain, row);
    for (const std::int64_t destination : DestinationsOf(row.plain))
        if (destination != KY_TYPE_RGB24_PLANAR) AddChain(construct, row.id, row.plain, destination);
}

/// Four bytes a pixel, and how they come from and go to R, G, B, 0.
struct FourBytes {
    std::int64_t id;
    const char* name;
    ByteOrder toRGB32, fromRGB32;
};

constexpr std::uint8_t kZero = ByteOrder::kZero, kFull = ByteOrder::kFull;

constexpr FourBytes kFourBytes[] = {
    {KY_TYPE_RGBA32, "RGBA 32-bits", {{0, 1, 2, kZero}}, {{0, 1, 2, kFull}}},
    {KY_TYPE_BGRA32, "BGRA 32-bits", {{2, 1, 0, kZero}}, {{2, 1, 0, kFull}}},
    {KY_TYPE_ARGB32, "ARGB 32-bits", {{1, 2, 3, kZero}}, {{kFull, 0, 1, 2}}},
    {KY_TYPE_ABGR32, "ABGR 32-bits", {{3, 2, 1, kZero}}, {{kFull, 2, 1, 0}}},
};

/// From and to all that RGB32 is made from and converts to. Of two stages that could apply a filter, the reordering one ignores
/// it.
void AddFourBytes(Constructor& construct) {
    constexpr std::int64_t kRGB32 = KY_TYPE_RGB32;
    constexpr bool kAppliesFilter = true, kIgnoresFilter = false;
    for (const FourBytes& row : kFourBytes) {
        RegisterType(KyPixelType(row.id, 32, 4, false), row.name);
        AddMissing<ReorderConverter>(construct, row.id, kRGB32, row.id, kRGB32, row.toRGB32, kAppliesFilter);
        AddMissing<ReorderConverter>(construct, kRGB32, row.id, kRGB32, row.id, row.fromRGB32, kAppliesFilter);
    }
    const std::vector<std::int64_t> destinations = DestinationsOf(kRGB32), sources = SourcesOf(kRGB32);
    for (const FourBytes& row : kFourBytes) {
        const KyPixelConverter& to = construct.Add<ReorderConverter>(row.id, kRGB32, row.toRGB32, kIgnoresFilter);
        const KyPixelConverter& from = construct.Add<ReorderConverter>(kRGB32, row.id, row.fromRGB32, kIgnoresFilter);
        for (const std::int64_t destination : destinations)
            if (destination != kRGB32 && destination != KY_TYPE_RGB24_PLANAR)
                AddChain(construct, &to, KyPixelTypeFactory::FindConverter(kRGB32, destination));
        for (const std::int64_t source : sources)
            if (source != kRGB32) AddChain(construct, KyPixelTypeFactory::FindConverter(source, kRGB32), &from);
    }
}

}  // namespace

void ConstructExtendedTypes(Constructor& construct) {
    for (const ExtendedType& row : AllExtendedTypes()) {
        if (row.packing == Packing::kColours) continue;
        RegisterRow(row);
        AddConverters(construct, row);
    }
    ConstructColourSources(construct);
    AddFourBytes(construct);
    AddEncoderTypes(construct);
    ConstructWordDestinations(construct);
}

}  // namespace ky
