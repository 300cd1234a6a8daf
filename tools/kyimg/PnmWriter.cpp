#include "PnmWriter.h"

#include <fmt/format.h>

#include <string>
#include <vector>

namespace kyimg {

void WritePnm(const ConvertedFrame& frame, const ByteSink& sink) {
    const PictureRows rows(frame, {false, false, true});
    const std::string header = fmt::format("P{}\n{} {}\n{}\n", rows.GetChannels() == 1 ? 5 : 6, rows.GetWidth(),
                                           rows.GetHeight(), (1U << rows.GetBits()) - 1);
    sink({reinterpret_cast<const std::uint8_t*>(header.data()), header.size()});
    std::vector<std::uint8_t> row(rows.GetRowSize());
    for (std::uint32_t y = 0; y < rows.GetHeight(); ++y) {
        rows.CopyRow(y, row.data());
        sink(row);
    }
}

}  // namespace kyimg
