#ifndef KYIMGLIB_CONVERTERS_COLOUR_KYYUV8444TORGB_H
#define KYIMGLIB_CONVERTERS_COLOUR_KYYUV8444TORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters from YUV 4:4:4 with 8-bit samples to RGB: three samples for each pixel, at places of the caller's
/// choice.
///
///     | U | Y | V |      YUV 4:4:4, yIndex 1, uIndex 0, vIndex 2; U is Cb, V is Cr
///     | Y | V | U |      YCrCb 4:4:4, yIndex 0, uIndex 2, vIndex 1
///
/// The arithmetic is that of KyYUV8toRGB. With `extra`, samples have more than one byte and pixels follow each other every
/// 3 * (extra + 1) bytes; the index of a sample still counts bytes, from byte `extra` of its pixel.
/// GetSourceByteSize() says 3 bytes a pixel all the same, so for an area conversion of such a source give a source width of
/// (extra + 1) times its pixels.
///
/// Any number of threads may convert with one object at once.
class KYIMGLIB_API KyYUV8444ToRGB : public KyPixelConverter {
protected:
    /// \param destinationPixelBytes   bytes of a destination pixel
    /// \param destinationIsBGR        the destination is B, G, R in memory
    /// \param extra                   bytes of a sample less 1
    /// \param yIndex, uIndex, vIndex  bytes from byte `extra` of a pixel to its Y, U and V
    ///
    /// The others are those of KyPixelConverter.
    KyYUV8444ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t sourceByteSize,
                   std::uint32_t destinationPixelBytes, std::uint32_t pipeliningSize, bool destinationIsBGR,
                   std::uint32_t extra, std::uint32_t yIndex, std::uint32_t uIndex, std::uint32_t vIndex,
                   std::uint32_t linesPerConvert);

    const bool DestinationIsBGR;
    const std::uint32_t ChannelBytes;         ///< bytes of a sample
    const std::uint32_t DestinationIndex[3];  ///< byte of a destination pixel that red, green and blue go to
    const std::uint32_t YIndex;
    const std::uint32_t UIndex;
    const std::uint32_t VIndex;
};

/// YUV 4:4:4 to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyYUV8444ToRGB16 : public KyYUV8444ToRGB {
public:
    /// \param extra                   bytes of a sample less 1
    /// \param yIndex, uIndex, vIndex  bytes from byte `extra` of a pixel to its Y, U and V
    KyYUV8444ToRGB16(const std::int64_t& sourceType, std::uint32_t extra, std::uint32_t yIndex, std::uint32_t uIndex,
                     std::uint32_t vIndex);
};

/// YUV 4:4:4 to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyYUV8444ToRGB24 : public KyYUV8444ToRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; others as for KyYUV8444ToRGB16
    KyYUV8444ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra, std::uint32_t yIndex,
                     std::uint32_t uIndex, std::uint32_t vIndex);
};

/// YUV 4:4:4 to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyYUV8444ToRGB32 : public KyYUV8444ToRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; others as for KyYUV8444ToRGB16
    KyYUV8444ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra, std::uint32_t yIndex,
                     std::uint32_t uIndex, std::uint32_t vIndex);
};

#endif
