#ifndef KYIMGLIB_PIXELTYPES_KYEXTENDEDTYPES_H
#define KYIMGLIB_PIXELTYPES_KYEXTENDEDTYPES_H

#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/platform/KyExport.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstdint>

/// \file
/// Formats that cameras, drivers and encoders use today, beyond those that are there after loading.
///
/// Their IDs have bit 32 set. Below it are the same fields as in every ID: colour space, packed, normalized, planar. The
/// numbers never change. Bayer mosaics have an ID for each packing; the pattern is a flag of each conversion, as everywhere.

/// Set in the ID of every extended type.
inline constexpr std::int64_t KY_TYPE_EXTENDED = 0x100000000;

/// \name PFNC "p" formats
/// Samples one after the other in a stream of bits, each from its lowest bit on, into bytes from their lowest bit on (PFNC
/// 2.4, "p" packing): four samples of 10 bits in 5 bytes, two of 12 bits in 3 bytes, four of 14 bits in 7 bytes.
///@{
inline constexpr std::int64_t KY_TYPE_MONO10P = 0x100410001;   ///< Mono10p
inline constexpr std::int64_t KY_TYPE_MONO12P = 0x100410002;   ///< Mono12p
inline constexpr std::int64_t KY_TYPE_MONO14P = 0x100410003;   ///< Mono14p
inline constexpr std::int64_t KY_TYPE_BAYER10P = 0x100420001;  ///< BayerGR10p, BayerRG10p, BayerGB10p, BayerBG10p
inline constexpr std::int64_t KY_TYPE_BAYER12P = 0x100420002;  ///< BayerGR12p and the others
inline constexpr std::int64_t KY_TYPE_BAYER14P = 0x100420003;  ///< BayerGR14p and the others
///@}

/// \name MIPI CSI-2 RAW10, RAW12, RAW14
/// The high 8 bits of each sample of a group in a byte of its own, then the low bits of all of them, those of the first sample
/// lowest (MIPI CSI-2; V4L2 calls them Y10P, Y12P, Y14P and pRAA, pRCC, pREE for RGGB): four samples of 10 bits in 5
/// bytes, two of 12 bits in 3 bytes, four of 14 bits in 7 bytes.
///@{
inline constexpr std::int64_t KY_TYPE_MONO10_MIPI = 0x100410004;
inline constexpr std::int64_t KY_TYPE_MONO12_MIPI = 0x100410005;
inline constexpr std::int64_t KY_TYPE_MONO14_MIPI = 0x100410006;
inline constexpr std::int64_t KY_TYPE_BAYER10_MIPI = 0x100420004;
inline constexpr std::int64_t KY_TYPE_BAYER12_MIPI = 0x100420005;
inline constexpr std::int64_t KY_TYPE_BAYER14_MIPI = 0x100420006;
///@}

/// \name Samples of less than a byte
/// Eight, four or two samples in a byte, the first one in its lowest bits (PFNC). As 8-bit grayscale they get its full range.
///@{
inline constexpr std::int64_t KY_TYPE_MONO1P = 0x100410007;  ///< Mono1p
inline constexpr std::int64_t KY_TYPE_MONO2P = 0x100410008;  ///< Mono2p
inline constexpr std::int64_t KY_TYPE_MONO4P = 0x100410009;  ///< Mono4p
///@}

/// \name Big-endian words
/// 16-bit words with the high byte first; samples of less than 16 bits are LSB-aligned (IIDC, V4L2's Y16_BE).
///@{
inline constexpr std::int64_t KY_TYPE_MONO10_BE = 0x10001000A;
inline constexpr std::int64_t KY_TYPE_MONO12_BE = 0x10001000B;
inline constexpr std::int64_t KY_TYPE_MONO14_BE = 0x10001000C;
inline constexpr std::int64_t KY_TYPE_MONO16_BE = 0x10001000D;
inline constexpr std::int64_t KY_TYPE_BAYER10_BE = 0x10002000A;
inline constexpr std::int64_t KY_TYPE_BAYER12_BE = 0x10002000B;
inline constexpr std::int64_t KY_TYPE_BAYER14_BE = 0x10002000C;
inline constexpr std::int64_t KY_TYPE_BAYER16_BE = 0x10002000D;
///@}

/// Bayer mosaic of 16-bit little-endian words: PFNC's BayerRG16 and the others.
inline constexpr std::int64_t KY_TYPE_BAYER16 = 0x10002000E;

/// \name Four bytes a pixel
/// Bytes in the order of the name. An alpha is 255 in a destination; a source's fourth byte is ignored.
///@{
inline constexpr std::int64_t KY_TYPE_RGBA32 = 0x100020020;
inline constexpr std::int64_t KY_TYPE_BGRA32 = 0x100020021;
inline constexpr std::int64_t KY_TYPE_ARGB32 = 0x100020022;
inline constexpr std::int64_t KY_TYPE_ABGR32 = 0x100020023;
///@}

class KYIMGLIB_API KyExtendedTypes {
public:
    KyExtendedTypes() = delete;

    /// Registers the types of this header, their names and their converters: of single samples to the plain type (16-bit words,
    /// or 8-bit grayscale for samples of less than a byte), and from there to everything that it converts to; of four bytes a
    /// pixel from everything that converts to RGB32, and to everything that RGB32 converts to.
    ///
    /// Any number of calls on any threads register once. Types and converters are the library's, and stay until it is
    /// unloaded. A type or a pair that an application has registered before stays as it is; such converters become stages of chains, so
    /// register them after this call, or keep them for as long as the library is used.
    /// Returns KY_STATUS_SUCCESS, or KY_STATUS_OUT_OF_MEMORY: what is missing then, the next call registers.
    static std::uint32_t Register() noexcept;
};

#endif
