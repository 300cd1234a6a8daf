#include "SampleLayouts.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <bit>

namespace kyimg {

namespace {

constexpr std::int64_t kGray10 = 0x00010002, kGray12 = 0x00010003, kGray14 = 0x00010004, kGray16 = 0x00010005;
constexpr std::int64_t kBayer10 = 0x00020011, kBayer12 = 0x00020012, kBayer14 = 0x00020016, kBayer16 = 0x10002000E;
constexpr std::int64_t kGray16BE = 0x10001000D, kBayer16BE = 0x10002000D;

constexpr SampleFormat kBytes = {8, 1, 1, 0, 0, {}};
constexpr SampleFormat kWords = {16, 1, 2, 0, 0, {}};
constexpr SampleFormat kBigEndianWords = {16, 1, 2, kGray16BE, kGray16, {}};
constexpr SampleFormat kP10 = {10, 4, 5, 0x100410001, kGray10, {}};
constexpr SampleFormat kP12 = {12, 2, 3, 0x100410002, kGray12, {}};
constexpr SampleFormat kP14 = {14, 4, 7, 0x100410003, kGray14, {}};
constexpr SampleFormat kMipi10 = {10, 4, 5, 0x100410004, kGray10, {}};
constexpr SampleFormat kMipi12 = {12, 2, 3, 0x100410005, kGray12, {}};
constexpr SampleFormat kMipi14 = {14, 4, 7, 0x100410006, kGray14, {}};
constexpr SampleFormat kGev10 = {10, 2, 3, 0x00410008, kGray10, {0, 0xCC, 0}};
constexpr SampleFormat kGev12 = {12, 2, 3, 0x00410009, kGray12, {}};

constexpr SampleLayout Gray(const SampleFormat& format, std::int64_t type, double penalty = 0) {
    return {&format, "Y", 1, false, ChromaPlanes::None, type, 0, penalty};
}
constexpr SampleLayout Mosaic(const SampleFormat& format, std::int64_t type, double penalty = 0) {
    return {&format, "Y", 1, true, ChromaPlanes::None, type, 0, penalty};
}
constexpr SampleLayout Colours(const SampleFormat& format, const char* components, std::uint32_t pixels,
                               std::int64_t type, std::int64_t swapped, double penalty = 0) {
    return {&format, components, pixels, false, ChromaPlanes::None, type, swapped, penalty};
}
constexpr SampleLayout Planes(ChromaPlanes chroma, std::int64_t type, std::int64_t swapped, double penalty = 0) {
    return {&kBytes, "Y", 1, false, chroma, type, swapped, penalty};
}

constexpr SampleLayout kLayouts[] = {
    Gray(kBytes, KY_TYPE_GRAYSCALE8),
    Mosaic(kBytes, 0x00020010),
    Gray(kWords, kGray16),
    Mosaic(kWords, kBayer16),
    Gray(kBigEndianWords, kGray16BE, 1),
    Mosaic(kBigEndianWords, kBayer16BE, 1),
    Gray(kP10, kP10.type),
    Mosaic(kP10, 0x100420001),
    Gray(kP12, kP12.type),
    Mosaic(kP12, 0x100420002),
    Gray(kP14, kP14.type, 1),
    Mosaic(kP14, 0x100420003, 1),
    Gray(kMipi10, kMipi10.type),
    Mosaic(kMipi10, 0x100420004),
    Gray(kMipi12, kMipi12.type),
    Mosaic(kMipi12, 0x100420005),
    Gray(kMipi14, kMipi14.type, 1),
    Mosaic(kMipi14, 0x100420006, 1),
    Gray(kGev10, kGev10.type),
    Mosaic(kGev10, 0x00420011),
    Gray(kGev12, kGev12.type),
    Mosaic(kGev12, 0x00420012),
    Colours(kBytes, "RGB", 1, KY_TYPE_RGB24, KY_TYPE_BGR24),
    Colours(kBytes, "RGBX", 1, KY_TYPE_RGB32, KY_TYPE_BGR32),
    Colours(kBytes, "XRGB", 1, 0x100020022, 0x100020023, 1),
    Colours(kWords, "RGB", 1, KY_TYPE_RGB48, 0),
    Colours(kWords, "RGBX", 1, 0x00020005, 0, 1),
    Colours(kBytes, "YUYV", 2, 0x00040001, 0x100040120),
    Colours(kBytes, "UYVY", 2, 0x100040110, 0x100040130),
    Colours(kBytes, "UYV", 1, 0x00440003, 0, 1),
    Colours(kBytes, "YUV", 1, 0x100440140, 0, 1),
    Colours(kBytes, "UYYVYY", 4, 0x00440006, 0, 1),
    Planes(ChromaPlanes::Interleaved420, 0x1008401B0, 0x1008401C0),
    Planes(ChromaPlanes::Separate420, 0x1008401E0, 0x1008401F0),
    Planes(ChromaPlanes::Interleaved422, 0x1008401D0, 0),
    Planes(ChromaPlanes::Separate422, 0x100840210, 0),
};

/// The types of the same samples in words, of 10, 12, 14 and 16 bits.
struct Depths {
    std::int64_t deepest;
    std::int64_t types[4];
    std::int64_t normalized[3];
};
constexpr std::int64_t kNormalized = KY_TYPE_NORMALIZED;
constexpr Depths kDepths[] = {
    {kGray16,
     {kGray10, kGray12, kGray14, kGray16},
     {kGray10 | kNormalized, kGray12 | kNormalized, kGray14 | kNormalized}},
    {kBayer16,
     {kBayer10, kBayer12, kBayer14, kBayer16},
     {kBayer10 | kNormalized, kBayer12 | kNormalized, kBayer14 | kNormalized}},
    {kGray16BE, {0x10001000A, 0x10001000B, 0x10001000C, kGray16BE}, {}},
    {kBayer16BE, {0x10002000A, 0x10002000B, 0x10002000C, kBayer16BE}, {}},
    {KY_TYPE_RGB48, {0x00020008, 0x0002000C, KY_TYPE_RGB48, KY_TYPE_RGB48}, {}},
    {0x00020005, {0x00020009, 0x0002000D, 0x00020005, 0x00020005}, {}},
};

}  // namespace

std::span<const SampleLayout> AllSampleLayouts() { return kLayouts; }

std::int64_t TypeOfDepth(const SampleLayout& layout, std::uint32_t usedBits, std::uint32_t& bits) {
    bits = layout.format->bits;
    if (!IsWords(*layout.format)) return layout.type;
    const auto highest = static_cast<std::uint32_t>(std::bit_width(usedBits));
    const auto lowest = static_cast<std::uint32_t>(usedBits == 0 ? 0 : std::countr_zero(usedBits));
    for (const Depths& depths : kDepths) {
        if (depths.deepest != layout.type) continue;
        const std::uint32_t unused = highest == 16 && depths.normalized[0] != 0 ? lowest : 0;
        if (unused == 2 || unused == 4 || unused == 6) {
            bits = 16 - unused;
            return depths.normalized[(bits - 10) / 2];
        }
        bits = highest <= 10 ? 10 : highest <= 12 ? 12 : highest <= 14 ? 14 : 16;
        return depths.types[(bits - 10) / 2];
    }
    return layout.type;
}

}  // namespace kyimg
