#include "LinePeriods.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>

namespace kyimg {

namespace {

using Spectrum = std::vector<std::complex<float>>;

/// In place, of a power of two of values, without scaling.
void Transform(Spectrum& values) {
    const std::size_t size = values.size();
    for (std::size_t i = 1, j = 0; i < size; ++i) {
        std::size_t bit = size >> 1;
        for (; (j & bit) != 0; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(values[i], values[j]);
    }
    std::vector<std::complex<float>> roots(size / 2);
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const double angle = -2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size);
        roots[i] = std::complex<float>(std::polar(1.0, angle));
    }
    for (std::size_t half = 1; half < size; half *= 2)
        for (std::size_t start = 0; start < size; start += 2 * half)
            for (std::size_t i = 0; i < half; ++i) {
                const std::complex<float> root = roots[i * (size / (2 * half))];
                const std::complex<float> high = values[start + half + i];
                // Not operator*, which looks for infinities.
                const std::complex<float> odd(high.real() * root.real() - high.imag() * root.imag(),
                                              high.real() * root.imag() + high.imag() * root.real());
                values[start + half + i] = values[start + i] - odd;
                values[start + i] += odd;
            }
}

/// Samples of a pixel, of a group of pixels and of a Bayer pattern repeat after a divisor of this many bytes. Differences
/// over this distance leave only details.
constexpr std::size_t kGroups = 60;

float Detail(const std::uint8_t* byte) {
    constexpr int kMost = 96;  // so that a few strong edges do not outweigh all else
    return static_cast<float>(std::clamp(2 * byte[0] - *(byte - kGroups) - byte[kGroups], -kMost, kMost));
}

/// Low bytes of words are mostly noise, high ones change little: less weight for bytes whose details are large. Bytes that
/// are a multiple of kGroups apart are of a kind.
std::vector<float> WeighKinds(const std::uint8_t* begin, std::size_t count) {
    std::vector<float> weights(kGroups);
    for (std::size_t i = 0; i < count; ++i) weights[i % kGroups] += std::abs(Detail(begin + i));
    for (float& weight : weights) weight = std::pow(1 + weight * kGroups / static_cast<float>(count), -1.5F);
    return weights;
}

/// Adds the power spectrum of the details from `begin` on, of half the spectrum's size.
void AddPower(std::span<const std::uint8_t> file, std::size_t begin, Spectrum& work, std::vector<float>& power) {
    std::ranges::fill(work, std::complex<float>());
    const std::size_t count = std::min(work.size() / 2, file.size() - kGroups - begin);
    const std::uint8_t* const bytes = file.data() + begin;
    const std::vector<float> weights = WeighKinds(bytes, count);
    for (std::size_t i = 0; i < count; ++i) work[i] = weights[i % kGroups] * Detail(bytes + i);
    Transform(work);
    for (std::size_t i = 0; i < work.size(); ++i) power[i] += std::norm(work[i]);
}

std::vector<float> Autocorrelation(std::span<const std::uint8_t> file) {
    constexpr std::size_t kLongestPart = std::size_t{1} << 18;
    constexpr std::size_t kMostParts = 6;
    const std::size_t part = std::min(kLongestPart, std::bit_ceil(file.size()));
    const std::size_t parts = std::clamp<std::size_t>(file.size() / part, 1, kMostParts);
    const std::size_t room = file.size() - 2 * kGroups;
    Spectrum work(2 * part);
    std::vector<float> power(2 * part);
    for (std::size_t i = 0; i < parts; ++i) {
        const std::size_t last = room > part ? room - part : 0;
        AddPower(file, kGroups + (parts == 1 ? 0 : last * i / (parts - 1)), work, power);
    }
    for (std::size_t i = 0; i < work.size(); ++i) work[i] = power[i];
    Transform(work);
    // Few pairs are that far apart: undo the taper, up to half of the part.
    const std::size_t length = std::min(part, room);
    std::vector<float> result(length / 2);
    for (std::size_t lag = 0; lag < result.size(); ++lag)
        result[lag] = work[lag].real() * static_cast<float>(length) / static_cast<float>(length - lag);
    return result;
}

}  // namespace

std::vector<LinePeriod> FindLinePeriods(std::span<const std::uint8_t> file, std::size_t most) {
    constexpr std::size_t kNeighbours = 12;
    std::vector<LinePeriod> periods;
    if (file.size() < 4 * kGroups) return periods;
    const std::vector<float> correlation = Autocorrelation(file);
    if (!(correlation[0] > 0)) return periods;
    for (std::size_t lag = kNeighbours + 8; lag + kNeighbours < correlation.size(); ++lag) {
        const auto around = correlation.begin() + static_cast<std::ptrdiff_t>(lag);
        const float here = *around;
        if (here > 0 && here >= *std::max_element(around - kNeighbours, around + kNeighbours + 1))
            periods.push_back({lag, here / correlation[0]});
    }
    std::ranges::sort(periods, std::greater(), &LinePeriod::correlation);
    if (periods.size() > most) periods.resize(most);
    return periods;
}

}  // namespace kyimg
