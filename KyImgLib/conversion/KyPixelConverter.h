#ifndef KYIMGLIB_CONVERSION_KYPIXELCONVERTER_H
#define KYIMGLIB_CONVERSION_KYPIXELCONVERTER_H

#include <KyImgLib/conversion/KyPixelConverterContext.h>
#include <KyImgLib/platform/KyObject.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstddef>
#include <cstdint>
#include <typeinfo>

class KyRGBFilter;
struct KyLinePass;
namespace ky {
struct Area;
struct AreaLines;
class Cascade;
struct Fields;
struct LineJoint;
}  // namespace ky

/// Converts pixels of one type (the source type) into pixels of another (the destination type).
///
/// There are three forms, one pixel, one line and a rectangular area, and the area form takes an optional filter.
/// The area form is the fast and complete one: it walks the image, weaves interlaced sources and sets up planar
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
    /// Colour order of a Bayer source: its first two pixels, then the two below. When more than one is given, the
    /// first in this order counts; when none is given, GRBG.
    static const std::uint32_t FLAG_BAYER_GRBG = 0x10;  ///< G R / B G
    static const std::uint32_t FLAG_BAYER_GBRG = 0x20;  ///< G B / R G
    static const std::uint32_t FLAG_BAYER_RGGB = 0x40;  ///< R G / G B
    static const std::uint32_t FLAG_BAYER_BGGR = 0x80;  ///< B G / G R
    /// Bayer source: interpolate between samples (bilinear) instead of repeating them over each 2 x 2 cell.
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
    /// Number of pixels that the converter likes to work on at a time; the area walk does not use it.
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
    /// \param sourceWidth         pixels of a line in the source buffer; its line size is GetSourceByteSize(sourceWidth)
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
    ///                            its line size is GetDestinationByteSize(destinationWidth) + destinationPadding
    ///
    /// A planar destination of a source that is not planar has its planes one after the other, each destinationWidth x
    /// destinationHeight bytes, and the line size of each plane is sourceWidth bytes: padding is ignored, so give the
    /// destination the width of the source.
    ///
    /// No argument is checked. Sources in pixel groups (4:2:2 pairs, 4:1:1 quadruples) write whole groups.
    /// Returns KY_STATUS_SUCCESS; the status of single line calls is not reported. (A KyComplexConverter reports a stage
    /// that fails.)
    virtual std::uint32_t Convert(const std::uint8_t* source, std::uint32_t sourceWidth, std::uint32_t sourceHeight,
                                  std::uint8_t* destination, std::uint32_t destinationWidth,
                                  std::uint32_t destinationHeight, std::uint32_t width, std::uint32_t height,
                                  std::uint32_t flags, std::uint32_t destinationPadding) const;

    /// Converts `count` pixels on each of the lines per convert, with line sizes, filter and flags from the thread's
    /// context. The base class calls the pass function for one such step, and returns KY_STATUS_NOT_SUPPORTED when it has
    /// none.
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

    /// Source width, in pixels, of the area conversion that the calling thread is in; 0 outside of one.
    std::uint32_t GetAreaSourceWidth() const;

    /// Converts all lines of a pass in one call; must have the same effect as one line call for each step.
    using PassFunction = void (*)(const KyPixelConverter& converter, const KyPixelConverterContext& context,
                                  const KyLinePass& pass);

    /// Makes `function` do the work: in the line form unless that is overridden, and in area conversions, which call it
    /// once per pass instead of the line form once per step. Called in the constructor of the class `owner`. Area
    /// conversions use the function only for objects of exactly this class: one derived from it may have overridden the
    /// line form. The class itself must not override the area form, which chains pass over.
    ///
    /// \param neighbourLines  lines above and below a line that its conversion reads as well
    void SetPassFunction(const std::type_info& owner, PassFunction function, std::uint32_t neighbourLines = 0);

private:
    friend class KyComplexConverter;  // asks the two converters of a chain for their protected sizes
    friend class ky::Cascade;         // converts some lines of an area, and then the next ones

    /// Whether the pass function does all the work, so that any lines of an area can be converted by themselves.
    bool ConvertsByPassFunction() const;
    std::uint32_t GetNeighbourLines() const;
    /// Lines of an area that are converted together: their number is a multiple of it.
    std::uint32_t GetLineStep() const;
    /// The filter that a conversion uses when it was given none.
    const KyRGBFilter& GetDefaultFilter() const;
    void FillContext(KyPixelConverterContext& context, const ky::Area& area) const;
    void ConvertLines(KyPixelConverterContext& context, const ky::AreaLines& lines) const;
    /// The fields of an interlaced image, those first that hold the first destination line.
    static ky::Fields FieldsOf(const KyPixelConverterContext& context, const std::uint8_t* source);
    void Ask(KyPixelConverterContext& context, std::uint32_t width, ky::LineJoint& joint) const;
    void AskAhead(KyLinePass& pass, const ky::AreaLines& lines, std::size_t sourceLineSize) const;
    void ConvertPass(KyPixelConverterContext& context, const KyLinePass& pass) const;

    struct Record;
    Record* record;
};

/// Lines that are converted in one go: an area, one field of an interlaced one, or some lines of these.
struct KyLinePass {
    const std::uint8_t* source;   ///< first line
    std::size_t sourceStep;       ///< bytes from the source of one line call to that of the next
    std::uint8_t* destination;    ///< first line
    std::size_t destinationStep;  ///< bytes from the destination of one line call to that of the next
    std::uint32_t width;          ///< pixels of each line call
    std::uint32_t firstLine;      ///< line index in the area of the first line call
    std::uint32_t height;    ///< destination lines; a multiple of lineStep. With 0 there is nothing to do and no image
    std::uint32_t lineStep;  ///< line calls have the indexes firstLine, firstLine + lineStep, ...
    /// The whole area reads and writes more than the caches hold. What is written around them needs no fence here: an area
    /// conversion ends with one.
    bool isLarge;
    /// A hint: what is read soon. A large area is faster when line call n, from 0, prefetches `aheadBytes` from address
    /// `ahead` + n * `aheadStep` on, which may lie outside of all memory. 0 bytes where there is nothing to ask for.
    std::uintptr_t ahead;
    std::size_t aheadStep;
    std::size_t aheadBytes;
    /// For the library's own pass functions, which read what lies between two stages of a chain from somewhere else. Others
    /// never get such lines.
    ky::LineJoint* joint;
};

#endif
