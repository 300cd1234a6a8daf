#include <KyImgLib/converters/colour/KyYUV8444ToRGB.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

KyYUV8444ToRGB::KyYUV8444ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                               std::uint32_t sourceByteSize, std::uint32_t destinationPixelBytes,
                               std::uint32_t pipeliningSize, bool destinationIsBGR, std::uint32_t extra,
                               std::uint32_t yIndex, std::uint32_t uIndex, std::uint32_t vIndex,
                               std::uint32_t linesPerConvert)
    : KyPixelConverter(sourceType, destinationType, sourceByteSize, destinationPixelBytes, pipeliningSize,
                       linesPerConvert),
      DestinationIsBGR(destinationIsBGR),
      ChannelBytes(extra + 1), DestinationIndex{destinationIsBGR ? 2u : 0u, 1, destinationIsBGR ? 0u : 2u},
      YIndex(yIndex), UIndex(uIndex), VIndex(vIndex) {}

namespace {
constexpr std::uint32_t kSourceBytes = 3;
constexpr std::uint32_t kPipelining = 4;
constexpr std::uint32_t kLines = 1;
}  // namespace

KyYUV8444ToRGB16::KyYUV8444ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, std::uint32_t yIndex,
                                   std::uint32_t uIndex, std::uint32_t vIndex)
    : KyYUV8444ToRGB(sourceType, KY_TYPE_RGB16, kSourceBytes, 2, kPipelining, false, extra, yIndex, uIndex, vIndex,
                     kLines) {
    Record::Of(*this).SetKernels(
        typeid(KyYUV8444ToRGB16),
        ky::YUVMaker{&ky::YUVKernels::from444, 2, DestinationIsBGR, 1, 3, ChannelBytes, 0, {YIndex, UIndex, VIndex}});
}

KyYUV8444ToRGB24::KyYUV8444ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                                   std::uint32_t yIndex, std::uint32_t uIndex, std::uint32_t vIndex)
    : KyYUV8444ToRGB(sourceType, ky::RGB24Or(destinationIsBGR), kSourceBytes, 3, kPipelining, destinationIsBGR, extra,
                     yIndex, uIndex, vIndex, kLines) {
    Record::Of(*this).SetKernels(
        typeid(KyYUV8444ToRGB24),
        ky::YUVMaker{&ky::YUVKernels::from444, 3, DestinationIsBGR, 1, 3, ChannelBytes, 0, {YIndex, UIndex, VIndex}});
}

KyYUV8444ToRGB32::KyYUV8444ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra,
                                   std::uint32_t yIndex, std::uint32_t uIndex, std::uint32_t vIndex)
    : KyYUV8444ToRGB(sourceType, ky::RGB32Or(destinationIsBGR), kSourceBytes, 4, kPipelining, destinationIsBGR, extra,
                     yIndex, uIndex, vIndex, kLines) {
    Record::Of(*this).SetKernels(
        typeid(KyYUV8444ToRGB32),
        ky::YUVMaker{&ky::YUVKernels::from444, 4, DestinationIsBGR, 1, 3, ChannelBytes, 0, {YIndex, UIndex, VIndex}});
}
