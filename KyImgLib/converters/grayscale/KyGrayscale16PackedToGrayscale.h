#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16PACKEDTOGRAYSCALE_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16PACKEDTOGRAYSCALE_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters from packed samples of 10 or 12 bits: two of them, s0 and s1, in each three bytes.
///
///                byte 0      byte 1, from its highest bit      byte 2
///     10 bits    s0 9 - 2    . . s1 1 0    . . s0 1 0          s1 9 - 2      (numbers are bits of the samples)
///     12 bits    s0 11 - 4   s1 3 2 1 0    s0 3 2 1 0          s1 11 - 4
///
/// The packed types of a single tap and the "GEV" ones are laid out alike. In types of two taps s0 belongs to the left,
/// s1 to the right tap, and the tap layout of the source type's ID places them as KyGrayscale16Segmented.h shows.
///
/// Samples come in pairs: the source size of a line is (pixels / 2) x 3 bytes, and the last pixel of an odd line is not
/// written (with two taps, the halves are those of the even number of pixels before it). When a pair of the
/// source goes on from a line to the next, convert the image as a single line, and nothing is lost. Filters are ignored.
class KYIMGLIB_API KyGrayscale16PackedConverter : public KyPixelConverter {
public:
    using KyPixelConverter::GetSourceByteSize;

    /// (count / 2) x 3
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;

protected:
    /// A sample is high << leftShift | (middle & lowMask), where `middle` is byte 1, for s1 shifted right by lowPosition.
    /// A normalized destination gets it left-aligned: shifted left by another 8 - leftShift.
    ///
    /// \param leftShift    of the high byte, 1 to 8: the sample's bits less 8. What is outside counts as the nearest
    /// \param lowMask      of the low bits
    /// \param lowPosition  of the low bits of s1 in byte 1, 0 to 8. What is outside counts as the nearest
    KyGrayscale16PackedConverter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                 std::uint32_t destinationByteSize, std::uint32_t pipeliningSize, short leftShift,
                                 unsigned short lowMask, short lowPosition);

    const short leftShift;
    const unsigned short lowMask;
    const short lowPosition;
};

/// Packed samples to 16-bit words, in scan order. The source type's tap layout counts where the destination type has none.
class KYIMGLIB_API KyGrayscale16PackedToGrayscale16 : public KyGrayscale16PackedConverter {
public:
    /// \param sourceType       packed grayscale or Bayer; gives the tap layout
    /// \param destinationType  a type of 16-bit words; normalized: they become left-aligned
    /// \param leftShift        2 for 10 bits, 4 for 12 bits
    /// \param lowMask          0x03 for 10 bits, 0x0F for 12 bits
    /// \param lowPosition      4
    KyGrayscale16PackedToGrayscale16(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                     short leftShift, unsigned short lowMask, short lowPosition);
};

/// Packed samples to 8-bit grayscale, in scan order: the high byte of each.
class KYIMGLIB_API KyGrayscale16PackedToGrayscale8 : public KyGrayscale16PackedConverter {
public:
    /// \param sourceType  gives the tap layout
    /// \param leftShift   2 for 10 bits, 4 for 12 bits; the high byte is the same with any
    /// \param lowMask     0x03 for 10 bits, 0x0F for 12 bits; likewise
    KyGrayscale16PackedToGrayscale8(const std::int64_t& sourceType, unsigned short leftShift, unsigned short lowMask);
};

/// GigE Vision packed 10 bits to 10 bits in 16-bit words. Samples stay in the order of the source, whatever tap layout its ID
/// has.
class KYIMGLIB_API KyGrayscale10PackedGEVToGrayscale10 : public KyGrayscale16PackedConverter {
public:
    explicit KyGrayscale10PackedGEVToGrayscale10(const std::int64_t& sourceType);
};

/// GigE Vision packed 12 bits to 12 bits in 16-bit words. Samples stay in the order of the source, whatever tap layout its ID
/// has.
class KYIMGLIB_API KyGrayscale12PackedGEVToGrayscale12 : public KyGrayscale16PackedConverter {
public:
    explicit KyGrayscale12PackedGEVToGrayscale12(const std::int64_t& sourceType);
};

/// GigE Vision packed 10 or 12 bits to 8-bit grayscale: the high byte of each sample.
class KYIMGLIB_API KyGrayscale16PackedGEVToGrayscale8 : public KyGrayscale16PackedConverter {
public:
    explicit KyGrayscale16PackedGEVToGrayscale8(const std::int64_t& sourceType);
};

#endif
