#include <KyImgLib/converters/colour/KyYUV8411ToRGB.h>

#include <KyImgLib/converters/colour/ColourDriverInternal.h>

struct KyYUV8411ToRGB::Kernels {
    static void ConvertPass(const KyPixelConverter& base, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        const auto& converter = static_cast<const KyYUV8411ToRGB&>(base);
        const std::uint32_t pixelBytes = converter.KyPixelConverter::GetDestinationByteSize();
        ky::ConvertLines(ky::KernelTo(ky::ActiveKernels().yuv.from411, pixelBytes), 4,
                         ky::YUVBand(context, converter.DestinationIsBGR), pass);
    }
};

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
    SetPassFunction(typeid(KyYUV8411ToRGB16), &Kernels::ConvertPass);
}

KyYUV8411ToRGB24::KyYUV8411ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyYUV8411ToRGB(sourceType, ky::RGB24Or(destinationIsBGR), kSourceBytes, 3, kPipelining, destinationIsBGR,
                     kLines) {
    SetPassFunction(typeid(KyYUV8411ToRGB24), &Kernels::ConvertPass);
}

KyYUV8411ToRGB32::KyYUV8411ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR)
    : KyYUV8411ToRGB(sourceType, ky::RGB32Or(destinationIsBGR), kSourceBytes, 4, kPipelining, destinationIsBGR,
                     kLines) {
    SetPassFunction(typeid(KyYUV8411ToRGB32), &Kernels::ConvertPass);
}
