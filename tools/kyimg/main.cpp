#include "CompareCommand.h"
#include "ConvertCommand.h"
#include "ConvertOptions.h"
#include "CpuLevels.h"
#include "Errors.h"
#include "GuessCommand.h"
#include "InfoCommand.h"
#include "ListCommand.h"
#include "PatternsCommand.h"
#include "ReferenceCommand.h"
#include "StatsCommand.h"
#include "Suggestions.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <string>

namespace kyimg {

namespace {

constexpr const char* kDescription =
    "kyimg turns raw frames of machine-vision cameras into pictures, and tells about their pixel types.";

constexpr const char* kExamples = R"(Examples:
  kyimg convert frame.raw --type 0x20010 --size 2592x1536 --bayer GRBG -o frame.png
  kyimg patterns frame.raw --type 0x20010 --size 2592x1536 -o patterns.png
  kyimg guess frame.raw       what may this be?
  kyimg list --from "Bayer RGB 12-bits, Packed"
  kyimg info BayerRG8
  kyimg help convert          options of convert, and more examples

Exit status: 0 done, 1 the request could not be fulfilled, 2 wrong command line.)";

struct GlobalOptions {
    bool version = false;
    std::string cpuLevel;
};

void AddGlobalOptions(CLI::App& app, GlobalOptions& options) {
    app.require_subcommand(0, 1);
    app.fallthrough();  // so that they may also follow the command
    app.footer(kExamples);
    app.add_flag("--version", options.version, "Version, and the CPU levels: active, available, unavailable");
    app.add_option("--cpu-level", options.cpuLevel,
                   "Use this level of CPU instructions (all give the same result); see --version");
}

struct HelpOptions {
    std::string command;
};

CLI::App* AddHelpCommand(CLI::App& app, HelpOptions& options) {
    CLI::App* const command = app.add_subcommand("help", "Tell all options of a command, and examples");
    command->footer("Example:\n  kyimg help convert");
    command->add_option("COMMAND", options.command, "The command; none: an overview")->type_name("");
    return command;
}

void PrintHelp(const CLI::App& app, const std::string& name) {
    if (name.empty()) {
        // Not app.help(), which would tell of the command in use.
        fmt::print("{}", app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal));
        return;
    }
    const auto commands = app.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
    if (commands.empty())
        throw UsageError(fmt::format("no command is called \"{}\"{}", name, SuggestCommand(app, name)));
    fmt::print("{}", commands.front()->help(app.get_name()));
}

void Run(int argc, const char* const* argv) {
    if (KyExtendedTypes::Register() != KY_STATUS_SUCCESS) throw std::bad_alloc();
    CLI::App app(kDescription, "kyimg");
    GlobalOptions global;
    ConvertOptions convert;
    ConvertOptions patterns;
    GuessOptions guess;
    StatsOptions stats;
    CompareOptions compare;
    ListOptions list;
    InfoOptions info;
    HelpOptions help;
    AddGlobalOptions(app, global);
    const CLI::App* const convertCommand = AddConvertCommand(app, convert);
    const CLI::App* const patternsCommand = AddPatternsCommand(app, "patterns", patterns);
    // An older name, which help does not list.
    const CLI::App* const ordersCommand = AddPatternsCommand(app, "orders", patterns)->group("");
    const CLI::App* const guessCommand = AddGuessCommand(app, guess);
    const CLI::App* const statsCommand = AddStatsCommand(app, stats);
    const CLI::App* const compareCommand = AddCompareCommand(app, compare);
    const CLI::App* const listCommand = AddListCommand(app, list);
    const CLI::App* const infoCommand = AddInfoCommand(app, info);
    const CLI::App* const referenceCommand = AddReferenceCommand(app);
    const CLI::App* const helpCommand = AddHelpCommand(app, help);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) throw UsageError(error.what() + SuggestSpelling(app, {argv + 1, argv + argc}));
        app.exit(error);  // prints the help that was asked for
        return;
    }

    CheckCpuLevelVariable();
    if (!global.cpuLevel.empty()) ForceCpuLevel(global.cpuLevel);
    if (global.version) {
        fmt::print("kyimg {}\n", KYIMGLIB_VERSION);
        PrintCpuLevels();
    } else if (convertCommand->parsed()) {
        RunConvert(convert);
    } else if (patternsCommand->parsed() || ordersCommand->parsed()) {
        RunPatterns(patterns);
    } else if (guessCommand->parsed()) {
        RunGuess(guess);
    } else if (statsCommand->parsed()) {
        RunStats(stats);
    } else if (compareCommand->parsed()) {
        RunCompare(compare);
    } else if (listCommand->parsed()) {
        RunList(list);
    } else if (infoCommand->parsed()) {
        RunInfo(info);
    } else if (referenceCommand->parsed()) {
        RunReference();
    } else if (helpCommand->parsed()) {
        PrintHelp(app, help.command);
    } else {
        throw UsageError(
            "a command is missing: convert, patterns, guess, stats, compare, list, info or reference; see kyimg "
            "--help");
    }
}

int Report(std::string message, int status) {
    std::ranges::replace(message, '\n', ' ');
    fmt::print(stderr, "kyimg: {}\n", message);
    return status;
}

}  // namespace

}  // namespace kyimg

int main(int argc, char** argv) {
    try {
        kyimg::Run(argc, argv);
        if (std::fflush(stdout) != 0) throw kyimg::Failure("cannot write standard output");
        return 0;
    } catch (const kyimg::UsageError& error) {
        return kyimg::Report(error.what(), 2);
    } catch (const std::bad_alloc&) {
        return kyimg::Report("out of memory", 1);
    } catch (const std::exception& error) {
        return kyimg::Report(error.what(), 1);
    }
}
