#include "Conversion.h"

#include "BitNotes.h"
#include "ConverterChoice.h"
#include "Errors.h"
#include "ImageSizes.h"
#include "Routes.h"
#include "SampleImage.h"
#include "Threads.h"
#include "TypeNames.h"

#include <KyImgLib/KyImgLibC.h>
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

Conversion::Conversion(const ConvertOptions& givenOptions, bool keepsMosaic)
    : options(givenOptions), sourceType(FindType(options.type)),
      destinationType(options.destination.empty() ? DefaultDestination(sourceType, keepsMosaic)
                                                  : FindType(options.destination)),
      source(sourceType, ParseSize(options.size), options), correction(options), threads(options.threads) {
    if (!options.crop.empty()) ChooseCrop();
    std::int64_t type = sourceType;
    if (source.IsContinuous()) {
        type = UnpackedType(sourceType);
        AddSteps(FindConverter(sourceType, type));
        for (Step& step : steps) step.size = {source.GetImage().width, source.GetImage().height};
    }
    if (correction.IsNeeded() && ColourSpace(type) == KY_COLOUR_SPACE_GRAYSCALE) {
        AddSteps(FindConverter(type, *PlainType(*KyPixelTypeFactory::FindPixelType(type))));
        steps.back().looksUp = true;
        type = steps.back().destinationType;
    }
    AddSteps(FindConverter(type, destinationType));
    if (keepsMosaic && IsMosaic(destinationType)) {
        DescribeMosaic();
    } else {
        ChoosePattern();
        if (correction.IsNeeded()) ChooseFilter();
    }
    arrangement = std::make_unique<Arrangement>(options, DescribeDestination());
    NoteFlaws();
}

void Conversion::ChooseCrop() {
    crop = ParseCrop(options.crop);
    const ImageSize all = source.GetShown();
    if (source.IsContinuous() || source.GetImage().height != all.height)
        throw UsageError(fmt::format("--crop: the lines of {} have no parts", source.Describe()));
    if (std::uint64_t{crop->left} + crop->size.width > all.width ||
        std::uint64_t{crop->top} + crop->size.height > all.height)
        throw UsageError(fmt::format("--crop: {} is not within {}x{}", options.crop, all.width, all.height));
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
    ImageSize size = GetSize();
    if (steps.empty() && !crop) size.height = source.GetImage().height;
    steps.push_back({std::make_unique<KyImageConverter>(converter), converter.GetSourceType(),
                     converter.GetDestinationType(), size, MakesColours(converter) && FindFilterStep() == nullptr,
                     false});
}

const Conversion::Step* Conversion::FindFilterStep() const {
    for (const Step& step : steps)
        if (step.takesFilter || step.looksUp) return &step;
    return nullptr;
}

