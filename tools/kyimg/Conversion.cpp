#include "Conversion.h"

#include "Errors.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kyimg {

namespace {

std::int64_t ColourSpace(std::int64_t id) { return id & KY_COLOUR_SPACE_MASK; }

bool IsMosaic(std::int64_t id) { return KyPixelTypeFactory::FindPixelType(id)->IsBayerPattern(); }

/// A mosaic of right-aligned samples, each in a 16-bit word of its own, line by line.
bool IsMosaicOfWords(std::int64_t id) {
    constexpr std::int64_t kOther =
        KY_TYPE_NORMALIZED | KY_TYPE_INTERLACED | KY_TYPE_PACKED | KY_TYPE_PLANAR | KY_TAP_LAYOUT_MASK;
    return IsMosaic(id) && (id & kOther) == 0 && KyPixelTypeFactory::FindPixelType(id)->GetPixelByteSize() == 2;
}

/// Types that stand for RGGB by their name alone: indexes 0x13 to 0x15.
bool IsNamedRGGB(std::int64_t id) {
    const std::int64_t index = id & KY_TYPE_INDEX_MASK;
    return IsMosaic(id) && index >= 0x13 && index <= 0x15;
}

/// Two pixels share three bytes.
bool IsPackedInPairs(const KyPixelType& type) {
    const std::int64_t id = type.GetTypeID();
    const bool isPacked = (id & KY_TYPE_PACKED) != 0;
    const bool hasOneSample = ColourSpace(id) == KY_COLOUR_SPACE_GRAYSCALE || type.IsBayerPattern();
    return isPacked && hasOneSample && (type.GetPixelBitSize() == 10 || type.GetPixelBitSize() == 12);
}

std::uint32_t PatternFlag(const std::string& order) {
    switch (order[0]) {
        case 'R':
        case 'r': return KyPixelConverter::FLAG_BAYER_RGGB;
        case 'B':
        case 'b': return KyPixelConverter::FLAG_BAYER_BGGR;
        default: break;
    }
    return order[1] == 'R' || order[1] == 'r' ? KyPixelConverter::FLAG_BAYER_GRBG : KyPixelConverter::FLAG_BAYER_GBRG;
}

/// The bit size of a filter for a type: that of the samples which its converters pass through the filter.
std::uint32_t FilterBits(std::int64_t id) {
    const std::uint32_t bits = KyPixelTypeFactory::FindPixelType(id)->GetPixelBitSize();
    const bool becomesBytes =
        ColourSpace(id) == KY_COLOUR_SPACE_YUV || id == KY_TYPE_RGB16 || (id & KY_TYPE_NORMALIZED) != 0;
    if (bits == 24 || bits == 32 || (becomesBytes && !IsMosaic(id))) return 8;
    return bits == 8 || bits == 10 || bits == 12 || bits == 14 ? bits : 16;
}

/// The library has these converters but does not register them: who needs one makes it.
const KyPixelConverter& MakeConverterToRGB48(std::int64_t source) {
    // Being made registers it, so the registry finds it the next time, and it must stay.
    static std::vector<std::unique_ptr<KyPixelConverter>> made;
    made.push_back(std::make_unique<KyBayerRGB16ToRGB48>(source, false, 0U));
    return *made.back();
}

/// The usual destination.
std::int64_t DefaultDestination(std::int64_t source) {
    if (ColourSpace(source) == KY_COLOUR_SPACE_GRAYSCALE) return KY_TYPE_GRAYSCALE8;
    // A picture of 5-6-5 itself has all colours, while the library converts only the green.
    return source == KY_TYPE_RGB16 ? KY_TYPE_RGB16 : KY_TYPE_RGB24;
}

const KyPixelConverter& FindConverter(std::int64_t source, std::int64_t destination) {
    const KyPixelConverter* const found =
        KyPixelTypeFactory::FindConverter(TypeToConvertFrom(source, destination), destination);
    if (found != nullptr) return *found;
    const bool isToRGB48Possible = IsMosaicOfWords(source);
    if (isToRGB48Possible && destination == KY_TYPE_RGB48) return MakeConverterToRGB48(source);
    std::vector<std::string> others;
    std::int64_t other = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumConverterFrom(index, source, other); ++index)
        others.push_back(DescribeType(other));
    if (isToRGB48Possible) others.push_back(DescribeType(KY_TYPE_RGB48));
    throw Failure(fmt::format("no converter from {} to {}; there are ones to {}", DescribeType(source),
                              DescribeType(destination), fmt::join(others, ", ")));
}

}  // namespace

