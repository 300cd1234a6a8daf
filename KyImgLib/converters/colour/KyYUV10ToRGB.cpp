#include <KyImgLib/converters/colour/KyYUV10ToRGB.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

KyYUV10ToRGB::KyYUV10ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                           std::uint32_t sourcePixelBytes, std::uint32_t destinationPixelBytes,
                           std::uint32_t pipeliningSize, bool destinationIsBGR, std::uint32_t shift,
                           std::uint32_t linesPerConvert)
    : KyPixelConverter(sourceType, destinationType, sourcePixelBytes, destinationPixelBytes, pipeliningSize,
                       linesPerConvert),
      DestinationIsBGR(destinationIsBGR), DestinationIndex{destinationIsBGR ? 2u : 0u, 1, destinationIsBGR ? 0u : 2u},
      Shift(shift) {}

namespace {
constexpr std::uint32_t kSourceBytes = 4;
constexpr std::uint32_t kPipelining = 4;
constexpr std::uint32_t kLines = 1;
}  // namespace

KyYUV10ToRGB16::KyYUV10ToRGB16(const std::int64_t& sourceType, std::uint32_t shift)
    : KyYUV10ToRGB(sourceType, KY_TYPE_RGB16, kSourceBytes, 2, kPipelining, false, shift, kLines) {
    Record::Of(*this).SetKernels(typeid(KyYUV10ToRGB16),
                                 ky::YUVMaker{&ky::YUVKernels::from422Words, 2, DestinationIsBGR, 2, 4, 1, Shift, {}});
}

KyYUV10ToRGB24::KyYUV10ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t shift)
    : KyYUV10ToRGB(sourceType, ky::RGB24Or(destinationIsBGR), kSourceBytes, 3, kPipelining, destinationIsBGR, shift,
                   kLines) {
    Record::Of(*this).SetKernels(typeid(KyYUV10ToRGB24),
                                 ky::YUVMaker{&ky::YUVKernels::from422Words, 3, DestinationIsBGR, 2, 4, 1, Shift, {}});
}

KyYUV10ToRGB32::KyYUV10ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t shift)
    : KyYUV10ToRGB(sourceType, ky::RGB32Or(destinationIsBGR), kSourceBytes, 4, kPipelining, destinationIsBGR, shift,
                   kLines) {
    Record::Of(*this).SetKernels(typeid(KyYUV10ToRGB32),
                                 ky::YUVMaker{&ky::YUVKernels::from422Words, 4, DestinationIsBGR, 2, 4, 1, Shift, {}});
}
