#include <KyImgLib/images/ConvertInternal.h>

#include <KyImgLib/conversion/AreaConversionInternal.h>
#include <KyImgLib/conversion/ImageConversionInternal.h>
#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/TypeTextInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <typeinfo>

namespace ky {

namespace {

ImagePlanes PlanesOf(const Placement& place) {
    return {static_cast<std::ptrdiff_t>(place.firstStride), static_cast<std::ptrdiff_t>(place.othersStride),
            static_cast<std::ptrdiff_t>(place.others.stride)};
}

std::uint32_t ConvertByKernels(const CheckedConversion& checked, std::uint32_t firstLine, std::uint32_t lineEnd) {
    ImageConversion conversion = {};
    conversion.source = checked.source.data;
    conversion.sourceStride = static_cast<std::ptrdiff_t>(checked.sourcePlace.first.stride);
    conversion.fieldStride = static_cast<std::ptrdiff_t>(checked.sourcePlace.firstStride);
    conversion.sourcePlanes = PlanesOf(checked.sourcePlace);
    conversion.sourceRowBytes = checked.sourcePlace.first.lineBytes;
    conversion.destination = checked.destination.data;
    conversion.destinationStride = static_cast<std::ptrdiff_t>(checked.destinationPlace.first.stride);
    conversion.destinationPlanes = PlanesOf(checked.destinationPlace);
    conversion.width = checked.source.width;
    conversion.height = checked.source.height;
    conversion.flags = checked.flags;
    conversion.filter = checked.filter;
    conversion.firstLine = firstLine;
    conversion.endLine = lineEnd;
    ConvertImage(Stages::Of(*checked.pair->converter), conversion);
    return KY_STATUS_SUCCESS;
}

/// Copies lines of each plane, those of the two fields in turns.
std::uint32_t CopyLines(const CheckedConversion& checked, std::uint32_t firstLine, std::uint32_t lineEnd) {
    const Placement &from = checked.sourcePlace, &to = checked.destinationPlace;
    const bool hasFields = checked.pair->source.fields == 2;
    const std::uint32_t firstField = (checked.flags & KyPixelConverter::FLAG_INVERT_DEINTERLACER) != 0 ? 1 : 0;
    for (std::uint32_t plane = 0; plane < to.parts; ++plane) {
        // A line that several lines of the picture share is copied with the first of these.
        const Placement::Part& lines = to.PartAt(plane);
        const std::uint32_t step = lines.sharedLines;
        for (std::uint32_t line = (firstLine + step - 1) / step; line < (lineEnd + step - 1) / step; ++line) {
            const std::uint32_t part = hasFields ? (line + firstField) % 2 : plane;
            const std::size_t sourceLine = hasFields ? line / 2 : line;
            std::memcpy(checked.destination.data + to.OffsetOf(plane) + line * lines.stride,
                        checked.source.data + from.OffsetOf(part) + sourceLine * from.PartAt(part).stride,
                        lines.lineBytes);
        }
    }
    return KY_STATUS_SUCCESS;
}

/// A chain with a stage that the library does not know, stage after stage: so kernels serve the stages that have them.
std::uint32_t ConvertByStages(const KyComplexConverter& chain, const CheckedConversion& checked) {
    const std::int64_t betweenType = chain.GetFirst().GetDestinationType();
    ImagePair first, second;
    if (const std::uint32_t status = MakePair(checked.source.type, betweenType, chain.GetFirst(), first)) return status;
    if (const std::uint32_t status = MakePair(betweenType, checked.destination.type, chain.GetSecond(), second))
        return status;

    KyImage between = {};
    between.type = betweenType;
    between.width = checked.source.width;
    between.height = checked.source.height;
    Placement place;
    if (const std::uint32_t status = PlaceImage("the image between the stages", between, second.source, place))
        return status;
    const std::unique_ptr<std::uint8_t[]> bytes(new std::uint8_t[place.size]);
    between.data = bytes.get();
    between.size = place.size;

    const auto convert = [&](const ImagePair& pair, const KyImage& source, const KyImage& destination) {
        KyConversion conversion = {};
        conversion.structSize = sizeof conversion;
        conversion.flags = checked.flags;
        conversion.filter = checked.filter;
        CheckedConversion stage;
        const std::uint32_t status = Check(pair, source, destination, &conversion, stage);
        return status != KY_STATUS_SUCCESS ? status : ConvertBand(stage, 0, source.height);
    };
    const std::uint32_t status = convert(first, checked.source, between);
    return status != KY_STATUS_SUCCESS ? status : convert(second, between, checked.destination);
}

/// The area form of a converter that only has that, on the images themselves where they are as it wants them, otherwise on
/// copies.
class AreaForm {
public:
    explicit AreaForm(const CheckedConversion& checkedConversion)
        : checked(checkedConversion), converter(*checked.pair->converter), height(checked.source.height) {}

