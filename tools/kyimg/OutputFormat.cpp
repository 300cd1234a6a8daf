#include "OutputFormat.h"

#include "Errors.h"
#include "JpegWriter.h"
#include "NpyWriter.h"
#include "PnmWriter.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace kyimg {

namespace {

#if defined(KYIMG_HAS_TIFF)
constexpr bool kHasTiff = true;
#else
constexpr bool kHasTiff = false;
#endif
#if defined(KYIMG_HAS_JPEG)
constexpr bool kHasJpeg = true;
#else
constexpr bool kHasJpeg = false;
#endif

struct FormatFacts {
    OutputFormat format;
    const char* name;
    std::vector<const char*> otherNames;
    bool isThere;
    bool (*holds)(const ConvertedFrame& frame);
};

bool IsPicture(const ConvertedFrame& frame) { return FindPictureLayout(frame).has_value(); }

bool IsPictureOfBytes(const ConvertedFrame& frame) {
    const auto layout = FindPictureLayout(frame);
    return layout && layout->GetSampleBytes() == 1;
}

bool IsPlainMosaic(const ConvertedFrame& frame) {
    const auto layout = FindPictureLayout(frame);
    return layout && !layout->isBigEndian && KyPixelTypeFactory::FindPixelType(frame.type)->IsBayerPattern();
}

const std::vector<FormatFacts>& AllFormats() {
    static const std::vector<FormatFacts> formats = {
        {OutputFormat::Png, "png", {}, true, IsPicture},
        {OutputFormat::Tiff, "tiff", {"tif"}, kHasTiff, IsPicture},
        {OutputFormat::Jpeg, "jpeg", {"jpg"}, kHasJpeg, IsPictureOfBytes},
        {OutputFormat::Pnm, "ppm", {"pgm", "pnm"}, true, IsPicture},
        {OutputFormat::Npy, "npy", {}, true, [](const ConvertedFrame& frame) { return IsArray(frame.type); }},
        {OutputFormat::Dng, "dng", {}, kHasTiff, IsPlainMosaic},
        {OutputFormat::Raw, "raw", {}, true, [](const ConvertedFrame&) { return true; }},
    };
    return formats;
}

const FormatFacts& FactsOf(OutputFormat format) {
    return *std::ranges::find(AllFormats(), format, &FormatFacts::format);
}

/// "jpeg, png"
template <typename Predicate>
std::string JoinNames(Predicate isMeant) {
    std::vector<const char*> names;
    for (const FormatFacts& facts : AllFormats())
        if (isMeant(facts)) names.push_back(facts.name);
    return fmt::format("{}", fmt::join(names, ", "));
}

bool IsNamed(const FormatFacts& facts, const std::string& name) {
    return name == facts.name || std::ranges::find(facts.otherNames, name) != facts.otherNames.end();
}

std::string ExtensionOf(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    return extension.empty() ? "" : extension.substr(1);
}

}  // namespace

OutputFormat FindOutputFormat(const std::string& path, const std::string& name) {
    std::string wanted = name.empty() ? ExtensionOf(path) : name;
    std::ranges::transform(wanted, wanted.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    for (const FormatFacts& facts : AllFormats()) {
        if (!IsNamed(facts, wanted)) continue;
        if (facts.isThere) return facts.format;
        throw UsageError(fmt::format("this kyimg was built without {}; it writes {}", facts.name, ListFormats()));
    }
    if (!name.empty()) throw UsageError(fmt::format("unknown format \"{}\"; there are {}", name, ListFormats()));
    throw UsageError(fmt::format("what to write to {} is not clear: give --format, or an extension to the name: {}",
                                 path == "-" ? "standard output" : path, ListFormats()));
}

std::string ListFormats() {
    return JoinNames([](const FormatFacts& facts) { return facts.isThere; });
}

std::string ListMissingFormats() {
    return JoinNames([](const FormatFacts& facts) { return !facts.isThere; });
}

void CheckHolds(OutputFormat format, const ConvertedFrame& frame) {
    const FormatFacts& wanted = FactsOf(format);
    if (wanted.holds(frame)) return;
    const std::string others =
        JoinNames([&frame](const FormatFacts& facts) { return facts.isThere && facts.holds(frame); });
    throw UsageError(
        fmt::format("{} cannot hold {}; of the formats, these can: {}", wanted.name, DescribeType(frame.type), others));
}

bool HoldsOneFrame(OutputFormat format) { return format != OutputFormat::Pnm && format != OutputFormat::Raw; }

void Encode(OutputFormat format, const Encoding& encoding, const ConvertedFrame& frame, const ByteSink& sink) {
    switch (format) {
        case OutputFormat::Png: return WritePng(frame, encoding.png, sink);
#if defined(KYIMG_HAS_TIFF)
        case OutputFormat::Tiff: return WriteTiff(frame, encoding.tiff, sink);
        case OutputFormat::Dng: return WriteDng(frame, sink);
#endif
#if defined(KYIMG_HAS_JPEG)
        case OutputFormat::Jpeg: return WriteJpeg(frame, encoding.jpegQuality, sink);
#endif
        case OutputFormat::Pnm: return WritePnm(frame, sink);
        case OutputFormat::Npy: return WriteNpy(frame, sink);
        default: return sink(frame.bytes);
    }
}

}  // namespace kyimg
