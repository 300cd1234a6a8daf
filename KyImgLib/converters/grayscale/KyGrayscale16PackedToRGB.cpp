#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToRGB.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>

namespace {
constexpr std::uint32_t kPipelining = 2;
constexpr short kLowPosition = 4;
}  // namespace

KyGrayscale16PackedToRGB::KyGrayscale16PackedToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                                   std::uint32_t destinationByteSize, std::uint32_t leftShiftCount,
                                                   std::uint32_t mask)
    : KyGrayscale16PackedConverter(sourceType, destinationType, destinationByteSize, kPipelining,
                                   static_cast<short>(leftShiftCount), static_cast<unsigned short>(mask),
                                   kLowPosition) {}

KyGrayscale16PackedToRGB16::KyGrayscale16PackedToRGB16(const std::int64_t& sourceType, std::uint32_t leftShiftCount,
                                                       std::uint32_t mask)
    : KyGrayscale16PackedToRGB(sourceType, KY_TYPE_RGB16, 2, leftShiftCount, mask) {
    Record::Of(*this).SetKernels(
        typeid(KyGrayscale16PackedToRGB16),
        ky::GrayMaker::To(&ky::GrayTable::toRGB16, &ky::GrayKernels::fromPacked, 0, ky::HalvesOf(sourceType)));
}

KyGrayscale16PackedToRGB24::KyGrayscale16PackedToRGB24(const std::int64_t& sourceType, bool alternate,
                                                       std::uint32_t leftShiftCount, std::uint32_t mask)
    : KyGrayscale16PackedToRGB(sourceType, alternate ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 3, leftShiftCount, mask) {
    Record::Of(*this).SetKernels(
        typeid(KyGrayscale16PackedToRGB24),
        ky::GrayMaker::To(&ky::GrayTable::toRGB24, &ky::GrayKernels::fromPacked, 0, ky::HalvesOf(sourceType)));
}

KyGrayscale16PackedToRGB32::KyGrayscale16PackedToRGB32(const std::int64_t& sourceType, bool alternate,
                                                       std::uint32_t leftShiftCount, std::uint32_t mask)
    : KyGrayscale16PackedToRGB(sourceType, alternate ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 4, leftShiftCount, mask) {
    Record::Of(*this).SetKernels(
        typeid(KyGrayscale16PackedToRGB32),
        ky::GrayMaker::To(&ky::GrayTable::toRGB32, &ky::GrayKernels::fromPacked, 0, ky::HalvesOf(sourceType)));
}
