#include <KyImgLib/converters/colour/KyYUV10ToRGB.h>

#include <KyImgLib/converters/colour/ColourDriverInternal.h>

#include <algorithm>

struct KyYUV10ToRGB::Kernels {
    static void ConvertPass(const KyPixelConverter& base, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        const auto& converter = static_cast<const KyYUV10ToRGB&>(base);
        ky::Colour8Band band = ky::YUVBand(context, converter.DestinationIsBGR);
        band.sampleShift = static_cast<std::uint8_t>(std::min(converter.Shift, 16u));
        const std::uint32_t pixelBytes = converter.KyPixelConverter::GetDestinationByteSize();
        ky::ConvertLines(ky::KernelTo(ky::ActiveKernels().yuv.from422Words, pixelBytes), 2, band, pass);
    }
};

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
    SetPassFunction(typeid(KyYUV10ToRGB16), &Kernels::ConvertPass);
}

KyYUV10ToRGB24::KyYUV10ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t shift)
    : KyYUV10ToRGB(sourceType, ky::RGB24Or(destinationIsBGR), kSourceBytes, 3, kPipelining, destinationIsBGR, shift,
                   kLines) {
    SetPassFunction(typeid(KyYUV10ToRGB24), &Kernels::ConvertPass);
}

KyYUV10ToRGB32::KyYUV10ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t shift)
    : KyYUV10ToRGB(sourceType, ky::RGB32Or(destinationIsBGR), kSourceBytes, 4, kPipelining, destinationIsBGR, shift,
                   kLines) {
    SetPassFunction(typeid(KyYUV10ToRGB32), &Kernels::ConvertPass);
}
