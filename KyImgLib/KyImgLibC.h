#ifndef KYIMGLIB_KYIMGLIBC_H
#define KYIMGLIB_KYIMGLIBC_H

/*
 * The flat interface of KyImgLib: plain functions with C linkage, for C and for every language that can call C.
 *
 *     const KyPixelConverter* converter = KyPixelTypeFactory_GetConverter(0x20010, KY_RGB24);
 *     KyPixelConverter_ConvertArea(converter, mosaic, width, height, rgb, width, height, width, height,
 *                                  KY_FLAG_BAYER_RGGB | KY_FLAG_BAYER_INTERPOLATE, 0);
 *
 * The functions KyImage_... check everything they are given, and take lines of any stride:
 *
 *     KyImage source = {0x20010, width, height, mosaic, mosaicSize, mosaicStride, 0};
 *     KyImage destination = {KY_RGB24, width, height, rgb, rgbSize, 0, 0};
 *     if (KyImage_Convert(&source, &destination, NULL) != KY_STATUS_SUCCESS) puts(KyImage_GetError());
 *
 * Types are also found by the names that cameras and drivers have for them:
 *
 *     int64_t type;
 *     uint32_t flags;
 *     if (KyPixelFormat_Find("BayerRG12Packed", &type, &flags) != KY_STATUS_SUCCESS) puts(KyImage_GetError());
 *
 * Objects are opaque pointers. Functions that return a status use the codes of KyStatus.h; every function takes a
 * null object, and then returns what its comment says. Beyond that arguments are not checked. No exception leaves
 * these functions: where one is thrown, mostly because memory ran out, a status function returns KY_STATUS_OUT_OF_MEMORY
 * and any other function what it returns for a null object.
 *
 * All functions may be called from any thread. Do not change a filter while another thread uses it.
 */

