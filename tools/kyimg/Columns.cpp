#include "Columns.h"

#include "StandardStreams.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

namespace kyimg {

namespace {

/// Narrower than this, breaking makes nothing more readable.
constexpr std::size_t kLeastWidth = 24;

}  // namespace

std::string Wrap(const std::string& text, std::size_t width, std::size_t indent) {
    std::string lines;
    std::size_t column = 0;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (column > 0 && column + 1 + word.size() > width) {
            lines += '\n' + std::string(indent, ' ');
            column = 0;
        } else if (column > 0) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += word.size();
    }
    return lines;
}

void PrintLine(const std::string& start, const std::string& rest) {
    const std::size_t terminal = TerminalWidth(stdout);
    if (terminal < start.size() + kLeastWidth)
        fmt::print("{}{}\n", start, rest);
    else
        fmt::print("{}{}\n", start, Wrap(rest, terminal - start.size(), start.size()));
}

}  // namespace kyimg
