#ifndef KYBENCH_PARALLELCONVERSIONS_H
#define KYBENCH_PARALLELCONVERSIONS_H

#include "Options.h"

#include <cstdint>
#include <span>
#include <string>

namespace kybench {

/// An image that is converted on one thread, and on as many as the library takes.
struct ParallelRow {
    const char* name;
    std::int64_t source;
    std::int64_t destination;
    std::uint32_t flags;
    std::uint32_t width;
    std::uint32_t height;
    bool isScalar;  ///< at the scalar level instead of the active one

    std::string NameOf(bool parallel) const { return std::string(name) + (parallel ? "/threads" : "/one"); }
};

std::span<const ParallelRow> AllParallelRows();

/// Registers the rows that the options ask for, and returns how many.
int RegisterParallelConversions(const Options& options);

}  // namespace kybench

#endif
