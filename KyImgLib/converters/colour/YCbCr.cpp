#include <KyImgLib/converters/colour/YCbCrInternal.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <cstring>

namespace ky {

namespace {

/// How the samples of a layout lie.
struct YCbCrFormat {
    std::int64_t layout;
    YCbCrToRGB YCbCrKernels::*kernels;
    std::uint8_t bits, wordShift;
    std::uint8_t places[4];  ///< see YCbCrSettings
    bool crFirst;
    std::uint8_t linesPerCbCrRow;
};

// clang-format off
constexpr YCbCrFormat kFormats[] = {
    {KY_TYPE_YUYV,      &YCbCrKernels::fromPairs,          8, 0, {0, 1, 2, 3}, false, 1},
    {KY_TYPE_UYVY,      &YCbCrKernels::fromPairs,          8, 0, {1, 0, 3, 2}, false, 1},
    {KY_TYPE_YVYU,      &YCbCrKernels::fromPairs,          8, 0, {0, 3, 2, 1}, false, 1},
    {KY_TYPE_VYUY,      &YCbCrKernels::fromPairs,          8, 0, {1, 2, 3, 0}, false, 1},
    {KY_TYPE_YUV444,    &YCbCrKernels::fromPixels,         8, 0, {0, 1, 2},    false, 1},
    {KY_TYPE_UYV444,    &YCbCrKernels::fromPixels,         8, 0, {1, 0, 2},    false, 1},
    {KY_TYPE_YYUYYV411, &YCbCrKernels::fromFours,          8, 0, {0, 2, 1, 5}, false, 1},
    {KY_TYPE_UYYVYY411, &YCbCrKernels::fromFours,          8, 0, {1, 0, 2, 3}, false, 1},
    {KY_TYPE_YUYV10,    &YCbCrKernels::fromWordPairs,     10, 0, {},           false, 1},
    {KY_TYPE_YUYV12,    &YCbCrKernels::fromWordPairs,     12, 0, {},           false, 1},
    {KY_TYPE_Y210,      &YCbCrKernels::fromWordPairs,     10, 6, {},           false, 1},
    {KY_TYPE_NV12,      &YCbCrKernels::fromTwoPlanes,      8, 0, {},           false, 2},
    {KY_TYPE_NV21,      &YCbCrKernels::fromTwoPlanes,      8, 0, {},           true,  2},
    {KY_TYPE_NV16,      &YCbCrKernels::fromTwoPlanes,      8, 0, {},           false, 1},
    {KY_TYPE_I420,      &YCbCrKernels::fromThreePlanes,    8, 0, {},           false, 2},
    {KY_TYPE_YV12,      &YCbCrKernels::fromThreePlanes,    8, 0, {},           true,  2},
    {KY_TYPE_P010,      &YCbCrKernels::fromTwoWordPlanes, 10, 6, {},           false, 2},
    {KY_TYPE_I422,      &YCbCrKernels::fromThreePlanes,    8, 0, {},           false, 1},
};
// clang-format on

constexpr std::int64_t kColoursMask = KY_YCBCR_FULL_RANGE | KY_YCBCR_BT709;

const YCbCrFormat& FindFormat(std::int64_t type) {
    const YCbCrFormat* row = kFormats;
    while (row->layout != (type & ~kColoursMask)) ++row;
    return *row;
}

YCbCrColours ColoursOf(std::int64_t type) { return {(type & KY_YCBCR_BT709) != 0, (type & KY_YCBCR_FULL_RANGE) != 0}; }

struct ToRGBMaker {
    const YCbCrFormat* format;
    YCbCrColours colours;
    bool destinationIsBGR;
    std::uint8_t pixelBytes;  ///< of the destination

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        YCbCrSettings settings = {};
        settings.colours = colours;
        settings.bits = format->bits;
        settings.wordShift = format->wordShift;
        std::memcpy(settings.places, format->places, sizeof settings.places);
        settings.crFirst = format->crFirst;
        settings.linesPerCbCrRow = format->linesPerCbCrRow;
        settings.filter = ByteStage(conversion.filter, destinationIsBGR);
        settings.isExchanged = destinationIsBGR;
        const YCbCrToRGB& kernels = ActiveKernels().ycbcr.*format->kernels;
        (pixelBytes == 3 ? kernels.toRGB24 : kernels.toRGB32)(settings, pipeline.Add());
        return true;
    }
};

struct FromRGBMaker {
    YCbCrColours colours;
    bool hasThreePlanes, appliesFilter;

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        const KernelTable& table = ActiveKernels();
        if (appliesFilter) {
            Colour8Settings filtered = {};
            filtered.filter = ByteStage(conversion.filter, false);
            if (!filtered.filter.IsIdentity()) table.rgb.fromRGB24.toRGB24(filtered, pipeline.Add());
        }
        YCbCrSettings settings = {};
        settings.colours = colours;
        (hasThreePlanes ? table.ycbcr.toThreePlanes : table.ycbcr.toTwoPlanes)(settings, pipeline.Add());
        return true;
    }
};

}  // namespace

YCbCrToRGBConverter::YCbCrToRGBConverter(std::int64_t sourceType, std::int64_t destinationType)
    : PlanesConverter(sourceType, destinationType) {
    const bool isBGR = destinationType == KY_TYPE_BGR24 || destinationType == KY_TYPE_BGR32;
    const bool hasThreeBytes = destinationType == KY_TYPE_RGB24 || destinationType == KY_TYPE_BGR24;
    Record::Of(*this).SetKernels(typeid(YCbCrToRGBConverter),
                                 ToRGBMaker{&FindFormat(sourceType), ColoursOf(sourceType), isBGR,
                                            static_cast<std::uint8_t>(hasThreeBytes ? 3 : 4)});
}

RGBToYCbCrConverter::RGBToYCbCrConverter(std::int64_t destinationType, bool appliesFilter)
    : PlanesConverter(KY_TYPE_RGB24, destinationType) {
    const bool hasThreePlanes = (destinationType & ~kColoursMask) == KY_TYPE_I420;
    Record::Of(*this).SetKernels(typeid(RGBToYCbCrConverter),
                                 FromRGBMaker{ColoursOf(destinationType), hasThreePlanes, appliesFilter});
}

}  // namespace ky
