#include "RunProgram.h"

#include <algorithm>
#include <cstdlib>

#if defined(_WIN32)
#include <windows.h>

int RunProgram(std::string arguments, const std::filesystem::path& folder) {
    std::replace(arguments.begin(), arguments.end(), '\'', '"');
    std::string command = '"' + std::string(std::getenv("KYIMG")) + "\" " + arguments;
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const auto open = [&](const char* name, DWORD access, DWORD mode) {
        return CreateFileA((folder / name).string().c_str(), access, FILE_SHARE_READ, &inherited, mode, 0, nullptr);
    };
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = open("stdin", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = open("stdout", GENERIC_WRITE, CREATE_ALWAYS);
    startup.hStdError = open("stderr", GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process = {};
    DWORD status = 255;
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, (folder / "files").string().c_str(),
                       &startup, &process) != 0) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &status);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    for (const HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) CloseHandle(handle);
    return static_cast<int>(status);
}

#else

int RunProgram(std::string arguments, const std::filesystem::path& folder) {
    // Input comes through a pipe, as a file would tell its size.
    const std::string command = "cd '" + (folder / "files").string() + "' && cat ../stdin | \"$KYIMG\" " + arguments +
                                " >../stdout 2>../stderr";
    const int status = std::system(command.c_str());
    return status < 0 ? status : status >> 8;
}
#endif
