#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16SEGMENTED_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_KYGRAYSCALE16SEGMENTED_H

#include <KyImgLib/converters/grayscale/KyGrayscale16ToGrayscale.h>

/// \file
/// Lines of 16-bit words in which the samples of a camera's two taps alternate, to lines in scan order.
///
/// The tap layout of the source type (bits 24 to 28 of its ID) tells where they go. A line of eight pixels in memory is
///
///     l0 r0 l1 r1 l2 r2 l3 r3
///
/// and becomes, left half and right half,
///
///     0x01000000  left, right                    l0 l1 l2 l3   r0 r1 r2 r3
///     0x02000000  left, right inverted           l0 l1 l2 l3   r3 r2 r1 r0
///     0x04000000  left inverted, right           l3 l2 l1 l0   r0 r1 r2 r3
///     0x08000000  left inverted, right inverted  l3 l2 l1 l0   r3 r2 r1 r0
///     0x10000000  dual lines                     two lines: all l of two source lines, and all r of them
///
/// Any other layout leaves the samples in their order. A line of an odd number of pixels begins and ends with a left
/// sample, so the left half has the pixel more; nothing is lost. Convert whole lines, since each pixel of a part of a line
/// depends on the width of the line.
///
/// Dual lines converts two lines at a time (a last odd one is left out) and does not go with interlaced types.

/// Words of two taps to words, shifted right. For normalized sources the shift that aligns them to the right: 6 for 10
/// bits, 4 for 12 bits; else 0. Bayer mosaics are served like grayscale.
class KYIMGLIB_API KyGrayscale16SegmentedToGrayscale16 : public KyGrayscale16Converter {
public:
    /// \param sourceType       gives the layout
    /// \param destinationType  any type of 16-bit words in scan order
    /// \param shift            bits by which each word is shifted right, modulo 32
    KyGrayscale16SegmentedToGrayscale16(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                        std::uint32_t shift);
};

/// Words of two taps to gray RGB24 (three bytes) or RGB32 (three bytes and a 0), or the same as BGR types.
class KYIMGLIB_API KyGrayscale16SegmentedToRGB24_32 : public KyGrayscale16Converter {
public:
    /// \param sourceType            gives the layout
    /// \param alternate             destination BGR24 or BGR32; the bytes are the same
    /// \param shift                 bits by which each word is shifted right to give the gray level in its low byte: 2 for 10
    ///                              bits, 4 for 12 bits, 8 for normalized words
    /// \param destinationByteSize   4 for RGB32; anything else counts as 3, RGB24
    KyGrayscale16SegmentedToRGB24_32(const std::int64_t& sourceType, bool alternate, std::uint32_t shift,
                                     std::uint32_t destinationByteSize);
};

#endif
