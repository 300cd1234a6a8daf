#ifndef KYIMGLIB_CONVERTERS_BAYER_KYBAYERRGB8TORGB_H
#define KYIMGLIB_CONVERTERS_BAYER_KYBAYERRGB8TORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Where a Bayer line finds the neighbours of its pixels, for kernels that applications add.
struct KyBayerGeometry {
    /// Colour order of the lines with even and with odd index: 0 green red, 1 green blue, 2 red green, 3 blue green.
    std::uint32_t evenRowType;
    std::uint32_t oddRowType;
    /// Offsets in pixels of the neighbours of the even pixels of a group of 8 (0, 2, 4, 6), in groups of four: up,
    /// up-left, up-right, centre, left, right, down, down-left, down-right.
    std::int32_t neighbourOffsets[36];
};

/// Base of the converters from Bayer mosaics, one sample per pixel of which one byte is read, to RGB.
///
/// The colour order of the mosaic is a FLAG_BAYER_ flag of each conversion. With FLAG_BAYER_INTERPOLATE each missing
/// colour of a pixel is the truncated average of the neighbours that have it (bilinear; neighbours outside the image
/// are left out); without, each 2 x 2 cell of samples gives its red and blue to all four pixels and its upper green to
/// the left, its lower green to the right ones, and a last odd line or pixel is left out. Values then pass the filter's
/// 8-bit view.
///
/// Any number of threads may convert with one object at once, with different widths, patterns and filters.
class KYIMGLIB_API KyBayerRGB8ToRGB : public KyPixelConverter {
public:
    using KyPixelConverter::Convert;

    /// Converts a line (two lines without interpolation) with the settings of the thread's context. Without
    /// interpolation KY_STATUS_BAD_ARGUMENT when the context has no pattern flag, which an area conversion always sets.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override;

protected:
    /// \param a            bytes of a sample in multiples of the step; \param e  step - 1
    /// \param b            bytes of a destination pixel
    /// \param c            pipelining size
    /// \param swap         whether the destination is B, G, R in memory
    /// \param reserved     kept as `reservedArgument`; has no effect
    KyBayerRGB8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t a,
                     std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t e, std::uint32_t reserved);

    /// 1 when the thread's conversion interpolates, otherwise 2.
    std::uint32_t GetLinesPerConvert() const override;

    /// Converts `count` pixels of two lines without interpolation; an odd last pixel is left out.
    virtual std::uint32_t ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                          std::uint32_t count) const = 0;
    /// Converts `count` pixels of one line with interpolation. The lines above and below are a source line of the area
    /// conversion before and after.
    virtual std::uint32_t ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                              std::uint32_t count) const = 0;

    /// Row types and neighbours for the area conversion that the calling thread is in.
    KyBayerGeometry GetGeometry() const;

    /// Calls the library's kernels for its own converters.
    struct Driver;

    const bool swapRedBlue;
    const std::uint32_t shiftOrStep;  ///< source bytes of a pixel, of which the last is read
    const std::uint32_t redIndex;     ///< place of red among the destination bytes of a pixel
    const std::uint32_t greenIndex;
    const std::uint32_t blueIndex;
    const std::uint32_t reservedArgument;
};

/// Bayer mosaic to RGB16: 16-bit words 5-6-5, red in the high bits.
class KYIMGLIB_API KyBayerRGB8ToRGB16 : public KyBayerRGB8ToRGB {
public:
    /// \param e         source bytes of a pixel less 1: 0 for 8-bit samples, 1 reads the high byte of 16-bit words
    /// \param reserved  has no effect
    KyBayerRGB8ToRGB16(const std::int64_t& sourceType, std::uint32_t e, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override;
};

/// Bayer mosaic to RGB24, bytes R, G, B, or BGR24, bytes B, G, R.
class KYIMGLIB_API KyBayerRGB8ToRGB24 : public KyBayerRGB8ToRGB {
public:
    /// \param swap      destination BGR24 instead of RGB24; others as for KyBayerRGB8ToRGB16
    KyBayerRGB8ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t e, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override;
};

/// Bayer mosaic to RGB32, bytes R, G, B, 0, or BGR32, bytes B, G, R, 0.
class KYIMGLIB_API KyBayerRGB8ToRGB32 : public KyBayerRGB8ToRGB {
public:
    /// \param swap      destination BGR32 instead of RGB32; others as for KyBayerRGB8ToRGB16
    KyBayerRGB8ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t e, std::uint32_t reserved);

protected:
    std::uint32_t ConvertLinePair(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override;
    std::uint32_t ConvertInterpolated(const std::uint8_t*, std::uint8_t*, std::uint32_t) const override;
};

#endif
