#include "Conversion.h"

#include "ConverterChoice.h"
#include "Errors.h"
#include "ImageSizes.h"
#include "Threads.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

namespace kyimg {

namespace {

std::int64_t ColourSpace(std::int64_t id) { return id & KY_COLOUR_SPACE_MASK; }

bool IsMosaic(std::int64_t id) { return KyPixelTypeFactory::FindPixelType(id)->IsBayerPattern(); }

/// Whether a converter passes colours through a filter. Stages of chains that are not registered leave that to another one.
bool MakesColours(const KyPixelConverter& converter) {
    const KyPixelConverter* const registered =
        KyPixelTypeFactory::FindConverter(converter.GetSourceType(), converter.GetDestinationType());
    return registered == &converter && ColourSpace(converter.GetSourceType()) != KY_COLOUR_SPACE_GRAYSCALE &&
           !IsMosaic(converter.GetDestinationType()) && dynamic_cast<const KyIdentityConverter*>(&converter) == nullptr;
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

/// Whether an RGB type has samples of fewer bits than 8, or three of 10.
bool IsOfBits(std::int64_t id, std::uint32_t bits) {
    return id == KY_TYPE_RGB16 || id == KY_TYPE_BGR565P || id == KY_TYPE_RGB565P || bits == 15 || bits == 30;
}

/// The bit size of a filter: that of the samples which a converter between these types passes through it.
std::uint32_t FilterBits(std::int64_t id, std::int64_t destination) {
    if (destination == KY_TYPE_RGB48) return BitsInRGB48(id);
    const std::uint32_t bits = KyPixelTypeFactory::FindPixelType(id)->GetPixelBitSize();
    const bool becomesBytes =
        ColourSpace(id) == KY_COLOUR_SPACE_YUV || IsOfBits(id, bits) || (id & KY_TYPE_NORMALIZED) != 0;
    if (bits == 24 || bits == 32 || becomesBytes) return 8;
    return bits == 8 || bits == 10 || bits == 12 || bits == 14 ? bits : 16;
}

}  // namespace

Conversion::Conversion(const ConvertOptions& options, bool keepsMosaic)
    : sourceType(FindType(options.type)),
      destinationType(options.destination.empty() ? DefaultDestination(sourceType, keepsMosaic)
                                                  : FindType(options.destination)),
      source(sourceType, ParseSize(options.size), options), threads(options.threads) {
    std::int64_t type = sourceType;
    if (source.IsContinuous()) {
        type = UnpackedType(sourceType);
        AddSteps(FindConverter(sourceType, type));
        for (Step& step : steps) step.size = {source.GetImage().width, source.GetImage().height};
    }
    AddSteps(FindConverter(type, destinationType));
    if (keepsMosaic && IsMosaic(destinationType)) {
        DescribeMosaic(options);
    } else {
        if (!options.black.empty()) throw UsageError("--black is for a DNG, whose reader subtracts it");
        ChoosePattern(options);
        ChooseFilter(options);
    }
    NoteFlaws();
}

/// The stages of a chain are steps of their own: each would apply a filter, which is to count once.
void Conversion::AddSteps(const KyPixelConverter& converter) {
    if (const auto* const chain = dynamic_cast<const KyComplexConverter*>(&converter)) {
        AddSteps(chain->GetFirst());
        AddSteps(chain->GetSecond());
    } else {
        AddStep(converter);
    }
}

/// An interlaced frame with an odd number of lines is read as an image of one more, which is left out from then on, so that no
/// demosaicing sees it.
void Conversion::AddStep(const KyPixelConverter& converter) {
    ImageSize size = source.GetShown();
    if (steps.empty()) size.height = source.GetImage().height;
    steps.push_back({std::make_unique<KyImageConverter>(converter), converter.GetSourceType(),
                     converter.GetDestinationType(), size, MakesColours(converter) && FindFilterStep() == nullptr});
}

const Conversion::Step* Conversion::FindFilterStep() const {
    for (const Step& step : steps)
        if (step.takesFilter) return &step;
    return nullptr;
}

std::uint32_t Conversion::FindPattern(const ConvertOptions& options) {
    const std::uint32_t pattern =
        options.bayer.empty() ? FindNamedType(options.type).bayerFlags : PatternFlag(options.bayer);
    if (pattern != 0) return pattern;
    notes.push_back("no --bayer given, GRBG assumed");
    return KyPixelConverter::FLAG_BAYER_GRBG;
}

float Conversion::ParseBlack(const std::string& text) const {
    float black = 0;
    const auto layout = FindPictureLayout(DescribeDestination());
    const auto white = static_cast<float>((1U << (layout ? layout->bits : 16)) - 1);
    const char* const end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, black);
    if (!text.empty() && (error != std::errc() || parsed != end || !(black >= 0 && black < white)))
        throw UsageError(fmt::format("--black: \"{}\" is not a number from 0 to below {}", text, white));
    return black;
}

/// The samples stay as they are; pattern, black level and gains are told to whoever demosaics them.
void Conversion::DescribeMosaic(const ConvertOptions& options) {
    if (options.interpolate || !options.offsets.empty())
        throw UsageError(fmt::format("{} is not for a mosaic that is kept as it is",
                                     options.interpolate ? "--interpolate" : "--offset"));
    mosaic.bayerFlag = FindPattern(options);
    mosaic.black = ParseBlack(options.black);
    if (options.gains.empty()) return;
    std::array<double, 3>& gains = mosaic.gains.emplace();
    for (std::size_t channel = 0; channel < 3; ++channel) {
        gains[channel] = options.gains.at(channel);
        if (!std::isfinite(gains[channel]) || gains[channel] <= 0)
            throw UsageError(fmt::format("--gain: {} is not a factor above 0", gains[channel]));
    }
}

void Conversion::ChoosePattern(const ConvertOptions& options) {
    if (!IsMosaic(sourceType) || IsMosaic(destinationType)) {
        if (options.bayer.empty() && !options.interpolate) return;
        throw UsageError(fmt::format("{} is for demosaicing, not for {} to {}",
                                     options.interpolate ? "--interpolate" : "--bayer", DescribeType(sourceType),
                                     DescribeType(destinationType)));
    }
    flags = FindPattern(options) | (options.interpolate ? KyPixelConverter::FLAG_BAYER_INTERPOLATE : 0U);
    const ImageSize size = source.GetShown();
    if (!options.interpolate && (size.width < 2 || size.height < 2))
        throw Failure(
            fmt::format("{} is too small: nearest-neighbour demosaicing needs two lines of two pixels "
                        "(--interpolate does not)",
                        source.Describe()));
}

void Conversion::ChooseFilter(const ConvertOptions& options) {
    if (options.gains.empty() && options.offsets.empty()) return;
    const Step* const step = FindFilterStep();
    if (step == nullptr)
        throw UsageError(fmt::format("--gain and --offset are for conversions of colours, not for {} to {}",
                                     DescribeType(sourceType), DescribeType(destinationType)));

    filter = std::make_unique<KyRGBFilter>(FilterBits(step->sourceType, step->destinationType));
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

void Conversion::NoteFlaws() {
    if (source.LeavesOutLine())
        notes.push_back(fmt::format("lines are taken in pairs: the result is {}x{}", source.GetShown().width,
                                    source.GetShown().height));
    if (ColourSpace(destinationType) == KY_COLOUR_SPACE_YUV) return;
    if (sourceType == KY_TYPE_RGB16 && destinationType != KY_TYPE_RGB16)
        notes.push_back("of 5-6-5 only green is converted; without --to the picture has all colours");
    if (ColourSpace(sourceType) == KY_COLOUR_SPACE_YUV && (sourceType & KY_TYPE_INDEX_MASK) == 0x06)
        notes.push_back("of each four pixels of 4:1:1, the last three get their red from the brightness of the second");
}

void Conversion::PrintNotes() const {
    for (const std::string& note : notes) fmt::print(stderr, "kyimg: note: {}\n", note);
}

ConvertedFrame Conversion::DescribeDestination() const {
    ConvertedFrame frame;
    frame.type = destinationType;
    frame.width = source.GetShown().width;
    frame.height = source.GetShown().height;
    // Averages of Bayer samples stay in the samples' range.
    if (destinationType == KY_TYPE_RGB48 || destinationType == KY_TYPE_RGBA64)
        frame.sampleBits = BitsInRGB48(sourceType);
    frame.mosaic = mosaic;
    return frame;
}

ConvertedFrame Conversion::Convert(const std::vector<std::uint8_t>& bytes) const {
    ConvertedFrame frame = DescribeDestination();
    KyImage from = source.GetImage();
    from.data = const_cast<std::uint8_t*>(bytes.data());  // a source is never written
    from.size = bytes.size();
    const KyExecutor executor = MakeExecutor(threads);
    for (const Step& step : steps) {
        KyImage to = MakeImage(step.destinationType, step.size.width, step.size.height);
        std::vector<std::uint8_t> made(SizeOf(to));
        to.data = made.data();
        to.size = made.size();
        const KyConversion conversion = {sizeof conversion, flags, step.takesFilter ? filter.get() : nullptr, 0, 0};
        from.type = step.sourceType;
        from.width = to.width;
        from.height = to.height;
        const std::uint32_t status =
            step.converter->ConvertParallel(from, to, &conversion, threads == 0 ? nullptr : &executor);
        if (status != KY_STATUS_SUCCESS) throw Failure(KyImageConverter::GetError());
        frame.bytes = std::move(made);  // what `from` described is not needed any more
        from = to;
    }
    // The line more of an interlaced frame with an odd number of them.
    frame.bytes.resize(frame.bytes.size() / steps.back().size.height * frame.height);
    return frame;
}

}  // namespace kyimg
