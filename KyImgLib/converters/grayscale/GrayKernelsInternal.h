#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_GRAYKERNELSINTERNAL_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_GRAYKERNELSINTERNAL_H

#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/kernels/KernelTable.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>
#include <cstdint>

namespace ky {

/// The halves that a source type's ID says its two taps read; in order for other types.
inline TapLayout HalvesOf(std::int64_t sourceType) {
    switch (sourceType & KY_TAP_LAYOUT_MASK) {
        case KY_TAP_LEFT_RIGHT: return {TapLayout::kHalves, false, false};
        case KY_TAP_LEFT_RIGHT_INVERTED: return {TapLayout::kHalves, false, true};
        case KY_TAP_LEFT_INVERTED_RIGHT: return {TapLayout::kHalves, true, false};
        case KY_TAP_LEFT_INVERTED_RIGHT_INVERTED: return {TapLayout::kHalves, true, true};
        default: return {};
    }
}

/// The same where the destination has no taps of its own.
inline TapLayout HalvesToPlain(std::int64_t sourceType, std::int64_t destinationType) {
    return (destinationType & KY_TAP_LAYOUT_MASK) != 0 ? TapLayout() : HalvesOf(sourceType);
}

/// Halves and line pairs.
inline TapLayout TapsOf(std::int64_t sourceType) {
    if ((sourceType & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES) return {TapLayout::kLinePairs};
    return HalvesOf(sourceType);
}

/// A kernel of gray samples: a member of the table, or that one of a destination's which reads this source.
struct GrayMaker {
    MakeGray GrayTable::*kernel;          ///< or null:
    GrayKernels GrayTable::*destination;  ///< the kernels to this destination,
    MakeGray GrayKernels::*source;        ///< and from this source
    std::uint32_t shift;                  ///< of words
    TapLayout taps;

    static GrayMaker Of(MakeGray GrayTable::*member, std::uint32_t shift, TapLayout taps = {}) {
        return {member, nullptr, nullptr, shift, taps};
    }
    static GrayMaker To(GrayKernels GrayTable::*destination, MakeGray GrayKernels::*source, std::uint32_t shift,
                        TapLayout taps = {}) {
        return {nullptr, destination, source, shift, taps};
    }

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        return Add(conversion, {}, pipeline);
    }

    bool Add(const ConversionSettings& conversion, const PackedLayout& packed, Pipeline& pipeline) const {
        const GrayTable& table = ActiveKernels().gray;
        GraySettings settings = {shift, packed, taps, {}};
        settings.taps.rowSamples = conversion.sourceWidth;
        (kernel != nullptr ? table.*kernel : table.*destination.*source)(settings, pipeline.Add());
        return true;
    }
};

/// Two samples of 10 or 12 bits in three bytes.
struct PackedMaker {
    GrayMaker gray;
    std::uint8_t leftShift, lowMask, lowPosition;  ///< see KyGrayscale16PackedConverter
    bool leftAligned;                              ///< the destination is normalized

    static PackedMaker Of(const GrayMaker& gray, std::int64_t destinationType, short leftShift, unsigned short lowMask,
                          short lowPosition) {
        return {gray, Clamped(leftShift, 1, 8), static_cast<std::uint8_t>(lowMask), Clamped(lowPosition, 0, 8),
                (destinationType & KY_TYPE_NORMALIZED) != 0};
    }

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        const int align = leftAligned ? 8 - leftShift : 0;
        PackedLayout layout;
        layout.highFactor = static_cast<std::uint16_t>(1 << (leftShift + align));
        for (const int sample : {0, 1}) {
            const int shift = sample == 0 ? 0 : lowPosition;
            layout.lowMask[sample] = static_cast<std::uint8_t>(lowMask << shift);
            layout.lowFactor[sample] = static_cast<std::uint16_t>(1 << (8 + align - shift));
        }
        return gray.Add(conversion, layout, pipeline);
    }

private:
    static std::uint8_t Clamped(int number, int least, int most) {
        return static_cast<std::uint8_t>(std::clamp(number, least, most));
    }
};

}  // namespace ky

#endif
