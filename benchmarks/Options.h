#ifndef KYBENCH_OPTIONS_H
#define KYBENCH_OPTIONS_H

#include <cstdint>
#include <regex>
#include <string>
#include <vector>

namespace kybench {

/// What the command line says.
struct Options {
    bool help = false;
    std::vector<std::uint32_t> levels;            ///< CPU levels to measure, each available here
    std::regex filter{""};                        ///< matches some part of the names of the wanted rows
    bool wantsOtherFormat = false;                ///< one of Google Benchmark's own, instead of the table
    std::vector<std::string> forGoogleBenchmark;  ///< the other arguments, after our defaults for them
};

extern const char* const kHelp;

/// Throws std::runtime_error, with a sentence for the user, when a level or the filter is none.
Options ParseOptions(const std::vector<std::string>& arguments);

}  // namespace kybench

#endif
