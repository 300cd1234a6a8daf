#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/converters/colour/KyRGBtoRGB.h>
#include <KyImgLib/converters/colour/PlanesToRGBInternal.h>
#include <KyImgLib/converters/colour/RGBBitsInternal.h>
#include <KyImgLib/converters/colour/WordsInternal.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>
#include <KyImgLib/pixeltypes/catalogue/ExtendedConstructor.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <vector>

namespace ky {

namespace {

struct ColourType {
    std::int64_t id;
    const char* name;
    std::uint16_t bits, bytes;  ///< of a pixel, bytes rounded up
};

constexpr ColourType kTypes[] = {
    {KY_TYPE_RGB48_SCALED, "RGB 48-bits, Scaled", 48, 6},
    {KY_TYPE_RGBA64_SCALED, "RGBA 64-bits, Scaled", 64, 8},
    {KY_TYPE_RGBA64, "RGBA 64-bits", 64, 8},
    {KY_TYPE_BGR565P, "BGR 16-bits (5-6-5)", 16, 2},
    {KY_TYPE_RGB565P, "RGB 16-bits (5-6-5)", 16, 2},
    {KY_TYPE_BGR555P, "BGR 15-bits (5-5-5)", 15, 2},
    {KY_TYPE_RGB555P, "RGB 15-bits (5-5-5)", 15, 2},
    {KY_TYPE_RGB10P32, "RGB 30-bits (3 x 10 bits in 32)", 30, 4},
    {KY_TYPE_BGR10P32, "BGR 30-bits (3 x 10 bits in 32)", 30, 4},
    {KY_TYPE_RGB10P, "RGB 30-bits (3 x 10 bits), Packed p", 30, 4},
    {KY_TYPE_BGR10P, "BGR 30-bits (3 x 10 bits), Packed p", 30, 4},
    {KY_TYPE_RGB48_PLANAR_SCALED, "RGB 48-bits, Planar, Scaled", 48, 6},
    {KY_TYPE_RGB_FLOAT_PLANAR, "RGB 96-bits (3 x float), Planar", 96, 12},
    {KY_TYPE_RGB10_PLANAR, "RGB 30-bits (3 x 10 bits), Planar", 30, 6},
    {KY_TYPE_RGB12_PLANAR, "RGB 36-bits (3 x 12 bits), Planar", 36, 6},
    {KY_TYPE_GBR24_PLANAR, "GBR 24-bits, Planar", 24, 3},
};

constexpr RGBBitsFormat kFewBits[] = {
    {KY_TYPE_BGR565P, RGBBits::k565, true},
    {KY_TYPE_RGB565P, RGBBits::k565, false},
    {KY_TYPE_BGR555P, RGBBits::k555, true},
    {KY_TYPE_RGB555P, RGBBits::k555, false},
};

constexpr RGBBitsFormat kTenBits[] = {
    {KY_TYPE_RGB10P32, RGBBits::k10Bits32, false},
    {KY_TYPE_BGR10P32, RGBBits::k10Bits32, true},
    {KY_TYPE_RGB10P, RGBBits::k10BitStream, false},
    {KY_TYPE_BGR10P, RGBBits::k10BitStream, true},
};

/// Words, by the bits of a sample and where they are.
constexpr RGBBitsFormat kWordFormats[] = {
    {0x00020008, RGBBits::kThreeWords, false, 10, 0},  // LSB-aligned
    {0x0002000C, RGBBits::kThreeWords, false, 12, 0},
    {0x00020009, RGBBits::kFourWords, false, 10, 0},
    {0x0002000D, RGBBits::kFourWords, false, 12, 0},
    {0x00120008, RGBBits::kThreeWords, false, 10, 6},  // normalized
    {0x0012000C, RGBBits::kThreeWords, false, 12, 4},
    {0x00120009, RGBBits::kFourWords, false, 10, 6},
    {0x0012000D, RGBBits::kFourWords, false, 12, 4},
    {0x00120004, RGBBits::kThreeWords, false, 16, 0},
    {0x00020005, RGBBits::kFourWords, false, 16, 0},
    {0x00120005, RGBBits::kFourWords, false, 16, 0},
    {KY_TYPE_RGB48_SCALED, RGBBits::kThreeWords, false, 16, 0},
    {KY_TYPE_RGBA64_SCALED, RGBBits::kFourWords, false, 16, 0},
    {KY_TYPE_RGBA64, RGBBits::kFourWords, false, 16, 0},
};

constexpr PlanarFormat kPlanarFormats[] = {
    {KY_TYPE_RGB24_PLANAR, 8, {0, 1, 2}},  {0x0082000A, 8, {0, 1, 2}},
    {KY_TYPE_GBR24_PLANAR, 8, {2, 0, 1}},  {KY_TYPE_RGB10_PLANAR, 10, {0, 1, 2}},
    {KY_TYPE_RGB12_PLANAR, 12, {0, 1, 2}}, {KY_TYPE_RGB48_PLANAR_SCALED, 16, {0, 1, 2}},
};

/// Mosaics of words that have converters of their own.
constexpr std::int64_t kMosaics[] = {0x00020011, 0x00020014, 0x00020012, 0x00020015, 0x00020016, KY_TYPE_BAYER16};

constexpr std::int64_t kByteColours[] = {KY_TYPE_RGB16, KY_TYPE_RGB24, KY_TYPE_BGR24,
                                         KY_TYPE_RGB32, KY_TYPE_BGR32, KY_TYPE_RGB24_PLANAR};

struct WordDestination {
    std::int64_t id;
    WordLayout layout;
    bool isFullRange;
};

constexpr WordDestination kDestinations[] = {
    {KY_TYPE_RGB48_SCALED, WordLayout::kRGB48, true},
    {KY_TYPE_RGBA64_SCALED, WordLayout::kRGBA64, true},
    {KY_TYPE_RGBA64, WordLayout::kRGBA64, false},
    {KY_TYPE_RGB48_PLANAR_SCALED, WordLayout::kWordPlanes, true},
    {KY_TYPE_RGB_FLOAT_PLANAR, WordLayout::kFloatPlanes, false},
    {KY_TYPE_RGB48, WordLayout::kRGB48, false},
};

struct GrayWords {
    std::int64_t id;
    std::uint8_t bits;
};

constexpr GrayWords kGrays[] = {
    {KY_TYPE_GRAYSCALE8, 8}, {0x00010002, 10}, {0x00010003, 12}, {0x00010004, 14}, {0x00010005, 16}};

constexpr bool kAppliesFilter = true, kIgnoresFilter = false;

using Types = std::vector<std::int64_t>;

Types AllTypes() {
    Types types;
    std::int64_t id = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumPixelTypes(i, id); ++i) types.push_back(id);
    return types;
}

/// The mosaic of words, in scan order and LSB-aligned, that a type of its samples becomes; 0 for other types.
std::int64_t MosaicOf(std::int64_t source) {
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(source);
    if (type == nullptr) return 0;  // an application may have a converter from a type that it has not registered
    const std::int64_t plain = FormatOf(*type).plain;
    const bool isMosaic =
        type->IsBayerPattern() && std::find(std::begin(kMosaics), std::end(kMosaics), plain) != std::end(kMosaics);
    return isMosaic ? plain : 0;
}

/// A stage between RGB types, after one that has applied the filter.
const KyPixelConverter& BytesStage(Constructor& construct, std::int64_t source, std::int64_t destination,
                                   std::uint8_t bits) {
    return construct.Add<WordsConverter>(
        WordConversion{source, destination, WordLayout::kBytes, bits, false, kIgnoresFilter});
}

/// To RGB of bytes, and of 10 bits to RGB48.
void AddFewBits(Constructor& construct) {
    for (const RGBBitsFormat& source : kFewBits)
        for (const std::int64_t destination : kByteColours)
            AddMissing<RGBBitsToRGB>(construct, source.id, destination, source, destination);
    for (const RGBBitsFormat& source : kTenBits) {
        for (const std::int64_t destination : kByteColours)
            AddMissing<RGBBitsToRGB>(construct, source.id, destination, source, destination);
        AddMissing<RGBBitsToRGB48>(construct, source.id, KY_TYPE_RGB48, source);
    }
}

/// To RGB of bytes, as the RGB types of words that are there after loading.
template <class To16, class To24, class To32>
void AddFromWords(Constructor& construct, std::int64_t source) {
    constexpr std::uint32_t kShift = 8;
    AddMissing<To16>(construct, source, KY_TYPE_RGB16, source, kShift);
    AddMissing<To24>(construct, source, KY_TYPE_RGB24, source, kShift, kRGB);
    AddMissing<To24>(construct, source, KY_TYPE_BGR24, source, kShift, kBGR);
    AddMissing<To32>(construct, source, KY_TYPE_RGB32, source, kShift, kRGB);
    AddMissing<To32>(construct, source, KY_TYPE_BGR32, source, kShift, kBGR);
}

void AddWords(Constructor& construct) {
    AddFromWords<KyRGB48ToRGB16, KyRGB48ToRGB24, KyRGB48ToRGB32>(construct, KY_TYPE_RGB48_SCALED);
    for (const std::int64_t source : {KY_TYPE_RGBA64_SCALED, KY_TYPE_RGBA64})
        AddFromWords<KyRGB64ToRGB16, KyRGB64ToRGB24, KyRGB64ToRGB32>(construct, source);
    for (const RGBBitsFormat& source : kWordFormats)
        AddMissing<RGBBitsToRGB48>(construct, source.id, KY_TYPE_RGB48, source);
}

/// Of planes of words, RGB24 has the high bytes.
void AddPlanes(Constructor& construct) {
    for (const PlanarFormat& source : kPlanarFormats) {
        AddMissing<PlanesToRGB>(construct, source.id, source.bits == 8 ? KY_TYPE_RGB24 : KY_TYPE_RGB48, source);
        if (source.bits != 8)
            AddChain(construct, KyPixelTypeFactory::FindConverter(source.id, KY_TYPE_RGB48),
                     &BytesStage(construct, KY_TYPE_RGB48, KY_TYPE_RGB24, source.bits));
    }
    for (const std::int64_t destination : {KY_TYPE_BGR24, KY_TYPE_RGB32, KY_TYPE_BGR32}) {
        const KyPixelConverter& stage = BytesStage(construct, KY_TYPE_RGB24, destination, 8);
        for (const PlanarFormat& source : kPlanarFormats)
            AddChain(construct, KyPixelTypeFactory::FindConverter(source.id, KY_TYPE_RGB24), &stage);
    }
}

/// Mosaics of words to RGB48 at their full depth.
void AddMosaics(Constructor& construct) {
    constexpr std::uint32_t kReserved = 0;
    constexpr bool kNotNormalized = false;
    for (const std::int64_t mosaic : kMosaics)
        AddMissing<KyBayerRGB16ToRGB48>(construct, mosaic, KY_TYPE_RGB48, mosaic, kNotNormalized, kReserved);
    for (const std::int64_t source : AllTypes()) AddChain(construct, source, MosaicOf(source), KY_TYPE_RGB48);
}

/// RGB48 does not tell the bits of its samples: that depends on what it was made from. 0 for what does not become RGB48 at its
/// own depth.
std::uint32_t DepthOf(std::int64_t source) {
    const std::int64_t mosaic = MosaicOf(source);
    if (mosaic != 0) return KyPixelTypeFactory::FindPixelType(mosaic)->GetPixelBitSize();
    const auto isSource = [&](const RGBBitsFormat& format) { return format.id == source; };
    if (const auto format = std::find_if(std::begin(kWordFormats), std::end(kWordFormats), isSource);
        format != std::end(kWordFormats))
        return format->bits;
    for (const PlanarFormat& format : kPlanarFormats)
        if (format.id == source) return format.bits == 8 ? 0 : format.bits;
    return std::any_of(std::begin(kTenBits), std::end(kTenBits), isSource) ? 10 : 0;
}

/// From RGB48 and, at their depth, from all that becomes RGB48; from RGB24 and all else that becomes RGB24.
void AddDestination(Constructor& construct, const WordDestination& to, const Types& sources) {
    const auto conversion = [&](std::int64_t source, std::uint32_t bits, bool appliesFilter) {
        return WordConversion{source, to.id, to.layout, static_cast<std::uint8_t>(bits), to.isFullRange, appliesFilter};
    };
    constexpr std::int64_t kBytes = KY_TYPE_RGB24, kWords = KY_TYPE_RGB48;
    AddMissing<WordsConverter>(construct, kBytes, to.id, conversion(kBytes, 8, kAppliesFilter));
    AddMissing<WordsConverter>(construct, kWords, to.id, conversion(kWords, 16, kAppliesFilter));

    std::map<std::uint32_t, const KyPixelConverter*> stages;  // by bits
    for (const std::int64_t source : sources) {
        const std::uint32_t depth = DepthOf(source), bits = depth == 0 ? 8 : depth;
        const std::int64_t between = depth == 0 ? kBytes : kWords;
        const KyPixelConverter*& stage = stages[bits];
        if (stage == nullptr) stage = &construct.Add<WordsConverter>(conversion(between, bits, kIgnoresFilter));
        AddChain(construct, KyPixelTypeFactory::FindConverter(source, between), stage);
    }
}

/// Gray at its depth, and the luma of colours.
void AddGray(Constructor& construct, const Types& sources) {
    constexpr std::int64_t kGray = KY_TYPE_MONO16_SCALED;
    for (const auto& [source, bits] : kGrays)
        AddMissing<WordsConverter>(construct, source, kGray,
                                   WordConversion{source, kGray, WordLayout::kGray, bits, true, kIgnoresFilter});
    for (const std::int64_t source : AllTypes())
        if ((source & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE)
            AddChain(construct, source, FormatOf(*KyPixelTypeFactory::FindPixelType(source)).plain, kGray);

    WordConversion luma = {KY_TYPE_RGB24, kGray, WordLayout::kLuma, 8, true, kAppliesFilter};
    AddMissing<WordsConverter>(construct, KY_TYPE_RGB24, kGray, luma);
    luma.appliesFilter = kIgnoresFilter;
    const KyPixelConverter& stage = construct.Add<WordsConverter>(luma);
    for (const std::int64_t source : sources)
        AddChain(construct, KyPixelTypeFactory::FindConverter(source, KY_TYPE_RGB24), &stage);
}

/// RGB16 and planes of bytes, from what has no converter to them yet.
void AddBytes(Constructor& construct, const Types& sources) {
    for (const std::int64_t destination : {KY_TYPE_RGB16, KY_TYPE_RGB24_PLANAR}) {
        const KyPixelConverter& stage = BytesStage(construct, KY_TYPE_RGB24, destination, 8);
        for (const std::int64_t source : sources)
            if (source != destination)
                AddChain(construct, KyPixelTypeFactory::FindConverter(source, KY_TYPE_RGB24), &stage);
    }
}

/// The same bytes as RGB16, so from all that becomes that.
void AddBGR565(Constructor& construct) {
    constexpr std::int64_t kRGB16 = KY_TYPE_RGB16;
    AddMissing<KyIdentityConverter>(construct, kRGB16, KY_TYPE_BGR565P, kRGB16, KY_TYPE_BGR565P, 2u, 2u);
    for (const std::int64_t source : SourcesOf(kRGB16)) AddChain(construct, source, kRGB16, KY_TYPE_BGR565P);
}

}  // namespace

void ConstructColourSources(Constructor& construct) {
    for (const ColourType& row : kTypes) RegisterType(KyPixelType(row.id, row.bits, row.bytes, false), row.name);
    AddFewBits(construct);
    AddWords(construct);
    AddPlanes(construct);
    AddMosaics(construct);
}

void ConstructWordDestinations(Constructor& construct) {
    const Types sources = SourcesOf(KY_TYPE_RGB24);
    for (const WordDestination& to : kDestinations) AddDestination(construct, to, sources);
    AddGray(construct, sources);
    AddBytes(construct, sources);
    AddBGR565(construct);
}

}  // namespace ky
