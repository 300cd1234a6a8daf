#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYTAPSTOGRAYSCALE_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYTAPSTOGRAYSCALE_H

#include <KyImgLib/conversion/KyPixelConverter.h>

/// \file
/// Images of cameras with several taps, one sample of each in turn, to images in scan order. Samples themselves
/// do not change, and every width works without losing one. Convert whole lines, since each pixel of a part of a line
/// depends on the width of the line. Filters are ignored.

/// Bytes of two taps that read the halves of a line, grayscale or Bayer.
///
/// The tap layout of the source type (bits 24 to 28 of its ID) places them as KyGrayscale16Segmented.h shows; a type
/// without one of the four left-and-right layouts keeps its order. The left half of an odd line has the pixel more.
class KYIMGLIB_API KyDualGrayscale8ToGrayscale8 : public KyPixelConverter {
public:
    /// \param sourceType       gives the layout
    /// \param destinationType  8-bit type in scan order
    KyDualGrayscale8ToGrayscale8(const std::int64_t& sourceType, const std::int64_t& destinationType);
};

/// Bytes of two taps that read a line each, two lines at a time (a last odd one is left out).
///
///     a0 b0 a1 b1         a0 a1 a2 a3
///     a2 b2 a3 b3   ->    b0 b1 b2 b3
///
/// The source must not be interlaced.
class KYIMGLIB_API KyDualLinesGrayscale8ToGrayscale8 : public KyPixelConverter {
public:
    /// \param destinationType  8-bit type in scan order
    KyDualLinesGrayscale8ToGrayscale8(const std::int64_t& sourceType, const std::int64_t& destinationType);
};

/// Bytes of four taps, the inverted quad taps of types like 0x00010006. Each half of a line is read from both its ends.
///
///     a0 b0 c0 d0 a1 b1 c1 d1   ->   a0 a1 b1 b0   c0 c1 d1 d0
///
/// This is our reading of these types; check it against a camera before you rely on it. When the width is not a multiple
/// of four, the first taps have one sample more: the pixels are still those of a, b backwards, c,
/// d backwards.
class KYIMGLIB_API Dalsa4x8ToGrayscale8 : public KyPixelConverter {
public:
    /// \param destinationType  8-bit type in scan order
    Dalsa4x8ToGrayscale8(const std::int64_t& sourceType, const std::int64_t& destinationType);
};

/// The same with 16-bit words, as in the types 0x00010007 and 0x00110007.
class KYIMGLIB_API Dalsa4x16ToGrayscale16 : public KyPixelConverter {
public:
    /// \param destinationType  type of 16-bit words in scan order, normalized if the source is
    Dalsa4x16ToGrayscale16(const std::int64_t& sourceType, const std::int64_t& destinationType);
};

#endif
