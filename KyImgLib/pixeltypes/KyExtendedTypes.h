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

/// \name YCbCr
/// Y, Cb and Cr (YUV) as cameras, drivers and encoders have them. An ID is one of the layouts below, alone or with one or both
/// of these added: alone it stands for the colours of ITU-R BT.601 in limited range, black 16 and white 235 of 8 bits.
///
/// RGB is the standard's real-valued formula, exactly rounded to the nearest byte. (The built-in YUV types use factors of
/// 1/256.) Pixels that share Cb and Cr get the same ones: nothing is interpolated. To YCbCr, they are those of the mean of the
/// pixels that share them.
///@{
inline constexpr std::int64_t KY_YCBCR_FULL_RANGE = 1;  ///< black 0, white 255 of 8 bits: PFNC's YCbCr, JPEG
inline constexpr std::int64_t KY_YCBCR_BT709 = 2;       ///< the matrix of ITU-R BT.709: PFNC's YCbCr709, HD video
///@}

/// \name YCbCr: pixels in one plane
///@{
inline constexpr std::int64_t KY_TYPE_YUYV = 0x100040100;       ///< 4:2:2, bytes Y0 Cb Y1 Cr: YUY2
inline constexpr std::int64_t KY_TYPE_UYVY = 0x100040110;       ///< 4:2:2, bytes Cb Y0 Cr Y1
inline constexpr std::int64_t KY_TYPE_YVYU = 0x100040120;       ///< 4:2:2, bytes Y0 Cr Y1 Cb
inline constexpr std::int64_t KY_TYPE_VYUY = 0x100040130;       ///< 4:2:2, bytes Cr Y0 Cb Y1
inline constexpr std::int64_t KY_TYPE_YUV444 = 0x100440140;     ///< 4:4:4, bytes Y Cb Cr
inline constexpr std::int64_t KY_TYPE_UYV444 = 0x100440150;     ///< 4:4:4, bytes Cb Y Cr
inline constexpr std::int64_t KY_TYPE_YYUYYV411 = 0x100440160;  ///< 4:1:1, bytes Y0 Y1 Cb Y2 Y3 Cr
inline constexpr std::int64_t KY_TYPE_UYYVYY411 = 0x100440170;  ///< 4:1:1, bytes Cb Y0 Y1 Cr Y2 Y3
/// 4:2:2, little-endian words Y0 Cb Y1 Cr. Bits above a sample's are 0.
inline constexpr std::int64_t KY_TYPE_YUYV10 = 0x100040180;
inline constexpr std::int64_t KY_TYPE_YUYV12 = 0x100040190;
/// The same with 10 bits in the upper bits of words; the lower ones are ignored: Y210.
inline constexpr std::int64_t KY_TYPE_Y210 = 0x1001401A0;
///@}

/// \name YCbCr: planes
/// A plane of Y, then a plane of Cb and Cr in turn, or one of each. KyImage says where planes lie.
///@{
inline constexpr std::int64_t KY_TYPE_NV12 = 0x1008401B0;  ///< 4:2:0, bytes; Cb before Cr
inline constexpr std::int64_t KY_TYPE_NV21 = 0x1008401C0;  ///< 4:2:0, bytes; Cr before Cb
inline constexpr std::int64_t KY_TYPE_NV16 = 0x1008401D0;  ///< 4:2:2, bytes; Cb before Cr
inline constexpr std::int64_t KY_TYPE_I420 = 0x1008401E0;  ///< 4:2:0, bytes; planes Y, Cb, Cr: YU12
inline constexpr std::int64_t KY_TYPE_YV12 = 0x1008401F0;  ///< 4:2:0, bytes; planes Y, Cr, Cb
inline constexpr std::int64_t KY_TYPE_P010 = 0x100940200;  ///< NV12 with 10 bits in the upper bits of words
inline constexpr std::int64_t KY_TYPE_I422 = 0x100840210;  ///< 4:2:2, bytes; planes Y, Cb, Cr
///@}

/// \name Words scaled to the full range
/// 16-bit little-endian words, 65535 for the largest sample of the source: v * 65535 / (2^bits - 1), rounded to nearest. Sources
/// of words, such as Bayer mosaics of 10 to 16 bits, keep their depth; all others go through RGB24. Gray sources become
/// gray at their depth; gray of colours is the luma of BT.601, (299 R + 587 G + 114 B) / 1000 of RGB24. As sources they are
/// Mono16, RGB 48 and RGB 64 of 16 bits.
///@{
inline constexpr std::int64_t KY_TYPE_MONO16_SCALED = 0x100010020;
inline constexpr std::int64_t KY_TYPE_RGB48_SCALED = 0x100020030;  ///< words R, G, B
inline constexpr std::int64_t KY_TYPE_RGBA64_SCALED =
    0x100020031;  ///< words R, G, B, A; A is 65535, ignored in a source
