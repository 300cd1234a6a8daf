#include "Conversion.h"

#include "ConverterChoice.h"
#include "Errors.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <cmath>
#include <cstdio>
#include <utility>

namespace kyimg {

namespace {

std::int64_t ColourSpace(std::int64_t id) { return id & KY_COLOUR_SPACE_MASK; }

bool IsMosaic(std::int64_t id) { return KyPixelTypeFactory::FindPixelType(id)->IsBayerPattern(); }

bool MakesPlanes(const KyPixelConverter& converter) {
    return (converter.GetDestinationType() & ~converter.GetSourceType() & KY_TYPE_PLANAR) != 0;
}

/// Types that stand for RGGB by their name alone: indexes 0x13 to 0x15.
bool IsNamedRGGB(std::int64_t id) {
    const std::int64_t index = id & KY_TYPE_INDEX_MASK;
    return IsMosaic(id) && index >= 0x13 && index <= 0x15;
}

std::uint32_t PatternFlag(const std::string& pattern) {
    switch (pattern[0]) {
        case 'R':
        case 'r': return KyPixelConverter::FLAG_BAYER_RGGB;
        case 'B':
        case 'b': return KyPixelConverter::FLAG_BAYER_BGGR;
        default: break;
    }
    return pattern[1] == 'R' || pattern[1] == 'r' ? KyPixelConverter::FLAG_BAYER_GRBG
                                                  : KyPixelConverter::FLAG_BAYER_GBRG;
}

bool IsChain(const KyPixelConverter& converter) {
    return dynamic_cast<const KyComplexConverter*>(&converter) != nullptr;
}

/// The bit size of a filter: that of the samples which the converter passes through it.
std::uint32_t FilterBits(const KyPixelConverter& converter) {
    const std::int64_t id = converter.GetSourceType();
    const std::uint32_t bits = KyPixelTypeFactory::FindPixelType(id)->GetPixelBitSize();
    // Chains shift normalized Bayer samples to the low bits, other converters take their high bytes.
    const bool takesHighBytes = (id & KY_TYPE_NORMALIZED) != 0 && !IsChain(converter);
    const bool becomesBytes = ColourSpace(id) == KY_COLOUR_SPACE_YUV || id == KY_TYPE_RGB16 || takesHighBytes;
    if (bits == 24 || bits == 32 || becomesBytes) return 8;
    return bits == 8 || bits == 10 || bits == 12 || bits == 14 ? bits : 16;
}

}  // namespace

Conversion::Conversion(const ConvertOptions& options)
    : sourceType(FindType(options.type)),
      destinationType(options.destination.empty() ? DefaultDestination(sourceType) : FindType(options.destination)),
      size(ParseSize(options.size)), converter(&FindConverter(sourceType, destinationType)),
      lines(*converter, size, options), area(lines.GetShown()) {
    const bool isDemosaicing = IsMosaic(sourceType) && !IsMosaic(destinationType);
    const bool isColour = (ColourSpace(sourceType) != KY_COLOUR_SPACE_GRAYSCALE) && !IsMosaic(destinationType) &&
                          dynamic_cast<const KyIdentityConverter*>(converter) == nullptr;
    if (isColour) DivideChain();
    ChoosePattern(options, isDemosaicing);
    ChooseFilter(options, isColour);
    ChooseArea(isDemosaicing);
    NoteFlaws();
}

/// Each stage of a chain applies a filter, and a stage that is a chain itself lets the demosaicing of the last line see
/// neighbours below the picture. Up to RGB24 neither happens, so a longer chain is run in two steps.
void Conversion::DivideChain() {
    if (!IsChain(*converter) || destinationType == KY_TYPE_RGB24) return;
    converter = &FindConverter(sourceType, KY_TYPE_RGB24);
    finisher = &FindConverter(KY_TYPE_RGB24, destinationType);
}

void Conversion::ChoosePattern(const ConvertOptions& options, bool isDemosaicing) {
    if (!isDemosaicing) {
        if (options.bayer.empty() && !options.interpolate) return;
        throw UsageError(fmt::format("{} is for demosaicing, not for {} to {}",
                                     options.interpolate ? "--interpolate" : "--bayer", DescribeType(sourceType),
                                     DescribeType(destinationType)));
    }
    std::string pattern = options.bayer.empty() ? FindBayerPattern(options.type) : options.bayer;
    if (pattern.empty()) {
        pattern = IsNamedRGGB(sourceType) ? "RGGB" : "GRBG";
        notes.push_back(fmt::format("no --bayer given, {} assumed", pattern));
    }
    flags = PatternFlag(pattern) | (options.interpolate ? KyPixelConverter::FLAG_BAYER_INTERPOLATE : 0U);
}

void Conversion::ChooseFilter(const ConvertOptions& options, bool isColour) {
    if (options.gains.empty() && options.offsets.empty()) return;
    if (!isColour)
        throw UsageError(fmt::format("--gain and --offset are for conversions of colours, not for {} to {}",
                                     DescribeType(sourceType), DescribeType(destinationType)));

    filter = std::make_unique<KyRGBFilter>(FilterBits(*converter));
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
    if (inCells) area = {area.width - area.width % 2, area.height - area.height % 2};
    if (area.width == 0 || area.height == 0)
        throw Failure(
            fmt::format("{} is too small: {}", DescribeSource(),
                        inCells ? "nearest-neighbour demosaicing needs two lines of two pixels (--interpolate does not)"
                                : "two lines are needed"));
    if (area.width != size.width || area.height != size.height)
        notes.push_back(fmt::format("{} are taken in {}: the result is {}x{}", inCells ? "pixels" : "lines",
                                    inCells ? "2x2 cells of the Bayer pattern (--interpolate takes each)" : "pairs",
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
    return fmt::format("{}x{} {}{}", size.width, size.height, KyPixelTypeFactory::GetPixelTypeName(sourceType),
                       lines.Describe());
}

void Conversion::PrintNotes() const {
    for (const std::string& note : notes) fmt::print(stderr, "kyimg: note: {}\n", note);
}

/// What is written: the size that the converter reads, but where it demosaics no line below the picture, which would be
/// a neighbour of the last one.
ImageSize Conversion::GetFilled() const {
    const ImageSize converted = lines.GetConverted();
    return IsMosaic(sourceType) && !IsMosaic(destinationType) ? ImageSize{converted.width, area.height} : converted;
}

/// All but the bytes, of which there are none yet.
ConvertedFrame Conversion::DescribeDestination() const {
    const KyPixelConverter& last = finisher == nullptr ? *converter : *finisher;
    ConvertedFrame frame;
    frame.type = destinationType;
    frame.width = area.width;
    frame.height = area.height;
    if (MakesPlanes(last)) {
        const ImageSize filled = GetFilled();
        frame.rowBytes = area.width;
        frame.stride = filled.width;
        frame.planeStride = std::size_t{filled.width} * filled.height;
    } else {
        frame.stride = last.GetDestinationByteSize(lines.GetPixelStride());
        // The last group of a line stays whole where the destination has groups, too.
        frame.rowBytes = ColourSpace(destinationType) == KY_COLOUR_SPACE_YUV ? frame.stride
                                                                             : last.GetDestinationByteSize(area.width);
    }
    // Averages of Bayer samples stay in the samples' range.
    if (destinationType == KY_TYPE_RGB48 && IsMosaicOfWords(sourceType)) frame.sampleBits = FilterBits(*converter);
    return frame;
}

bool Conversion::MakesPicture() const { return FindPictureLayout(DescribeDestination()).has_value(); }

ConvertedFrame Conversion::Convert(const std::vector<std::uint8_t>& source) const {
    std::vector<std::uint8_t> scratch;
    const std::uint8_t* const pixels = lines.Arrange(source, scratch);
    const ImageSize filled = GetFilled();
    ConvertedFrame frame = DescribeDestination();
    frame.bytes = Run(*converter, filter.get(), pixels, lines.GetConverted(), filled);
    if (finisher != nullptr) {
        const std::vector<std::uint8_t> coloured = std::move(frame.bytes);
        frame.bytes = Run(*finisher, nullptr, coloured.data(), filled, filled);
    }
    return frame;
}

std::vector<std::uint8_t> Conversion::Run(const KyPixelConverter& step, const KyRGBFilter* usedFilter,
                                          const std::uint8_t* pixels, ImageSize from, ImageSize to) const {
    const std::size_t lineBytes = MakesPlanes(step) ? std::size_t{3} * to.width : step.GetDestinationByteSize(to.width);
    std::vector<std::uint8_t> made(lineBytes * to.height);
    const std::uint32_t status = usedFilter == nullptr
                                     ? step.Convert(pixels, from.width, from.height, made.data(), to.width, to.height,
                                                    to.width, to.height, flags, 0)
                                     : step.Convert(*usedFilter, pixels, from.width, from.height, made.data(), to.width,
                                                    to.height, to.width, to.height, flags, 0);
    if (status != KY_STATUS_SUCCESS)
        throw Failure(fmt::format("the conversion of {} failed with status {}", DescribeSource(), status));
    return made;
}

}  // namespace kyimg
