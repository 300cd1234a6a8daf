#ifndef KYIMG_LISTCOMMAND_H
#define KYIMG_LISTCOMMAND_H

#include <CLI/CLI.hpp>

#include <string>

namespace kyimg {

struct ListOptions {
    std::string what = "types";
};

CLI::App* AddListCommand(CLI::App& app, ListOptions& options);

/// `kyimg list`: a line for each registered type or converter.
void RunList(const ListOptions& options);

}  // namespace kyimg

#endif
