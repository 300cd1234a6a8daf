#ifndef KYIMG_SUGGESTIONS_H
#define KYIMG_SUGGESTIONS_H

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace kyimg {

/// "; --gian: did you mean --gain?" for the first argument that looks like an option, or like a command where none is in use, and is
/// nearly one; "" where there is none.
std::string SuggestSpelling(const CLI::App& app, const std::vector<std::string>& arguments);

/// Likewise, of commands only.
std::string SuggestCommand(const CLI::App& app, const std::string& name);

}  // namespace kyimg

#endif
