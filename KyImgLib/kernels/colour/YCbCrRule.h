#ifndef KYIMGLIB_KERNELS_COLOUR_YCBCRRULE_H
#define KYIMGLIB_KERNELS_COLOUR_YCBCRRULE_H

#include <cstdint>

namespace ky {

/// What Y, Cb and Cr stand for: the matrix of ITU-R BT.601 or BT.709, and the range of the samples. In limited range black is
/// 16 and white 235 of 8 bits, in full range 0 and 255.
struct YCbCrColours {
    bool isBT709, isFullRange;

    constexpr double PartOfRed() const { return isBT709 ? 0.2126 : 0.299; }
    constexpr double PartOfBlue() const { return isBT709 ? 0.0722 : 0.114; }
    constexpr double PartOfGreen() const { return 1 - PartOfRed() - PartOfBlue(); }
};

constexpr std::int64_t RoundToNearest(double value) {
    return static_cast<std::int64_t>(value < 0 ? value - 0.5 : value + 0.5);
}
constexpr double PowerOfTwo(int exponent) { return static_cast<double>(std::int64_t{1} << exponent); }

/// YCbCr to RGB, exactly: the real-valued result of the standard's formula, rounded to the nearest whole number and limited to
/// a byte.
///
/// A colour of a pixel is (85 (Y - black) + c) / divisor, where c is what Cb and Cr add. The first term is a whole number, so
/// the result rounded is (85 (Y - black) + floor(c + divisor / 2)) / divisor, rounded down. Only the inner floor needs more
/// bits than the samples have, and it is the same for all pixels that share Cb and Cr.
struct YCbCrFactors {
    static constexpr int kLuma = 85;
    /// With so many bits after the point, and kBias added, all floors are exact for samples of up to 12 bits.
    static constexpr int kFractionBits = 37;
    static constexpr std::int64_t kBias = 1 << 11;

    int black, noColour;  ///< Y of black; Cb and Cr of gray
    int divisor;
    std::int64_t redOfCr, greenOfCb, greenOfCr, blueOfCb;  ///< times 2 to the power of kFractionBits

    constexpr YCbCrFactors(YCbCrColours colours, unsigned bits)
        : black(colours.isFullRange ? 0 : 16 << (bits - 8)), noColour(1 << (bits - 1)),
          divisor(colours.isFullRange ? kLuma * ((1 << bits) - 1) / 255 : 73 << (bits - 8)),
          redOfCr(Factor(colours, 2 * (1 - colours.PartOfRed()))),
          greenOfCb(Factor(colours, -2 * (1 - colours.PartOfBlue()) * colours.PartOfBlue() / colours.PartOfGreen())),
          greenOfCr(Factor(colours, -2 * (1 - colours.PartOfRed()) * colours.PartOfRed() / colours.PartOfGreen())),
          blueOfCb(Factor(colours, 2 * (1 - colours.PartOfBlue()))) {}

private:
    static constexpr std::int64_t Factor(YCbCrColours colours, double ofLuma) {
        const double range = colours.isFullRange ? 1 : 219.0 / 224;
        return RoundToNearest(kLuma * range * ofLuma * PowerOfTwo(kFractionBits));
    }
};

/// RGB to 8-bit YCbCr, exactly in the same sense. Cb and Cr are those of the mean of the pixels that share them.
struct RGBToYCbCrFactors {
    /// Bits after the point, of the factors of one pixel and of the sum of four. Those of Cb and Cr add up to 0, and gray has no
    /// colour.
    static constexpr int kLumaBits = 30, kColourBits = 32;
    static constexpr std::int64_t kBias = 1 << 8;

    int black;
    std::int64_t luma[3], cb[3], cr[3];  ///< of red, green and blue

    explicit constexpr RGBToYCbCrFactors(YCbCrColours colours)
        : black(colours.isFullRange ? 0 : 16), luma{}, cb{}, cr{} {
        const double parts[] = {colours.PartOfRed(), colours.PartOfGreen(), colours.PartOfBlue()};
        const double lumaRange = colours.isFullRange ? 1 : 219.0 / 255, range = colours.isFullRange ? 1 : 224.0 / 255;
        const double cbUnit = range / (2 * (1 - parts[2])) / 4, crUnit = range / (2 * (1 - parts[0])) / 4;
        for (int i = 0; i < 3; ++i) {
            luma[i] = RoundToNearest(lumaRange * parts[i] * PowerOfTwo(kLumaBits));
            cb[i] = RoundToNearest(((i == 2 ? 1 : 0) - parts[i]) * cbUnit * PowerOfTwo(kColourBits));
            cr[i] = RoundToNearest(((i == 0 ? 1 : 0) - parts[i]) * crUnit * PowerOfTwo(kColourBits));
        }
        cb[1] = -cb[0] - cb[2];
        cr[1] = -cr[0] - cr[2];
    }
};

}  // namespace ky

#endif
