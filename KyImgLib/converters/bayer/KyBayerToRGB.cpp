#include <KyImgLib/converters/bayer/KyBayerToRGB.h>

#include <KyImgLib/conversion/ContextInternal.h>
#include <KyImgLib/converters/bayer/PatternInternal.h>

KyBayerToRGB::KyBayerToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                           std::uint32_t sourceByteSize, std::uint32_t destinationByteSize,
                           std::uint32_t pipeliningSize, bool swap, std::uint32_t shiftOrStepOf, std::uint32_t reserved)
    : KyPixelConverter(sourceType, destinationType, sourceByteSize, destinationByteSize, pipeliningSize, 1),
      swapRedBlue(swap), shiftOrStep(shiftOrStepOf), redIndex(swap ? 2 : 0), greenIndex(1), blueIndex(swap ? 0 : 2),
      reservedArgument(reserved) {}

std::uint32_t KyBayerToRGB::GetLinesPerConvert() const {
    const ky::ThreadContext* const context = ky::CurrentContext();
    return context != nullptr && (context->flags & FLAG_BAYER_INTERPOLATE) != 0 ? 1 : 2;
}

std::uint32_t KyBayerToRGB::Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const {
    const ky::ContextHolder context;
    return (context->flags & FLAG_BAYER_INTERPOLATE) != 0 ? ConvertInterpolated(source, destination, count)
                                                          : ConvertLinePair(source, destination, count);
}

KyBayerGeometry KyBayerToRGB::GetGeometry() const {
    const ky::ContextHolder context;
    const auto width = static_cast<std::int32_t>(context->areaSourceWidth);
    KyBayerGeometry geometry;
    geometry.evenRowType = ky::EvenRowType(context->flags);
    geometry.oddRowType = 3 - geometry.evenRowType;
    const std::int32_t neighbours[] = {-width, -width - 1, -width + 1, 0, -1, 1, width, width - 1, width + 1};
    std::int32_t* offset = geometry.neighbourOffsets;
    for (const std::int32_t neighbour : neighbours)
        for (std::int32_t pixel = 0; pixel < 8; pixel += 2) *offset++ = pixel + neighbour;
    return geometry;
}
