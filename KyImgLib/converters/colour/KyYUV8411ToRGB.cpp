#include <KyImgLib/converters/colour/KyYUV8411ToRGB.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

KyYUV8411ToRGB::KyYUV8411ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                               std::uint32_t sourceByteSize, std::uint32_t destinationPixelBytes,
                               std::uint32_t pipeliningSize, bool destinationIsBGR, std::uint32_t linesPerConvert)
    : KyPixelConverter(sourceType, destinationType, sourceByteSize, destinationPixelBytes, pipeliningSize,
                       linesPerConvert),
      DestinationIsBGR(destinationIsBGR), DestinationIndex{destinationIsBGR ? 2u : 0u, 1, destinationIsBGR ? 0u : 2u} {}

std::uint32_t KyYUV8411ToRGB::GetSourceByteSize(std::uint32_t count) const { return 3 * count >> 1; }

namespace {
// What a single pixel is said to take; a line of them takes less.
constexpr std::uint32_t kSourceBytes = 2;
constexpr std::uint32_t kPipelining = 4;
constexpr std::uint32_t kLines = 1;
}  // namespace

KyYUV8411ToRGB16::KyYUV8411ToRGB16(const std::int64_t& sourceType)
    : KyYUV8411ToRGB(sourceType, KY_TYPE_RGB16, kSourceBytes, 2, kPipelining, false, kLines) {
    Record::Of(*this).SetKernels(typeid(KyYUV8411ToRGB16),
                                 ky::YUVMaker{&ky::YUVKernels::from411, 2, DestinationIsBGR, 4, 6, 1, 0, {}});
}

KyYUV8411ToRGB24::KyYUV8411ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyYUV8411ToRGB(sourceType, ky::RGB24Or(destinationIsBGR), kSourceBytes, 3, kPipelining, destinationIsBGR,
                     kLines) {
    Record::Of(*this).SetKernels(typeid(KyYUV8411ToRGB24),
                                 ky::YUVMaker{&ky::YUVKernels::from411, 3, DestinationIsBGR, 4, 6, 1, 0, {}});
}

KyYUV8411ToRGB32::KyYUV8411ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyYUV8411ToRGB(sourceType, ky::RGB32Or(destinationIsBGR), kSourceBytes, 4, kPipelining, destinationIsBGR,
                     kLines) {
    Record::Of(*this).SetKernels(typeid(KyYUV8411ToRGB32),
                                 ky::YUVMaker{&ky::YUVKernels::from411, 4, DestinationIsBGR, 4, 6, 1, 0, {}});
}
