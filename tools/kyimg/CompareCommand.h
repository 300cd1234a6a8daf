#ifndef KYIMG_COMPARECOMMAND_H
#define KYIMG_COMPARECOMMAND_H

#include "ConvertOptions.h"

#include <optional>
#include <string>

namespace kyimg {

/// The command line of `kyimg compare`, as typed.
struct CompareOptions {
    ConvertOptions input;  ///< how raw files are to be read; its own input is not used
    std::string first, second;
    std::optional<std::uint32_t> maxDifference;
    std::optional<double> minPsnr;
    bool json = false;
};

/// Adds the command to `app`; parsing fills `options`.
CLI::App* AddCompareCommand(CLI::App& app, CompareOptions& options);

/// `kyimg compare`. Throws UsageError; and Failure, also when the pictures differ by more than the options allow.
void RunCompare(const CompareOptions& options);

}  // namespace kyimg

#endif