    std::uint32_t Convert() {
        // Whole groups: the last one of a line may be read and written whole. Copies have room for it.
        const std::uint64_t groups = RoundUp(checked.source.width, checked.pair->source.groupPixels);
        const std::uint64_t room = RoundUp(groups, checked.pair->destination.groupPixels);
        if (!Fits(room)) return RefuseSize();
        width = static_cast<std::uint32_t>(groups);
        destinationWidth = IsPlanar(checked.pair->destination) ? width : static_cast<std::uint32_t>(room);

        const std::unique_ptr<std::uint8_t[]> sourceCopy = CopySource();
        const std::uint8_t* const source = sourceCopy != nullptr ? sourceCopy.get() : checked.source.data;
        if (DestinationServes()) {
            const std::size_t padding =
                checked.destinationPlace.first.stride - checked.destinationPlace.first.lineBytes;
            return Tell(Run(source, checked.destination.data, static_cast<std::uint32_t>(padding)));
        }
        return ConvertToCopy(source);
    }

private:
    /// Bytes after a copy, for converters that write a group further than they say.
    static constexpr std::size_t kSlack = 64;

    static std::uint64_t RoundUp(std::uint64_t number, std::uint64_t step) { return (number + step - 1) / step * step; }
    static bool IsPlanar(const Layout& layout) { return layout.Planes() > 1; }

    /// Whether the 32-bit arithmetic of area conversions can tell the lines, and where fields and planes begin.
    bool Fits(std::uint64_t pixels) const {
        constexpr std::uint64_t kLimit = std::uint64_t{1} << 32;
        const auto fits = [&](const Layout& layout, std::uint64_t pixelBytes) {
            const bool hasParts = layout.fields > 1 || IsPlanar(layout);
            const std::uint64_t line = std::max(pixelBytes, std::uint64_t{layout.groupBytes}) * pixels;
            return pixels < kLimit && line < kLimit && (!hasParts || line * height < kLimit);
        };
        return fits(checked.pair->source, converter.GetSourceByteSize()) &&
               fits(checked.pair->destination, converter.GetDestinationByteSize());
    }

    std::uint32_t RefuseSize() const {
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << "images of " << checked.source.width << "x" << height
               << " pixels are too large for the converter from " << TypeText{checked.source.type} << " to "
               << TypeText{checked.destination.type}
               << ", an application's own: expected lines of less than 4 GiB, of fields and planes the whole image";
    }

    std::uint32_t Run(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t padding) const {
        if (checked.filter == nullptr)
            return converter.Convert(source, width, height, destination, destinationWidth, height, width, height,
                                     checked.flags, padding);
        return converter.Convert(*checked.filter, source, width, height, destination, destinationWidth, height, width,
                                 height, checked.flags, padding);
    }

    std::uint32_t Tell(std::uint32_t status) const {
        if (status == KY_STATUS_SUCCESS) return status;
        return Refusal(status) << "the converter from " << TypeText{checked.source.type} << " to "
                               << TypeText{checked.destination.type} << " returned status " << status;
    }

    /// Calls `work(line of the image, line of a copy, bytes of a line)` for each line, in the order in which they lie in a
    /// copy. \p strides of a copy: in the first part, in the others.
    template <typename Work>
    void ForEachLine(const KyImage& image, const Placement& place, std::uint8_t* copy, const std::size_t (&strides)[2],
                     Work work) const {
        for (std::uint32_t i = 0; i < place.parts; ++i) {
            const Placement::Part& part = place.PartAt(i);
            for (std::uint32_t line = 0; line < part.lines; ++line) {
                work(image.data + place.OffsetOf(i) + line * part.stride, copy, part.lineBytes);
                copy += strides[i > 0];
            }
        }
    }

