#ifndef TESTS_TOOL_RUNPROGRAM_H
#define TESTS_TOOL_RUNPROGRAM_H

#include <filesystem>
#include <string>

/// Runs the program that the environment variable KYIMG names in `folder`/files, with `arguments` as for the shell, and
/// with the files stdin, stdout and stderr of `folder`. Returns its exit status.
int RunProgram(std::string arguments, const std::filesystem::path& folder);

#endif