Conversion::Conversion(const ConvertOptions& options)
    : sourceType(FindType(options.type)),
      destinationType(options.destination.empty() ? DefaultDestination(sourceType) : FindType(options.destination)),
      size(ParseSize(options.size)), area(size), converter(&FindConverter(sourceType, destinationType)),
      lines(*converter, size, options.lineBytes) {
    if (IsPackedInPairs(*KyPixelTypeFactory::FindPixelType(sourceType)) && size.width % 2 != 0)
        throw Failure(fmt::format("{} packs pixels in pairs: the width must be even, not {}", DescribeType(sourceType),
                                  size.width));

    const bool isDemosaicing = IsMosaic(sourceType) && !IsMosaic(destinationType);
    const bool isColour = (ColourSpace(sourceType) != KY_COLOUR_SPACE_GRAYSCALE) && !IsMosaic(destinationType) &&
                          dynamic_cast<const KyIdentityConverter*>(converter) == nullptr;
    ChoosePattern(options, isDemosaicing);
    ChooseFilter(options, isColour);
    ChooseArea(isDemosaicing);
    NoteFlaws();
}

void Conversion::ChoosePattern(const ConvertOptions& options, bool isDemosaicing) {
    if (!isDemosaicing) {
        if (options.bayer.empty() && !options.interpolate) return;
        throw UsageError(fmt::format("{} is for a Bayer mosaic that becomes colour, not for {} to {}",
                                     options.interpolate ? "--interpolate" : "--bayer", DescribeType(sourceType),
                                     DescribeType(destinationType)));
    }
    std::string order = options.bayer;
    if (order.empty()) {
        order = IsNamedRGGB(sourceType) ? "RGGB" : "GRBG";
        notes.push_back(fmt::format("no --bayer given, {} assumed", order));
    }
    flags = PatternFlag(order) | (options.interpolate ? KyPixelConverter::FLAG_BAYER_INTERPOLATE : 0U);
}

void Conversion::ChooseFilter(const ConvertOptions& options, bool isColour) {
    if (options.gains.empty() && options.offsets.empty()) return;
    if (!isColour)
        throw UsageError(fmt::format("--gain and --offset are for conversions of colours, not for {} to {}",
                                     DescribeType(sourceType), DescribeType(destinationType)));

    filter = std::make_unique<KyRGBFilter>(FilterBits(sourceType));
    double gains[3] = {1, 1, 1};
    std::uint16_t offsets[3] = {0, 0, 0};
    const double largest = filter->GetEntryCount() - 1;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        if (!options.gains.empty()) gains[channel] = options.gains[channel];
        if (!std::isfinite(gains[channel]) || gains[channel] < 0)
            throw UsageError(fmt::format("--gain: {} is not a factor of 0 or more", gains[channel]));

        const double offset = options.offsets.empty() ? 0 : options.offsets[channel];
        if (!(offset >= 0 && offset <= largest) || offset != std::floor(offset))
            throw UsageError(fmt::format("--offset: {} is not a whole number from 0 to {}", offset, largest));
        offsets[channel] = static_cast<std::uint16_t>(offset);
    }
    filter->SetMultipliers(gains[0], gains[1], gains[2], offsets[0], offsets[1], offsets[2]);
}

