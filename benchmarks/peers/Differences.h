#ifndef KYBENCH_PEERS_DIFFERENCES_H
#define KYBENCH_PEERS_DIFFERENCES_H

#include "Buffers.h"
#include "Operations.h"
#include "Peer.h"

#include <array>

namespace kybench {

/// Of the image that is compared.
inline constexpr Size kCheckSize = kSizes.front();

/// Largest difference of a result from the exact one, for each channel of the destination.
struct Differences {
    std::array<int, 3> channels;

    int GetLargest() const;
};

/// Converts an image and compares every sample.
Differences MeasureDifferences(const Operation& operation, const Contender& contender, Buffers& buffers);

}  // namespace kybench

#endif
