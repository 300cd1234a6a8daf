#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16TOGRAYSCALE_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16TOGRAYSCALE_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters whose source pixels are 16-bit little-endian words that are shifted.
///
/// Samples are right-aligned in their words (a 12-bit sample has values up to 4095), in normalized types left-aligned
/// (up to 65520). Bits of a word above the type's bit size are not masked: they are shifted with the others. Every width
/// works, filters are ignored, and so are Bayer flags: a mosaic stays one.
class KYIMGLIB_API KyGrayscale16Converter : public KyPixelConverter {
protected:
    /// The first five arguments are those of KyPixelConverter.
    ///
    /// \param shift  bits by which each word is shifted, modulo 32
    KyGrayscale16Converter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                           std::uint32_t destinationByteSize, std::uint32_t pipeliningSize,
                           std::uint32_t linesPerConvert, std::uint32_t shift);

    const std::uint32_t shift;
};

/// Words to words, shifted right: normalized words to right-aligned ones, or 16 bits to fewer.
///
///     normalized 12 bits       plain 12 bits
///     A B C 0          >> 4    0 A B C          (one hexadecimal digit is four bits)
class KYIMGLIB_API KyGrayscale16ToGrayscale16RightShift : public KyGrayscale16Converter {
public:
    /// \param sourceType, destinationType  any types of 16-bit words, Bayer mosaics included
    /// \param shift                        0 to 31; from 16 on every result is 0
    KyGrayscale16ToGrayscale16RightShift(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                         std::uint32_t shift);
};

/// Words to words, shifted left: right-aligned words to normalized ones. What leaves the word is lost, without saturation:
/// 0x1234 shifted by 4 is 0x2340.
class KYIMGLIB_API KyGrayscale16ToGrayscale16LeftShift : public KyGrayscale16Converter {
public:
    /// As for KyGrayscale16ToGrayscale16RightShift.
    KyGrayscale16ToGrayscale16LeftShift(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                        std::uint32_t shift);
};

/// Words to 8-bit grayscale: the low byte of the word shifted right. There is no saturation: a shift of 2 turns 1023 into
/// 255, and 1024 into 0.
class KYIMGLIB_API KyGrayscale16ToGrayscale8 : public KyGrayscale16Converter {
public:
    /// \param shift  2, 4, 6 for sources of 10, 12, 14 bits
    KyGrayscale16ToGrayscale8(const std::int64_t& sourceType, std::uint32_t shift);
};

/// Normalized words to 8-bit grayscale: the high byte. It serves plain 16-bit grayscale too, which fills its words.
class KYIMGLIB_API KyGrayscale16NormalizedToGrayscale8 : public KyGrayscale16Converter {
public:
    explicit KyGrayscale16NormalizedToGrayscale8(const std::int64_t& sourceType);
};

#endif
