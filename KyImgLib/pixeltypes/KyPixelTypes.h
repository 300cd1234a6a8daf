#ifndef KYIMGLIB_PIXELTYPES_KYPIXELTYPES_H
#define KYIMGLIB_PIXELTYPES_KYPIXELTYPES_H

#include <KyImgLib/pixeltypes/KyPixelType.h>

/// \file
/// The pixel formats that have a class of their own.
///
/// Each class fixes bit size, byte size and the Bayer property of KyPixelType and has two constructors: the default
/// one takes the ID named here, the other any ID. Packed, interlaced, normalized and tap variants of a format are
/// the same class with another ID: `KyBayerRGB10(0x00420011)` is packed 10-bit Bayer.

/// Base of the format classes: a KyPixelType whose sizes are part of the class.
template <std::int64_t DefaultID, std::uint16_t BitSize, std::uint16_t ByteSize, bool IsBayer = false>
class KyFixedPixelType : public KyPixelType {
public:
    KyFixedPixelType() : KyPixelType(DefaultID, BitSize, ByteSize, IsBayer) {}
    explicit KyFixedPixelType(const std::int64_t& typeID) : KyPixelType(typeID, BitSize, ByteSize, IsBayer) {}
};

// clang-format off
#define KY_PIXEL_FORMAT(name, ...) \
    class name : public KyFixedPixelType<__VA_ARGS__> { public: using KyFixedPixelType::KyFixedPixelType; }

//                class                                default ID  bits  bytes
KY_PIXEL_FORMAT(KyGrayscale8,                          0x00010001,  8,    1);
KY_PIXEL_FORMAT(KyGrayscale10,                         0x00010002, 10,    2);
KY_PIXEL_FORMAT(KyGrayscale12,                         0x00010003, 12,    2);
KY_PIXEL_FORMAT(KyGrayscale14,                         0x00010004, 14,    2);
KY_PIXEL_FORMAT(KyGrayscale16,                         0x00010005, 16,    2);
KY_PIXEL_FORMAT(KyGrayscale8_DualQuadMultiplexed,      0x00010006,  8,    1);
KY_PIXEL_FORMAT(KyGrayscale10_DualQuadMultiplexed,     0x00010007, 10,    2);
KY_PIXEL_FORMAT(KyGrayscale10_Packed_GEV,              0x00410008, 10,    2);
KY_PIXEL_FORMAT(KyGrayscale12_Packed_GEV,              0x00410009, 12,    2);

KY_PIXEL_FORMAT(KyRGB16,                               0x00020001, 16,    2);
KY_PIXEL_FORMAT(KyRGB24,                               0x00020002, 24,    3);
KY_PIXEL_FORMAT(KyRGB32,                               0x00020003, 32,    4);
KY_PIXEL_FORMAT(KyRGB48,                               0x00020004, 48,    6);
KY_PIXEL_FORMAT(KyRGB64,                               0x00020005, 64,    8);
KY_PIXEL_FORMAT(KyBGR24,                               0x00020006, 24,    3);
KY_PIXEL_FORMAT(KyBGR32,                               0x00020007, 32,    4);
// The bit size of these six is that of one sample.
KY_PIXEL_FORMAT(KyRGB48_10Bits,                        0x00020008, 10,    6);
KY_PIXEL_FORMAT(KyRGB64_10Bits,                        0x00020009, 10,    8);
KY_PIXEL_FORMAT(KyRGB8_3,                              0x0002000A,  8,    3);
KY_PIXEL_FORMAT(KyRGB8_4,                              0x0002000B,  8,    4);
KY_PIXEL_FORMAT(KyRGB48_12Bits,                        0x0002000C, 12,    6);
KY_PIXEL_FORMAT(KyRGB64_12Bits,                        0x0002000D, 12,    8);

KY_PIXEL_FORMAT(KyBayerRGB8,                           0x00020010,  8,    1, true);
KY_PIXEL_FORMAT(KyBayerRGB10,                          0x00020011, 10,    2, true);
KY_PIXEL_FORMAT(KyBayerRGB12,                          0x00020012, 12,    2, true);
KY_PIXEL_FORMAT(KyBayerRGGB8,                          0x00020013,  8,    1, true);
KY_PIXEL_FORMAT(KyBayerRGGB10,                         0x00020014, 10,    2, true);
KY_PIXEL_FORMAT(KyBayerRGGB12,                         0x00020015, 12,    2, true);
KY_PIXEL_FORMAT(KyBayerRGB14,                          0x00020016, 14,    2, true);

KY_PIXEL_FORMAT(KyYUV8,                                0x00040001, 16,    2);
KY_PIXEL_FORMAT(KyYUV10,                               0x00040002, 20,    4);
// Registered only with the packed bit (0x00440003, 0x00440005, 0x00440006).
KY_PIXEL_FORMAT(KyYUV8_444,                            0x00040003, 24,    3);
KY_PIXEL_FORMAT(KyYCrCb,                               0x00040005, 24,    3);
KY_PIXEL_FORMAT(KyYUV8_411,                            0x00040006, 12,    2);

#undef KY_PIXEL_FORMAT
// clang-format on

#endif
