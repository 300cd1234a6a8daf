#include <KyImgLib/converters/grayscale/KyGrayscale8ToRGB.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace {

constexpr std::uint32_t kPipelining = 4;

/// The last byte of each pixel.
struct LastByteMaker {
    ky::GrayKernels ky::GrayTable::*destination;
    std::uint32_t pixelBytes;

    bool AddKernels(const ky::ConversionSettings& conversion, ky::Pipeline& pipeline) const {
        if (pixelBytes > 2) ky::ActiveKernels().gray.gather({pixelBytes, 1, 1, false, {}}, pipeline.Add());
        constexpr std::uint32_t kHighByte = 8;
        const auto source = pixelBytes == 2 ? &ky::GrayKernels::fromWords : &ky::GrayKernels::fromBytes;
        return ky::GrayMaker::To(destination, source, kHighByte).AddKernels(conversion, pipeline);
    }
};

std::uint32_t ConvertByte(ky::GrayKernels ky::GrayTable::*to, const std::uint8_t* source, std::uint8_t* destination) {
    ky::Pipeline pipeline;
    LastByteMaker{to, 1}.AddKernels({}, pipeline);
    pipeline.SetSize(0, 1, 1, 1);
    pipeline.Run({ky::SourceRows::OfImage(source, 0), ky::DestinationRows::OfImage(destination, 0), {}, {}, 1}, 0, 1);
    return KY_STATUS_SUCCESS;
}

}  // namespace

KyGrayscale8ToRGB::KyGrayscale8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                     std::uint32_t destinationByteSize, std::uint32_t n)
    : KyPixelConverter(sourceType, destinationType, n + 1, destinationByteSize, kPipelining, 1) {}

KyGrayscale8ToRGB16::KyGrayscale8ToRGB16(const std::int64_t& sourceType, std::uint32_t n)
    : KyGrayscale8ToRGB(sourceType, KY_TYPE_RGB16, 2, n) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale8ToRGB16), LastByteMaker{&ky::GrayTable::toRGB16, n + 1});
}

std::uint32_t KyGrayscale8ToRGB16::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    return ConvertByte(&ky::GrayTable::toRGB16, source, destination);
}

KyGrayscale8ToRGB24::KyGrayscale8ToRGB24(const std::int64_t& sourceType, bool alternate, std::uint32_t n)
    : KyGrayscale8ToRGB(sourceType, alternate ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 3, n) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale8ToRGB24), LastByteMaker{&ky::GrayTable::toRGB24, n + 1});
}

std::uint32_t KyGrayscale8ToRGB24::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    return ConvertByte(&ky::GrayTable::toRGB24, source + GetSourceByteSize() - 1, destination);
}

KyGrayscale8ToRGB32::KyGrayscale8ToRGB32(const std::int64_t& sourceType, bool alternate, std::uint32_t n)
    : KyGrayscale8ToRGB(sourceType, alternate ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 4, n) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale8ToRGB32), LastByteMaker{&ky::GrayTable::toRGB32, n + 1});
}

std::uint32_t KyGrayscale8ToRGB32::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    return ConvertByte(&ky::GrayTable::toRGB32, source + GetSourceByteSize() - 1, destination);
}
