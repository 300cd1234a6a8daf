#include "MemoryLayout.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <sstream>

namespace kyimg {

namespace {

bool IsExtended(const KyPixelType& type) { return (type.GetTypeID() & KY_TYPE_EXTENDED) != 0; }

bool IsExtendedYCbCr(const KyPixelType& type) {
    return IsExtended(type) && (type.GetTypeID() & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_YUV;
}

/// Whether a type is extended and has a format index from `first` to `last`, which are the same for gray and Bayer.
bool IsExtended(const KyPixelType& type, std::int64_t first, std::int64_t last) {
    const std::int64_t index = type.GetTypeID() & KY_TYPE_INDEX_MASK;
    return IsExtended(type) && !IsExtendedYCbCr(type) && index >= first && index <= last;
}

/// Whether a type is built in and has this colour space (a mosaic counts as none) and one of these format indexes.
bool Is(const KyPixelType& type, std::int64_t space, std::initializer_list<std::int64_t> indexes) {
    return !IsExtended(type) && !type.IsBayerPattern() && (type.GetTypeID() & KY_COLOUR_SPACE_MASK) == space &&
           std::ranges::find(indexes, type.GetTypeID() & KY_TYPE_INDEX_MASK) != indexes.end();
}

bool IsPacked(const KyPixelType& type) { return (type.GetTypeID() & KY_TYPE_PACKED) != 0; }
bool IsPlanar(const KyPixelType& type) { return (type.GetTypeID() & KY_TYPE_PLANAR) != 0; }

constexpr std::int64_t kGray = KY_COLOUR_SPACE_GRAYSCALE, kRGB = KY_COLOUR_SPACE_RGB, kYUV = KY_COLOUR_SPACE_YUV;

constexpr const char* kBytes = R"(byte   0    1    2    3
     | p0 | p1 | p2 | p3 |     one byte for each pixel)";

constexpr const char* kWords = R"(            byte 0     byte 1
10 bits    76543210   ......98
12 bits    76543210   ....BA98     LSB-aligned
14 bits    76543210   ..DCBA98
16 bits    76543210   FEDCBA98
Normalized:
10 bits    10......   98765432
12 bits    3210....   BA987654     MSB-aligned
14 bits    543210..   DCBA9876
16 bits    76543210   FEDCBA98)";
constexpr const char* kWordsNote =
    "16-bit little-endian words. Bits of a byte are drawn from the highest to the lowest; A to F are bits 10 "
    "to "
    "15 of a sample, dots are 0. Scaled ones are v * 65535 / (2^bits - 1) of whatever bits their source has.";

constexpr const char* kPairs = R"(            byte 0            byte 1            byte 2
10 bits    p9 to p2   .. .. q1 q0 .. .. p1 p0   q9 to q2
12 bits    pB to p4   q3 q2 q1 q0 p3 p2 p1 p0   qB to q4)";
constexpr const char* kPairsNote =
    "Pixels p and q share bytes; bits are drawn from the highest to the lowest, A and B are bits 10 and 11. These are "
    "the \"Packed\" formats of GigE Vision, also where a name lacks \"GEV\": not its \"p\" formats, nor "
    "those "
    "of MIPI.";

constexpr const char* kStream =
    R"(            byte 0            byte 1            byte 2            byte 3            byte 4
10 bits    p7 to p0          q5 to q0 p9 p8    r3 to r0 q9 to q6 s1 s0 r9 to r4    s9 to s2
12 bits    p7 to p0          q3 to q0 pB to p8 qB to q4
 4 bits    q3 to q0 p3 to p0
 1 bit     eight pixels, the first in the lowest bit)";
constexpr const char* kStreamNote =
    "One stream of bits: each sample begins where the one before it ends, with its lowest bit in the lowest free bit "
    "of a "
    "byte. Bits of a byte are drawn from the highest to the lowest. Lines have whole groups. Samples of less than a "
    "byte become gray from 0 to 255.";

constexpr const char* kMIPI = R"(            byte 0     byte 1     byte 2            byte 3     byte 4
10 bits    p9 to p2   q9 to q2   r9 to r2          s9 to s2   s1 s0 r1 r0 q1 q0 p1 p0
12 bits    pB to p4   qB to q4   q3 to q0 p3 to p0
14 bits    four high bytes, then p5 to p0, q5 to q0, r5 to r0, s5 to s0 as a stream of bits in three bytes)";
constexpr const char* kMIPINote =
    "RAW10, RAW12 and RAW14: the high bytes of a group of pixels, then the low bits of all. Lines have whole groups.";

