#ifndef KYIMGLIB_CONVERTERS_BAYER_KYBAYERTORGB_H
#define KYIMGLIB_CONVERTERS_BAYER_KYBAYERTORGB_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// Where a Bayer line finds the neighbours of its pixels, for kernels that applications add.
struct KyBayerGeometry {
    /// Bayer pattern of the lines with even and with odd index: 0 green red, 1 green blue, 2 red green, 3 blue green.
    std::uint32_t evenRowType;
    std::uint32_t oddRowType;
    /// Offsets in pixels of the neighbours of the even pixels of a group of 8 (0, 2, 4, 6), in groups of four: up,
    /// up-left, up-right, centre, left, right, down, down-left, down-right.
    std::int32_t neighbourOffsets[36];
};

/// Base of the converters from Bayer mosaics, one sample per pixel, to RGB.
///
/// The Bayer pattern is a FLAG_BAYER_ flag of each conversion. With FLAG_BAYER_INTERPOLATE demosaicing is bilinear: each
/// missing colour of a pixel is the truncated average of the neighbours that have it; neighbours outside the image are
/// left out. Without, it is nearest-neighbour: each 2 x 2 cell of samples gives its red and blue to all four pixels, its
/// upper green to the left and its lower green to the right ones, and a last odd line or pixel is left out. Values then
/// pass the filter.
///
/// Deinterlace an interlaced source first (by the identity converter to its non-interlaced type): the lines of a field are
/// no neighbours, and without interpolation each line call of a field writes two lines of the picture.
///
/// Any number of threads may convert with one object at once, with different widths, patterns and filters.
class KYIMGLIB_API KyBayerToRGB : public KyPixelConverter {
public:
    using KyPixelConverter::Convert;

    /// Converts a line (two lines without interpolation) with the settings of the thread's context. Without
    /// interpolation KY_STATUS_BAD_ARGUMENT when the context has no pattern flag, which an area conversion always sets.
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override;

protected:
    /// The first five arguments are those of KyPixelConverter; lines per convert depend on each conversion.
    ///
    /// \param swap         whether the destination is B, G, R in memory
    /// \param shiftOrStep  see the member
    /// \param reserved     kept as `reservedArgument`; has no effect
    KyBayerToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t sourceByteSize,
                 std::uint32_t destinationByteSize, std::uint32_t pipeliningSize, bool swap, std::uint32_t shiftOrStep,
                 std::uint32_t reserved);

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

    const bool swapRedBlue;
    /// 8-bit family: source bytes of a pixel, of which the last is read. 16-bit family: bits by which filtered values are
    /// shifted right.
    const std::uint32_t shiftOrStep;
    const std::uint32_t redIndex;  ///< place of red among the destination bytes of a pixel
    const std::uint32_t greenIndex;
    const std::uint32_t blueIndex;
    const std::uint32_t reservedArgument;
};

#endif
