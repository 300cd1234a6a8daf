#include <KyImgLib/converters/grayscale/GrayBandInternal.h>

#include <KyImgLib/converters/PassBandInternal.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace ky {

TapLayout TapLayout::HalvesOf(const KyPixelConverter& converter) {
    switch (converter.GetSourceType() & KY_TAP_LAYOUT_MASK) {
        case KY_TAP_LEFT_RIGHT: return {kHalves, false, false};
        case KY_TAP_LEFT_RIGHT_INVERTED: return {kHalves, false, true};
        case KY_TAP_LEFT_INVERTED_RIGHT: return {kHalves, true, false};
        case KY_TAP_LEFT_INVERTED_RIGHT_INVERTED: return {kHalves, true, true};
        default: return {};
    }
}

TapLayout TapLayout::OfSource(const KyPixelConverter& converter) {
    if ((converter.GetSourceType() & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES) return {kLinePairs};
    return HalvesOf(converter);
}

GrayBand BandOf(const KyPixelConverter& converter, const KyPixelConverterContext& context, const KyLinePass& pass,
                std::uint32_t width, TapLayout layout) {
    GrayBand band = {};
    static_cast<PixelBand&>(band) = BandOf(pass, width);

    const auto pixel = static_cast<std::ptrdiff_t>(converter.GetDestinationByteSize());
    const std::ptrdiff_t pixels = static_cast<std::ptrdiff_t>(width);
    band.taps = 1;
    switch (layout.order) {
        case TapLayout::kInOrder: break;
        case TapLayout::kHalves: {
            const std::ptrdiff_t left = (pixels + 1) / 2;
            band.taps = 2;
            band.runs[0] = {layout.leftInverted ? (left - 1) * pixel : 0, layout.leftInverted};
            band.runs[1] = {(layout.rightInverted ? pixels - 1 : left) * pixel, layout.rightInverted};
            break;
        }
        case TapLayout::kLinePairs: {
            // A line call outside of an area has no line size to go by.
            const std::size_t line = context.destinationLineSize != 0 ? context.destinationLineSize
                                                                      : converter.GetDestinationByteSize(width);
            band.taps = 2;
            band.runs[1].first = static_cast<std::ptrdiff_t>(line);
            band.width *= 2;
            band.joint = nullptr;  // a stage that gives two lines at a time is none
            break;
        }
        case TapLayout::kQuarters: {
            const std::ptrdiff_t left = (pixels + 3) / 4 + (pixels + 2) / 4;
            band.taps = 4;
            band.runs = {TapRun{0, false}, TapRun{(left - 1) * pixel, true}, TapRun{left * pixel, false},
                         TapRun{(pixels - 1) * pixel, true}};
            break;
        }
    }
    return band;
}

}  // namespace ky