    static std::size_t CopySize(const Placement& place, const std::size_t (&strides)[2]) {
        return strides[0] * place.first.lines + (place.parts - 1) * strides[1] * place.others.lines;
    }

    /// The source without padding; null where it has none.
    std::unique_ptr<std::uint8_t[]> CopySource() const {
        const Placement& place = checked.sourcePlace;
        const std::size_t converterLine = converter.GetSourceByteSize(width);
        const bool isPlanar = IsPlanar(checked.pair->source);
        const bool isEnough = isPlanar ? place.size >= converterLine * height : place.first.lineBytes == converterLine;
        if (place.IsTight() && isEnough) return nullptr;
        const std::size_t strides[] = {isPlanar ? place.first.lineBytes : converterLine,
                                       isPlanar ? place.others.lineBytes : converterLine};
        const std::size_t size = std::max(converterLine * height, CopySize(place, strides)) + kSlack;
        std::unique_ptr<std::uint8_t[]> copy = std::make_unique<std::uint8_t[]>(size);
        ForEachLine(checked.source, place, copy.get(), strides,
                    [&](const std::uint8_t* line, std::uint8_t* copied, std::size_t bytes) {
                        std::memcpy(copied, line, std::min(bytes, std::max(strides[0], strides[1])));
                    });
        return copy;
    }

    /// Whether the converter can write into the image: lines that it can be told of by padding, and no group that goes on
    /// where the line ends.
    bool DestinationServes() const {
        const Placement& place = checked.destinationPlace;
        return width == checked.source.width && destinationWidth == width && !IsPlanar(checked.pair->destination) &&
               converter.GetDestinationByteSize(width) == place.first.lineBytes && place.first.stride <= UINT32_MAX;
    }

    std::uint32_t ConvertToCopy(const std::uint8_t* source) const {
        const Placement& place = checked.destinationPlace;
        const std::size_t converterLine = converter.GetDestinationByteSize(destinationWidth);
        const bool isPlanar = IsPlanar(checked.pair->destination);
        const Layout& layout = checked.pair->destination;
        const std::size_t stride = std::max(converterLine, place.first.lineBytes);
        const std::size_t strides[] = {
            isPlanar ? static_cast<std::size_t>(layout.LineBytes(width)) : stride,
            isPlanar ? static_cast<std::size_t>(layout.otherPlanes.LineBytes(width)) : stride};
        const std::size_t size = std::max(converterLine * height, CopySize(place, strides)) + kSlack;
        const std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[size]);
        // What the converter leaves out shall stay as it is.
        ForEachLine(checked.destination, place, copy.get(), strides,
                    [](const std::uint8_t* line, std::uint8_t* copied, std::size_t bytes) {
                        std::memcpy(copied, line, bytes);
                    });
        const std::uint32_t status =
            Run(source, copy.get(), isPlanar ? 0 : static_cast<std::uint32_t>(stride - converterLine));
        if (status != KY_STATUS_SUCCESS) return Tell(status);
        ForEachLine(checked.destination, place, copy.get(), strides,
                    [](std::uint8_t* line, const std::uint8_t* copied, std::size_t bytes) {
                        std::memcpy(line, copied, bytes);
                    });
        return status;
    }

    const CheckedConversion& checked;
    const KyPixelConverter& converter;
    const std::uint32_t height;
    std::uint32_t width = 0;             ///< in whole groups of the source
    std::uint32_t destinationWidth = 0;  ///< in whole groups of both
};

std::uint32_t ConvertWhole(const CheckedConversion& checked) {
    const KyPixelConverter& converter = *checked.pair->converter;
    if (typeid(converter) == typeid(KyComplexConverter)) {
        const auto& chain = static_cast<const KyComplexConverter&>(converter);
        if (KyPixelTypeFactory::HasPixelType(chain.GetFirst().GetDestinationType()))
            return ConvertByStages(chain, checked);
    }
    return AreaForm(checked).Convert();
}

}  // namespace

std::uint32_t ConvertBand(const CheckedConversion& checked, std::uint32_t firstLine, std::uint32_t lineEnd) noexcept {
    return Guard([&]() -> std::uint32_t {
        if (checked.pair->copiesLines) return CopyLines(checked, firstLine, lineEnd);
        if (checked.hasKernels) return ConvertByKernels(checked, firstLine, lineEnd);
        return ConvertWhole(checked);
    });
}

}  // namespace ky