constexpr const char* kYCbCrNote =
    "U is Cb and V is Cr, of BT.601 or, where the name says so, BT.709. Y goes from 16 to 235, or from 0 to 255 where "
    "the name "
    "says full range. Conversions round the standard's formula exactly. Words are little-endian with LSB-aligned "
    "samples, in "
    "Y210 and P010 MSB-aligned.";

constexpr Family kFamilies[] = {
    {"Grayscale in bytes", kBytes, "", [](const KyPixelType& type) { return Is(type, kGray, {1}); }},
    {"Grayscale in words", kWords, kWordsNote,
     [](const KyPixelType& type) {
         const bool isScaled = IsExtended(type, 0x20, 0x20) && (type.GetTypeID() & KY_COLOUR_SPACE_MASK) == kGray;
         return (Is(type, kGray, {2, 3, 4, 5}) && !IsPacked(type)) || isScaled;
     }},
    {"Grayscale, packed", kPairs, kPairsNote,
     [](const KyPixelType& type) {
         return Is(type, kGray, {2, 3, 8, 9}) && IsPacked(type);
     }},
    {"Grayscale, four taps", R"(in memory   a0 b0 c0 d0 a1 b1 c1 d1     samples of four taps in turn
picture     a0 a1 b1 b0 c0 c1 d1 d0     each half is read from both its ends)",
     "Samples are bytes or words. This is our reading of these types: check it against your camera.",
     [](const KyPixelType& type) {
         return Is(type, kGray, {6, 7});
     }},

    {"Bayer mosaic in bytes", kBytes, "",
     [](const KyPixelType& type) { return type.IsBayerPattern() && type.GetPixelByteSize() == 1; }},
    {"Bayer mosaic in words", kWords, kWordsNote,
     [](const KyPixelType& type) {
         const bool isExtended16 = IsExtended(type, 0xE, 0xE);
         return type.IsBayerPattern() && type.GetPixelByteSize() == 2 && !IsPacked(type) &&
                (!IsExtended(type) || isExtended16);
     }},
    {"Bayer mosaic, packed", kPairs, kPairsNote,
     [](const KyPixelType& type) { return type.IsBayerPattern() && IsPacked(type) && !IsExtended(type); }},

    {"Packed as PFNC's \"p\" formats", kStream, kStreamNote,
     [](const KyPixelType& type) { return IsExtended(type, 0x1, 0x3) || IsExtended(type, 0x7, 0x9); }},
    {"Packed as in MIPI CSI-2", kMIPI, kMIPINote, [](const KyPixelType& type) { return IsExtended(type, 0x4, 0x6); }},
    {"Big-endian words", R"(            byte 0     byte 1
10 bits    ......98   76543210
12 bits    ....BA98   76543210
14 bits    ..DCBA98   76543210
16 bits    FEDCBA98   76543210)",
     "The high byte comes first; samples are LSB-aligned. Bits of a byte are drawn from the highest to the lowest.",
     [](const KyPixelType& type) { return IsExtended(type, 0xA, 0xD); }},

    {"RGB 5-6-5 and 5-5-5", R"(          byte 0     byte 1      the highest bit first
RGB16     gggbbbbb   rrrrrggg     little-endian words
BGR 565   gggbbbbb   rrrrrggg
RGB 565   gggrrrrr   bbbbbggg
BGR 555   gggbbbbb   xrrrrrgg     x is ignored
RGB 555   gggrrrrr   xbbbbbgg)",
     "As in PFNC, the first colour of a name is in the low bits, but for RGB16. Conversions from RGB16 know only the "
     "green; red "
     "and blue are constants. BGR 565 has the same bytes and three colours. Samples become bytes of the full range.",
     [](const KyPixelType& type) { return Is(type, kRGB, {1}) || IsExtended(type, 0x34, 0x37); }},
    {"RGB of 10 bits in 32", R"(           byte 0     byte 1     byte 2     byte 3      the highest bit first
RGB 10p32  r7 to r0   g5 to g0 r9 r8   b3 to b0 g9 to g6   x x b9 to b4
BGR 10p32  b7 to b0   g5 to g0 b9 b8   r3 to r0 g9 to g6   x x r9 to r4)",
     "Little-endian double words; x is ignored.", [](const KyPixelType& type) { return IsExtended(type, 0x38, 0x39); }},
    {"RGB of 10 bits as a stream",
     R"(         byte 0     byte 1            byte 2            byte 3               byte 4
RGB 10p  r7 to r0   g5 to g0 r9 r8   b3 to b0 g9 to g6   r1' r0' b9 to b4   r9' to r2')",
     "PFNC's \"p\" packing: red, green and blue of one pixel after the other in one stream of bits, each with its "
     "lowest bit in "
     "the lowest free bit of a byte; BGR 10p begins with blue. Four pixels have 15 bytes; lines have whole groups. A "
     "prime marks "
     "the second pixel.",
     [](const KyPixelType& type) { return IsExtended(type, 0x3A, 0x3B); }},
    {"RGB and BGR in bytes", R"(byte        0   1   2   3
RGB 24    | R | G | B |
BGR 24    | B | G | R |
RGB 32    | R | G | B | x |     x is ignored in a source, 0 in a destination
BGR 32    | B | G | R | x |
RGBA 32   | R | G | B | A |     A is ignored in a source, 255 in a destination
BGRA 32   | B | G | R | A |
ARGB 32   | A | R | G | B |
ABGR 32   | A | B | G | R |)",
     "0x00020007, named RGB 32-bits like 0x00020003, is BGR 32. Images of RGB 24 and BGR 24 have three bytes a "
     "pixel; of the types not called \"Packed\", GetBufferSizeFor and the area form of the identity converters count a "
     "fourth.",
     [](const KyPixelType& type) {
         return (Is(type, kRGB, {2, 3, 6, 7, 0xA, 0xB}) && !IsPlanar(type)) ||
                ((type.GetTypeID() & KY_COLOUR_SPACE_RGB) != 0 && IsExtended(type, 0x20, 0x23));
     }},
    {"RGB in words", R"(byte        0   1   2   3   4   5   6   7
RGB 48    |   R   |   G   |   B   |
RGB 64    |   R   |   G   |   B   |   x   |     x is ignored
RGBA 64   |   R   |   G   |   B   |   A   |     A is ignored in a source, the largest sample in a destination)",
     "16-bit little-endian words. 10- and 12-bit samples are LSB-aligned in them, those of Normalized types "
     "MSB-aligned, and "
     "those of Scaled types v * 65535 / (2^bits - 1) of whatever bits their source has.",
     [](const KyPixelType& type) {
         return Is(type, kRGB, {4, 5, 8, 9, 0xC, 0xD}) || IsExtended(type, 0x30, 0x32);
     }},
    {"RGB in planes", R"(| R R R ... | G G G ... | B B B ... |     a whole picture of each
| G G G ... | B B B ... | R R R ... |     GBR)",
     "Samples are bytes; little-endian words, LSB-aligned, or Scaled: v * 65535 / (2^bits - 1) of whatever bits their "
     "source "
     "has; or floats, v / (2^bits - 1), 0.0 to 1.0. Of types of bytes, others convert to 0x00820002 only.",
     [](const KyPixelType& type) {
         return (Is(type, kRGB, {2, 0xA, 0xB}) && IsPlanar(type)) || IsExtended(type, 0x40, 0x44);
     }},

    {"YUV 4:2:2", R"(8 bits     | Y0 | U | Y1 | V |     a byte each
10 bits    | Y0 | U | Y1 | V |     a word each)",
     "U is Cb and V is Cr. Words are little-endian; 10-bit samples are LSB-aligned in them, those of Normalized types "
     "MSB-aligned. The conversion is that of BT.601 with Y from 16 to 235, which PFNC calls YCbCr601; pictures of full "
     "range come out "
     "with more contrast.",
     [](const KyPixelType& type) {
         return Is(type, kYUV, {1, 2});
     }},
    {"YUV 4:4:4", R"(YUV      | U | Y | V |
YCrCb    | Y | V | U |)",
     "U is Cb and V is Cr; the conversion is that of 4:2:2.",
     [](const KyPixelType& type) {
         return Is(type, kYUV, {3, 5});
     }},
    {"YUV 4:1:1", R"(| U | Y0 | Y1 | V | Y2 | Y3 |)",
     "U is Cb and V is Cr; the conversion is that of 4:2:2, but for the red of the second to the fourth pixel, which "
     "is "
     "computed from Y1.",
     [](const KyPixelType& type) { return Is(type, kYUV, {6}); }},
    {"YCbCr in one plane", R"(YUYV     | Y0 | U | Y1 | V |     4:2:2: two pixels in four bytes, or in four words
UYVY     | U | Y0 | V | Y1 |
YVYU     | Y0 | V | Y1 | U |
VYUY     | V | Y0 | U | Y1 |
YUV      | Y | U | V |           4:4:4: a pixel in three bytes
UYV      | U | Y | V |
YYUYYV   | Y0 | Y1 | U | Y2 | Y3 | V |     4:1:1: four pixels in six bytes
UYYVYY   | U | Y0 | Y1 | V | Y2 | Y3 |)",
     kYCbCrNote, [](const KyPixelType& type) { return IsExtendedYCbCr(type) && !IsPlanar(type); }},
    {"YCbCr in planes",
     R"(NV12, NV21, P010    | Y Y Y Y ... | U V U V ... |        4:2:0, U and V for two by two pixels; NV21: V U
NV16                | Y Y Y Y ... | U V U V ... |        4:2:2, U and V for two pixels of a line
I420, YV12          | Y Y Y Y ... | U U ... | V V ... |  4:2:0; YV12: V before U
I422                | Y Y Y Y ... | U U ... | V V ... |  4:2:2)",
     kYCbCrNote, [](const KyPixelType& type) { return IsExtendedYCbCr(type) && IsPlanar(type); }},
};

