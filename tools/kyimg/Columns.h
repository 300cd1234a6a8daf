#ifndef KYIMG_COLUMNS_H
#define KYIMG_COLUMNS_H

#include <string>

namespace kyimg {

/// Prints `start` and `rest` as a line to standard output. On a terminal `rest` is broken between words, and further lines
/// of it begin below the first; elsewhere all is one line, as programs want it.
void PrintLine(const std::string& start, const std::string& rest);

/// The lines of `text`, broken between words where they would be longer than `width`.
std::string Wrap(const std::string& text, std::size_t width, std::size_t indent);

}  // namespace kyimg

#endif