///@}

/// 16-bit little-endian words R, G, B, A, LSB-aligned as in RGB48. A is the largest sample of the source's depth: 255, 1023 and
/// so on. As a source it has 16 bits, and A is ignored.
inline constexpr std::int64_t KY_TYPE_RGBA64 = 0x100020032;

/// \name Few bits: sources, but for BGR565p
/// Little-endian words of 16 bits. As in PFNC, the first colour of a name is in the lowest bits. A sample becomes v * 255 / 31 or
/// v * 255 / 63, rounded to nearest.
///@{
/// BGR565p, V4L2 RGBP, FFmpeg rgb565le: red in bits 15 to 11. The bytes of RGB16, from which only green is converted; everything
/// that becomes RGB16 becomes this, too.
inline constexpr std::int64_t KY_TYPE_BGR565P = 0x100020034;
inline constexpr std::int64_t KY_TYPE_RGB565P = 0x100020035;  ///< RGB565p, FFmpeg bgr565le: red in bits 4 to 0
inline constexpr std::int64_t KY_TYPE_BGR555P = 0x100020036;  ///< FFmpeg rgb555le: red in bits 14 to 10
inline constexpr std::int64_t KY_TYPE_RGB555P = 0x100020037;  ///< FFmpeg bgr555le: red in bits 4 to 0
///@}

/// \name Three samples of 10 bits: sources
/// To RGB24 as v * 255 / 1023, rounded to nearest; to RGB48 as they are.
///@{
inline constexpr std::int64_t KY_TYPE_RGB10P32 =
    0x100020038;  ///< RGB10p32, FFmpeg x2bgr10le: 32 bits, red in the lowest 10
inline constexpr std::int64_t KY_TYPE_BGR10P32 = 0x100020039;  ///< FFmpeg x2rgb10le: 32 bits, blue in the lowest 10
inline constexpr std::int64_t KY_TYPE_RGB10P = 0x10042003A;    ///< RGB10p: a stream of bits, four pixels in 15 bytes
inline constexpr std::int64_t KY_TYPE_BGR10P = 0x10042003B;    ///< BGR10p
///@}

/// \name RGB in planes
/// A plane each of red, green and blue, of 16-bit little-endian words or of 32-bit floats; KyImage says where planes lie. The
/// planes of bytes that are there after loading (KY_TYPE_RGB24_PLANAR) are a source now, too.
///@{
/// RGB16_Planar: words scaled to the full range, as above. As a source of 16 bits.
inline constexpr std::int64_t KY_TYPE_RGB48_PLANAR_SCALED = 0x100820040;
/// 0.0 to 1.0, v / (2^bits - 1) of the source's depth, rounded as IEEE single precision is: what neural networks take. Not a
/// source.
inline constexpr std::int64_t KY_TYPE_RGB_FLOAT_PLANAR = 0x100820041;
inline constexpr std::int64_t KY_TYPE_RGB10_PLANAR = 0x100820042;  ///< RGB10_Planar, LSB-aligned words: a source
inline constexpr std::int64_t KY_TYPE_RGB12_PLANAR = 0x100820043;  ///< RGB12_Planar, LSB-aligned words: a source
inline constexpr std::int64_t KY_TYPE_GBR24_PLANAR = 0x100820044;  ///< FFmpeg gbrp: bytes, planes G, B, R: a source
///@}

class KYIMGLIB_API KyExtendedTypes {
public:
    KyExtendedTypes() = delete;

    /// Registers the types of this header, their names and their converters: of single samples to the plain type (16-bit words,
    /// or 8-bit grayscale for samples of less than a byte), and from there to everything that it converts to; of four bytes a
    /// pixel from everything that converts to RGB32, and to everything that RGB32 converts to; of YCbCr to all colours, and
    /// from everything that converts to RGB24 to NV12 and I420; of more or fewer bits than 8 and in planes from and to
    /// everything that the group says, and RGB48 from everything that becomes RGB24. A filter is applied once.
    ///
    /// Any number of calls on any threads register once. Types and converters are the library's, and stay until it is
    /// unloaded. A type or a pair that an application has registered before stays as it is; such converters become stages of chains, so
    /// register them after this call, or keep them for as long as the library is used.
    /// Returns KY_STATUS_SUCCESS, or KY_STATUS_OUT_OF_MEMORY: what is missing then, the next call registers.
    static std::uint32_t Register() noexcept;
};

#endif
