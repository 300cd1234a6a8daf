#include "Options.h"

#include <KyImgLib/platform/KyCpuLevel.h>

#include <optional>
#include <stdexcept>

namespace kybench {

const char* const kHelp =
    R"(Measures conversions and, interleaved with them, kernels that only move as many bytes.

  --level NAME     measure the kernels of this CPU level; "all": of every level that this CPU has.
                   Without it: of the active level, which is the highest, or what KYIMGLIB_CPU_LEVEL allows
  --filter REGEX   measure only the rows whose name matches, and what they are compared with
  --help           this text

All flags of Google Benchmark work as well. The usual ones, with their defaults here:

  --benchmark_repetitions=25                    how often each row is measured
  --benchmark_min_time=0.02                     seconds of one repetition
  --benchmark_enable_random_interleaving=true   all repetitions of all rows in random order
  --benchmark_out=FILE                          also write every repetition to a JSON file
  --benchmark_format=console|json               print that instead of the table
  --benchmark_list_tests                        only list what would be measured
)";

namespace {

/// The value of `--name VALUE` or `--name=VALUE` at `position`, which then stands on the last argument used.
std::optional<std::string> ValueOf(const std::string& name, const std::vector<std::string>& arguments,
                                   std::size_t& position) {
    const std::string& argument = arguments[position];
    if (argument.starts_with(name + "=")) return argument.substr(name.size() + 1);
    if (argument != name) return std::nullopt;
    if (++position == arguments.size()) throw std::runtime_error(name + " needs a value");
    return arguments[position];
}

std::vector<std::uint32_t> AvailableLevels() {
    std::vector<std::uint32_t> levels;
    for (std::uint32_t level = 0; level < KyCpuLevel::GetCount(); ++level)
        if (KyCpuLevel::IsAvailable(level)) levels.push_back(level);
    return levels;
}

std::vector<std::uint32_t> FindLevels(const std::string& name) {
    if (name == "all") return AvailableLevels();
    std::uint32_t level = 0;
    if (KyCpuLevel::Find(name.c_str(), level) && KyCpuLevel::IsAvailable(level)) return {level};
    std::string message = "no CPU level \"" + name + "\" here; there are all";
    for (const std::uint32_t available : AvailableLevels())
        message += std::string(", ") + KyCpuLevel::GetName(available);
    throw std::runtime_error(message);
}

std::regex ParseFilter(const std::string& text) {
    try {
        return std::regex(text);
    } catch (const std::regex_error&) {
        throw std::runtime_error("the filter \"" + text + "\" is no regular expression");
    }
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    options.levels = {KyCpuLevel::GetActive()};
    options.forGoogleBenchmark = {"--benchmark_repetitions=25", "--benchmark_min_time=0.02",
                                  "--benchmark_enable_random_interleaving=true"};
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--help" || arguments[i] == "-h") {
            options.help = true;
        } else if (const auto level = ValueOf("--level", arguments, i)) {
            options.levels = FindLevels(*level);
        } else if (const auto filter = ValueOf("--filter", arguments, i)) {
            options.filter = ParseFilter(*filter);
        } else if (const auto sameFilter = ValueOf("--benchmark_filter", arguments, i)) {
            // Google Benchmark itself would drop the baselines of the rows that match.
            options.filter = ParseFilter(*sameFilter);
        } else {
            if (arguments[i].starts_with("--benchmark_format")) options.wantsOtherFormat = true;
            options.forGoogleBenchmark.push_back(arguments[i]);
        }
    }
    return options;
}

}  // namespace kybench
