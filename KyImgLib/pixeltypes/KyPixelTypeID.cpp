#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/platform/KyString.h>

namespace {

struct FieldText {
    std::int64_t value;
    const char* text;
};

constexpr FieldText kFlagTexts[] = {
    {KY_TYPE_NORMALIZED, ", Normalized"},
    {KY_TYPE_INTERLACED, ", Interlaced"},
    {KY_TYPE_PACKED, ", Packed"},
    {KY_TYPE_PLANAR, ", Planar"},
};

constexpr FieldText kTapTexts[] = {
    {KY_TAP_LEFT_RIGHT, ", Dual Left+Right output"},
    {KY_TAP_LEFT_RIGHT_INVERTED, ", Dual Left+Right Inverted output"},
    {KY_TAP_LEFT_INVERTED_RIGHT, ", Dual Left Inverted+Right output"},
    {KY_TAP_LEFT_INVERTED_RIGHT_INVERTED, ", Dual Left Inverted+Right Inverted output"},
    {KY_TAP_DUAL_LINES, ", Dual Lines output"},
};

const char* ColourSpaceText(std::int64_t id, bool isBayer) {
    switch (id & KY_COLOUR_SPACE_MASK) {
        case KY_COLOUR_SPACE_GRAYSCALE: return "Grayscale";
        case KY_COLOUR_SPACE_RGB: return isBayer ? "Bayer RGB" : "RGB";
        case KY_COLOUR_SPACE_YUV: return "YUV";
        default: return "Unknown Colorspace";
    }
}

}  // namespace

void BuildPixelTypeName(const std::int64_t& id, const KyPixelType& type, bool isBayer, KyString& name) {
    KyString built(ColourSpaceText(id, isBayer));
    char depth[1024];
    KySprintf(depth, sizeof depth, " %u-bits", static_cast<unsigned>(type.GetPixelBitSize()));
    built += depth;
    for (const FieldText& flag : kFlagTexts)
        if ((id & flag.value) != 0) built += flag.text;
    for (const FieldText& tap : kTapTexts)
        if ((id & KY_TAP_LAYOUT_MASK) == tap.value) built += tap.text;
    name = static_cast<KyString&&>(built);
}

bool MatchesPixelTypeAttributes(const KyPixelType& type, std::uint32_t bitSize, std::int64_t colourSpace,
                                bool normalized, bool packed, bool interlaced, bool planar, std::int64_t tapLayout) {
    const std::int64_t id = type.GetTypeID();
    const auto has = [id](std::int64_t flag) { return (id & flag) != 0; };
    return (id & KY_COLOUR_SPACE_MASK) == colourSpace && type.GetPixelBitSize() == bitSize &&
           has(KY_TYPE_NORMALIZED) == normalized && has(KY_TYPE_PACKED) == packed &&
           has(KY_TYPE_INTERLACED) == interlaced && has(KY_TYPE_PLANAR) == planar &&
           (id & KY_TAP_LAYOUT_MASK) == tapLayout;
}
