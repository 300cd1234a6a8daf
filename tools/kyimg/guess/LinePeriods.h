#ifndef KYIMG_GUESS_LINEPERIODS_H
#define KYIMG_GUESS_LINEPERIODS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kyimg {

/// A distance in bytes after which the contents of a file look alike: the stride, or a few times that.
struct LinePeriod {
    std::size_t bytes;
    double correlation;  ///< of details, from 0 to 1
};

/// The periods of a file, that of the best correlation first, up to `most` of them. They are found by autocorrelation, which
/// needs no idea of what the bytes mean.
std::vector<LinePeriod> FindLinePeriods(std::span<const std::uint8_t> file, std::size_t most);

}  // namespace kyimg

#endif
