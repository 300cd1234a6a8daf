#include "TypeFacts.h"

#include "ImageSizes.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/KyPixelTypes.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

namespace kyimg {

namespace {

std::int64_t FormatOf(std::int64_t id) { return id & (KY_COLOUR_SPACE_MASK | KY_TYPE_INDEX_MASK); }

struct FormatClass {
    std::int64_t format;
    const char* name;
};

// The registry keeps plain KyPixelType objects, so what made them must be told from the ID.
#define CLASS(name) \
    { FormatOf(name().GetTypeID()), #name }

const std::vector<FormatClass>& FormatClasses() {
    static const std::vector<FormatClass> classes = {
        CLASS(KyGrayscale8),
        CLASS(KyGrayscale10),
        CLASS(KyGrayscale12),
        CLASS(KyGrayscale14),
        CLASS(KyGrayscale16),
        CLASS(KyGrayscale8_DualQuadMultiplexed),
        CLASS(KyGrayscale10_DualQuadMultiplexed),
        CLASS(KyGrayscale10_Packed_GEV),
        CLASS(KyGrayscale12_Packed_GEV),
        CLASS(KyRGB16),
        CLASS(KyRGB24),
        CLASS(KyRGB32),
        CLASS(KyRGB48),
        CLASS(KyRGB64),
        CLASS(KyBGR24),
        CLASS(KyBGR32),
        CLASS(KyRGB48_10Bits),
        CLASS(KyRGB64_10Bits),
        CLASS(KyRGB8_3),
        CLASS(KyRGB8_4),
        CLASS(KyRGB48_12Bits),
        CLASS(KyRGB64_12Bits),
        CLASS(KyBayerRGB8),
        CLASS(KyBayerRGB10),
        CLASS(KyBayerRGB12),
        CLASS(KyBayerRGGB8),
        CLASS(KyBayerRGGB10),
        CLASS(KyBayerRGGB12),
        CLASS(KyBayerRGB14),
        CLASS(KyYUV8),
        CLASS(KyYUV10),
        CLASS(KyYUV8_444),
        CLASS(KyYCrCb),
        CLASS(KyYUV8_411),
    };
    return classes;
}

#undef CLASS

}  // namespace

std::string ColourSpaceText(const KyPixelType& type) {
    switch (type.GetTypeID() & KY_COLOUR_SPACE_MASK) {
        case KY_COLOUR_SPACE_GRAYSCALE: return "grayscale";
        case KY_COLOUR_SPACE_RGB: return type.IsBayerPattern() ? "RGB, Bayer mosaic" : "RGB";
        case KY_COLOUR_SPACE_YUV: return "YUV";
        default: return "unknown";
    }
}

std::string FlagsText(const KyPixelType& type) {
    const std::int64_t id = type.GetTypeID();
    std::vector<const char*> flags;
    if ((id & KY_TYPE_NORMALIZED) != 0) flags.push_back("normalized (MSB-aligned)");
    if ((id & KY_TYPE_INTERLACED) != 0) flags.push_back("interlaced (two fields)");
    if ((id & KY_TYPE_PACKED) != 0) flags.push_back("packed");
    if ((id & KY_TYPE_PLANAR) != 0) flags.push_back("planar");
    return flags.empty() ? "plain" : fmt::format("{}", fmt::join(flags, ", "));
}

double PixelBytes(const KyPixelType& type) {
    constexpr std::uint32_t kWidth = 24, kHeight = 2;  // whole groups of every type, and whole pairs of lines
    return static_cast<double>(SizeOf(MakeImage(type.GetTypeID(), kWidth, kHeight))) / (kWidth * kHeight);
}

std::string PixelBytesText(const KyPixelType& type) { return fmt::format("{:g}", PixelBytes(type)); }

std::string GroupText(const KyPixelType& type) {
    std::uint32_t pixels = 0, bytes = 0;
    type.GetPixelGroup(pixels, bytes);
    return pixels == 1 ? "" : fmt::format(" ({} pixels in {})", pixels, bytes);
}

const char* ClassName(const KyPixelType& type) {
    if ((type.GetTypeID() & KY_TYPE_EXTENDED) != 0) return "KyPixelType";
    for (const FormatClass& known : FormatClasses())
        if (known.format == FormatOf(type.GetTypeID())) return known.name;
    return "KyPixelType";
}

}  // namespace kyimg
