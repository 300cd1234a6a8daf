#include "Table.h"

#include <algorithm>
#include <cstdio>

namespace kybench {

void Table::Print() const {
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    for (const auto& row : rows) {
        // The first column is text, all others are numbers.
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int width = static_cast<int>(widths[i]);
            std::printf("| %*s ", i == 0 ? -width : width, row[i].c_str());
        }
        std::puts("|");
        if (&row == &rows.front()) {
            for (std::size_t i = 0; i < row.size(); ++i)
                std::printf("|%s%s", std::string(widths[i] + 1, '-').c_str(), i == 0 ? "-" : ":");
            std::puts("|");
        }
    }
}

}  // namespace kybench
