#include "ConverterChoice.h"

#include "Errors.h"
#include "ImageSizes.h"

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <memory>
#include <vector>

namespace kyimg {

namespace {

/// The library has these converters but does not register them: who needs one makes it.
const KyPixelConverter& MakeConverterToRGB48(std::int64_t source) {
    // Being made registers it, so the registry finds it the next time, and it must stay.
    static std::vector<std::unique_ptr<KyPixelConverter>> made;
    made.push_back(std::make_unique<KyBayerRGB16ToRGB48>(source, false, 0U));
    return *made.back();
}

/// The type whose converter serves `source`. RGB24 and BGR24 become themselves as their packed twins do: there a filter
/// counts, while a copy would pass it over.
std::int64_t TypeToConvertFrom(std::int64_t source, std::int64_t destination) {
    const bool hasTwin = source == KY_TYPE_RGB24 || source == KY_TYPE_BGR24;
    return hasTwin && source == destination ? source | KY_TYPE_PACKED : source;
}

}  // namespace

std::int64_t DefaultDestination(std::int64_t source) {
    if ((source & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE) return KY_TYPE_GRAYSCALE8;
    // A picture of 5-6-5 itself has all colours, while the library converts only the green.
    return source == KY_TYPE_RGB16 ? KY_TYPE_RGB16 : KY_TYPE_RGB24;
}

const KyPixelConverter& FindConverter(std::int64_t source, std::int64_t destination) {
    const KyPixelConverter* const found =
        KyPixelTypeFactory::FindConverter(TypeToConvertFrom(source, destination), destination);
    if (found != nullptr) return *found;
    if (destination == KY_TYPE_RGB48 && IsMosaicOfWords(source)) return MakeConverterToRGB48(source);
    const KyImage from = MakeImage(source, 0, 0), to = MakeImage(destination, 0, 0);
    KyImage_Convert(&from, &to, nullptr);  // says what is missing
    throw Failure(KyImage_GetError());
}

bool IsMosaicOfWords(std::int64_t id) {
    constexpr std::int64_t kOther =
        KY_TYPE_NORMALIZED | KY_TYPE_INTERLACED | KY_TYPE_PACKED | KY_TYPE_PLANAR | KY_TAP_LAYOUT_MASK;
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
    return type.IsBayerPattern() && (id & kOther) == 0 && type.GetPixelByteSize() == 2;
}

}  // namespace kyimg
