#ifndef KYIMGLIB_TESTS_IMAGES_IMAGECASE_H
#define KYIMGLIB_TESTS_IMAGES_IMAGECASE_H

#include <KyImgLib/KyImgLib.h>
#include <KyImgLib/KyImgLibC.h>
#include <tests/support/GuardedBuffer.h>
#include <tests/support/Random.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// How an image of a type lies in memory, by what the documentation of the types says.
struct Shape {
    std::uint32_t groupPixels = 1, groupBytes = 1;
    std::uint32_t planes = 1;
    std::uint32_t lineStep = 1;  ///< 2: an even height
    bool isInterlaced = false;
    bool isBayer = false;
    bool hasTaps = false;

    explicit Shape(std::int64_t type);
    std::size_t LineBytes(std::uint32_t width) const;

private:
    bool isCsi2 = false;
};

/// Lines of pixels without padding, in the order of the memory; planes one after the other.
using Lines = std::vector<std::uint8_t>;

/// What a conversion gives: the area form on copies without padding, of whole groups of pixels, cut to the width. Where a
/// width or height is odd, stage by stage; mosaics that are not interpolated then repeat their last whole cell.
Lines ConvertLines(const KyPixelConverter& converter, const Lines& source, std::uint32_t width, std::uint32_t height,
                   std::uint32_t flags, const KyRGBFilter* filter);

/// An image with random strides between pages that nobody may touch.
class GuardedImage {
public:
    enum class Role { kSource, kDestination };

    GuardedImage(std::int64_t type, std::uint32_t width, std::uint32_t height, Role role, support::Random& random);

    KyImage image = {};

    Lines Read() const;
    /// The whole memory, and what it is once the pixels are these.
    std::vector<std::uint8_t> Memory() { return {buffer.Accessible().begin(), buffer.Accessible().end()}; }
    std::vector<std::uint8_t> MemoryWith(const Lines& lines);
    std::size_t DataOffset() const { return buffer.DataOffset(); }

private:
    struct Strides {
        std::size_t line, stride, part, size;
        std::uint32_t parts, partLines;
    };
    static Strides Choose(const Shape& shape, std::uint32_t width, std::uint32_t height, Role role,
                          support::Random& random);
    GuardedImage(std::int64_t type, std::uint32_t width, std::uint32_t height, const Strides& chosen,
                 support::Random& random);
    template <typename Work>
    void ForEachLine(Work work) const;

    Strides strides;
    support::GuardedBuffer buffer;
};

/// Types and converters as an application may have them, registered once: 10-bit Bayer of four pixels in five bytes to
/// 8-bit Bayer, by chains to RGB24 and planar RGB; 4:2:2 that writes whole pairs, interlaced or not.
void RegisterApplicationConverters();

inline constexpr std::int64_t kCsi2 = 0x00421001;
inline constexpr std::int64_t kBayer8 = 0x00020010;
inline constexpr std::int64_t k422 = 0x00040001;

inline KyConversion Conversion(std::uint32_t flags = 0, const KyRGBFilter* filter = nullptr, std::uint32_t first = 0,
                               std::uint32_t count = 0) {
    KyConversion conversion = {};
    conversion.structSize = sizeof conversion;
    conversion.flags = flags;
    conversion.filter = filter;
    conversion.firstLine = first;
    conversion.lineCount = count;
    return conversion;
}

/// A random choice of flags and filter.
KyConversion RandomConversion(support::Random& random);

std::string Describe(const KyImage& image);

#endif
