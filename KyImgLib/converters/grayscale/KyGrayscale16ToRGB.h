#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16TORGB_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16TORGB_H

#include <KyImgLib/converters/grayscale/KyGrayscale16ToGrayscale.h>

/// \file
/// 16-bit words as gray in RGB. The gray level g is the low byte of the word shifted right: a shift of 2, 4, 6 shows right-
/// aligned samples of 10, 12, 14 bits. Bits above those are not looked at, so values beyond the bit size wrap.

/// To RGB16: 16-bit words 5-6-5, (g & 0xF8) << 8 | (g & 0xFC) << 3 | g >> 3.
class KYIMGLIB_API KyGrayscale16ToRGB16 : public KyGrayscale16Converter {
public:
    /// \param shift  bits by which each word is shifted right, modulo 32
    KyGrayscale16ToRGB16(const std::int64_t& sourceType, std::uint32_t shift);
};

/// To RGB24 or BGR24: bytes g, g, g.
class KYIMGLIB_API KyGrayscale16ToRGB24 : public KyGrayscale16Converter {
public:
    /// \param alternate  destination BGR24 instead of RGB24; the bytes are the same
    /// \param shift      as for KyGrayscale16ToRGB16
    KyGrayscale16ToRGB24(const std::int64_t& sourceType, bool alternate, std::uint32_t shift);
};

/// To RGB32 or BGR32: bytes g, g, g, 0.
class KYIMGLIB_API KyGrayscale16ToRGB32 : public KyGrayscale16Converter {
public:
    /// \param alternate  destination BGR32 instead of RGB32; the bytes are the same
    /// \param shift      as for KyGrayscale16ToRGB16
    KyGrayscale16ToRGB32(const std::int64_t& sourceType, bool alternate, std::uint32_t shift);
};

#endif
