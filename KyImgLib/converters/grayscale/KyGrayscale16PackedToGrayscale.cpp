#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToGrayscale.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>

namespace {

constexpr std::uint32_t kWordSize = 2;  // as the packed types have it
constexpr std::uint32_t kPipelining = 2;
constexpr short kLowPosition = 4;

constexpr std::int64_t kGrayscale10 = 0x00010002;
constexpr std::int64_t kGrayscale12 = 0x00010003;

}  // namespace

KyGrayscale16PackedConverter::KyGrayscale16PackedConverter(const std::int64_t& sourceType,
                                                           const std::int64_t& destinationType,
                                                           std::uint32_t destinationByteSize,
                                                           std::uint32_t pipeliningSize, short leftShiftCount,
                                                           unsigned short mask, short position)
    : KyPixelConverter(sourceType, destinationType, kWordSize, destinationByteSize, pipeliningSize, 1),
      leftShift(leftShiftCount), lowMask(mask), lowPosition(position) {}

std::uint32_t KyGrayscale16PackedConverter::GetSourceByteSize(std::uint32_t count) const { return count / 2 * 3; }

KyGrayscale16PackedToGrayscale16::KyGrayscale16PackedToGrayscale16(const std::int64_t& sourceType,
                                                                   const std::int64_t& destinationType,
                                                                   short leftShiftCount, unsigned short mask,
                                                                   short position)
    : KyGrayscale16PackedConverter(sourceType, destinationType, kWordSize, kPipelining, leftShiftCount, mask,
                                   position) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale16PackedToGrayscale16),
                                 ky::PackedMaker::Of(ky::GrayMaker::Of(&ky::GrayTable::unpack, 0,
                                                                       ky::HalvesToPlain(sourceType, destinationType)),
                                                     destinationType, leftShift, lowMask, lowPosition));
}

KyGrayscale16PackedToGrayscale8::KyGrayscale16PackedToGrayscale8(const std::int64_t& sourceType,
                                                                 unsigned short leftShiftCount, unsigned short mask)
    : KyGrayscale16PackedConverter(sourceType, KY_TYPE_GRAYSCALE8, 1, kPipelining, static_cast<short>(leftShiftCount),
                                   mask, kLowPosition) {
    Record::Of(*this).SetKernels(
        typeid(KyGrayscale16PackedToGrayscale8),
        ky::GrayMaker::To(&ky::GrayTable::toGray8, &ky::GrayKernels::fromPacked, 0, ky::HalvesOf(sourceType)));
}

KyGrayscale10PackedGEVToGrayscale10::KyGrayscale10PackedGEVToGrayscale10(const std::int64_t& sourceType)
    : KyGrayscale16PackedConverter(sourceType, kGrayscale10, kWordSize, kPipelining, 2, 0x03, kLowPosition) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale10PackedGEVToGrayscale10),
                                 ky::PackedMaker::Of(ky::GrayMaker::Of(&ky::GrayTable::unpack, 0, {}), kGrayscale10,
                                                     leftShift, lowMask, lowPosition));
}

KyGrayscale12PackedGEVToGrayscale12::KyGrayscale12PackedGEVToGrayscale12(const std::int64_t& sourceType)
    : KyGrayscale16PackedConverter(sourceType, kGrayscale12, kWordSize, kPipelining, 4, 0x0F, kLowPosition) {
    Record::Of(*this).SetKernels(typeid(KyGrayscale12PackedGEVToGrayscale12),
                                 ky::PackedMaker::Of(ky::GrayMaker::Of(&ky::GrayTable::unpack, 0, {}), kGrayscale12,
                                                     leftShift, lowMask, lowPosition));
}

KyGrayscale16PackedGEVToGrayscale8::KyGrayscale16PackedGEVToGrayscale8(const std::int64_t& sourceType)
    : KyGrayscale16PackedConverter(sourceType, KY_TYPE_GRAYSCALE8, 1, kPipelining, 4, 0x0F, kLowPosition) {
    Record::Of(*this).SetKernels(
        typeid(KyGrayscale16PackedGEVToGrayscale8),
        ky::GrayMaker::To(&ky::GrayTable::toGray8, &ky::GrayKernels::fromPacked, 0, ky::HalvesOf(sourceType)));
}
