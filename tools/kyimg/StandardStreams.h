#ifndef KYIMG_STANDARDSTREAMS_H
#define KYIMG_STANDARDSTREAMS_H

#include <cstdio>

namespace kyimg {

/// Whether a person sits at the other end.
bool IsTerminal(std::FILE* stream);

/// Keeps the C library from translating line ends, where it does so.
void SetBinary(std::FILE* stream);

}  // namespace kyimg

#endif
