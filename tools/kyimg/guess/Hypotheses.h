#ifndef KYIMG_GUESS_HYPOTHESES_H
#define KYIMG_GUESS_HYPOTHESES_H

#include "SampleLayouts.h"
#include "SampleWindows.h"
#include "Strides.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kyimg {

/// A layout of samples on lines that are this far apart, and what it costs to code the file so.
struct Hypothesis {
    const SampleLayout* layout = nullptr;
    LineGrid grid = {};
    double bitsPerByte = 8;
    double penalty = 0;  ///< for being uncommon

    /// The fewer, the likelier: the cost of coding against penalties.
    double GetPoints() const { return 100 * bitsPerByte + penalty; }
};

/// The hypotheses of all layouts and strides, measured roughly, those of the fewest points first.
std::vector<Hypothesis> MeasureAll(std::span<const std::uint8_t> file, const Strides& strides, std::size_t most);

/// Measures a hypothesis anew, on more of the file.
void MeasureWell(std::span<const std::uint8_t> file, Hypothesis& hypothesis);

}  // namespace kyimg

#endif
