#ifndef KYIMGLIB_CONVERTERS_COLOUR_KYYUV8411TORGB_H
#define KYIMGLIB_CONVERTERS_COLOUR_KYYUV8411TORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters from YUV 4:1:1 with 8-bit samples to RGB.
///
///     | U | Y0 | Y1 | V | Y2 | Y3 |     four pixels; U is Cb, V is Cr
///
/// The arithmetic is that of KyYUV8toRGB, with one known flaw that is kept for compatibility: the red of pixels 1, 2 and 3
/// is computed from Y1. (Green and blue use each pixel's own Y.)
///
/// Pixels are converted in groups of four: a line call reads the whole last group and writes up to three pixels
/// more, so both buffers need room for them. In an area conversion the surplus pixels of a line are overwritten by the next
/// line where lines follow one another without padding. (Of an interlaced source the lines of one field
/// come first, so there it replaces the first pixel of a line of the other: give interlaced lines whole groups.)
///
/// Any number of threads may convert with one object at once.
class KYIMGLIB_API KyYUV8411ToRGB : public KyPixelConverter {
public:
    using KyPixelConverter::GetSourceByteSize;

    /// Bytes of a line of `count` source pixels: one and a half for each, rounded down; 32-bit arithmetic that wraps.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;

protected:
    /// \param destinationPixelBytes  bytes of a destination pixel
    /// \param destinationIsBGR       the destination is B, G, R in memory
    ///
    /// The others are those of KyPixelConverter.
    KyYUV8411ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t sourceByteSize,
                   std::uint32_t destinationPixelBytes, std::uint32_t pipeliningSize, bool destinationIsBGR,
                   std::uint32_t linesPerConvert);

    const bool DestinationIsBGR;
    const std::uint32_t DestinationIndex[3];  ///< byte of a destination pixel that red, green and blue go to
};

/// YUV 4:1:1 to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyYUV8411ToRGB16 : public KyYUV8411ToRGB {
public:
    explicit KyYUV8411ToRGB16(const std::int64_t& sourceType);
};

/// YUV 4:1:1 to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyYUV8411ToRGB24 : public KyYUV8411ToRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24
    KyYUV8411ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR);
};

/// YUV 4:1:1 to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyYUV8411ToRGB32 : public KyYUV8411ToRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32
    KyYUV8411ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR);
};

#endif
