#ifndef KYIMGLIB_CONVERTERS_COLOUR_KYRGBTORGB_H
#define KYIMGLIB_CONVERTERS_COLOUR_KYRGBTORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters from one RGB layout to another.
///
/// Layouts, by increasing address; words are little-endian:
///
///     RGB16    one word: red in bits 15 to 11, green in 10 to 5, blue in 4 to 0
///     RGB24    bytes R G B            BGR24    bytes B G R
///     RGB32    bytes R G B x          BGR32    bytes B G R x         x is ignored in a source, 0 in a destination
///     RGB48    words R G B
///     RGB64    words R G B x
///     planar   three planes of bytes, red, green and blue, at the plane offsets of the context
///
/// Every value passes the filter of the conversion; a line call outside of an area conversion has an identity filter (of 8
/// bits for sources of bytes, of 16 for sources of words).
///
///   - Sources of bytes pass the filter's 8-bit view. Their channels may be wider than a byte (`extra`): the line and area
///     forms then read the last byte of each, which is the most significant, the one-pixel form the first.
///   - Sources of words pass the 16-bit tables. Entries are shifted right by `shift`, and their low 8 bits are the result:
///     what is left above 255 wraps, it is not limited.
///   - From RGB16 only green is converted. Red and blue are constants, made of the first entries of their tables; see
///     KyRGB16ToRGB24 and KyRGB16ToRGB32.
///
/// All forms return KY_STATUS_SUCCESS; only the one-pixel form of a derived class of some other layout returns
/// KY_STATUS_NOT_SUPPORTED. Any number of threads may convert with one object at once.
class KYIMGLIB_API KyRGBtoRGB : public KyPixelConverter {
public:
    using KyPixelConverter::Convert;

    /// Converts one pixel. Of channels wider than a byte (`extra`) the first byte counts.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const override;

protected:
    /// \param sourceBytesPerChannelUnit  bytes of a source pixel when `extra` is 0
    /// \param destinationPixelBytes      bytes of a destination pixel, of all planes together
    /// \param sourceIsBGR                the first channel of the source is blue, the third red
    /// \param destinationIsBGR           the same of the destination
    /// \param extra                      bytes of each 8-bit channel of the source, less 1
    /// \param shift                      right shift of filtered words
    ///
    /// The others are those of KyPixelConverter.
    KyRGBtoRGB(const std::int64_t& sourceType, const std::int64_t& destinationType,
               std::uint32_t sourceBytesPerChannelUnit, std::uint32_t destinationPixelBytes,
               std::uint32_t pipeliningSize, bool sourceIsBGR, bool destinationIsBGR, std::uint32_t extra,
               std::uint32_t shift, std::uint32_t linesPerConvert);

    const bool SourceIsBGR;
    const bool DestinationIsBGR;
    const std::uint32_t ChannelBytes;         ///< bytes of each 8-bit channel of the source; otherwise 1
    const std::uint32_t Shift;                ///< right shift of filtered words; otherwise 0
    const std::uint32_t DestinationIndex[3];  ///< byte of a destination pixel that red, green and blue go to
    const std::uint32_t SourceIndex[3];       ///< channel of a source pixel that red, green and blue come from
};

/// Three bytes to RGB16.
class KYIMGLIB_API KyRGB24ToRGB16 : public KyRGBtoRGB {
public:
    /// \param extra        bytes of each channel less 1; a pixel has 3 * (extra + 1) bytes
    /// \param sourceIsBGR  the source is B, G, R
    KyRGB24ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR);
};

/// Four bytes to RGB16. The fourth is ignored.
class KYIMGLIB_API KyRGB32ToRGB16 : public KyRGBtoRGB {
public:
    /// \param extra        bytes of each channel less 1; a pixel has 4 * (extra + 1) bytes
    /// \param sourceIsBGR  the source is B, G, R, x
    KyRGB32ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR);
};

/// Three words to RGB16.
class KYIMGLIB_API KyRGB48ToRGB16 : public KyRGBtoRGB {
public:
    /// \param shift  right shift that brings filtered words to 8 bits
    KyRGB48ToRGB16(const std::int64_t& sourceType, std::uint32_t shift);
};

/// Four words to RGB16. The fourth is never read.
class KYIMGLIB_API KyRGB64ToRGB16 : public KyRGBtoRGB {
public:
    /// \param shift  right shift that brings filtered words to 8 bits
    KyRGB64ToRGB16(const std::int64_t& sourceType, std::uint32_t shift);
};

/// RGB16 to RGB24 or BGR24. With g for the 6 bits of green, and R, G and B for the filter's 8-bit tables, a line gets R[0],
/// G[4 g] and B[0]. The one-pixel form writes what KyRGB16ToRGB32 writes.
class KYIMGLIB_API KyRGB16ToRGB24 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24
    KyRGB16ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR);
};

/// Three bytes to RGB24 or BGR24.
class KYIMGLIB_API KyRGB24ToRGB24 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; others as for KyRGB24ToRGB16
    KyRGB24ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra, bool sourceIsBGR);
};

/// Four bytes to RGB24 or BGR24. The fourth is ignored.
class KYIMGLIB_API KyRGB32ToRGB24 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; others as for KyRGB32ToRGB16
    KyRGB32ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra, bool sourceIsBGR);
};

/// Three words to RGB24 or BGR24.
class KYIMGLIB_API KyRGB48ToRGB24 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; others as for KyRGB48ToRGB16
    KyRGB48ToRGB24(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR);
};

/// Four words to RGB24 or BGR24. The fourth is never read.
class KYIMGLIB_API KyRGB64ToRGB24 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; others as for KyRGB64ToRGB16
    KyRGB64ToRGB24(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR);
};

/// Three bytes to planar RGB24. In an area conversion planes are destinationWidth * destinationHeight bytes apart and their
/// lines sourceWidth bytes; in a line call outside of one all plane offsets are 0.
class KYIMGLIB_API KyRGB24ToRGB24Planar : public KyRGBtoRGB {
public:
    /// Arguments as for KyRGB24ToRGB16.
    KyRGB24ToRGB24Planar(const std::int64_t& sourceType, std::uint32_t extra, bool sourceIsBGR);
};

/// RGB16 to RGB32 or BGR32. With g for the 6 bits of green, and R, G and B for the filter's 8-bit tables, a pixel gets
/// 8 R[0], 4 G[g] and 8 B[0], where entries of 32 and more of R and B, and of 64 and more of G, count as 0.
class KYIMGLIB_API KyRGB16ToRGB32 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32
    KyRGB16ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR);
};

/// Three bytes to RGB32 or BGR32.
class KYIMGLIB_API KyRGB24ToRGB32 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; others as for KyRGB24ToRGB16
    KyRGB24ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra, bool sourceIsBGR);
};

/// Four bytes to RGB32 or BGR32. The fourth becomes 0.
class KYIMGLIB_API KyRGB32ToRGB32 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; others as for KyRGB32ToRGB16
    KyRGB32ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra, bool sourceIsBGR);
};

/// Three words to RGB32 or BGR32.
class KYIMGLIB_API KyRGB48ToRGB32 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; others as for KyRGB48ToRGB16
    KyRGB48ToRGB32(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR);
};

/// Four words to RGB32 or BGR32. The fourth is never read.
class KYIMGLIB_API KyRGB64ToRGB32 : public KyRGBtoRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; others as for KyRGB64ToRGB16
    KyRGB64ToRGB32(const std::int64_t& sourceType, std::uint32_t shift, bool destinationIsBGR);
};

#endif
