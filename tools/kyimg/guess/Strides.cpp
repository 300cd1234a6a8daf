#include "Strides.h"

#include "Geometry.h"
#include "UsualSizes.h"

#include <cstring>

namespace kyimg {

Strides::Strides(std::span<const std::uint8_t> file, const NameHints& hints) : fileSize(file.size()) {
    constexpr std::size_t kMostPeriods = 12;
    periods = FindLinePeriods(file, kMostPeriods);
    for (const LinePeriod& period : periods) AddPeriod(period.bytes);
    for (const SampleLayout& layout : AllSampleLayouts()) {
        for (const UsualSize& size : AllUsualSizes()) AddSize(layout, size.width, size.height);
        if (hints.width != 0) AddSize(layout, hints.width, hints.height);
    }
}

double Strides::GetCorrelation(std::size_t stride) const {
    for (const LinePeriod& period : periods)
        if (period.bytes == stride || period.bytes == 2 * stride) return period.correlation;
    return 0;
}

void Strides::Add(std::size_t stride) {
    constexpr std::size_t kShortest = 16, kLeastLines = 8;
    if (stride >= kShortest && stride * kLeastLines <= fileSize) strides.insert(stride);
}

void Strides::AddPeriod(std::size_t bytes) {
    constexpr std::size_t kSlant = 6;
    Add(bytes);
    if (bytes % 2 == 0) Add(bytes / 2);
    // Slanting contents shift the period by a pixel or two; a stride that the file is a multiple of is likelier.
    for (std::size_t stride = bytes - kSlant; stride <= bytes + kSlant; ++stride)
        if (fileSize % stride == 0) Add(stride);
}

/// Where the file is as large as such an image, with or without a header.
void Strides::AddSize(const SampleLayout& layout, std::uint64_t width, std::uint64_t height) {
    const SampleFormat& format = *layout.format;
    const std::uint64_t samples =
        (width + layout.groupPixels - 1) / layout.groupPixels * std::strlen(layout.components);
    const std::uint64_t stride = (samples + format.groupSamples - 1) / format.groupSamples * format.groupBytes;
    const std::uint64_t bytes = stride * LinesWithChroma(layout.chroma, height);
    if (bytes <= fileSize && HeaderPenalty(fileSize - bytes) <= 3) Add(stride);
}

}  // namespace kyimg
