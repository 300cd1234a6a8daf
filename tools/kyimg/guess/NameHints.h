#ifndef KYIMG_GUESS_NAMEHINTS_H
#define KYIMG_GUESS_NAMEHINTS_H

#include <cstdint>
#include <string_view>
#include <vector>

namespace kyimg {

/// What a file's name says of its contents.
struct NameHints {
    std::uint32_t width = 0, height = 0;  ///< as in frame_1920x1080.raw; 0: not said
    std::vector<std::int64_t> types;      ///< named by a word of it, as in frame_BayerRG12p.raw
    std::uint32_t bayerFlags = 0;         ///< as in frame_rggb.raw; 0: not said
    std::uint32_t bits = 0;               ///< as in frame_12bit.raw or mono12.raw; 0: not said
};

/// \param name  with or without folders
NameHints ReadNameHints(std::string_view name);

}  // namespace kyimg

#endif
