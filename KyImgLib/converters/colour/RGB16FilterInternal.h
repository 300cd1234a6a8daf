#ifndef KYIMGLIB_CONVERTERS_COLOUR_RGB16FILTERINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_RGB16FILTERINTERNAL_H

#include <KyImgLib/conversion/FilterRecordInternal.h>
#include <KyImgLib/kernels/Filter8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace ky {

/// What becomes of RGB16 pixels: kernels read the six bits of green, and 0 for red and blue, and this takes them through a
/// filter and to 8 bits.
class RGB16Filter {
public:
    static constexpr std::size_t kTableBytes = 3 * 256;

    /// \param expandFirst  samples become 8 bits before they pass the filter, not after it
    /// \param tables       kTableBytes, which stay as long as the stage is used
    RGB16Filter(const KyRGBFilter& filter, bool expandFirst, std::uint8_t* tables) {
        std::uint8_t* const greenTable = tables + 256;
        const std::uint8_t red = filter.GetRedValue8(0), blue = filter.GetBlueValue8(0);
        FillConstant(stage.channel[0], tables, expandFirst ? red : Expand(red, 5));
        FillConstant(stage.channel[2], tables + 512, expandFirst ? blue : Expand(blue, 5));
        std::fill_n(greenTable, 256, std::uint8_t{0});  // entries from 64 on are never read
        for (std::uint32_t i = 0; i < 64; ++i)
            greenTable[i] = expandFirst ? filter.GetGreenValue8(4 * i) : Expand(filter.GetGreenValue8(i), 6);
        stage.channel[1].table = greenTable;
        stage.channel[1].isLinear = FilterRecord::Of(filter).green.view.isIdentity;  // either way 4 i then
        stage.channel[1].shift = 8;
        stage.channel[1].multiplier = 4 << 8;
    }

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
    static void FillConstant(FilterChannel8& channel, std::uint8_t* table, std::uint8_t value) {
        std::fill_n(table, 256, value);
        channel.table = table;
        channel.isLinear = true;
        channel.offset = value;
        channel.shift = 8;
    }

    Filter8 stage = {};
};

}  // namespace ky

#endif
