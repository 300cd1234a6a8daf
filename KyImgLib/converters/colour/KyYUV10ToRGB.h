#ifndef KYIMGLIB_CONVERTERS_COLOUR_KYYUV10TORGB_H
#define KYIMGLIB_CONVERTERS_COLOUR_KYYUV10TORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters from YUV 4:2:2 with samples in 16-bit words to RGB.
///
///     | Y0 | U | Y1 | V |     two pixels, little-endian words; U is Cb, V is Cr
///
/// Each word is shifted right, its low 8 bits count (what is left above 255 wraps), and the rest is the work of
/// KyYUV8toRGB, pairs included: with an odd count a line call writes one pixel more.
///
/// Any number of threads may convert with one object at once.
class KYIMGLIB_API KyYUV10ToRGB : public KyPixelConverter {
protected:
    /// \param sourcePixelBytes       bytes of a source pixel
    /// \param destinationPixelBytes  bytes of a destination pixel
    /// \param destinationIsBGR       the destination is B, G, R in memory
    /// \param shift                  right shift that brings a sample to 8 bits; with 16 and more nothing is left
    ///
    /// The others are those of KyPixelConverter.
    KyYUV10ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t sourcePixelBytes,
                 std::uint32_t destinationPixelBytes, std::uint32_t pipeliningSize, bool destinationIsBGR,
                 std::uint32_t shift, std::uint32_t linesPerConvert);

    const bool DestinationIsBGR;
    const std::uint32_t DestinationIndex[3];  ///< byte of a destination pixel that red, green and blue go to
    const std::uint32_t Shift;                ///< right shift of a sample
};

/// YUV 4:2:2 in words to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyYUV10ToRGB16 : public KyYUV10ToRGB {
public:
    /// \param shift  right shift that brings a sample to 8 bits: 2 for 10-bit samples, 8 for left-aligned ones
    KyYUV10ToRGB16(const std::int64_t& sourceType, std::uint32_t shift);
};

/// YUV 4:2:2 in words to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyYUV10ToRGB24 : public KyYUV10ToRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; `shift` as for KyYUV10ToRGB16
    KyYUV10ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t shift);
};

/// YUV 4:2:2 in words to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyYUV10ToRGB32 : public KyYUV10ToRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; `shift` as for KyYUV10ToRGB16
    KyYUV10ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t shift);
};

#endif
