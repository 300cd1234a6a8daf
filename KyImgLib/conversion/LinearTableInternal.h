#ifndef KYIMGLIB_CONVERSION_LINEARTABLEINTERNAL_H
#define KYIMGLIB_CONVERSION_LINEARTABLEINTERNAL_H

#include <KyImgLib/pipeline/FilterShape.h>

#include <cstdint>

namespace ky {

/// Looks for the gain and offset behind a table of 256 bytes and fills the linear part of `shape`; isLinear says
/// whether the arithmetic gives every single entry.
void FitLinear(const std::uint8_t* table, FilterShape8& shape);

/// The same for a table of `entryCount` words.
void FitLinear16(const std::uint16_t* table, std::uint32_t entryCount, FilterShape16& shape);

}  // namespace ky

#endif
