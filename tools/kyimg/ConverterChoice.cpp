#include "ConverterChoice.h"

#include "Errors.h"
#include "ImageSizes.h"

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace kyimg {

namespace {

/// The type whose converter serves `source`. RGB24 and BGR24 become themselves as their packed twins do: there a filter
/// counts, while a copy would pass it over.
std::int64_t TypeToConvertFrom(std::int64_t source, std::int64_t destination) {
    const bool hasTwin = source == KY_TYPE_RGB24 || source == KY_TYPE_BGR24;
    return hasTwin && source == destination ? source | KY_TYPE_PACKED : source;
}

}  // namespace

std::int64_t DefaultDestination(std::int64_t source, bool keepsMosaic) {
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(source);
    if (keepsMosaic && type.IsBayerPattern()) return type.GetPlainTypeID();
    if ((source & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE) return KY_TYPE_GRAYSCALE8;
    // A picture of 5-6-5 itself has all colours, while the library converts only the green.
    return source == KY_TYPE_RGB16 ? KY_TYPE_RGB16 : KY_TYPE_RGB24;
}

const KyPixelConverter& FindConverter(std::int64_t source, std::int64_t destination) {
    const KyPixelConverter* const found =
        KyPixelTypeFactory::FindConverter(TypeToConvertFrom(source, destination), destination);
    if (found != nullptr) return *found;
    const KyImage from = MakeImage(source, 0, 0), to = MakeImage(destination, 0, 0);
    KyImage_Convert(&from, &to, nullptr);  // says what is missing
    throw Failure(KyImage_GetError());
}

std::uint32_t BitsInRGB48(std::int64_t source) {
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(source);
    const std::uint32_t bits = type.GetPixelBitSize();
    if (type.IsBayerPattern()) return KyPixelTypeFactory::FindPixelType(type.GetPlainTypeID())->GetPixelBitSize();
    if ((source & KY_COLOUR_SPACE_MASK) != KY_COLOUR_SPACE_RGB) return 8;
    if (bits == 30 || bits == 36) return bits / 3;  // of three samples together
    if (type.GetPixelByteSize() < 6) return 8;
    return bits == 10 || bits == 12 ? bits : 16;
}

}  // namespace kyimg
