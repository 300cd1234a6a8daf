#include <KyImgLib/converters/grayscale/KyGrayscale8ToRGB.h>

#include <KyImgLib/converters/grayscale/GrayBandInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

/// The kernels of one destination, at whichever level is active.
struct KyGrayscale8ToRGB::Kernels {
    using To = ky::GrayKernels ky::GrayTable::*;

    template <To kDestination>
    static void ConvertPass(const KyPixelConverter& converter, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        const std::uint32_t pixelBytes = converter.GetSourceByteSize();
        ky::GrayBand band = ky::BandOf(converter, context, pass, pass.width, ky::TapLayout());
        band.pixelBytes = pixelBytes;
        band.shift = 8;  // the high byte of words
        const ky::GrayKernels& kernels = ky::ActiveKernels().gray.*kDestination;
        (pixelBytes == 1 ? kernels.fromBytes : pixelBytes == 2 ? kernels.fromWords : kernels.fromLastBytes)(band);
    }

    template <To kDestination>
    static std::uint32_t ConvertByte(const std::uint8_t* source, std::uint8_t* destination) {
        ky::GrayBand band = {};
        band.source = source;
        band.destination = destination;
        band.width = band.lines = band.taps = 1;
        (ky::ActiveKernels().gray.*kDestination).fromBytes(band);
        return KY_STATUS_SUCCESS;
    }
};

namespace {
constexpr std::uint32_t kPipelining = 4;
}  // namespace

KyGrayscale8ToRGB::KyGrayscale8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                     std::uint32_t destinationByteSize, std::uint32_t n)
    : KyPixelConverter(sourceType, destinationType, n + 1, destinationByteSize, kPipelining, 1) {}

KyGrayscale8ToRGB16::KyGrayscale8ToRGB16(const std::int64_t& sourceType, std::uint32_t n)
    : KyGrayscale8ToRGB(sourceType, KY_TYPE_RGB16, 2, n) {
    SetPassFunction(typeid(KyGrayscale8ToRGB16), &Kernels::ConvertPass<&ky::GrayTable::toRGB16>);
}

std::uint32_t KyGrayscale8ToRGB16::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    return Kernels::ConvertByte<&ky::GrayTable::toRGB16>(source, destination);
}

KyGrayscale8ToRGB24::KyGrayscale8ToRGB24(const std::int64_t& sourceType, bool alternate, std::uint32_t n)
    : KyGrayscale8ToRGB(sourceType, alternate ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 3, n) {
    SetPassFunction(typeid(KyGrayscale8ToRGB24), &Kernels::ConvertPass<&ky::GrayTable::toRGB24>);
}

std::uint32_t KyGrayscale8ToRGB24::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    return Kernels::ConvertByte<&ky::GrayTable::toRGB24>(source + GetSourceByteSize() - 1, destination);
}

KyGrayscale8ToRGB32::KyGrayscale8ToRGB32(const std::int64_t& sourceType, bool alternate, std::uint32_t n)
    : KyGrayscale8ToRGB(sourceType, alternate ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 4, n) {
    SetPassFunction(typeid(KyGrayscale8ToRGB32), &Kernels::ConvertPass<&ky::GrayTable::toRGB32>);
}

std::uint32_t KyGrayscale8ToRGB32::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    return Kernels::ConvertByte<&ky::GrayTable::toRGB32>(source + GetSourceByteSize() - 1, destination);
}
