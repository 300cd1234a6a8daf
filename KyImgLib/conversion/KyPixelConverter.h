#ifndef KYIMGLIB_CONVERSION_KYPIXELCONVERTER_H
#define KYIMGLIB_CONVERSION_KYPIXELCONVERTER_H

#include <KyImgLib/conversion/KyPixelConverterContext.h>
#include <KyImgLib/platform/KyObject.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstdint>

class KyRGBFilter;

/// Converts pixels of one type (the source type) into pixels of another (the destination type).
///
/// There are three forms, one pixel, one line and a rectangular area, and the area form takes an optional filter.
/// The area form is the fast and complete one: it converts all lines, deinterlaces and sets up planar
/// destinations. The line form converts with the settings of the area conversion it is called from.
///
/// Pixels are unsigned bytes without any alignment; samples of more than 8 bits are little-endian 16-bit words.
/// Converters never change after construction. Every converter of this library may convert on any number of threads
/// at once.
///
/// Applications derive converters of their own: override the line form (and the one-pixel form where it makes sense).
/// The base constructor registers the object where its pair is free: keep it alive as long as the registry can hand it
/// out, and where other threads look converters up meanwhile, have nothing in the derived constructor that they must not
/// miss.
class KYIMGLIB_API KyPixelConverter : public KyObject {
public:
    /// \name Flags of an area conversion, combined by OR
    ///@{
    /// Interlaced source: the second half of the source buffer holds the even destination lines, the first half the
    /// odd ones.
    static const std::uint32_t FLAG_INVERT_DEINTERLACER = 0x1;
    /// Bayer pattern of the source: the colours of its first two pixels, then of the two below. When more than one is
    /// given, the first in this order counts; when none is given, GRBG.
    static const std::uint32_t FLAG_BAYER_GRBG = 0x10;  ///< G R / B G
    static const std::uint32_t FLAG_BAYER_GBRG = 0x20;  ///< G B / R G
    static const std::uint32_t FLAG_BAYER_RGGB = 0x40;  ///< R G / G B
    static const std::uint32_t FLAG_BAYER_BGGR = 0x80;  ///< B G / G R
    /// Bayer source: bilinear demosaicing instead of nearest-neighbour, which gives all pixels of a 2 x 2 cell its colours.
    static const std::uint32_t FLAG_BAYER_INTERPOLATE = 0x100;
    ///@}

    KyPixelConverter(const KyPixelConverter&) = delete;
    KyPixelConverter& operator=(const KyPixelConverter&) = delete;

    /// Does not unregister the converter.
    virtual ~KyPixelConverter();

    virtual const std::int64_t& GetSourceType() const;
    virtual const std::int64_t& GetDestinationType() const;

    /// Bytes of a line of `count` source pixels without padding; 32-bit arithmetic that wraps.
    virtual std::uint32_t GetSourceByteSize(std::uint32_t count) const;
    /// Bytes of one source pixel.
    virtual std::uint32_t GetSourceByteSize() const;
    /// Bytes of a line of `count` destination pixels without padding; 32-bit arithmetic that wraps.
    virtual std::uint32_t GetDestinationByteSize(std::uint32_t count) const;
    /// Bytes of one destination pixel.
    virtual std::uint32_t GetDestinationByteSize() const;

protected:
    /// Preferred number of pixels to work on at a time; area conversions do not use it.
    virtual std::uint32_t GetPipeliningSize() const;
    /// Lines that one line call reads and writes, at least 1.
    virtual std::uint32_t GetLinesPerConvert() const;

public:
    /// Converts an area and passes red, green and blue through `filter`, which must stay unchanged until the call
    /// returns. Converters without colour arithmetic (gray, identity) ignore it. Otherwise like the unfiltered form.
    virtual std::uint32_t Convert(const KyRGBFilter& filter, const std::uint8_t* source, std::uint32_t sourceWidth,
                                  std::uint32_t sourceHeight, std::uint8_t* destination, std::uint32_t destinationWidth,
                                  std::uint32_t destinationHeight, std::uint32_t width, std::uint32_t height,
                                  std::uint32_t flags, std::uint32_t destinationPadding) const;

    /// Converts the first `width` pixels of the first `height` lines of an image.
    ///
    /// \param source              first pixel; lines follow one another without padding
    /// \param sourceWidth         pixels of a line in the source buffer; its stride is GetSourceByteSize(sourceWidth)
    /// \param sourceHeight        lines in the source buffer; finds the second field of an interlaced source
    /// \param destination         first pixel; must not overlap the source
    /// \param destinationWidth    pixels of a line in the destination buffer
    /// \param destinationHeight   lines in the destination buffer; the last of them has no neighbour below for Bayer
    ///                            interpolation, so it must not be larger than the number of source lines
    /// \param width               pixels converted in each line, at most either buffer's width
    /// \param height              lines converted, at most either buffer's height; rounded down to a multiple of the
    ///                            lines per convert (2 for Bayer without interpolation and for interlaced sources)
    /// \param flags               FLAG_ constants
    /// \param destinationPadding  bytes after each destination line:
    ///                            its stride is GetDestinationByteSize(destinationWidth) + destinationPadding
    ///
    /// A built-in planar destination of a source that is not planar has its planes one after the other, each
    /// destinationWidth x destinationHeight bytes, and the stride of each plane is sourceWidth bytes: padding is ignored, so
    /// give the destination the width of the source. Images of extended types in planes, source or destination, have their
    /// planes one after the other and no padding, as KyImage has them without strides; padding is ignored.
    ///
    /// No argument is checked. Sources in pixel groups (4:2:2 pairs, 4:1:1 quadruples) write whole groups.
    /// Returns KY_STATUS_SUCCESS; the status of single line calls is not reported. (A KyComplexConverter reports a stage
    /// that fails.)
    virtual std::uint32_t Convert(const std::uint8_t* source, std::uint32_t sourceWidth, std::uint32_t sourceHeight,
                                  std::uint8_t* destination, std::uint32_t destinationWidth,
                                  std::uint32_t destinationHeight, std::uint32_t width, std::uint32_t height,
                                  std::uint32_t flags, std::uint32_t destinationPadding) const;

    /// Converts `count` pixels on each of the lines per convert, with strides, filter and flags from the thread's
    /// context. A class that does not override it returns KY_STATUS_NOT_SUPPORTED; so do those of the
    /// library's own whose source or destination is an extended type in planes. All its others convert.
    virtual std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const;

    /// Converts one pixel. The base class returns KY_STATUS_NOT_SUPPORTED.
    virtual std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination) const;

protected:
    /// Stores the values and registers the converter for its pair unless the pair has one already.
    ///
    /// \param sourceByteSize, destinationByteSize  bytes of one pixel
    /// \param pipeliningSize                       see GetPipeliningSize()
    /// \param linesPerConvert                      see GetLinesPerConvert()
    ///
    /// Throws std::bad_alloc when there is no memory.
    KyPixelConverter(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t sourceByteSize,
                     std::uint32_t destinationByteSize, std::uint32_t pipeliningSize, std::uint32_t linesPerConvert);

    /// The calling thread's context, a new one when this is its outermost conversion. Each call needs its
    /// ReleaseContext(). One too many does nothing outside of a conversion; inside, what is left of that may find no
    /// settings.
    KyPixelConverterContext* GetContext() const;
    void ReleaseContext() const;

    struct Record;  ///< what the library keeps of a converter

private:
    Record* record;
};

#endif
