#include "StandardStreams.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace kyimg {

#if defined(_WIN32)
bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }
std::size_t TerminalWidth(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    return GetConsoleScreenBufferInfo(console, &info) != 0 ? static_cast<std::size_t>(info.dwSize.X) : 0;
}
void SetBinary(std::FILE* stream) { _setmode(_fileno(stream), _O_BINARY); }
#else
bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }
std::size_t TerminalWidth(std::FILE* stream) {
    winsize size = {};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}
void SetBinary(std::FILE*) {}
#endif

}  // namespace kyimg
