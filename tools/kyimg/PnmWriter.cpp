#include "PnmWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kyimg {

void WritePnm(const ConvertedFrame& frame, const ByteSink& sink) {
    const PictureRows rows(frame, {false, false, true});
    const std::string header = fmt::format("P{}\n{} {}\n{}\n", rows.GetChannels() == 1 ? 5 : 6, rows.GetWidth(),
                                           rows.GetHeight(), (1U << rows.GetBits()) - 1);
    sink({reinterpret_cast<const std::uint8_t*>(header.data()), header.size()});
    constexpr std::size_t kBandBytes = 1 << 20;
    const std::size_t bandLines = std::max<std::size_t>(1, kBandBytes / rows.GetRowSize());
    std::vector<std::uint8_t> band;
    for (std::uint32_t y = 0; y < rows.GetHeight();) {
        const std::size_t lines = std::min<std::size_t>(bandLines, rows.GetHeight() - y);
        band.resize(lines * rows.GetRowSize());
        for (std::size_t line = 0; line < lines; ++line, ++y) rows.CopyRow(y, band.data() + line * rows.GetRowSize());
        sink(band);
    }
}

}  // namespace kyimg
