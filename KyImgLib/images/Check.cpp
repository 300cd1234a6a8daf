#include <KyImgLib/images/CheckInternal.h>

#include <KyImgLib/conversion/ImageConversionInternal.h>
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/TypeTextInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

#include <algorithm>
#include <typeinfo>

namespace ky {

namespace {

std::uint32_t RefusePair(std::int64_t sourceType, std::int64_t destinationType) {
    constexpr std::uint32_t kMostNamed = 5;
    Refusal refusal(KY_STATUS_NOT_SUPPORTED);
    refusal << "no converter is registered from " << TypeText{sourceType} << " to " << TypeText{destinationType}
            << "; the source converts to ";
    std::int64_t other = 0;
    std::uint32_t count = 0;
    for (; KyPixelTypeFactory::EnumConverterFrom(count, sourceType, other); ++count)
        if (count < kMostNamed) refusal << (count == 0 ? "" : ", ") << TypeText{other};
    if (count == 0) refusal << "nothing";
    if (count > kMostNamed) refusal << " and " << count - kMostNamed << " more";
    return refusal;
}

bool CopiesLines(const ImagePair& pair) {
    return typeid(*pair.converter) == typeid(KyIdentityConverter) && pair.source.HasPlanesOf(pair.destination);
}

/// Whether images of a type have the planes that a converter was made for, of another type perhaps.
bool HasPlanesOf(std::int64_t type, const Layout& layout, std::int64_t madeFor) {
    if (type == madeFor) return true;
    Layout expected;
    const bool arePlanar = ((type | madeFor) & KY_TYPE_PLANAR) != 0;
    return !arePlanar || (FindLayout("", madeFor, expected) == KY_STATUS_SUCCESS && layout.HasPlanesOf(expected));
}

/// Whether kernels of the converter stay inside of images of these types. An application may have made a converter for
/// types of other sizes, or registered one for types that it was not made for.
bool AgreesOnBytes(const ImagePair& pair) {
    constexpr std::uint32_t kPixels = 8;  // whole groups of every type that kernels read
    const KyPixelConverter& converter = *pair.converter;
    const std::int64_t differences = (converter.GetSourceType() ^ pair.sourceType) & KY_TYPE_INTERLACED;
    // The identity's kernel copies single planes only.
    const bool copiesPlanes = typeid(converter) == typeid(KyIdentityConverter) && pair.source.Planes() > 1;
    return differences == 0 && !copiesPlanes &&
           converter.GetSourceByteSize(kPixels) == pair.source.LineBytesOfPlanes(kPixels) &&
           converter.GetDestinationByteSize(kPixels) == pair.destination.LineBytesOfPlanes(kPixels) &&
           HasPlanesOf(pair.sourceType, pair.source, converter.GetSourceType()) &&
           HasPlanesOf(pair.destinationType, pair.destination, converter.GetDestinationType());
}

std::uint32_t FindLayouts(std::int64_t sourceType, std::int64_t destinationType, ImagePair& pair) {
    pair = {};
    pair.sourceType = sourceType;
    pair.destinationType = destinationType;
    if (const std::uint32_t status = FindLayout("source", sourceType, pair.source)) return status;
    const std::uint32_t status = FindLayout("destination", destinationType, pair.destination);
    pair.destination = pair.destination.Deinterlaced();
    return status;
}

void SetConverter(ImagePair& pair, const KyPixelConverter& converter) {
    pair.converter = &converter;
    pair.copiesLines = CopiesLines(pair);
    pair.agreesOnBytes = AgreesOnBytes(pair);
}

std::uint32_t CheckOverlap(const CheckedConversion& checked) {
    const auto source = reinterpret_cast<std::uintptr_t>(checked.source.data);
    const auto destination = reinterpret_cast<std::uintptr_t>(checked.destination.data);
    const std::uintptr_t begin = std::max(source, destination);
    const std::uintptr_t end = std::min(source + checked.sourcePlace.size, destination + checked.destinationPlace.size);
    if (begin >= end) return KY_STATUS_SUCCESS;
    const bool destinationIsLater = destination >= source;
    return Refusal(KY_STATUS_BAD_ARGUMENT)
           << "source and destination overlap: the destination begins "
           << (destinationIsLater ? destination - source : source - destination)
           << (destinationIsLater ? " bytes after the source, which has " : " bytes before the source and has ")
           << (destinationIsLater ? checked.sourcePlace.size : checked.destinationPlace.size);
}

std::uint32_t CheckBand(const KyConversion* conversion, CheckedConversion& checked) {
    const std::uint32_t height = checked.source.height, step = checked.step;
    checked.firstLine = conversion == nullptr ? 0 : conversion->firstLine;
    const std::uint32_t count = conversion == nullptr ? 0 : conversion->lineCount;
    if (checked.firstLine > height || count > height - checked.firstLine)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << "the band of " << count << " lines from line " << checked.firstLine
                                               << " on reaches beyond the height, which is " << height;
    checked.lineEnd = count == 0 ? height : checked.firstLine + count;
    const auto isBorder = [&](std::uint32_t line) { return line % step == 0 || line == height; };
    if (!isBorder(checked.firstLine) || !isBorder(checked.lineEnd))
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "the band from line " << checked.firstLine << " to line " << checked.lineEnd
               << " is off its step: expected multiples of " << step << " or the height, which is " << height;
    return KY_STATUS_SUCCESS;
}

}  // namespace

std::uint32_t FindPair(std::int64_t sourceType, std::int64_t destinationType, ImagePair& pair) {
    if (const std::uint32_t status = FindLayouts(sourceType, destinationType, pair)) return status;
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(sourceType, destinationType);
    if (converter == nullptr) return RefusePair(sourceType, destinationType);
    SetConverter(pair, *converter);
    return KY_STATUS_SUCCESS;
}

std::uint32_t MakePair(std::int64_t sourceType, std::int64_t destinationType, const KyPixelConverter& converter,
                       ImagePair& pair) {
    if (const std::uint32_t status = FindLayouts(sourceType, destinationType, pair)) return status;
    SetConverter(pair, converter);
    return KY_STATUS_SUCCESS;
}

std::uint32_t CheckShapes(const ImagePair& pair, const KyImage& source, const KyImage& destination,
                          const KyConversion* conversion, CheckedConversion& checked) {
    checked = {};
    checked.pair = &pair;
    checked.source = source;
    checked.destination = destination;
    if (conversion != nullptr) {
        if (conversion->structSize < sizeof(KyConversion))
            return Refusal(KY_STATUS_BAD_ARGUMENT)
                   << "conversion.structSize is " << conversion->structSize
                   << ", expected sizeof(KyConversion): at least " << sizeof(KyConversion);
        checked.flags = conversion->flags;
        checked.filter = conversion->filter;
    }
    if (source.type != pair.sourceType || destination.type != pair.destinationType)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << "images of types " << TypeText{source.type} << " and "
                                               << TypeText{destination.type} << " were given to a converter from "
                                               << TypeText{pair.sourceType} << " to " << TypeText{pair.destinationType};
    if (source.width != destination.width || source.height != destination.height)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "the source has " << source.width << "x" << source.height << " pixels, the destination "
               << destination.width << "x" << destination.height << ": expected the same size";
    if (const std::uint32_t status = PlaceImage("source", source, pair.source, checked.sourcePlace)) return status;
    if (const std::uint32_t status = PlaceImage("destination", destination, pair.destination, checked.destinationPlace))
        return status;
    checked.step = pair.copiesLines     ? 1
                   : pair.agreesOnBytes ? BandStepOf(*pair.converter, checked.flags, checked.filter)
                                        : 0;
    checked.hasKernels = checked.step != 0;
    if (!checked.hasKernels) checked.step = std::max<std::uint32_t>(source.height, 1);
    return KY_STATUS_SUCCESS;
}

std::uint32_t Check(const ImagePair& pair, const KyImage& source, const KyImage& destination,
                    const KyConversion* conversion, CheckedConversion& checked) {
    if (const std::uint32_t status = CheckShapes(pair, source, destination, conversion, checked)) return status;
    if (const std::uint32_t status = CheckBand(conversion, checked)) return status;
    if (const std::uint32_t status = CheckBuffer("source", source, checked.sourcePlace)) return status;
    if (const std::uint32_t status = CheckBuffer("destination", destination, checked.destinationPlace)) return status;
    return CheckOverlap(checked);
}

}  // namespace ky
