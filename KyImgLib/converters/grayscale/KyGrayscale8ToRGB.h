#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE8TORGB_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE8TORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters that show the last byte of each source pixel as gray in RGB.
///
/// With n = 0 the source is 8-bit grayscale. With n = 1 pixels are little-endian words and their high byte is shown: that
/// of normalized types of every bit size, and of plain 16-bit grayscale. Every width works, filters are ignored.
class KYIMGLIB_API KyGrayscale8ToRGB : public KyPixelConverter {
protected:
    /// \param n  bytes of a source pixel before the one that is read
    KyGrayscale8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
                      std::uint32_t destinationByteSize, std::uint32_t n);
};

/// Gray g to RGB16: 16-bit words 5-6-5, (g & 0xF8) << 8 | (g & 0xFC) << 3 | g >> 3.
class KYIMGLIB_API KyGrayscale8ToRGB16 : public KyGrayscale8ToRGB {
public:
    using KyPixelConverter::Convert;

    /// \param n  bytes of a source pixel before the one that is read: 0 for 8-bit types, 1 for words
    KyGrayscale8ToRGB16(const std::int64_t& sourceType, std::uint32_t n);

    /// Converts one pixel. Unlike the other forms it reads the pixel's first byte, whatever n is.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override;
};

/// Gray g to RGB24 or BGR24: bytes g, g, g.
class KYIMGLIB_API KyGrayscale8ToRGB24 : public KyGrayscale8ToRGB {
public:
    using KyPixelConverter::Convert;

    /// \param alternate  destination BGR24 instead of RGB24; the bytes are the same
    /// \param n          as for KyGrayscale8ToRGB16
    KyGrayscale8ToRGB24(const std::int64_t& sourceType, bool alternate, std::uint32_t n);

    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override;
};

/// Gray g to RGB32 or BGR32: bytes g, g, g, 0.
class KYIMGLIB_API KyGrayscale8ToRGB32 : public KyGrayscale8ToRGB {
public:
    using KyPixelConverter::Convert;

    /// \param alternate  destination BGR32 instead of RGB32; the bytes are the same
    /// \param n          as for KyGrayscale8ToRGB16
    KyGrayscale8ToRGB32(const std::int64_t& sourceType, bool alternate, std::uint32_t n);

    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override;
};

#endif