constexpr TapOrder kTapOrders[] = {
    {KY_TAP_LEFT_RIGHT, "dual, left + right", "l0 l1 l2 l3 r0 r1 r2 r3"},
    {KY_TAP_LEFT_RIGHT_INVERTED, "dual, left + right inverted", "l0 l1 l2 l3 r3 r2 r1 r0"},
    {KY_TAP_LEFT_INVERTED_RIGHT, "dual, left inverted + right", "l3 l2 l1 l0 r0 r1 r2 r3"},
    {KY_TAP_LEFT_INVERTED_RIGHT_INVERTED, "dual, left inverted + right inverted", "l3 l2 l1 l0 r3 r2 r1 r0"},
    {KY_TAP_DUAL_LINES, "dual lines", "l0 l1 l2 l3 ... and, the line below, r0 r1 r2 r3 ..."},
};

const TapOrder* TapOrderOf(std::int64_t id) {
    const auto found = std::ranges::find(kTapOrders, id & KY_TAP_LAYOUT_MASK, &TapOrder::layout);
    return found == std::end(kTapOrders) ? nullptr : found;
}

}  // namespace

const char* const kInterlacedNote = "lines 0, 2, 4 ... in the first half, lines 1, 3, 5 ... in the second";

std::span<const Family> AllFamilies() { return kFamilies; }

