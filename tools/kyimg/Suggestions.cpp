#include "Suggestions.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

namespace kyimg {

namespace {

/// Letters to insert, to leave out or to change, the least number of them.
std::size_t EditDistance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= one.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t k = 1; k <= other.size(); ++k) {
            const std::size_t changed = diagonal + (one[i - 1] == other[k - 1] ? 0 : 1);
            diagonal = row[k];
            row[k] = std::min({row[k] + 1, row[k - 1] + 1, changed});
        }
    }
    return row.back();
}

/// Of an app and its command in use, with their dashes.
std::vector<std::string> OptionNames(const CLI::App& app) {
    std::vector<std::string> names;
    const auto used = app.get_subcommands();
    for (const CLI::App* const owner : {&app, used.empty() ? &app : used.front()})
        for (const CLI::Option* const option : owner->get_options())
            for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    return names;
}

std::string Suggest(const std::string& word, const std::vector<std::string>& known) {
    if (word.size() < 3 || std::ranges::find(known, word) != known.end()) return "";
    const auto distance = [&word](const std::string& name) {
        // Whoever types the beginning of a name means it.
        return word.size() > 4 && name.starts_with(word) ? std::size_t{1} : EditDistance(word, name);
    };
    const auto nearest = std::ranges::min_element(known, {}, distance);
    const bool isNear = nearest != known.end() && distance(*nearest) <= std::max<std::size_t>(1, word.size() / 3);
    return isNear ? fmt::format("; {}: did you mean {}?", word, *nearest) : "";
}

}  // namespace

std::string SuggestCommand(const CLI::App& app, const std::string& name) {
    std::vector<std::string> names;
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return Suggest(name, names);
}

std::string SuggestSpelling(const CLI::App& app, const std::vector<std::string>& arguments) {
    const std::vector<std::string> options = OptionNames(app);
    for (const std::string& argument : arguments) {
        std::string text;
        if (argument.starts_with("--"))
            text = Suggest(argument.substr(0, argument.find('=')), options);
        else if (app.get_subcommands().empty())
            text = SuggestCommand(app, argument);
        if (!text.empty()) return text;
    }
    return "";
}

}  // namespace kyimg
