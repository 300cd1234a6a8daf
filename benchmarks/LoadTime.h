#ifndef KYBENCH_LOADTIME_H
#define KYBENCH_LOADTIME_H

#include "Options.h"

#include <array>

namespace kybench {

/// The library is loaded, used for the first time and unloaded, by a program that is not linked to it.
struct LoadRow {
    const char* name;
    const char* argument;  ///< tells the program which load to time
};

inline constexpr std::array<LoadRow, 2> kLoadRows = {{{"LoadLibrary/first", "first"}, {"LoadLibrary/again", "again"}}};

/// Registers the rows that the options ask for and returns how many; none where the system is not Linux.
int RegisterLoadTimes(const Options& options);

}  // namespace kybench

#endif
