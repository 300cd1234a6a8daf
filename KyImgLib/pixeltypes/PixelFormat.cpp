#include <KyImgLib/pixeltypes/PixelFormatInternal.h>

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>

#include <algorithm>
#include <iterator>

namespace ky {

namespace {

constexpr std::int64_t kFormatMask = KY_COLOUR_SPACE_MASK | KY_TYPE_INDEX_MASK;

constexpr std::int64_t kMono10 = 0x00010002, kMono12 = 0x00010003, kMono14 = 0x00010004, kMono16 = 0x00010005;
constexpr std::int64_t kBayer10 = 0x00020011, kBayer12 = 0x00020012, kBayer14 = 0x00020016;

/// The rows of a layout of YCbCr: all colours that an ID can say.
#define KY_YCBCR(layout, name, bits, ...)                                                                              \
    {layout, name, Packing::kYCbCr, bits, __VA_ARGS__},                                                                \
        {layout | KY_YCBCR_FULL_RANGE, name ", Full range", Packing::kYCbCr, bits, __VA_ARGS__},                       \
        {layout | KY_YCBCR_BT709, name ", BT.709", Packing::kYCbCr, bits, __VA_ARGS__}, {                              \
        layout | KY_YCBCR_BT709 | KY_YCBCR_FULL_RANGE, name ", BT.709, Full range", Packing::kYCbCr, bits, __VA_ARGS__ \
    }

/// Planes after that of Y: pixels that share samples, the bytes of these in a plane, lines that share them.
constexpr OtherPlanes kPairs = {1, {2, 2}, 1}, kQuads = {1, {2, 2}, 2}, kWordQuads = {1, {2, 4}, 2};
constexpr OtherPlanes kPairsApart = {2, {2, 1}, 1}, kQuadsApart = {2, {2, 1}, 2};
/// Planes of RGB after that of red.
constexpr OtherPlanes kBytePlanes = {2, {1, 1}, 1}, kWordPlanes = {2, {1, 2}, 1}, kFloatPlanes = {2, {1, 4}, 1};

// clang-format off
constexpr ExtendedType kExtendedTypes[] = {
    {KY_TYPE_BAYER16,      "Bayer RGB 16-bits",                 Packing::kNone,       16, {1, 2}, KY_TYPE_BAYER16},
    {KY_TYPE_MONO10P,      "Grayscale 10-bits, Packed p",       Packing::kLeastFirst, 10, {4, 5}, kMono10},
    {KY_TYPE_MONO12P,      "Grayscale 12-bits, Packed p",       Packing::kLeastFirst, 12, {2, 3}, kMono12},
    {KY_TYPE_MONO14P,      "Grayscale 14-bits, Packed p",       Packing::kLeastFirst, 14, {4, 7}, kMono14},
    {KY_TYPE_BAYER10P,     "Bayer RGB 10-bits, Packed p",       Packing::kLeastFirst, 10, {4, 5}, kBayer10},
    {KY_TYPE_BAYER12P,     "Bayer RGB 12-bits, Packed p",       Packing::kLeastFirst, 12, {2, 3}, kBayer12},
    {KY_TYPE_BAYER14P,     "Bayer RGB 14-bits, Packed p",       Packing::kLeastFirst, 14, {4, 7}, kBayer14},
    {KY_TYPE_MONO10_MIPI,  "Grayscale 10-bits, Packed MIPI",    Packing::kMIPI,       10, {4, 5}, kMono10},
    {KY_TYPE_MONO12_MIPI,  "Grayscale 12-bits, Packed MIPI",    Packing::kMIPI,       12, {2, 3}, kMono12},
    {KY_TYPE_MONO14_MIPI,  "Grayscale 14-bits, Packed MIPI",    Packing::kMIPI,       14, {4, 7}, kMono14},
    {KY_TYPE_BAYER10_MIPI, "Bayer RGB 10-bits, Packed MIPI",    Packing::kMIPI,       10, {4, 5}, kBayer10},
    {KY_TYPE_BAYER12_MIPI, "Bayer RGB 12-bits, Packed MIPI",    Packing::kMIPI,       12, {2, 3}, kBayer12},
    {KY_TYPE_BAYER14_MIPI, "Bayer RGB 14-bits, Packed MIPI",    Packing::kMIPI,       14, {4, 7}, kBayer14},
    {KY_TYPE_MONO1P,       "Grayscale 1-bits, Packed p",        Packing::kLeastFirst,  1, {8, 1}, KY_TYPE_GRAYSCALE8},
    {KY_TYPE_MONO2P,       "Grayscale 2-bits, Packed p",        Packing::kLeastFirst,  2, {4, 1}, KY_TYPE_GRAYSCALE8},
    {KY_TYPE_MONO4P,       "Grayscale 4-bits, Packed p",        Packing::kLeastFirst,  4, {2, 1}, KY_TYPE_GRAYSCALE8},
    {KY_TYPE_MONO10_BE,    "Grayscale 10-bits, Big-endian",     Packing::kBigEndian,  10, {1, 2}, kMono10},
    {KY_TYPE_MONO12_BE,    "Grayscale 12-bits, Big-endian",     Packing::kBigEndian,  12, {1, 2}, kMono12},
    {KY_TYPE_MONO14_BE,    "Grayscale 14-bits, Big-endian",     Packing::kBigEndian,  14, {1, 2}, kMono14},
    {KY_TYPE_MONO16_BE,    "Grayscale 16-bits, Big-endian",     Packing::kBigEndian,  16, {1, 2}, kMono16},
    {KY_TYPE_BAYER10_BE,   "Bayer RGB 10-bits, Big-endian",     Packing::kBigEndian,  10, {1, 2}, kBayer10},
    {KY_TYPE_BAYER12_BE,   "Bayer RGB 12-bits, Big-endian",     Packing::kBigEndian,  12, {1, 2}, kBayer12},
    {KY_TYPE_BAYER14_BE,   "Bayer RGB 14-bits, Big-endian",     Packing::kBigEndian,  14, {1, 2}, kBayer14},
    {KY_TYPE_BAYER16_BE,   "Bayer RGB 16-bits, Big-endian",     Packing::kBigEndian,  16, {1, 2}, KY_TYPE_BAYER16},
    KY_YCBCR(KY_TYPE_YUYV,      "YCbCr 8-bits 4:2:2, YUYV",     16, {2, 4}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_UYVY,      "YCbCr 8-bits 4:2:2, UYVY",     16, {2, 4}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_YVYU,      "YCbCr 8-bits 4:2:2, YVYU",     16, {2, 4}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_VYUY,      "YCbCr 8-bits 4:2:2, VYUY",     16, {2, 4}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_YUV444,    "YCbCr 8-bits 4:4:4, YUV",      24, {1, 3}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_UYV444,    "YCbCr 8-bits 4:4:4, UYV",      24, {1, 3}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_YYUYYV411, "YCbCr 8-bits 4:1:1, YYUYYV",   12, {4, 6}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_UYYVYY411, "YCbCr 8-bits 4:1:1, UYYVYY",   12, {4, 6}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_YUYV10,    "YCbCr 10-bits 4:2:2, YUYV",    20, {2, 8}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_YUYV12,    "YCbCr 12-bits 4:2:2, YUYV",    24, {2, 8}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_Y210,      "YCbCr 10-bits 4:2:2, Y210",    20, {2, 8}, KY_TYPE_RGB24),
    KY_YCBCR(KY_TYPE_NV12,      "YCbCr 8-bits 4:2:0, NV12",     12, {1, 1}, KY_TYPE_RGB24, kQuads),
    KY_YCBCR(KY_TYPE_NV21,      "YCbCr 8-bits 4:2:0, NV21",     12, {1, 1}, KY_TYPE_RGB24, kQuads),
    KY_YCBCR(KY_TYPE_NV16,      "YCbCr 8-bits 4:2:2, NV16",     16, {1, 1}, KY_TYPE_RGB24, kPairs),
    KY_YCBCR(KY_TYPE_I420,      "YCbCr 8-bits 4:2:0, I420",     12, {1, 1}, KY_TYPE_RGB24, kQuadsApart),
    KY_YCBCR(KY_TYPE_YV12,      "YCbCr 8-bits 4:2:0, YV12",     12, {1, 1}, KY_TYPE_RGB24, kQuadsApart),
    KY_YCBCR(KY_TYPE_P010,      "YCbCr 10-bits 4:2:0, P010",    15, {1, 2}, KY_TYPE_RGB24, kWordQuads),
    KY_YCBCR(KY_TYPE_I422,      "YCbCr 8-bits 4:2:2, I422",     16, {1, 1}, KY_TYPE_RGB24, kPairsApart),
    {KY_TYPE_MONO16_SCALED, "Grayscale 16-bits, Scaled",        Packing::kNone,       16, {1, 2}, kMono16},
    {KY_TYPE_RGB10P,       "RGB 30-bits (3 x 10 bits), Packed p", Packing::kColours,  30, {4, 15}, KY_TYPE_RGB24},
    {KY_TYPE_BGR10P,       "BGR 30-bits (3 x 10 bits), Packed p", Packing::kColours,  30, {4, 15}, KY_TYPE_RGB24},
    {KY_TYPE_RGB48_PLANAR_SCALED, "RGB 48-bits, Planar, Scaled", Packing::kColours, 48, {1, 2}, KY_TYPE_RGB24, kWordPlanes},
    {KY_TYPE_RGB_FLOAT_PLANAR, "RGB 96-bits (3 x float), Planar", Packing::kColours, 96, {1, 4}, KY_TYPE_RGB24, kFloatPlanes},
    {KY_TYPE_RGB10_PLANAR, "RGB 30-bits (3 x 10 bits), Planar", Packing::kColours, 30, {1, 2}, KY_TYPE_RGB24, kWordPlanes},
    {KY_TYPE_RGB12_PLANAR, "RGB 36-bits (3 x 12 bits), Planar", Packing::kColours, 36, {1, 2}, KY_TYPE_RGB24, kWordPlanes},
    {KY_TYPE_GBR24_PLANAR, "GBR 24-bits, Planar",               Packing::kColours,  24, {1, 1}, KY_TYPE_RGB24, kBytePlanes},
};
// clang-format on
#undef KY_YCBCR

/// YUV formats whose pixels share their colour, by the bits and bytes of a pixel.
struct Subsampling {
    std::uint32_t bits, bytes;
    PixelGroup group;
};

constexpr Subsampling kSubsamplings[] = {
    {16, 2, {2, 4}},  // 4:2:2, 8 bits
    {20, 4, {2, 8}},  // 4:2:2, 10 bits in words
    {12, 2, {4, 6}},  // 4:1:1, 8 bits
};

/// The plain type of a format with single samples that has one of another index.
struct PlainType {
    std::int64_t format, plain;
};

constexpr PlainType kPlainTypes[] = {
    {0x00010006, KY_TYPE_GRAYSCALE8},  // four taps
    {0x00010007, kMono10},
    {0x00010008, kMono10},  // packed as GigE Vision does it
    {0x00010009, kMono12},
};

bool HasOneSample(const KyPixelType& type) {
    return (type.GetTypeID() & KY_COLOUR_SPACE_GRAYSCALE) != 0 || type.IsBayerPattern();
}

std::int64_t PlainTypeOf(const KyPixelType& type) {
    const std::int64_t id = type.GetTypeID();
    if ((id & KY_COLOUR_SPACE_MASK) != KY_COLOUR_SPACE_GRAYSCALE && !type.IsBayerPattern()) return KY_TYPE_RGB24;
    for (const PlainType& row : kPlainTypes)
        if (row.format == (id & kFormatMask)) return row.plain;
    return id & kFormatMask;
}

}  // namespace

PixelFormat FormatOf(const KyPixelType& type) {
    const std::int64_t id = type.GetTypeID();
    if (const ExtendedType* const row = FindExtendedType(id)) return {row->group, row->otherPlanes, row->plain};

    const std::uint32_t bits = type.GetPixelBitSize(), bytes = type.GetPixelByteSize();
    const std::int64_t plain = PlainTypeOf(type);
    if ((id & KY_TYPE_PLANAR) != 0) return {{1, 1}, {std::max(bytes, 1u) - 1}, plain};
    if ((id & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_YUV)
        for (const Subsampling& row : kSubsamplings)
            if (bits == row.bits && bytes == row.bytes) return {row.group, {}, plain};
    if ((id & KY_TYPE_PACKED) != 0 && HasOneSample(type) && (bits == 10 || bits == 12))
        return {{2, 3}, {}, plain};  // as GigE Vision packs them
    return {{1, bytes}, {}, plain};
}

const ExtendedType* FindExtendedType(std::int64_t id) {
    if ((id & KY_TYPE_EXTENDED) == 0) return nullptr;
    for (const ExtendedType& row : kExtendedTypes)
        if (row.id == id) return &row;
    return nullptr;
}

ExtendedTypeRows AllExtendedTypes() { return {std::begin(kExtendedTypes), std::end(kExtendedTypes)}; }

}  // namespace ky
