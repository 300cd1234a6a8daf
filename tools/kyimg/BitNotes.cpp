#include "BitNotes.h"

#include "Routes.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <fmt/format.h>

#include <bit>

namespace kyimg {

std::vector<std::string> FindOddBits(std::int64_t type, std::span<const std::uint8_t> frame) {
    const KyPixelType& pixelType = *KyPixelTypeFactory::FindPixelType(type);
    if (PlainType(pixelType) != type || pixelType.GetPixelByteSize() != 2) return {};
    std::uint8_t low = 0, high = 0;
    for (std::size_t i = 0; i + 1 < frame.size(); i += 2) {
        low |= frame[i];
        high |= frame[i + 1];
    }
    const std::uint32_t used = static_cast<std::uint32_t>(high) << 8 | low;
    const std::uint32_t bits = pixelType.GetPixelBitSize();
    if (used >> bits != 0)
        return {
            fmt::format("samples use bits above the {} of the type (0x{:04X}): more bits, big-endian, or MSB-aligned? "
                        "see kyimg guess",
                        bits, used)};
    // One bit less is an exposure a little short.
    const auto found = static_cast<std::uint32_t>(std::bit_width(used));
    if (found == 0 || found + 2 > bits) return {};
    return {
        fmt::format("no sample uses the upper {} of the type's {} bits: a dark frame, or samples of {} bits; "
                    "--auto-levels makes it bright",
                    bits - found, bits, found)};
}

}  // namespace kyimg
