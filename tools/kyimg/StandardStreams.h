#ifndef KYIMG_STANDARDSTREAMS_H
#define KYIMG_STANDARDSTREAMS_H

#include <cstddef>
#include <cstdio>

namespace kyimg {

/// Whether a person sits at the other end.
bool IsTerminal(std::FILE* stream);
bool IsTerminal(int descriptor);

/// Characters in a line of the terminal at the other end; 0 when there is none or it does not tell.
std::size_t TerminalWidth(std::FILE* stream);

/// Keeps the C library from translating line ends, where it does so.
void SetBinary(std::FILE* stream);

/// A stream of its own, for bytes, that writes to the open descriptor and leaves it open; null when that is not open.
std::FILE* OpenDescriptor(int descriptor);

}  // namespace kyimg

#endif
