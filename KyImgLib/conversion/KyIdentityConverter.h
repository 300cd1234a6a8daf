#ifndef KYIMGLIB_CONVERSION_KYIDENTITYCONVERTER_H
#define KYIMGLIB_CONVERSION_KYIDENTITYCONVERTER_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Converts between two types of the same memory layout: copies bytes, and deinterlaces (weave).
///
/// Registering a pixel type creates one from the type to itself and, for an interlaced type, one to its
/// non-interlaced counterpart. Filters are ignored.
class KYIMGLIB_API KyIdentityConverter : public KyPixelConverter {
public:
    /// \param sourceByteSize, destinationByteSize  bytes of one pixel, used while a type is not registered
    KyIdentityConverter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                        std::uint32_t sourceByteSize, std::uint32_t destinationByteSize);

    using KyPixelConverter::Convert;
    using KyPixelConverter::GetDestinationByteSize;
    using KyPixelConverter::GetSourceByteSize;

    /// The registered type's KyPixelType::GetBufferSizeFor(count, 1), which counts packed pixels and the fourth byte of
    /// loose 24-bit ones; for an unregistered type, the pixel's byte size x count.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;
    std::uint32_t GetDestinationByteSize(std::uint32_t count) const override;

    /// Copies GetSourceByteSize(count) bytes; KY_STATUS_SUCCESS.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override;
    /// Copies GetSourceByteSize(1) bytes; KY_STATUS_SUCCESS.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override;
};

#endif
