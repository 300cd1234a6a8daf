#ifndef KYBENCH_SMALLCONVERSIONS_H
#define KYBENCH_SMALLCONVERSIONS_H

#include "Options.h"

#include <cstdint>
#include <span>

namespace kybench {

/// A conversion of so few pixels that the time is that of everything but the pixels.
struct SmallRow {
    const char* name;
    std::int64_t source;
    std::int64_t destination;
    std::uint32_t flags;
    std::uint32_t width;
    std::uint32_t height;  ///< 0: a line call of the flat interface, outside of an area
};

std::span<const SmallRow> AllSmallRows();

/// Registers the rows that the options ask for, at the active CPU level, and returns how many.
int RegisterSmallConversions(const Options& options);

}  // namespace kybench

#endif
