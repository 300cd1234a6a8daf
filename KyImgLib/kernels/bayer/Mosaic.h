#ifndef KYIMGLIB_KERNELS_BAYER_MOSAIC_H
#define KYIMGLIB_KERNELS_BAYER_MOSAIC_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace ky {

/// The Bayer pattern of one line of a mosaic.
///
/// A line holds green and one other colour, its own, in turn; the colour that it lacks is the opposite one. From line to
/// line the own colour changes and green moves by a pixel:
///
///     0   G R G R    green first, own colour red      line types as numbered here; the line below type t
///     1   G B G B    green first, own colour blue     is of type 3 - t
///     2   R G R G    own colour red first
///     3   B G B G    own colour blue first
struct MosaicLine {
    bool greenFirst;
    bool ownIsBlue;

    static MosaicLine OfType(std::uint32_t type) { return {type < 2, type % 2 != 0}; }
    bool IsGreenSite(std::size_t x) const { return (x % 2 == 0) == greenFirst; }
    MosaicLine Next() const { return {!greenFirst, !ownIsBlue}; }
    /// The same line with red and blue exchanged.
    MosaicLine Exchanged() const { return {greenFirst, !ownIsBlue}; }
};

/// The three values of one pixel, named by the colours of its line.
template <typename Value>
struct SiteColours {
    Value own;
    Value green;
    Value opposite;
};

/// A sum of up to four samples and their number.
struct SampleSum {
    std::uint32_t sum = 0;
    std::uint32_t count = 0;

    void Add(std::uint32_t sample) {
        sum += sample;
        ++count;
    }
    /// Truncated; a colour without any neighbour is 0. Each divisor is a case of its own, since a division by a number
    /// that is not known costs more than all the rest of a border pixel.
    std::uint32_t Average() const {
        switch (count) {
            case 4: return sum / 4;
            case 3: return sum / 3;
            case 2: return sum / 2;
            default: return sum;
        }
    }
};

/// The sample at any address; words are little-endian, like all CPUs that this library is for.
template <typename Sample>
Sample ReadSample(const std::uint8_t* at) {
    Sample sample;
    std::memcpy(&sample, at, sizeof sample);
    return sample;
}

/// Bilinear demosaicing of the pixel whose sample is at `at`, at borders as well: each missing colour is the average of the
/// existing neighbours that have it.
///
///     at a site of the line's own colour:   green = up, down, left, right      opposite = the four diagonals
///     at a green site:                      own = left, right                  opposite = up, down
///
/// `above` and `below` are the samples there, null where there is no such line.
template <typename Sample>
[[gnu::always_inline]] inline SiteColours<Sample> InterpolateSite(const std::uint8_t* above, const std::uint8_t* at,
                                                                  const std::uint8_t* below, bool hasLeft,
                                                                  bool hasRight, bool isGreenSite) {
    constexpr std::size_t step = sizeof(Sample);
    constexpr auto read = &ReadSample<Sample>;
    SampleSum vertical, horizontal, diagonal;
    if (hasLeft) horizontal.Add(read(at - step));
    if (hasRight) horizontal.Add(read(at + step));
    for (const std::uint8_t* const line : {above, below}) {
        if (line == nullptr) continue;
        vertical.Add(read(line));
        if (hasLeft) diagonal.Add(read(line - step));
        if (hasRight) diagonal.Add(read(line + step));
    }
    const SampleSum cross = {horizontal.sum + vertical.sum, horizontal.count + vertical.count};

    const auto average = [](const SampleSum& sum) { return static_cast<Sample>(sum.Average()); };
    if (isGreenSite) return {average(horizontal), read(at), average(vertical)};
    return {read(at), average(cross), average(diagonal)};
}

}  // namespace ky

#endif
