#ifndef KYIMGLIB_NAMES_KYPIXELFORMAT_H
#define KYIMGLIB_NAMES_KYPIXELFORMAT_H

#include <KyImgLib/names/KyNames.h>
#include <KyImgLib/platform/KyExport.h>
#include <KyImgLib/platform/KyStatus.h>

#include <cstddef>
#include <cstdint>

/// Pixel types by the names that cameras, drivers and other programs use: PFNC (GenICam, GigE Vision), V4L2, GStreamer and
/// FFmpeg.
///
///     std::int64_t type;
///     std::uint32_t bayerFlags;
///     if (KyPixelFormat::Find("BayerRG12Packed", type, &bayerFlags) != KY_STATUS_SUCCESS)
///         std::puts(KyImageConverter::GetError());
///
/// A name stands for a type only where the bytes are the same. Names of other layouts are refused, with a text that tells
/// the difference. Several types may have the same bytes; a name then means one of them, and is listed for all.
///
/// Bayer patterns are KyPixelConverter::FLAG_BAYER_... flags, ready for a conversion.
///
/// Functions that return a status write nothing unless it is KY_STATUS_SUCCESS; KyImageConverter::GetError() and
/// KyImage_GetError() then say why, in the thread that called. No function throws, and all may be called from any thread.
class KYIMGLIB_API KyPixelFormat {
public:
    KyPixelFormat() = delete;

    /// The registered type that a name means:
    /// - its ID in hexadecimal (0x00020010) or decimal;
    /// - RGB16, RGB24, BGR24, RGB32, BGR32, the short names of the types that conversions end in: RGB16 is 5-6-5, as in
    ///   GStreamer, and not PFNC's RGB16 of three 16-bit words;
    /// - its display name (KyPixelTypeFactory::GetPixelTypeName());
    /// - a name of PFNC, V4L2, GStreamer or FFmpeg.
    ///
    /// After the first two, a name spelled exactly comes first: V4L2's pGAA and pgAA are different Bayer patterns.
    /// Otherwise only letters and digits count, in either case, and "bits" may be left out: "bayer rgb 8" means
    /// "Bayer RGB 8-bits".
    ///
    /// \param bayerFlags  gets the Bayer pattern that the name says beside the type, RGGB for BayerRG8 and for the types that
    ///                    are named RGGB; 0 when it says none. May be null.
    /// \return KY_STATUS_SUCCESS; KY_STATUS_BAD_ARGUMENT for null, for a name or an ID that is not known, and for one that
    ///         may mean several types; KY_STATUS_NOT_SUPPORTED for a name of bytes that no type has, and for a name of an
    ///         extended type before KyExtendedTypes::Register(); KY_STATUS_OUT_OF_MEMORY.
    static std::uint32_t Find(const char* name, std::int64_t& type, std::uint32_t* bayerFlags = nullptr) noexcept;

    /// The registered type for a PFNC value, as in GenICam's PixelFormat feature and in the image headers of GigE Vision
    /// and USB3 Vision: 0x01080009 is BayerRG8. Returns the same as Find().
    static std::uint32_t FindByPFNC(std::uint32_t code, std::int64_t& type,
                                    std::uint32_t* bayerFlags = nullptr) noexcept;

    /// Writes the first name that a convention has for a type, with a zero at its end.
    ///
    /// \param bayerFlags  Bayer pattern of the image: flags of a conversion, of which other ones do not count. Without a
    ///                    pattern GRBG, as in conversions, but RGGB for the types that are named so. Types that are no
    ///                    mosaics ignore it.
    /// \param convention  KY_NAMES_...
    /// \param size        bytes of `buffer`; 128 are enough for every name but long ones of an application's own types
    /// \return KY_STATUS_SUCCESS; KY_STATUS_BAD_ARGUMENT for null, an unknown convention, several patterns, and for a buffer
    ///         that is too small, where the text tells the size that is needed; KY_STATUS_NOT_SUPPORTED where the convention
    ///         has no name for these bytes, and for the display name of a type that is not registered. The buffer is
    ///         untouched then.
    static std::uint32_t GetName(const std::int64_t& type, std::uint32_t bayerFlags, std::uint32_t convention,
                                 char* buffer, std::size_t size) noexcept;

    /// Writes the `index`-th name (from 0) that other conventions than the library's have for the bytes of a type, registered
    /// or not: for each Bayer pattern in turn (GRBG, RGGB, GBRG, BGGR) those of PFNC, V4L2, GStreamer, FFmpeg. False, and
    /// nothing written, at or past the end.
    static bool EnumNames(const std::int64_t& type, std::uint32_t index, KyPixelFormatName& name) noexcept;
};

#endif
