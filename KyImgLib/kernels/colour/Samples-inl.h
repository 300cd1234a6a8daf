// What readers of single pixels share, at every level.

template <typename Sample>
struct PixelSamples {
    Sample first, second, third;
};

inline std::uint16_t WordAt(const std::uint8_t* at) { return static_cast<std::uint16_t>(at[0] | at[1] << 8); }
