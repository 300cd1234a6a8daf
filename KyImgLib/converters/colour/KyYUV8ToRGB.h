#ifndef KYIMGLIB_CONVERTERS_COLOUR_KYYUV8TORGB_H
#define KYIMGLIB_CONVERTERS_COLOUR_KYYUV8TORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Base of the converters from YUV 4:2:2 with 8-bit samples to RGB.
///
///     | Y0 | U | Y1 | V |     two pixels; U is Cb, V is Cr
///
/// The arithmetic is that of ITU-R BT.601 with Y from 16 to 235 and U, V from 16 to 240, in factors of 1/256. With
/// y = 298 (Y - 16), u = U - 128 and v = V - 128, exactly:
///
///     red   = (y         + 409 v + 128) >> 8
///     green = (y - 100 u - 208 v + 128) >> 8
///     blue  = (y + 516 u         + 128) >> 8
///
/// each limited to 0 to 255 and then passed through the filter's 8-bit view. A camera that sends "full range" samples comes
/// out with more contrast than it saw. A line call outside of an area conversion has an identity filter.
///
/// Pixels are converted in pairs: with an odd count a line call reads the whole last pair and writes one pixel
/// more, so both buffers need room for it. In an area conversion the surplus pixel of a line is overwritten by the next
/// line where lines follow one another without padding. (Of an interlaced source the lines of one field
/// come first, so there it replaces the first pixel of a line of the other: give interlaced lines whole groups.)
///
/// Any number of threads may convert with one object at once.
class KYIMGLIB_API KyYUV8toRGB : public KyPixelConverter {
protected:
    /// \param sourceUnitBytes        bytes of a source pixel when `extra` is 0
    /// \param destinationPixelBytes  bytes of a destination pixel
    /// \param destinationIsBGR       the destination is B, G, R in memory
    /// \param extra                  bytes of a sample, of which the last is read, less 1
    ///
    /// The others are those of KyPixelConverter.
    KyYUV8toRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t sourceUnitBytes,
                std::uint32_t destinationPixelBytes, std::uint32_t pipeliningSize, bool destinationIsBGR,
                std::uint32_t extra, std::uint32_t linesPerConvert);

    const bool DestinationIsBGR;
    const std::uint32_t ChannelBytes;         ///< bytes of a sample
    const std::uint32_t DestinationIndex[3];  ///< byte of a destination pixel that red, green and blue go to
};

/// YUV 4:2:2 to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyYUV8ToRGB16 : public KyYUV8toRGB {
public:
    /// \param extra  bytes of a sample less 1: 0 for 8-bit samples, 1 reads the high bytes of 16-bit words
    KyYUV8ToRGB16(const std::int64_t& sourceType, std::uint32_t extra);
};

/// YUV 4:2:2 to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyYUV8ToRGB24 : public KyYUV8toRGB {
public:
    /// \param destinationIsBGR  destination BGR24 instead of RGB24; `extra` as for KyYUV8ToRGB16
    KyYUV8ToRGB24(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra);
};

/// YUV 4:2:2 to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyYUV8ToRGB32 : public KyYUV8toRGB {
public:
    /// \param destinationIsBGR  destination BGR32 instead of RGB32; `extra` as for KyYUV8ToRGB16
    KyYUV8ToRGB32(const std::int64_t& sourceType, bool destinationIsBGR, std::uint32_t extra);
};

#endif
