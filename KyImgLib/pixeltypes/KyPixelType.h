#ifndef KYIMGLIB_PIXELTYPES_KYPIXELTYPE_H
#define KYIMGLIB_PIXELTYPES_KYPIXELTYPE_H

#include <KyImgLib/platform/KyObject.h>

#include <cstdint>

class KyPixelConverter;

/// One pixel format: its ID (KyPixelTypeID.h), its sizes and whether it is a Bayer mosaic.
///
/// Objects never change after construction and may be read from any thread. The registry owns the objects that
/// its lookups return; those from Clone() and KyPixelTypeFactory::CreatePixelType() belong to the caller, who
/// deletes them. Not copyable: Clone() is the one way to a second object.
class KYIMGLIB_API KyPixelType : public KyObject {
public:
    /// \param id        pixel type ID
    /// \param bitSize   significant bits of a pixel; of one sample for the formats named "3 x 10 bits" and so on
    /// \param byteSize  bytes of a pixel in a buffer; 2 for packed 10- and 12-bit formats, whose buffers
    ///                  GetBufferSizeFor() computes
    /// \param isBayer   whether the format is a Bayer mosaic; taken as false unless the ID's colour space is RGB
    KyPixelType(const std::int64_t& id, std::uint16_t bitSize, std::uint16_t byteSize, bool isBayer);
    KyPixelType(const KyPixelType&) = delete;
    KyPixelType& operator=(const KyPixelType&) = delete;

    virtual ~KyPixelType();

    /// A new plain KyPixelType of the same four values, owned by the caller; null when there is no memory.
    virtual KyPixelType* Clone() const;

    virtual const std::int64_t& GetTypeID() const;
    virtual std::uint16_t GetPixelBitSize() const;
    virtual std::uint16_t GetPixelByteSize() const;
    virtual bool IsBayerPattern() const;

    /// Bytes that an image of `width` x `height` pixels occupies, in 32-bit arithmetic that wraps.
    ///
    /// Packed grayscale and Bayer types of 10 or 12 bits: two pixels share three bytes, over the whole image, so an
    /// odd number of pixels is rounded up to a pair. Extended types of single samples likewise in the groups of
    /// GetPixelGroup(). 24-bit types of 3 bytes that are not packed (RGB 24, BGR 24)
    /// are laid out with 4 bytes for each pixel. Everything else: byte size x width x height.
    virtual std::uint32_t GetBufferSizeFor(std::uint32_t width, std::uint32_t height) const;

    /// Writes the smallest number of pixels that share no byte with others, and their bytes: 2 and 3 for packed 12-bit
    /// grayscale, 2 and 4 for 8-bit 4:2:2, 1 and the bytes of a pixel for most types, 1 and 1 for the planes of a planar one. In a
    /// KyImage lines have whole groups. Knows the library's own types; others are told by ID, bits and bytes.
    void GetPixelGroup(std::uint32_t& pixels, std::uint32_t& bytes) const;

    /// The type of the same samples in scan order, LSB-aligned in 16-bit little-endian words or in bytes, not interlaced; RGB24
    /// for a type whose pixels have several samples.
    std::int64_t GetPlainTypeID() const;

    /// The registered converter from this type to `other`; null when there is none.
    const KyPixelConverter* FindConverterTo(const KyPixelType& other) const;
    /// The same as a reference, which is null when there is none: check HasConverterTo() first, or use FindConverterTo().
    const KyPixelConverter& GetConverterTo(const KyPixelType& other) const;
    /// The registered converter from `other` to this type; null reference as above.
    const KyPixelConverter& GetConverterFrom(const KyPixelType& other) const;
    bool HasConverterTo(const KyPixelType& other) const;
    bool HasConverterFrom(const KyPixelType& other) const;

private:
    std::int64_t id;
    std::uint16_t bitSize;
    std::uint16_t byteSize;
    bool isBayer;
};

#endif
