#ifndef KYIMGLIB_PIXELTYPES_KYPIXELTYPEID_H
#define KYIMGLIB_PIXELTYPES_KYPIXELTYPEID_H

#include <KyImgLib/platform/KyExport.h>

#include <cstdint>

class KyPixelType;
class KyString;

/// \file
/// A pixel type ID names a pixel format. It is a signed 64-bit integer of bit fields:
///
///     bits   0-15  format index    tells the formats of one colour space apart; it is not the bit depth
///     bits  16-18  colour space    grayscale, RGB (Bayer mosaics included) or YUV
///     bit      20  normalized      samples are MSB-aligned: scaled to the full range of their word
///     bit      21  interlaced      the image is stored as two fields, one after the other
///     bit      22  packed          samples are stored without gaps between them
///     bit      23  planar          each colour component is stored in its own plane
///     bits  24-28  tap layout      how the two taps of a camera are interleaved: one value, no set of flags
///
/// Bits 19 and 29 to 63 are 0 in every built-in ID and are not read. Whether a type is a Bayer mosaic is a
/// property of its KyPixelType object; its Bayer pattern is a flag of each conversion.

/// \name Field masks
///@{
inline constexpr std::int64_t KY_TYPE_INDEX_MASK = 0x0000FFFF;
inline constexpr std::int64_t KY_COLOUR_SPACE_MASK = 0x00070000;
inline constexpr std::int64_t KY_TAP_LAYOUT_MASK = 0x1F000000;
///@}

/// \name Colour spaces
///@{
inline constexpr std::int64_t KY_COLOUR_SPACE_GRAYSCALE = 0x00010000;
inline constexpr std::int64_t KY_COLOUR_SPACE_RGB = 0x00020000;
inline constexpr std::int64_t KY_COLOUR_SPACE_YUV = 0x00040000;
///@}

/// \name Layout flags
///@{
inline constexpr std::int64_t KY_TYPE_NORMALIZED = 0x00100000;
inline constexpr std::int64_t KY_TYPE_INTERLACED = 0x00200000;
inline constexpr std::int64_t KY_TYPE_PACKED = 0x00400000;
inline constexpr std::int64_t KY_TYPE_PLANAR = 0x00800000;
///@}

/// \name Tap layouts ("inverted": the half is read out from its far end)
///@{
inline constexpr std::int64_t KY_TAP_SINGLE = 0x00000000;
inline constexpr std::int64_t KY_TAP_LEFT_RIGHT = 0x01000000;
inline constexpr std::int64_t KY_TAP_LEFT_RIGHT_INVERTED = 0x02000000;
inline constexpr std::int64_t KY_TAP_LEFT_INVERTED_RIGHT = 0x04000000;
inline constexpr std::int64_t KY_TAP_LEFT_INVERTED_RIGHT_INVERTED = 0x08000000;
inline constexpr std::int64_t KY_TAP_DUAL_LINES = 0x10000000;
///@}

/// \name Types that conversions end in
///@{
inline constexpr std::int64_t KY_TYPE_GRAYSCALE8 = 0x00010001;
inline constexpr std::int64_t KY_TYPE_RGB16 = 0x00020001;         ///< 5-6-5 in a 16-bit word, red in the high bits
inline constexpr std::int64_t KY_TYPE_RGB24 = 0x00020002;         ///< bytes R, G, B
inline constexpr std::int64_t KY_TYPE_RGB32 = 0x00020003;         ///< bytes R, G, B, 0
inline constexpr std::int64_t KY_TYPE_RGB48 = 0x00020004;         ///< 16-bit words R, G, B
inline constexpr std::int64_t KY_TYPE_BGR24 = 0x00020006;         ///< bytes B, G, R
inline constexpr std::int64_t KY_TYPE_BGR32 = 0x00020007;         ///< bytes B, G, R, 0
inline constexpr std::int64_t KY_TYPE_RGB24_PLANAR = 0x00820002;  ///< a plane of bytes each for R, G, B
///@}

/// The ID of the same format not interlaced.
constexpr std::int64_t KyDeinterlacedTypeID(std::int64_t id) noexcept { return id & ~KY_TYPE_INTERLACED; }

/// Replaces `name` by the default display name of `id`, for example "Bayer RGB 10-bits, Packed".
///
/// The name is made of the colour space ("Bayer RGB" instead of "RGB" when `isBayer`; "Unknown Colorspace" for a
/// field value that is none of the three), the bit size of `type`, the flags Normalized, Interlaced, Packed,
/// Planar in this order, and the tap layout; a tap field with more than one bit set adds nothing.
KYIMGLIB_API void BuildPixelTypeName(const std::int64_t& id, const KyPixelType& type, bool isBayer, KyString& name);

/// Whether `type` has exactly these attributes. The colour space and the tap layout are given as the masked field
/// values (KY_COLOUR_SPACE_RGB, not 2). The format index and the Bayer property take no part.
KYIMGLIB_API bool MatchesPixelTypeAttributes(const KyPixelType& type, std::uint32_t bitSize, std::int64_t colourSpace,
                                             bool normalized, bool packed, bool interlaced, bool planar,
                                             std::int64_t tapLayout);

#endif
