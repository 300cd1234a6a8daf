#include "CodingCost.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numbers>

namespace kyimg {

namespace {

constexpr std::size_t kMostComponents = 6;
constexpr std::size_t kMargin = 12;  ///< first samples of a window, which lack neighbours; a multiple of all periods
constexpr std::size_t kTopLines = 2;

/// The median of left, above and the plane through three neighbours.
int Predict(int left, int above, int corner) {
    const int low = std::min(left, above), high = std::max(left, above);
    return std::clamp(left + above - corner, low, high);
}

/// Distances to the left neighbour of the same component.
struct Components {
    std::size_t count;
    std::size_t left[kMostComponents];
    std::size_t green = kMostComponents;   ///< of RGB
    bool lessGreen[kMostComponents] = {};  ///< red and blue

    Components(const char* names, std::size_t step) : count(std::strlen(names)) {
        for (std::size_t i = 0; i < count; ++i) {
            left[i] = 1;
            while (names[(i + count * kMargin - left[i]) % count] != names[i]) ++left[i];
            left[i] *= step;
            if (names[i] == 'G') green = i;
            lessGreen[i] = names[i] == 'R' || names[i] == 'B';
        }
    }
};

/// Mean bits of a Laplace distribution of which this is the mean magnitude.
double BitsOf(double magnitude, std::uint32_t sampleBits) {
    return std::min<double>(sampleBits, std::log2(1 + 2 * std::numbers::e * magnitude));
}

class LineCoder {
public:
    LineCoder(const Components& givenComponents, bool givenUsesGreen, std::uint32_t givenBits)
        : components(givenComponents), usesGreen(givenUsesGreen), sampleBits(givenBits) {}

    void Add(const std::uint16_t* line, const std::uint16_t* above, std::size_t width) {
        differences.resize(width);
        for (std::size_t x = kMargin; x < width; ++x) {
            const std::size_t left = components.left[x % components.count];
            differences[x] = line[x] - Predict(line[x - left], above[x], above[x - left]);
        }
        if (usesGreen) SubtractGreen(width);
        for (std::size_t component = 0; component < components.count; ++component) Count(component, width);
    }

    double GetMean() const { return samples == 0 ? sampleBits : bits / static_cast<double>(samples); }

private:
    void SubtractGreen(std::size_t width) {
        for (std::size_t pixel = kMargin; pixel + components.count <= width; pixel += components.count)
            for (std::size_t i = 0; i < components.count; ++i)
                if (components.lessGreen[i]) differences[pixel + i] -= differences[pixel + components.green];
    }

    /// Blocks of a component, as quiet and busy parts of a line differ; one may go on in the next line.
    void Count(std::size_t component, std::size_t width) {
        constexpr std::size_t kBlock = 16;
        Block& block = blocks[component];
        for (std::size_t x = kMargin + component; x < width; x += components.count) {
            block.sum += std::abs(differences[x]);
            if (++block.samples < kBlock) continue;
            bits += kBlock * BitsOf(block.sum / kBlock, sampleBits);
            samples += kBlock;
            block = {};
        }
    }

    struct Block {
        double sum = 0;
        std::size_t samples = 0;
    };

    Block blocks[kMostComponents];
    const Components& components;
    bool usesGreen;  ///< red and blue are predicted to differ from the prediction as green does
    std::uint32_t sampleBits;
    std::vector<int> differences;
    double bits = 0;
    std::size_t samples = 0;
};

}  // namespace

double BitsPerSample(std::span<const SampleWindow> windows, const char* names, std::size_t step,
                     std::uint32_t sampleBits) {
    const Components components(names, step);
    const auto code = [&](bool usesGreen) {
        LineCoder coder(components, usesGreen, sampleBits);
        for (const SampleWindow& window : windows)
            for (std::size_t y = kTopLines; y < window.lines; ++y)
                coder.Add(window.GetLine(y), window.GetLine(y - step), window.width);
        return coder.GetMean();
    };
    const double bits = code(false);
    if (components.green == kMostComponents) return bits;
    constexpr double kOfNoise = 0.03;  // RGB that green tells nothing about, but noise, is the rarer
    return std::min(bits + kOfNoise, code(true));
}

}  // namespace kyimg
