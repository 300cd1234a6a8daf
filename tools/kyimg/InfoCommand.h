#ifndef KYIMG_INFOCOMMAND_H
#define KYIMG_INFOCOMMAND_H

#include <CLI/CLI.hpp>

#include <string>

namespace kyimg {

struct InfoOptions {
    std::string type;
    std::string size = "640x480";
    bool json = false;
};

CLI::App* AddInfoCommand(CLI::App& app, InfoOptions& options);

/// `kyimg info`: all that is known of one type. Throws UsageError.
void RunInfo(const InfoOptions& options);

}  // namespace kyimg

#endif
