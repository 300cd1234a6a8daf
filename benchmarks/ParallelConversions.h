#ifndef KYBENCH_PARALLELCONVERSIONS_H
#define KYBENCH_PARALLELCONVERSIONS_H

#include "Options.h"

#include <cstdint>
#include <span>
#include <string>

namespace kybench {

/// What converts at once. Apart, every core has a thread with an image of its own: what the machine gives to threads that
/// share nothing, which no bands of one image can exceed. (Cores of virtual machines may be halves of one.)
enum class Threads { kOne, kAll, kApart };

/// An image that is converted on one thread, and on as many as the library takes.
struct ParallelRow {
    const char* name;
    std::int64_t source;
    std::int64_t destination;
    std::uint32_t flags;
    std::uint32_t width;
    std::uint32_t height;
    bool isScalar;  ///< at the scalar level instead of the active one

    std::string NameOf(Threads threads) const {
        static const char* const names[] = {"/one", "/all", "/apart"};
        return std::string(name) + names[static_cast<int>(threads)];
    }
};

std::span<const ParallelRow> AllParallelRows();

/// Cores that threads of this process may use.
std::uint32_t CoreCount();

/// Registers the rows that the options ask for, and returns how many.
int RegisterParallelConversions(const Options& options);

}  // namespace kybench

#endif
