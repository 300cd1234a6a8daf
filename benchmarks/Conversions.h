#ifndef KYBENCH_CONVERSIONS_H
#define KYBENCH_CONVERSIONS_H

#include "Frames.h"
#include "Options.h"
#include "Rows.h"

#include <KyImgLib/KyImgLib.h>

#include <memory>
#include <string>
#include <vector>

namespace kybench {

/// A row at one size and CPU level.
struct Conversion {
    Row row;
    Size size;
    std::uint32_t level;
    const KyPixelConverter* converter;
    std::shared_ptr<const KyRGBFilter> filter;  ///< null: converts without one

    std::size_t GetSourceBytes() const;
    std::size_t GetDestinationBytes() const;
};

/// The rows that the options select and the unfiltered rows that those are compared with, in the table's order. Throws
/// std::runtime_error when the library has no converter for one of them.
std::vector<Conversion> SelectConversions(const Options& options);

/// Under which a row's results are found, also in the JSON file.
std::string BenchmarkName(const Row& row, Size size, std::uint32_t level);

void RegisterBenchmark(const Conversion& conversion, const Frames& frames);

}  // namespace kybench

#endif
