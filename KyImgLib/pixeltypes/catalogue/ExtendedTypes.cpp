#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/converters/grayscale/UnpackInternal.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

#include <new>

namespace ky {

namespace {

/// Registers a type with the sizes that types of its kind have. One that is there already stays.
void RegisterType(const ExtendedType& row) {
    const bool isBayer = (row.id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_RGB;
    const std::uint16_t bytes = row.bits < 8 ? 1 : 2;
    const KyPixelType type(row.id, static_cast<std::uint16_t>(row.bits), bytes, isBayer);
    if (KyPixelTypeFactory::RegisterPixelType(row.id, &type, row.name) == KY_STATUS_OUT_OF_MEMORY)
        throw std::bad_alloc();
}

/// A converter that is there already stays, and no other one is made.
template <class Converter, class... Arguments>
void AddMissing(Constructor& construct, std::int64_t source, std::int64_t destination, const Arguments&... arguments) {
    if (!KyPixelTypeFactory::HasConverter(source, destination)) construct.Add<Converter>(arguments...);
}

/// A chain through `intermediate`.
void AddChain(Constructor& construct, std::int64_t source, std::int64_t intermediate, std::int64_t destination) {
    AddMissing<KyComplexConverter>(construct, source, destination,
                                   KyPixelTypeFactory::FindConverter(source, intermediate),
                                   KyPixelTypeFactory::FindConverter(intermediate, destination));
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
    AddChain(construct, kSource, KY_TYPE_RGB24, KY_TYPE_RGB24_PLANAR);
}

/// To the plain type, and from there to everything that it converts to.
void AddConverters(Constructor& construct, const ExtendedType& row) {
    if (row.plain == row.id) return AddBayer16(construct);
    AddMissing<UnpackConverter>(construct, row.id, row.plain, row);
    std::int64_t destination = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumConverterFrom(i, row.plain, destination); ++i)
        if (destination != row.plain) AddChain(construct, row.id, row.plain, destination);
}

}  // namespace

void ConstructExtendedTypes(Constructor& construct) {
    for (const ExtendedType& row : AllExtendedTypes()) {
        RegisterType(row);
        AddConverters(construct, row);
    }
}

}  // namespace ky
