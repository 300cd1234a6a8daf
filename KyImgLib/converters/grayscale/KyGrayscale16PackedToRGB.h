#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16PACKEDTORGB_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16PACKEDTORGB_H

#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToGrayscale.h>

/// Base of the converters that show packed samples of 10 or 12 bits, of one tap or two, as gray in RGB. The gray level g
/// is the high byte of a sample.
class KYIMGLIB_API KyGrayscale16PackedToRGB : public KyGrayscale16PackedConverter {
protected:
    /// \param sourceType           gives the tap layout
    /// \param leftShift, lowMask   as for KyGrayscale16PackedToGrayscale8
    KyGrayscale16PackedToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                             std::uint32_t destinationByteSize, std::uint32_t leftShift, std::uint32_t lowMask);
};

/// To RGB16: 16-bit words 5-6-5, (g & 0xF8) << 8 | (g & 0xFC) << 3 | g >> 3.
class KYIMGLIB_API KyGrayscale16PackedToRGB16 : public KyGrayscale16PackedToRGB {
public:
    /// \param sourceType  gives the tap layout
    /// \param leftShift   2 for 10 bits, 4 for 12 bits; the high byte is the same with any
    /// \param lowMask     0x03 for 10 bits, 0x0F for 12 bits; likewise
    KyGrayscale16PackedToRGB16(const std::int64_t& sourceType, std::uint32_t leftShift, std::uint32_t lowMask);
};

/// To RGB24 or BGR24: bytes g, g, g.
class KYIMGLIB_API KyGrayscale16PackedToRGB24 : public KyGrayscale16PackedToRGB {
public:
    /// \param alternate  destination BGR24 instead of RGB24, the bytes are the same; others as for
    ///                   KyGrayscale16PackedToRGB16
    KyGrayscale16PackedToRGB24(const std::int64_t& sourceType, bool alternate, std::uint32_t leftShift,
                               std::uint32_t lowMask);
};

/// To RGB32 or BGR32: bytes g, g, g, 0.
class KYIMGLIB_API KyGrayscale16PackedToRGB32 : public KyGrayscale16PackedToRGB {
public:
    /// \param alternate  destination BGR32 instead of RGB32, the bytes are the same; others as for
    ///                   KyGrayscale16PackedToRGB16
    KyGrayscale16PackedToRGB32(const std::int64_t& sourceType, bool alternate, std::uint32_t leftShift,
                               std::uint32_t lowMask);
};

#endif
