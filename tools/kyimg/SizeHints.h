#ifndef KYIMG_SIZEHINTS_H
#define KYIMG_SIZEHINTS_H

#include "SourceFrame.h"

#include <cstdint>
#include <string>

namespace kyimg {

/// What so many bytes may be, where a frame needs another number of them: "; 232324 bytes are 241 lines of 964: --stride 964".
/// Tells another stride, height or header, and types that have as many bytes at the same size in pixels. Of several whole
/// frames it tells types only.
std::string ExplainSize(const SourceFrame& source, std::uint64_t bytes);

}  // namespace kyimg

#endif
