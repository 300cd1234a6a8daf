#ifndef KYIMG_OUTPUTFILE_H
#define KYIMG_OUTPUTFILE_H

#include <cstdint>
#include <span>
#include <string>

namespace kyimg {

/// Throws UsageError when a picture would go to a terminal.
void CheckOutput(const std::string& path);

/// Writes a whole file, or to standard output when `path` is "-".
///
/// A file appears complete or not at all: the bytes go to a temporary file in the same folder, which then takes the
/// place of the target. (Devices and pipes are written directly.) Throws Failure.
void WriteOutput(const std::string& path, std::span<const std::uint8_t> bytes);

}  // namespace kyimg

#endif
