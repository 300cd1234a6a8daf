#ifndef PLUGINS_GSTREAMER_CONVERSION_H
#define PLUGINS_GSTREAMER_CONVERSION_H

#include <KyImgLib/KyImgLib.h>

#include <gst/gst.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace kygst {

/// What may change from one frame to the next.
struct Settings {
    bool interpolate = true;                    ///< bilinear demosaicing
    std::array<double, 3> gains = {1, 1, 1};    ///< of red, green, blue
    std::array<double, 3> offsets = {0, 0, 0};  ///< in values of a source sample
    std::uint32_t threads = 0;                  ///< 0: as many as there are cores

    bool KeepColours() const { return gains == std::array{1.0, 1.0, 1.0} && offsets == std::array{0.0, 0.0, 0.0}; }
};

/// Converts the frames of a stream.
class Conversion {
public:
    /// \param bayerPattern  KY_FLAG_BAYER_... of the source; 0: none
    Conversion(std::int64_t source, std::int64_t destination, std::uint32_t bayerPattern);
    ~Conversion();
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    /// Whether gains and offsets do anything: grayscale has no colours, and a type that stays the same is copied.
    bool TakesGains() const { return filterBits != 0; }
    /// Whether frames of this size can be converted; if not, KyImage_GetError tells why.
    bool Accepts(std::uint32_t width, std::uint32_t height) const;
    /// Returns a status; KyImage_GetError tells what is wrong.
    std::uint32_t Convert(const KyImage& from, const KyImage& to, const Settings& settings);

private:
    void MakeFilter(const Settings& settings);
    std::uint32_t Run(const KyImageConverter& converter, const KyImage& from, const KyImage& to, std::uint32_t threads,
                      const KyConversion& conversion);
    std::uint32_t ConvertByRGB24(const KyImage& from, const KyImage& to, std::uint32_t threads,
                                 const KyConversion& conversion);

    std::int64_t source, destination;
    std::uint32_t bayerPattern;
    std::uint32_t filterBits;
    KyImageConverter converter;
    KyImageConverter toRGB24, fromRGB24;  ///< for gains, where `converter` would apply them twice
    std::vector<std::uint8_t> rgb24;
    std::unique_ptr<KyRGBFilter> filter;
    Settings filterSettings;  ///< that `filter` was made for
    GstTaskPool* pool = nullptr;
    std::uint32_t poolThreads = 0;
};

}  // namespace kygst

#endif
