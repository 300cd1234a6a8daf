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
bool IsTerminal(int descriptor) { return _isatty(descriptor) != 0; }
bool IsTerminal(std::FILE* stream) { return IsTerminal(_fileno(stream)); }
std::size_t TerminalWidth(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    return GetConsoleScreenBufferInfo(console, &info) != 0 ? static_cast<std::size_t>(info.dwSize.X) : 0;
}
void SetBinary(std::FILE* stream) { _setmode(_fileno(stream), _O_BINARY); }
std::FILE* OpenDescriptor(int descriptor) {
    const int copy = _dup(descriptor);
    if (copy >= 0) _setmode(copy, _O_BINARY);
    return copy < 0 ? nullptr : _fdopen(copy, "wb");
}
#else
bool IsTerminal(int descriptor) { return isatty(descriptor) != 0; }
bool IsTerminal(std::FILE* stream) { return IsTerminal(fileno(stream)); }
std::size_t TerminalWidth(std::FILE* stream) {
    winsize size = {};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}
void SetBinary(std::FILE*) {}
std::FILE* OpenDescriptor(int descriptor) {
    const int copy = dup(descriptor);
    return copy < 0 ? nullptr : fdopen(copy, "wb");
}
#endif

}  // namespace kyimg
