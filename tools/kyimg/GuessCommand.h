#ifndef KYIMG_GUESSCOMMAND_H
#define KYIMG_GUESSCOMMAND_H

#include <CLI/CLI.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace kyimg {

/// The command line of `kyimg guess`, as typed.
struct GuessOptions {
    std::vector<std::string> inputs;
    std::size_t most = 5;
    std::string sheet;  ///< contact sheet to write; empty: none
    bool json = false;
};

/// Adds the command to `app`; parsing fills `options`.
CLI::App* AddGuessCommand(CLI::App& app, GuessOptions& options);

/// `kyimg guess`. Throws UsageError and Failure.
void RunGuess(const GuessOptions& options);

}  // namespace kyimg

#endif