void Conversion::ChooseArea(bool isDemosaicing) {
    if (!isDemosaicing || (flags & KyPixelConverter::FLAG_BAYER_INTERPOLATE) != 0) return;
    area.width -= size.width % 2;
    area.height -= size.height % 2;
    if (area.width == 0 || area.height == 0)
        throw Failure(
            fmt::format("{} is too small: without --interpolate two lines of two pixels are needed", DescribeSource()));
    if (area.width != size.width || area.height != size.height)
        notes.push_back(fmt::format("pixels are taken in cells of 2x2 (--interpolate takes each): the result is {}x{}",
                                    area.width, area.height));
}

void Conversion::NoteFlaws() {
    if (ColourSpace(destinationType) == KY_COLOUR_SPACE_YUV) return;
    if (sourceType == KY_TYPE_RGB16 && destinationType != KY_TYPE_RGB16)
        notes.push_back("of 5-6-5 only green is converted; without --to the picture has all colours");
    if (ColourSpace(sourceType) == KY_COLOUR_SPACE_YUV && (sourceType & KY_TYPE_INDEX_MASK) == 0x06)
        notes.push_back("of each four pixels of 4:1:1, the last three get their red from the brightness of the second");
}

std::string Conversion::DescribeSource() const {
    std::string text =
        fmt::format("{}x{} {}", size.width, size.height, KyPixelTypeFactory::GetPixelTypeName(sourceType));
    if (lines.HasPadding() || lines.IsWidened()) text += fmt::format(" in lines of {} bytes", lines.GetLineBytes());
    return text;
}

void Conversion::PrintNotes() const {
    for (const std::string& note : notes) fmt::print(stderr, "kyimg: note: {}\n", note);
}

ConvertedFrame Conversion::DescribeDestination() const {
    ConvertedFrame frame;
    frame.type = destinationType;
    frame.width = area.width;
    frame.height = area.height;
    const ImageSize converted = lines.GetConverted();
    if ((destinationType & KY_TYPE_PLANAR) != 0 && (sourceType & KY_TYPE_PLANAR) == 0) {
        frame.rowBytes = area.width;
        frame.lineBytes = converted.width;
        frame.planeBytes = std::size_t{converted.width} * converted.height;
    } else {
        frame.lineBytes = converter->GetDestinationByteSize(converted.width);
        // The last group of a line stays whole where the destination has groups, too.
        frame.rowBytes = ColourSpace(destinationType) == KY_COLOUR_SPACE_YUV
                             ? frame.lineBytes
                             : converter->GetDestinationByteSize(area.width);
    }
    // Averages of a mosaic's words stay in the words' range.
    if (destinationType == KY_TYPE_RGB48 && IsMosaicOfWords(sourceType)) frame.sampleBits = FilterBits(sourceType);
    return frame;
}

bool Conversion::MakesPicture() const { return FindPictureLayout(DescribeDestination()).has_value(); }

ConvertedFrame Conversion::Convert(const std::vector<std::uint8_t>& source) const {
    ConvertedFrame frame = DescribeDestination();
    const auto [width, height] = lines.GetConverted();
    frame.bytes.resize(std::max(frame.lineBytes * height, 3 * frame.planeBytes));
    std::vector<std::uint8_t> scratch;
    const std::uint8_t* const pixels = lines.Arrange(source, scratch);
    // The whole size as destination, even when less is shown: a planar one has the lines of the source.
    std::uint8_t* const destination = frame.bytes.data();
    const std::uint32_t status =
        filter == nullptr
            ? converter->Convert(pixels, width, height, destination, width, height, width, height, flags, 0)
            : converter->Convert(*filter, pixels, width, height, destination, width, height, width, height, flags, 0);
    if (status != KY_STATUS_SUCCESS)
        throw Failure(fmt::format("the conversion of {} failed with status {}", DescribeSource(), status));
    return frame;
}

}  // namespace kyimg
