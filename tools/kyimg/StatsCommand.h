#ifndef KYIMG_STATSCOMMAND_H
#define KYIMG_STATSCOMMAND_H

#include "ConvertOptions.h"

#include <string>

namespace kyimg {

/// The command line of `kyimg stats`, as typed.
struct StatsOptions {
    ConvertOptions input;
    std::string histogram;  ///< file to write; empty: none
    bool json = false;
};

/// Adds the command to `app`; parsing fills `options`.
CLI::App* AddStatsCommand(CLI::App& app, StatsOptions& options);

/// `kyimg stats`. Throws UsageError and Failure.
void RunStats(const StatsOptions& options);

}  // namespace kyimg

#endif
