#ifndef KYIMG_LISTCOMMAND_H
#define KYIMG_LISTCOMMAND_H

#include <CLI/CLI.hpp>

#include <string>

namespace kyimg {

struct ListOptions {
    std::string what;         ///< "types" or "converters"; empty: what the filters ask for
    std::string source;       ///< empty: any
    std::string destination;  ///< likewise
    bool json = false;
};

CLI::App* AddListCommand(CLI::App& app, ListOptions& options);

/// `kyimg list`: all types, or converters, of the registry. Throws UsageError.
void RunList(const ListOptions& options);

}  // namespace kyimg

#endif