const Family* FamilyOf(const KyPixelType& type) {
    const auto found = std::ranges::find_if(kFamilies, [&](const Family& family) { return family.holds(type); });
    return found == std::end(kFamilies) ? nullptr : found;
}

std::span<const TapOrder> AllTapOrders() { return kTapOrders; }

const char* TapText(std::int64_t id) {
    if ((id & KY_TAP_LAYOUT_MASK) == KY_TAP_SINGLE) return "single";
    const TapOrder* const order = TapOrderOf(id);
    return order == nullptr ? "unknown" : order->name;
}

std::vector<std::string> DrawType(const KyPixelType& type) {
    std::vector<std::string> lines;
    if (const Family* const family = FamilyOf(type)) {
        std::istringstream drawing(family->drawing);
        for (std::string line; std::getline(drawing, line);) lines.push_back(line);
    }
    if (const TapOrder* const order = TapOrderOf(type.GetTypeID())) {
        lines.push_back(fmt::format("in memory   {}     samples of two taps in turn", kTapMemory));
        lines.push_back(fmt::format("picture     {}", order->picture));
    }
    if ((type.GetTypeID() & KY_TYPE_INTERLACED) != 0) lines.push_back(fmt::format("fields: {}", kInterlacedNote));
    return lines;
}

}  // namespace kyimg
