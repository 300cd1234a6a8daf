#ifndef KYIMGLIB_CONVERTERS_BAYER_KYBAYERRGB16TORGB_H
#define KYIMGLIB_CONVERTERS_BAYER_KYBAYERRGB16TORGB_H

#include <KyImgLib/converters/bayer/KyBayerToRGB.h>

/// Base of the converters from Bayer mosaics whose samples are 16-bit little-endian words.
///
/// An average passes the filter's table at the index average modulo the number of entries and is then shifted right by
/// `shiftOrStep`, which brings the significant bits of the source into bits 7 to 0; destinations of 8 bits and less per
/// channel take these low 8 bits. Without a filter of the caller's the table is the identity of the source's bit size.
class KYIMGLIB_API KyBayerRGB16ToRGB : public KyBayerToRGB {
protected:
    /// \param a         bytes of a source pixel
    /// \param b         bytes of a destination pixel
    /// \param c         pipelining size
    /// \param swap      whether the destination is B, G, R in memory
    /// \param shift     bits by which filtered values are shifted right
    /// \param reserved  has no effect
    KyBayerRGB16ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t a,
                      std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t shift, std::uint32_t reserved);
};

/// Bayer mosaic to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyBayerRGB16ToRGB16 : public KyBayerRGB16ToRGB {
public:
    /// \param shift     bits by which filtered values are shifted right: 2, 4, 6 for sources of 10, 12, 14 bits
    /// \param reserved  has no effect
    KyBayerRGB16ToRGB16(const std::int64_t& sourceType, std::uint32_t shift, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

/// Bayer mosaic to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyBayerRGB16ToRGB24 : public KyBayerRGB16ToRGB {
public:
    /// \param swap      destination BGR24 instead of RGB24; others as for KyBayerRGB16ToRGB16
    KyBayerRGB16ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t shift, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

/// Bayer mosaic to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyBayerRGB16ToRGB32 : public KyBayerRGB16ToRGB {
public:
    /// \param swap      destination BGR32 instead of RGB32; others as for KyBayerRGB16ToRGB16
    KyBayerRGB16ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t shift, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

/// Bayer mosaic to RGB48: 16-bit words R, G, B with the filtered values as they are.
class KYIMGLIB_API KyBayerRGB16ToRGB48 : public KyBayerRGB16ToRGB {
public:
    /// \param normalized  destination type 0x00120004 (RGB48, Normalized) instead of 0x00020004; the words are the same
    /// \param reserved    has no effect
    KyBayerRGB16ToRGB48(const std::int64_t& sourceType, bool normalized, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                  std::uint32_t count) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                      std::uint32_t count) const override;
};

#endif
