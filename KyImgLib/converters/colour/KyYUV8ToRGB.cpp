#include <KyImgLib/converters/colour/KyYUV8ToRGB.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

KyYUV8toRGB::KyYUV8toRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                         std::uint32_t sourceUnitBytes, std::uint32_t destinationPixelBytes,
                         std::uint32_t pipeliningSize, bool destinationIsBGR, std::uint32_t extra,
                         std::uint32_t linesPerConvert)
    : KyPixelConverter(sourceType, destinationType, (extra + 1) * sourceUnitBytes, destinationPixelBytes,
                       pipeliningSize, linesPerConvert),
      DestinationIsBGR(destinationIsBGR),
      ChannelBytes(extra + 1), DestinationIndex{destinationIsBGR ? 2u : 0u, 1, destinationIsBGR ? 0u : 2u} {}

namespace {
constexpr std::uint32_t kUnitBytes = 2;
constexpr std::uint32_t kPipelining = 8;
constexpr std::uint32_t kLines = 1;
}  // namespace

KyYUV8ToRGB16::KyYUV8ToRGB16(const std::int64_t& sourceType, std::uint32_t extra)
    : KyYUV8toRGB(sourceType, KY_TYPE_RGB16, kUnitBytes, 2, kPipelining, false, extra, kLines) {
    Record::Of(*this).SetKernels(
        typeid(KyYUV8ToRGB16), ky::YUVMaker{&ky::YUVKernels::from422, 2, DestinationIsBGR, 2, 4, ChannelBytes, 0, {}});
}

KyYUV8ToRGB24::KyYUV8ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra)
    : KyYUV8toRGB(sourceType, ky::RGB24Or(destinationIsBGR), kUnitBytes, 3, kPipelining, destinationIsBGR, extra,
                  kLines) {
    Record::Of(*this).SetKernels(
        typeid(KyYUV8ToRGB24), ky::YUVMaker{&ky::YUVKernels::from422, 3, DestinationIsBGR, 2, 4, ChannelBytes, 0, {}});
}

KyYUV8ToRGB32::KyYUV8ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra)
    : KyYUV8toRGB(sourceType, ky::RGB32Or(destinationIsBGR), kUnitBytes, 4, kPipelining, destinationIsBGR, extra,
                  kLines) {
    Record::Of(*this).SetKernels(
        typeid(KyYUV8ToRGB32), ky::YUVMaker{&ky::YUVKernels::from422, 4, DestinationIsBGR, 2, 4, ChannelBytes, 0, {}});
}