std::uint32_t Conversion::FindPattern() {
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
void Conversion::DescribeMosaic() {
    const std::pair<const char*, bool> others[] = {
        {"--demosaic", !options.demosaic.empty()},  {"--offset", !options.offsets.empty()},
        {"--auto-levels", !options.levels.empty()}, {"--white-balance", !options.whiteBalance.empty()},
        {"--gamma", !options.gamma.empty()},        {"--table", !options.table.empty()},
        {"--rotate", options.rotate != 0},          {"--flip", !options.flip.empty()},
        {"--shrink", options.shrink != 1}};
    for (const auto& [name, isGiven] : others)
        if (isGiven) throw UsageError(fmt::format("{} is not for a mosaic that is kept as it is", name));
    flags = FindPattern();
    mosaic.black = ParseBlack(options.black);
    if (options.gains.empty()) return;
    std::array<double, 3>& gains = mosaic.gains.emplace();
    for (std::size_t channel = 0; channel < 3; ++channel) {
        gains[channel] = options.gains.size() == 1 ? options.gains[0] : options.gains.at(channel);
        if (!std::isfinite(gains[channel]) || gains[channel] <= 0)
            throw UsageError(fmt::format("--gain: {} is not a factor above 0", gains[channel]));
    }
}

void Conversion::ChoosePattern() {
    if (!IsMosaic(sourceType) || IsMosaic(destinationType)) {
        if (options.bayer.empty() && options.demosaic.empty()) return;
        throw UsageError(fmt::format("{} is for demosaicing, not for {} to {}",
                                     options.bayer.empty() ? "--demosaic" : "--bayer", DescribeType(sourceType),
                                     DescribeType(destinationType)));
    }
    const bool isNearest = options.demosaic == "nearest";
    flags = FindPattern() | (isNearest ? 0U : KyPixelConverter::FLAG_BAYER_INTERPOLATE);
    const ImageSize size = GetSize();
    if (isNearest && (size.width < 2 || size.height < 2))
        throw Failure(
            fmt::format("{} is too small: nearest-neighbour demosaicing needs two lines of two pixels "
                        "(--demosaic bilinear does not)",
                        source.Describe()));
}

void Conversion::ChooseFilter() {
    const Step* const step = FindFilterStep();
    if (step == nullptr)
        throw UsageError(fmt::format("{} are for conversions of colours and of gray, not for {} to {}",
                                     "--gain, --offset, --black, --gamma and the like", DescribeType(sourceType),
                                     DescribeType(destinationType)));
    const std::uint32_t bits = step->looksUp
                                   ? KyPixelTypeFactory::FindPixelType(step->destinationType)->GetPixelBitSize()
                                   : FilterBits(step->sourceType, step->destinationType);
    filter = std::make_unique<KyRGBFilter>(bits);
    if (!correction.NeedsFrame()) FillFilter();
}

void Conversion::FillFilter() {
    const bool isGray = FindFilterStep()->looksUp;
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(sourceType);
    const auto plain = PlainType(type);
    // The black level counts in values of the file's samples; those of colours are the filter's.
    const std::uint32_t bits =
        plain ? KyPixelTypeFactory::FindPixelType(*plain)->GetPixelBitSize() : filter->GetBitSize();
    correction.Fill(*filter, bits, isGray);
}

void Conversion::Adapt(const std::vector<std::uint8_t>& frame) {
    for (const std::string& note : FindOddBits(sourceType, frame)) notes.push_back(note);
    if (filter == nullptr || !correction.NeedsFrame()) return;
    ConvertOptions input = options;
    // The pattern that demosaicing takes.
    if (IsMosaic(sourceType))
        input.bayer = PatternText(flags & ~std::uint32_t{KyPixelConverter::FLAG_BAYER_INTERPOLATE});
    correction.Adapt(SamplesOfFrame(input, frame));
    FillFilter();
    for (const std::string& note : correction.GetNotes()) notes.push_back(note);
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
    frame.width = GetSize().width;
    frame.height = GetSize().height;
    // Averages of Bayer samples stay in the samples' range.
    if (destinationType == KY_TYPE_RGB48 || destinationType == KY_TYPE_RGBA64)
        frame.sampleBits = BitsInRGB48(sourceType);
    frame.mosaic = mosaic;
    return frame;
}

/// The image to convert, in the bytes of a frame, and the Bayer pattern that it begins with.
KyImage Conversion::PlaceSource(const std::vector<std::uint8_t>& bytes, std::uint32_t& patternFlags) const {
    KyImage image = source.GetImage();
    image.data = const_cast<std::uint8_t*>(bytes.data());  // a source is never written
    image.size = bytes.size();
    if (!crop) return image;
    KyImage part = {};
    if (KyImage_Crop(&image, crop->left, crop->top, crop->size.width, crop->size.height, &part,
                     patternFlags == 0 ? nullptr : &patternFlags) != KY_STATUS_SUCCESS)
        throw Failure(fmt::format("--crop: {}", KyImage_GetError()));
    return part;
}

/// Gray, in bytes or in words.
void Conversion::LookUp(std::vector<std::uint8_t>& samples) const {
    if (filter->GetBitSize() == 8) {
        for (std::uint8_t& sample : samples) sample = filter->GetGreenValue8(sample);
        return;
    }
    for (std::size_t i = 0; i + 1 < samples.size(); i += 2) {
        const std::uint16_t value =
            filter->GetGreenValue16(samples[i] | static_cast<std::uint32_t>(samples[i + 1]) << 8);
        samples[i] = static_cast<std::uint8_t>(value);
        samples[i + 1] = static_cast<std::uint8_t>(value >> 8);
    }
}

ConvertedFrame Conversion::Convert(const std::vector<std::uint8_t>& bytes) const {
    ConvertedFrame frame = DescribeDestination();
    std::uint32_t stepFlags = flags;
    KyImage from = PlaceSource(bytes, stepFlags);
    if (IsMosaic(destinationType)) frame.mosaic.bayerFlag = stepFlags;
    const KyExecutor executor = MakeExecutor(threads);
    for (const Step& step : steps) {
        KyImage to = MakeImage(step.destinationType, step.size.width, step.size.height);
        std::vector<std::uint8_t> made(SizeOf(to));
        to.data = made.data();
        to.size = made.size();
        const KyConversion conversion = {sizeof conversion, stepFlags, step.takesFilter ? filter.get() : nullptr, 0, 0};
        from.type = step.sourceType;
        from.width = to.width;
        from.height = to.height;
        const std::uint32_t status =
            step.converter->ConvertParallel(from, to, &conversion, threads == 0 ? nullptr : &executor);
        if (status != KY_STATUS_SUCCESS) throw Failure(KyImageConverter::GetError());
        if (step.looksUp) LookUp(made);
        frame.bytes = std::move(made);  // what `from` described is not needed any more
        from = to;
    }
    // The line more of an interlaced frame with an odd number of them.
    frame.bytes.resize(frame.bytes.size() / steps.back().size.height * frame.height);
    return arrangement->Apply(std::move(frame));
}

}  // namespace kyimg
