#ifndef KYIMG_COLUMNS_H
#define KYIMG_COLUMNS_H

#include <string>

namespace kyimg {

/// Prints `start`, then `rest` of it, to standard output. On a terminal `rest` is broken between words, so that further lines
/// begin below it; elsewhere all is one line, as programs want it.
void PrintLine(const std::string& start, const std::string& rest);

/// The lines of `text`, broken between words where they would be longer than `width`.
std::string Wrap(const std::string& text, std::size_t width, std::size_t indent);

}  // namespace kyimg

#endif
