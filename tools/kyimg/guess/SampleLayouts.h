#ifndef KYIMG_GUESS_SAMPLELAYOUTS_H
#define KYIMG_GUESS_SAMPLELAYOUTS_H

#include <array>
#include <cstdint>
#include <span>

namespace kyimg {

/// How samples lie in bytes, whatever they mean.
struct SampleFormat {
    std::uint32_t bits;  ///< of a sample in the file; of words all 16
    std::uint32_t groupSamples, groupBytes;
    std::int64_t type;       ///< gray type of such samples, which the library unpacks; 0: bytes or little-endian words
    std::int64_t plainType;  ///< what it unpacks them to
    std::array<std::uint8_t, 3> unusedBits;  ///< that are 0 in each byte of a group
};

/// Where colours at half the resolution follow the plane of Y.
enum class ChromaPlanes { None, Interleaved420, Separate420, Interleaved422, Separate422 };

/// A guess about the samples of a line.
struct SampleLayout {
    const SampleFormat* format;
    const char*
        components;  ///< of successive samples, over and over: "Y", "RGB", "YUYV"; X is a sample without meaning
    std::uint32_t groupPixels;  ///< that the components are of
    bool isMosaic;              ///< neighbours of the same colour are two samples and two lines away
    ChromaPlanes chroma;
    std::int64_t type;         ///< of words: that of all 16 bits, see TypeOfDepth
    std::int64_t swappedType;  ///< the same bytes with red and blue swapped; 0: none
    double penalty;            ///< for being uncommon
};

std::span<const SampleLayout> AllSampleLayouts();

inline bool IsWords(const SampleFormat& format) { return format.groupSamples == 1 && format.groupBytes == 2; }

/// The type of a layout of words whose samples are `usedBits` (an OR of all of them): LSB-aligned ones of the fewest bits, or
/// normalized ones. `bits` gets their number. The layout's own type where its samples are no words.
std::int64_t TypeOfDepth(const SampleLayout& layout, std::uint32_t usedBits, std::uint32_t& bits);

}  // namespace kyimg

#endif
