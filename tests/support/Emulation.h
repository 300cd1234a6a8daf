#ifndef KYIMGLIB_TESTS_SUPPORT_EMULATION_H
#define KYIMGLIB_TESTS_SUPPORT_EMULATION_H

#include <cstdint>
#include <cstdlib>

namespace support {

/// Whether the environment says that the CPU is emulated, which takes ten times as long.
inline bool IsEmulated() { return std::getenv("KYIMGLIB_TEST_EMULATED") != nullptr; }

/// Of values that a test walks through, every third has to do under emulation. Three has no divisor in common with the
/// sizes of vectors, so that widths still end anywhere in them.
inline std::uint32_t Stride() { return IsEmulated() ? 3 : 1; }

/// Lines of a picture of many lines.
inline std::uint32_t ManyLines() { return IsEmulated() ? 13 : 41; }

}  // namespace support

#endif
