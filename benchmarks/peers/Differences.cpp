#include "Differences.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace kybench {

int Differences::GetLargest() const { return *std::max_element(channels.begin(), channels.end()); }

Differences MeasureDifferences(const Operation& operation, const Contender& contender, Buffers& buffers) {
    constexpr Size size = kCheckSize;
    const Picture source = {buffers.MakeWork(operation, size).source, size.width, size.height};
    const Work work = buffers.MakeWork(operation, size, &contender);
    // Nothing of the result of another contender.
    std::memset(work.destination, 0xA5, work.destinationBytes);
    contender.convert(work);
    const Picture result = {work.destination, size.width, size.height};

    Differences differences = {};
    for (std::uint32_t y = operation.border; y < size.height - operation.border; ++y)
        for (std::uint32_t x = operation.border; x < size.width - operation.border; ++x)
            for (int channel = 0; channel < ChannelCount(operation.layout); ++channel) {
                const int exact = operation.exact(source, x, y, channel);
                const int found =
                    SampleOf(operation.layout, result, x, y, contender.swapsRedBlue ? 2 - channel : channel);
                int& largest = differences.channels[static_cast<std::size_t>(channel)];
                largest = std::max(largest, std::abs(found - exact));
            }
    return differences;
}

}  // namespace kybench
