#ifndef KYIMGLIB_TESTS_REFERENCE_GRAY_H
#define KYIMGLIB_TESTS_REFERENCE_GRAY_H

#include <tests/reference/Lines.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace reference {

/// The parts of a line that the taps of a camera read, from left to right, and which of them it reads from the right.
using Taps = std::vector<bool>;

/// The pixels of a line in the order in which the camera sends them: one of each part in turn. Where the width does not
/// divide evenly, the first parts have a pixel more.
inline std::vector<std::uint32_t> SendingOrder(const Taps& backwards, std::uint32_t width) {
    const auto parts = static_cast<std::uint32_t>(backwards.size());
    std::vector<std::vector<std::uint32_t>> queues(parts);
    for (std::uint32_t part = 0, x = 0; part < parts; ++part) {
        for (std::uint32_t i = 0; i < (width + parts - 1 - part) / parts; ++i) queues[part].push_back(x++);
        if (backwards[part]) queues[part] = {queues[part].rbegin(), queues[part].rend()};
    }
    std::vector<std::uint32_t> order;
    for (std::uint32_t sent = 0; sent < width; ++sent) order.push_back(queues[sent % parts][sent / parts]);
    return order;
}

/// Where in a line a pixel was sent, remembered for the width at hand.
class TapPlaces {
public:
    explicit TapPlaces(Taps backwards) : taps(std::move(backwards)) {}

    std::uint32_t operator()(std::uint32_t width, std::uint32_t x) {
        if (places.size() != width) {
            places.resize(width);
            const std::vector<std::uint32_t> order = SendingOrder(taps, width);
            for (std::uint32_t sent = 0; sent < width; ++sent) places[order[sent]] = sent;
        }
        return places[x];
    }

private:
    Taps taps;
    std::vector<std::uint32_t> places;
};

/// Sample `index` of a line.
using Sample = std::function<unsigned(const std::uint8_t* line, std::uint32_t index)>;

inline Sample ByteOf(std::uint32_t step, std::uint32_t used) {
    return [=](const std::uint8_t* line, std::uint32_t index) { return line[index * step + used]; };
}

inline Sample WordShiftedRight(std::uint32_t shift) {
    return [=](const std::uint8_t* line, std::uint32_t index) { return LoadWord(line + 2 * index) >> shift % 32; };
}

inline Sample WordShiftedLeft(std::uint32_t shift) {
    return [=](const std::uint8_t* line, std::uint32_t index) { return LoadWord(line + 2 * index) << shift % 32; };
}

/// Pairs of samples in three bytes: the outer ones hold the high bits, that between them the low bits of both.
inline Sample Packed(std::uint32_t leftShift, std::uint32_t mask, std::uint32_t position, std::uint32_t align = 0) {
    return [=](const std::uint8_t* line, std::uint32_t index) {
        const std::uint8_t* const pair = line + index / 2 * 3;
        const unsigned high = pair[index % 2 * 2], low = index % 2 == 0 ? pair[1] : pair[1] >> position;
        return (high << leftShift | (low & mask)) << align;
    };
}

inline Sample PackedHighByte() { return Packed(0, 0, 0); }

/// A gray pixel from the sample at its own place.
inline Reader Gray(const Sample& sample) {
    return [=](const Line& line, std::uint32_t x) {
        const unsigned value = sample(line.source, x);
        return Rgb{value, value, value};
    };
}

/// A gray pixel from the sample at the place where it was sent; of an odd line of pairs the last pixel is not there.
inline Reader GrayOfTaps(const Sample& sample, const Taps& taps, bool inPairs = false) {
    const auto places = std::make_shared<TapPlaces>(taps);
    return [=](const Line& line, std::uint32_t x) {
        const unsigned value = sample(line.source, (*places)(inPairs ? line.width / 2 * 2 : line.width, x));
        return Rgb{value, value, value};
    };
}

/// Two lines are sent at a time, one pixel of each in turn.
inline Reader GrayOfLinePair(const Sample& sample) {
    return [=](const Line& line, std::uint32_t x) {
        const unsigned value = sample(line.source, 2 * x + line.row);
        return Rgb{value, value, value};
    };
}

}  // namespace reference

#endif
