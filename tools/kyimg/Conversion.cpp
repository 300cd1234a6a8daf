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
bool IsPackedInPairs(std::int64_t id) {
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
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

/// The bit size of a filter for a type, by the rule by which the library chooses its default filters.
std::uint32_t FilterBits(std::int64_t id) {
    const std::uint32_t bits = KyPixelTypeFactory::FindPixelType(id)->GetPixelBitSize();
    return bits == 8 || bits == 10 || bits == 12 || bits == 14 ? bits : 16;
}

/// The library has these converters but does not register them: who needs one makes it.
const KyPixelConverter& MakeConverterToRGB48(std::int64_t source) {
    // Being made registers it, so the registry finds it the next time, and it must stay.
    static std::vector<std::unique_ptr<KyPixelConverter>> made;
    made.push_back(std::make_unique<KyBayerRGB16ToRGB48>(source, false, 0U));
    return *made.back();
}

const KyPixelConverter& FindConverter(std::int64_t source, std::int64_t destination) {
    const KyPixelConverter* const found = KyPixelTypeFactory::FindConverter(source, destination);
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
    : sourceType(FindType(options.type)), destinationType(KY_TYPE_RGB24), size(ParseSize(options.size)), area(size),
      isContinuous(options.isContinuous) {
    if (!options.destination.empty()) {
        destinationType = FindType(options.destination);
    } else if (ColourSpace(sourceType) == KY_COLOUR_SPACE_GRAYSCALE) {
        destinationType = KY_TYPE_GRAYSCALE8;
    }
    converter = &FindConverter(sourceType, destinationType);

    const bool isDemosaicing = IsMosaic(sourceType) && !IsMosaic(destinationType);
    const bool isColour = (ColourSpace(sourceType) != KY_COLOUR_SPACE_GRAYSCALE) && !IsMosaic(destinationType) &&
                          dynamic_cast<const KyIdentityConverter*>(converter) == nullptr;
    CheckPairs(isDemosaicing);
    ChoosePattern(options, isDemosaicing);
    ChooseFilter(options, isColour);
    ChooseArea(isDemosaicing);
}

void Conversion::CheckPairs(bool isDemosaicing) const {
    const bool isPaired = IsPackedInPairs(sourceType);
    if (!isContinuous) {
        if (isPaired && size.width % 2 != 0)
            throw Failure(
                fmt::format("{} packs pixels in pairs, and a line of {} pixels would end within one: the width "
                            "must be even (or give --continuous, when pairs go on from line to line)",
                            DescribeType(sourceType), size.width));
        return;
    }
    // The whole frame is one line then, so nothing may depend on where lines end.
    constexpr std::int64_t kByLines = KY_TYPE_INTERLACED | KY_TAP_LAYOUT_MASK;
    if (!isPaired || (sourceType & kByLines) != 0)
        throw UsageError(
            fmt::format("--continuous is for pixels packed in pairs, of one output and not interlaced, not "
                        "for {}",
                        DescribeType(sourceType)));
    if (isDemosaicing || IsPackedInPairs(destinationType) || (destinationType & KY_TYPE_PLANAR) != 0)
        throw UsageError(
            fmt::format("--continuous cannot go to {} at once: unpack first", DescribeType(destinationType)));
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
    const bool inCells = isDemosaicing && (flags & KyPixelConverter::FLAG_BAYER_INTERPOLATE) == 0;
    const bool inFields = (sourceType & KY_TYPE_INTERLACED) != 0;
    const bool inLinePairs = (sourceType & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES &&
                             (destinationType & KY_TAP_LAYOUT_MASK) != KY_TAP_DUAL_LINES;
    if (inCells) area.width -= size.width % 2;
    if (inCells || inFields || inLinePairs) area.height -= size.height % 2;
    if (area.width == 0 || area.height == 0)
        throw Failure(
            fmt::format("{} is too small: {}", DescribeSource(),
                        inCells ? "without --interpolate two lines of two pixels are needed" : "two lines are needed"));
    if (area.width != size.width || area.height != size.height)
        notes.push_back(fmt::format("{} are taken {}: the result is {}x{}", inCells ? "pixels" : "lines",
                                    inCells ? "in cells of 2x2 (--interpolate takes each)" : "in pairs", area.width,
                                    area.height));
}

std::string Conversion::DescribeSource() const {
    return fmt::format("{}x{} {}", size.width, size.height, KyPixelTypeFactory::GetPixelTypeName(sourceType));
}

void Conversion::PrintNotes() const {
    for (const std::string& note : notes) fmt::print(stderr, "kyimg: note: {}\n", note);
}

/// What the converter is told; a frame that runs on is one line of whole pairs.
ImageSize Conversion::GetConvertedSize() const {
    if (!isContinuous) return size;
    const std::uint32_t pixels = size.width * size.height;
    return {pixels + pixels % 2, 1};
}

std::uint64_t Conversion::GetSourceFrameSize() const {
    const ImageSize converted = GetConvertedSize();
    return std::uint64_t{converter->GetSourceByteSize(converted.width)} * converted.height;
}

ConvertedFrame Conversion::DescribeDestination() const {
    ConvertedFrame frame;
    frame.type = destinationType;
    frame.width = area.width;
    frame.height = area.height;
    if ((destinationType & KY_TYPE_PLANAR) != 0 && (sourceType & KY_TYPE_PLANAR) == 0) {
        frame.rowBytes = area.width;
        frame.lineBytes = size.width;
        frame.planeBytes = std::size_t{size.width} * size.height;
    } else {
        frame.rowBytes = converter->GetDestinationByteSize(area.width);
        frame.lineBytes = converter->GetDestinationByteSize(size.width);
    }
    // Averages of a mosaic's words stay in the words' range.
    if (destinationType == KY_TYPE_RGB48 && IsMosaicOfWords(sourceType)) frame.sampleBits = FilterBits(sourceType);
    return frame;
}

bool Conversion::MakesPicture() const { return FindPictureLayout(DescribeDestination()).has_value(); }

ConvertedFrame Conversion::Convert(const std::vector<std::uint8_t>& source) const {
    ConvertedFrame frame = DescribeDestination();
    frame.bytes.resize(std::max(frame.lineBytes * size.height, 3 * frame.planeBytes) + kSlack);
    // The whole size as destination, even when less is filled: a planar one has the lines of the source.
    std::uint8_t* const destination = frame.bytes.data();
    const auto [width, height] = GetConvertedSize();
    const std::uint32_t status =
        filter == nullptr
            ? converter->Convert(source.data(), width, height, destination, width, height, width, height, flags, 0)
            : converter->Convert(*filter, source.data(), width, height, destination, width, height, width, height,
                                 flags, 0);
    if (status != KY_STATUS_SUCCESS)
        throw Failure(fmt::format("the conversion of {} failed with status {}", DescribeSource(), status));
    return frame;
}

}  // namespace kyimg
