#ifndef KYIMG_GUESS_STRIDES_H
#define KYIMG_GUESS_STRIDES_H

#include "LinePeriods.h"
#include "NameHints.h"
#include "SampleLayouts.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <vector>

namespace kyimg {

/// The strides that lines of a file may have: periods of its contents, and those of usual sizes that fit its length.
class Strides {
public:
    Strides(std::span<const std::uint8_t> file, const NameHints& hints);

    const std::set<std::size_t>& GetAll() const { return strides; }

    /// Of the strongest period that is the stride or twice that; 0 where there is none.
    double GetCorrelation(std::size_t stride) const;

private:
    void Add(std::size_t stride);
    void AddPeriod(std::size_t bytes);
    void AddSize(const SampleLayout& layout, std::uint64_t width, std::uint64_t height);

    std::size_t fileSize;
    std::vector<LinePeriod> periods;
    std::set<std::size_t> strides;
};

}  // namespace kyimg

#endif
