#include "StandardStreams.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kyimg {

#if defined(_WIN32)
bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }
void SetBinary(std::FILE* stream) { _setmode(_fileno(stream), _O_BINARY); }
#else
bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }
void SetBinary(std::FILE*) {}
#endif

}  // namespace kyimg
