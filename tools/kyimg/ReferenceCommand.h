#ifndef KYIMG_REFERENCECOMMAND_H
#define KYIMG_REFERENCECOMMAND_H

#include <CLI/CLI.hpp>

namespace kyimg {

CLI::App* AddReferenceCommand(CLI::App& app);

/// `kyimg reference`: all types and conversions as a Markdown page, which is docs/formats.md.
void RunReference();

}  // namespace kyimg

#endif
