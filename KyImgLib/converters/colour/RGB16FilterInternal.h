#ifndef KYIMGLIB_CONVERTERS_COLOUR_RGB16FILTERINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_RGB16FILTERINTERNAL_H

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/kernels/Filter8.h>

#include <cstdint>
#include <utility>

namespace ky {

/// What becomes of RGB16 pixels: kernels read the six bits of green, and 0 for red and blue, and this takes them through a
/// filter and to 8 bits.
class RGB16Filter {
public:
    /// `expandFirst`: samples become 8 bits before they pass the filter, not after it.
    RGB16Filter(const KyRGBFilter& filter, bool expandFirst) {
        const std::uint8_t red = filter.GetRedTable8()[0], blue = filter.GetBlueTable8()[0];
        const std::uint8_t* const greens = filter.GetGreenTable8();
        FillConstant(stage.channel[0], redTable, expandFirst ? red : Expand(red, 5));
        FillConstant(stage.channel[2], blueTable, expandFirst ? blue : Expand(blue, 5));
        for (std::uint32_t i = 0; i < 64; ++i) greenTable[i] = expandFirst ? greens[4 * i] : Expand(greens[i], 6);
        stage.channel[1].table = greenTable;
        stage.channel[1].isLinear = filter.GetGreenShape().isIdentity;  // either way 4 i then
        stage.channel[1].shift = 8;
        stage.channel[1].multiplier = 4 << 8;
    }
    RGB16Filter(const RGB16Filter&) = delete;
    RGB16Filter& operator=(const RGB16Filter&) = delete;

    /// The tables stay here.
    Filter8 Stage(bool blueFirst) const {
        Filter8 ordered = stage;
        if (blueFirst) std::swap(ordered.channel[0], ordered.channel[2]);
        return ordered;
    }

private:
    /// A number of `bits` bits to 8; one that has more counts as 0.
    static std::uint8_t Expand(std::uint8_t value, int bits) {
        return static_cast<std::uint8_t>(value >> bits != 0 ? 0 : value << (8 - bits));
    }
    static void FillConstant(FilterChannel8& channel, std::uint8_t (&table)[256], std::uint8_t value) {
        for (std::uint8_t& entry : table) entry = value;
        channel.table = table;
        channel.isLinear = true;
        channel.offset = value;
        channel.shift = 8;
    }

    Filter8 stage = {};
    std::uint8_t redTable[256];
    std::uint8_t greenTable[256] = {};  // from 64 on never asked for
    std::uint8_t blueTable[256];
};

}  // namespace ky

#endif
