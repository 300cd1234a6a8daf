#ifndef KYIMG_GUESS_FRAMEGUESS_H
#define KYIMG_GUESS_FRAMEGUESS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kyimg {

/// What a file without header may hold, and why.
struct FrameGuess {
    std::int64_t type = 0;  ///< of the library
    std::string typeName;   ///< for `--type`; says the Bayer pattern too where it can
    std::uint32_t width = 0, height = 0;
    std::uint64_t stride = 0;  ///< bytes from the start of one line to that of the next
    bool isPadded = false;     ///< whether lines end in bytes that are no pixels
    std::uint64_t headerBytes = 0;
    std::uint64_t trailerBytes = 0;  ///< after the last line
    std::uint64_t frames = 1;
    std::uint32_t bayerFlags = 0;       ///< flag of a conversion; 0: no mosaic
    double bitsPerByte = 0;             ///< what a lossless coder would need, a measure of how well neighbours agree
    double likelihood = 0;              ///< from 0 to 1; those of all guesses add up to 1
    std::vector<std::string> evidence;  ///< short sentences
};

/// The guesses for a file's bytes, the likeliest first; none where the bytes are too few or no picture.
///
/// Each possible layout of samples predicts every sample from its neighbours of the same colour. The right layout leaves the
/// smallest differences. Sizes, headers and names that are usual come first where that does not decide. What no byte tells
/// is ranked by what is commoner: YUYV before YVYU, NV12 before NV21.
///
/// Reads nothing but its arguments, keeps no state, and may be called from any thread. The extended types must be registered.
///
/// \param fileName  counts as evidence where it says a size, a type or a Bayer pattern; may be empty
/// \param most      guesses to return at most
std::vector<FrameGuess> GuessFrame(std::span<const std::uint8_t> file, std::string_view fileName, std::size_t most);

}  // namespace kyimg

#endif