#include <KyImgLib/images/KyImage.h>
#include <KyImgLib/names/KyNames.h>
#include <KyImgLib/platform/KyExport.h>
#include <KyImgLib/platform/KyStatus.h>

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
class KyPixelType;
class KyPixelConverter;
extern "C" {
#else
typedef struct KyPixelType KyPixelType;
typedef struct KyPixelConverter KyPixelConverter;
#endif

/* Flags of an area conversion, combined by OR; see KyPixelConverter_ConvertArea. */
enum {
    KY_FLAG_INVERT_DEINTERLACER = 0x1, /* interlaced source: its second half holds the even destination lines */
    KY_FLAG_BAYER_GRBG = 0x10,         /* Bayer pattern: colours of the first two pixels, then of the two below */
    KY_FLAG_BAYER_GBRG = 0x20,
    KY_FLAG_BAYER_RGGB = 0x40,
    KY_FLAG_BAYER_BGGR = 0x80,
    KY_FLAG_BAYER_INTERPOLATE = 0x100 /* bilinear demosaicing instead of nearest-neighbour */
};

/* IDs of the types that conversions end in. */
enum {
    KY_GRAYSCALE8 = 0x00010001,
    KY_RGB16 = 0x00020001,       /* 5-6-5 in a 16-bit word, red in the high bits */
    KY_RGB24 = 0x00020002,       /* bytes R, G, B */
    KY_RGB32 = 0x00020003,       /* bytes R, G, B, 0 */
    KY_RGB48 = 0x00020004,       /* 16-bit words R, G, B */
    KY_BGR24 = 0x00020006,       /* bytes B, G, R */
    KY_BGR32 = 0x00020007,       /* bytes B, G, R, 0 */
    KY_RGB24_PLANAR = 0x00820002 /* a plane of bytes each for R, G, B */
};

/* IDs of extended types, see KyExtendedTypes.h. They are there after KyExtendedTypes_Register. */
#define KY_MONO10P INT64_C(0x100410001)
#define KY_MONO12P INT64_C(0x100410002)
#define KY_MONO14P INT64_C(0x100410003)
#define KY_BAYER10P INT64_C(0x100420001)
#define KY_BAYER12P INT64_C(0x100420002)
#define KY_BAYER14P INT64_C(0x100420003)
#define KY_MONO10_MIPI INT64_C(0x100410004)
#define KY_MONO12_MIPI INT64_C(0x100410005)
#define KY_MONO14_MIPI INT64_C(0x100410006)
#define KY_BAYER10_MIPI INT64_C(0x100420004)
#define KY_BAYER12_MIPI INT64_C(0x100420005)
#define KY_BAYER14_MIPI INT64_C(0x100420006)
#define KY_MONO1P INT64_C(0x100410007)
#define KY_MONO2P INT64_C(0x100410008)
#define KY_MONO4P INT64_C(0x100410009)
#define KY_MONO10_BE INT64_C(0x10001000A)
#define KY_MONO12_BE INT64_C(0x10001000B)
#define KY_MONO14_BE INT64_C(0x10001000C)
#define KY_MONO16_BE INT64_C(0x10001000D)
#define KY_BAYER10_BE INT64_C(0x10002000A)
#define KY_BAYER12_BE INT64_C(0x10002000B)
#define KY_BAYER14_BE INT64_C(0x10002000C)
#define KY_BAYER16_BE INT64_C(0x10002000D)
#define KY_BAYER16 INT64_C(0x10002000E)
#define KY_RGBA32 INT64_C(0x100020020)
#define KY_BGRA32 INT64_C(0x100020021)
#define KY_ARGB32 INT64_C(0x100020022)
#define KY_ABGR32 INT64_C(0x100020023)
/* YCbCr by BT.601 in limited range; add one or both of the first two for full range and for BT.709. */
#define KY_FULL_RANGE 1
#define KY_BT709 2
#define KY_YUYV INT64_C(0x100040100)
#define KY_UYVY INT64_C(0x100040110)
#define KY_YVYU INT64_C(0x100040120)
#define KY_VYUY INT64_C(0x100040130)
#define KY_YUV444 INT64_C(0x100440140)
#define KY_UYV444 INT64_C(0x100440150)
#define KY_YYUYYV411 INT64_C(0x100440160)
#define KY_UYYVYY411 INT64_C(0x100440170)
#define KY_YUYV10 INT64_C(0x100040180)
#define KY_YUYV12 INT64_C(0x100040190)
#define KY_Y210 INT64_C(0x1001401A0)
#define KY_NV12 INT64_C(0x1008401B0)
#define KY_NV21 INT64_C(0x1008401C0)
#define KY_NV16 INT64_C(0x1008401D0)
#define KY_I420 INT64_C(0x1008401E0)
#define KY_YV12 INT64_C(0x1008401F0)
#define KY_P010 INT64_C(0x100940200)
#define KY_I422 INT64_C(0x100840210)
#define KY_MONO16_SCALED INT64_C(0x100010020)
#define KY_RGB48_SCALED INT64_C(0x100020030)
#define KY_RGBA64_SCALED INT64_C(0x100020031)
#define KY_RGBA64 INT64_C(0x100020032)
#define KY_BGR565P INT64_C(0x100020034)
#define KY_RGB565P INT64_C(0x100020035)
#define KY_BGR555P INT64_C(0x100020036)
#define KY_RGB555P INT64_C(0x100020037)
#define KY_RGB10P32 INT64_C(0x100020038)
#define KY_BGR10P32 INT64_C(0x100020039)
#define KY_RGB10P INT64_C(0x10042003A)
#define KY_BGR10P INT64_C(0x10042003B)
#define KY_RGB48_PLANAR_SCALED INT64_C(0x100820040)
#define KY_RGB_FLOAT_PLANAR INT64_C(0x100820041)
#define KY_RGB10_PLANAR INT64_C(0x100820042)
#define KY_RGB12_PLANAR INT64_C(0x100820043)
#define KY_GBR24_PLANAR INT64_C(0x100820044)

/* ---- Pixel types ---- */

/* Destroys a type that KyPixelType_Clone or KyPixelTypeFactory_CreatePixelType returned. Null: does nothing. */
KYIMGLIB_API void KyPixelType_Destroy(KyPixelType* type);
/* A copy that the caller destroys. Null for null. */
KYIMGLIB_API KyPixelType* KyPixelType_Clone(const KyPixelType* type);
/* The type's ID; for null 4294967295, which is no registered ID. */
KYIMGLIB_API int64_t KyPixelType_GetTypeID(const KyPixelType* type);
/* Significant bits of a pixel, or of one sample for formats like "3 x 10 bits". 0 for null. */
KYIMGLIB_API uint16_t KyPixelType_GetPixelBitSize(const KyPixelType* type);
/* Bytes of a pixel; 2 for packed 10- and 12-bit types. 0 for null. */
KYIMGLIB_API uint16_t KyPixelType_GetPixelByteSize(const KyPixelType* type);
/* Whether the type is a Bayer mosaic. False for null. */
KYIMGLIB_API bool KyPixelType_IsBayerPattern(const KyPixelType* type);
/* Bytes of an image of width x height pixels: packed 10- and 12-bit gray and Bayer types put two pixels into three
   bytes; loose RGB 24 and BGR 24 take 4 bytes a pixel. 0 for null. */
KYIMGLIB_API uint32_t KyPixelType_GetBufferSizeFor(const KyPixelType* type, uint32_t width, uint32_t height);
/* Whether a converter from the type to `other` (from `other` to the type) is registered. `other` must not be null. False
   for a null type. */
KYIMGLIB_API bool KyPixelType_HasConverterTo(const KyPixelType* type, const KyPixelType* other);
KYIMGLIB_API bool KyPixelType_HasConverterFrom(const KyPixelType* type, const KyPixelType* other);
/* That converter, owned by the library; null when none is registered, or for a null type. `other` must not be null. */
KYIMGLIB_API const KyPixelConverter* KyPixelType_GetConverterTo(const KyPixelType* type, const KyPixelType* other);
KYIMGLIB_API const KyPixelConverter* KyPixelType_GetConverterFrom(const KyPixelType* type, const KyPixelType* other);

/* ---- Registry ---- */

/* Registers formats that cameras, drivers and encoders use today beyond those that are there after loading (their IDs are
   KY_MONO10P and the others above), with their names and converters. Any number of calls, on any threads, register once.
   Returns KY_STATUS_SUCCESS, or KY_STATUS_OUT_OF_MEMORY: what is missing then, the next call registers. */
KYIMGLIB_API uint32_t KyExtendedTypes_Register(void);

/* The index-th type (from 0, by ascending ID): writes its ID. False, and nothing written, past the end and for a null
   pointer. */
KYIMGLIB_API bool KyPixelTypeFactory_EnumPixelTypes(uint32_t index, int64_t* id);
/* Whether a type is registered under the ID. */
KYIMGLIB_API bool KyPixelTypeFactory_HasPixelType(int64_t id);
/* Display name, valid while the library is loaded; "Unregistered pixel type" for an unknown ID. */
KYIMGLIB_API const char* KyPixelTypeFactory_GetPixelTypeName(int64_t id);
/* A copy of the registered type, which the caller destroys with KyPixelType_Destroy; null for an unknown ID. */
KYIMGLIB_API KyPixelType* KyPixelTypeFactory_CreatePixelType(int64_t id);
/* A copy of the index-th type (from 0, by ascending ID) with exactly these attributes; null when there are not that
   many. Colour space and tap layout are the masked fields of an ID (0x20000 is RGB); int flags are true when not 0. */
KYIMGLIB_API KyPixelType* KyPixelTypeFactory_CreatePixelType2(uint32_t bitSize, int64_t colourSpace, int normalized,
                                                              int packed, int interlaced, int planar, int64_t tapLayout,
                                                              int isBayer, uint32_t index);
/* Whether a converter is registered for the pair, direct or a chain. */
KYIMGLIB_API bool KyPixelTypeFactory_HasConverter(int64_t sourceId, int64_t destinationId);
/* The registered converter, owned by the library; null when there is none. */
KYIMGLIB_API const KyPixelConverter* KyPixelTypeFactory_GetConverter(int64_t sourceId, int64_t destinationId);
/* The index-th converter (from 0, by ascending ID) from a source or to a destination: writes the other type's ID. False,
   and nothing written, past the end and for a null pointer. */
KYIMGLIB_API bool KyPixelTypeFactory_EnumConverterFrom(uint32_t index, int64_t sourceId, int64_t* destinationId);
KYIMGLIB_API bool KyPixelTypeFactory_EnumConverterTo(uint32_t index, int64_t destinationId, int64_t* sourceId);

/* ---- Converters ---- */

/* IDs of the two types. 0 for null. */
KYIMGLIB_API int64_t KyPixelConverter_GetSourceType(const KyPixelConverter* converter);
KYIMGLIB_API int64_t KyPixelConverter_GetDestinationType(const KyPixelConverter* converter);
/* Bytes of a line of `count` pixels without padding. 0 for null. */
KYIMGLIB_API uint32_t KyPixelConverter_GetSourceByteSize(const KyPixelConverter* converter, uint32_t count);
KYIMGLIB_API uint32_t KyPixelConverter_GetDestinationByteSize(const KyPixelConverter* converter, uint32_t count);
/* Converts one pixel. KY_STATUS_BAD_ARGUMENT for null, KY_STATUS_NOT_SUPPORTED where a converter has no such form. */
KYIMGLIB_API uint32_t KyPixelConverter_ConvertPixel(const KyPixelConverter* converter, const uint8_t* source,
                                                    uint8_t* destination);
/* Converts `count` pixels of a line, outside of an area: no filter, no flags. KY_STATUS_BAD_ARGUMENT for null and for
   converters that need the settings of an area. */
KYIMGLIB_API uint32_t KyPixelConverter_ConvertLine(const KyPixelConverter* converter, const uint8_t* source,
                                                   uint8_t* destination, uint32_t count);
/* Converts the first `width` pixels of the first `height` lines. Source lines are GetSourceByteSize(sourceWidth) bytes
   apart, destination lines GetDestinationByteSize(destinationWidth) + destinationPadding. Heights are the buffers'
   lines; destinationHeight must not be larger than the number of source lines. A built-in planar destination has its planes
   destinationWidth x destinationHeight bytes apart and lines of sourceWidth bytes; images of extended types in planes have
   no padding, as KyImage has them without strides. The buffers must not overlap.
   The height is rounded down to a multiple of 2 for interlaced sources and for Bayer sources
   without interpolation, where an odd last pixel is left out too; without a pattern flag a Bayer source is taken as GRBG.
   Strides are 32-bit. KY_STATUS_SUCCESS, KY_STATUS_BAD_ARGUMENT for null, what a chain's failing stage returned. */
KYIMGLIB_API uint32_t KyPixelConverter_ConvertArea(const KyPixelConverter* converter, const uint8_t* source,
                                                   uint32_t sourceWidth, uint32_t sourceHeight, uint8_t* destination,
                                                   uint32_t destinationWidth, uint32_t destinationHeight,
                                                   uint32_t width, uint32_t height, uint32_t flags,
                                                   uint32_t destinationPadding);
/* The same with red, green and blue passed through a filter, which must not be null. */
KYIMGLIB_API uint32_t KyPixelConverter_ConvertAreaFilter(const KyPixelConverter* converter, const KyRGBFilter* filter,
                                                         const uint8_t* source, uint32_t sourceWidth,
                                                         uint32_t sourceHeight, uint8_t* destination,
                                                         uint32_t destinationWidth, uint32_t destinationHeight,
                                                         uint32_t width, uint32_t height, uint32_t flags,
                                                         uint32_t destinationPadding);

/* ---- Images: the checked interface (its structs: images/KyImage.h) ----

   Return KY_STATUS_SUCCESS, or

   - KY_STATUS_BAD_ARGUMENT for a null pointer that is not said to be allowed, a type that is not registered, a buffer or
     stride that is too small or cannot be, an odd height of an interlaced type or one with dual lines, source and
     destination of unlike sizes or with bytes in common from the first to the last of their pixels, a structSize that is
     too small, a band that is off its step or beyond the height, a part that is beyond the image or tears pixels apart;
   - KY_STATUS_NOT_SUPPORTED where no converter is registered for the pair of types;
   - KY_STATUS_OUT_OF_MEMORY where memory ran out or an application's own converter threw an exception;
   - another status that an application's own converter returned.

   KyImage_GetError says what was expected and what came. After the first two nothing has been written. Images without
   pixels are converted by doing nothing; they need no data. Any number of threads may convert at once, also to bands or
   parts of one image. */

/* Bytes from the first one to the last one of an image: what its type, width, height and strides need. Data and size are
   ignored. */
KYIMGLIB_API uint32_t KyImage_GetSize(const KyImage* image, size_t* bytes);

/* Describes a rectangle of an image, without a copy: `part`, which may be `image` itself, gets its data, size and strides.
   It begins and ends at a group of pixels that share bytes; it may end inside of one only where the image does. Types with
   taps have whole lines; interlaced types and dual lines go in pairs of lines. Where pixels of several lines or columns share
   samples of another plane (NV12), x and y are multiples of as many; I420 and its kin, whose third plane is where the height
   says, have no parts but the whole. `flags` may be null; of a Bayer type it is
   given with the KY_FLAG_BAYER_... pattern of the image (none: GRBG) and gets that of the part. Other flags stay. */
KYIMGLIB_API uint32_t KyImage_Crop(const KyImage* image, uint32_t x, uint32_t y, uint32_t width, uint32_t height,
                                   KyImage* part, uint32_t* flags);

/* Converts an image into another one of the same width and height. Exactly its pixels are written: padding stays as it
   is, and of the last group of a line, pixels beyond the width are not written. Bayer types without interpolation have
   the colours of the nearest 2 x 2 pixels in a last odd column or line; where there are none, 0. The data
   of `destination` is written although the struct is constant. `conversion` may be null: no flags, no filter, all
   lines. */
KYIMGLIB_API uint32_t KyImage_Convert(const KyImage* source, const KyImage* destination,
                                      const KyConversion* conversion);

/* Number of lines at whose multiples bands (KyConversion) begin and end: converted in any order, on any threads at
   once, they give the bytes of the whole. It depends on types and flags; with a converter of an application's own it is
   the height. The images need no data yet, and the band in `conversion`, which may be null, is ignored. */
KYIMGLIB_API uint32_t KyImage_GetBandStep(const KyImage* source, const KyImage* destination,
                                          const KyConversion* conversion, uint32_t* lines);

/* KyImage_Convert by bands on several threads. With a null executor these are threads of the library's own, among them
   the calling one; small images are converted by that alone. KY_STATUS_BAD_ARGUMENT also when the executor's run
   returns before it has run all tasks. */
KYIMGLIB_API uint32_t KyImage_ConvertParallel(const KyImage* source, const KyImage* destination,
                                              const KyConversion* conversion, const KyExecutor* executor);

/* Why the calling thread's last KyImage_ or KyPixelFormat_ call that did not succeed did not, as one line in English. Empty
   when there was none. Valid until the thread's next such call. */
KYIMGLIB_API const char* KyImage_GetError(void);

/* ---- Names that types have elsewhere: PFNC (GenICam, GigE Vision), V4L2, GStreamer, FFmpeg (their struct and the
   conventions KY_NAMES_...: names/KyNames.h; more in names/KyPixelFormat.h) ----

   A name stands for a type only where the bytes are the same. Functions that return a status write nothing unless it is
   KY_STATUS_SUCCESS, and KyImage_GetError then says why: for a name that is not known it tells those that come near, for one
   of other bytes what is different. */

/* The registered type that a name means: its ID as text, hexadecimal (0x...) or decimal; RGB16, RGB24, BGR24, RGB32 or BGR32;
   its display name; or a name of PFNC, V4L2, GStreamer or FFmpeg. A name spelled exactly comes first; otherwise letters, in
   either case, and digits count, and "bits" may be left out. `bayerFlags`, which may be null, gets the Bayer pattern that the
   name says, a KY_FLAG_BAYER_... flag; 0 for none. KY_STATUS_BAD_ARGUMENT for null, for a name or an ID that is not known and
   for one that may mean several types; KY_STATUS_NOT_SUPPORTED for bytes that no type has, and for extended types that are not
   registered yet. */
KYIMGLIB_API uint32_t KyPixelFormat_Find(const char* name, int64_t* type, uint32_t* bayerFlags);
/* The same for a PFNC value, as in GenICam's PixelFormat feature: 0x01080009 is BayerRG8. */
KYIMGLIB_API uint32_t KyPixelFormat_FindByPFNC(uint32_t code, int64_t* type, uint32_t* bayerFlags);
/* Writes the first name that a convention has for a type, with a zero at its end, into a buffer of `size` bytes. Of
   `bayerFlags` the Bayer pattern counts; without one GRBG, but RGGB for the types that are named so. 128 bytes are enough for
   every name but long ones of an application's own types; KY_STATUS_BAD_ARGUMENT with the size that is needed for a smaller
   buffer, for null, an unknown convention and several patterns; KY_STATUS_NOT_SUPPORTED where there is no name. */
KYIMGLIB_API uint32_t KyPixelFormat_GetName(int64_t type, uint32_t bayerFlags, uint32_t convention, char* buffer,
                                            size_t size);
/* Writes the index-th name (from 0) that PFNC, V4L2, GStreamer and FFmpeg have for the bytes of a type, one Bayer pattern after
   the other. False, and nothing written, past the end and for a null pointer. */
KYIMGLIB_API bool KyPixelFormat_EnumNames(int64_t type, uint32_t index, KyPixelFormatName* name);

/* ---- Filters: a look-up table each for red, green and blue ---- */

/* A new identity filter for samples of 0 to 16 bits, which the caller destroys. Null when bitSize is larger or there is
   no memory. */
KYIMGLIB_API KyRGBFilter* KyRGBFilter_Init(uint32_t bitSize);
/* Null: does nothing. */
KYIMGLIB_API void KyRGBFilter_Destroy(KyRGBFilter* filter);
/* Bits of a sample, and entries of each table (1 << bits). 0 for null. */
KYIMGLIB_API uint32_t KyRGBFilter_GetBitSize(const KyRGBFilter* filter);
KYIMGLIB_API uint32_t KyRGBFilter_GetEntryCount(const KyRGBFilter* filter);
/* Entry at index modulo 256 of the 8-bit view, which holds the first 256 entries limited to 255. 0 for null. */
KYIMGLIB_API uint8_t KyRGBFilter_GetRedValue8(const KyRGBFilter* filter, uint32_t index);
KYIMGLIB_API uint8_t KyRGBFilter_GetGreenValue8(const KyRGBFilter* filter, uint32_t index);
KYIMGLIB_API uint8_t KyRGBFilter_GetBlueValue8(const KyRGBFilter* filter, uint32_t index);
/* Entry at index modulo the entry count. 0 for null. */
KYIMGLIB_API uint16_t KyRGBFilter_GetRedValue16(const KyRGBFilter* filter, uint32_t index);
KYIMGLIB_API uint16_t KyRGBFilter_GetGreenValue16(const KyRGBFilter* filter, uint32_t index);
KYIMGLIB_API uint16_t KyRGBFilter_GetBlueValue16(const KyRGBFilter* filter, uint32_t index);
/* Set one entry. KY_STATUS_BAD_ARGUMENT (nothing changed) for null and unless index and value are both below the entry
   count. */
KYIMGLIB_API uint32_t KyRGBFilter_SetRedValue(KyRGBFilter* filter, uint32_t index, uint16_t value);
KYIMGLIB_API uint32_t KyRGBFilter_SetGreenValue(KyRGBFilter* filter, uint32_t index, uint16_t value);
KYIMGLIB_API uint32_t KyRGBFilter_SetBlueValue(KyRGBFilter* filter, uint32_t index, uint16_t value);
/* Fills the tables: entry i becomes i x gain + offset, cut to an integer and limited to the largest entry.
   KY_STATUS_BAD_ARGUMENT (nothing changed) for null and when a gain is below 0. */
KYIMGLIB_API uint32_t KyRGBFilter_SetMultipliers(KyRGBFilter* filter, double red, double green, double blue,
                                                 uint16_t redOffset, uint16_t greenOffset, uint16_t blueOffset);

/* ---- Instruction-set levels: 0 is the scalar one, higher ones are faster and give the same bytes ---- */

/* Number of levels in this build; their names ("scalar", "sse4", "avx2", "avx512", "avx512vbmi", "neon"), null past the
   end; whether this CPU runs one and the environment variable KYIMGLIB_CPU_LEVEL allows it. */
KYIMGLIB_API uint32_t KyCpuLevel_GetCount(void);
KYIMGLIB_API const char* KyCpuLevel_GetName(uint32_t level);
KYIMGLIB_API bool KyCpuLevel_IsAvailable(uint32_t level);
/* The level that conversions use. Setting it concerns the whole process: KY_STATUS_BAD_ARGUMENT when not available. */
KYIMGLIB_API uint32_t KyCpuLevel_GetActive(void);
KYIMGLIB_API uint32_t KyCpuLevel_SetActive(uint32_t level);

#ifdef __cplusplus
}
#endif

#endif
