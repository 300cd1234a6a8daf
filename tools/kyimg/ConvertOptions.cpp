#include "ConvertOptions.h"

#include "Errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <string_view>

namespace kyimg {

namespace {

constexpr std::uint64_t kLongestSide = 0xFFFFFFFFU;

constexpr const char* kExamples = R"(Examples:
  kyimg convert frame.raw --type 0x20010 --size 2592x1536 --bayer GRBG --gain 1.9,1.0,1.6 -o frame.png
  camera-grab | kyimg convert --type "Bayer RGB 8-bits" --size 640x480 --bayer RGGB --to RGB16 \
        --format raw -o - > frame.565
  kyimg convert frame.raw --type BayerRG12 --size 1920x1080 --black auto --white-balance auto \
        --auto-levels --gamma sRGB -o frame.png
        looks right at once, and tells the gains it found
  kyimg convert film.raw --type 0x20010 --size 640x480 --bayer BGGR --frames all -o film.ppm
        writes film-0001.ppm, film-0002.ppm, ...
  kyimg convert frame.raw --type BayerRG12p --size 2592x1536 --gain 1.9,1.0,1.6 -o frame.dng
        for a raw developer, without demosaicing
  kyimg convert frame.yuyv --type "YUV 8-bits 4:2:2" --size 637x480 --stride 1280 -o frame.png)";

std::optional<std::uint64_t> ParseWhole(std::string_view digits) {
    std::uint64_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [parsed, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || parsed != end) return std::nullopt;
    return number;
}

constexpr const char* kInput = "The input";
constexpr const char* kConversion = "The conversion";
constexpr const char* kOutput = "The output";

template <typename Value>
CLI::Option* Add(CLI::App* command, const char* group, const char* name, Value& value, const char* type,
                 const std::string& text) {
    return command->add_option(name, value, text)->group(group)->type_name(type);
}

/// Adds what says where the pixels are. `isNeeded`: whether a command can do without type and size.
void AddLayout(CLI::App* command, ConvertOptions& options, bool isNeeded) {
    Add(command, kInput, "-t,--type", options.type, "TYPE",
        "Pixel type: ID (0x20010 or decimal), library name, or name\nof PFNC, V4L2, GStreamer or FFmpeg (BayerRG8, "
        "YUYV), see\nkyimg list and kyimg info")
        ->required(isNeeded);
    Add(command, kInput, "-s,--size", options.size, "WxH", "Width and height in pixels, like 1920x1080")
        ->required(isNeeded);
    const auto notNegative = [](const std::string& text) {
        return text.starts_with('-') ? "must not be negative" : "";
    };
    Add(command, kInput, "--skip-bytes", options.skipBytes, "N", "Leave out the first N bytes, such as a file's header")
        ->check(notNegative);
    Add(command, kInput, "--stride,--line-bytes", options.stride, "N",
        "Stride: bytes from the start of one line to that of the\n"
        "next. Default: lines without padding, of 4:2:2 and packed\n"
        "types in whole pairs of pixels, of 4:1:1 in whole groups\n"
        "of four")
        ->check(notNegative);
}

void AddBayer(CLI::App* command, ConvertOptions& options) {
    Add(command, kInput, "-b,--bayer", options.bayer, "PATTERN",
        "Bayer pattern: the colours of the first two pixels, then\n"
        "of the two below. When not given: that of the type's name\n"
        "(BayerRG8, RGGB), otherwise GRBG. kyimg patterns shows all")
        ->check(CLI::IsMember({"GRBG", "GBRG", "RGGB", "BGGR"}, CLI::ignore_case));
}

void AddFrame(CLI::App* command, ConvertOptions& options) {
    command
        ->add_option_function<std::uint64_t>(
            "--frame", [&options](std::uint64_t number) { options.frames = fmt::format("{0}-{0}", number); },
            "Which one of an input that holds several frames, from 1")
        ->group(kInput)
        ->type_name("N");
}

void AddInput(CLI::App* command, ConvertOptions& options) {
    command->add_option("INPUT", options.input, "Raw file without header; - or nothing is standard input")
        ->type_name("FILE");
    AddLayout(command, options, true);
}

void AddDemosaic(CLI::App* command, ConvertOptions& options) {
    Add(command, kConversion, "--demosaic", options.demosaic, "HOW",
        "bilinear (the default), or nearest: one colour for each 2x2\n"
        "cell of the Bayer pattern")
        ->check(CLI::IsMember({"nearest", "bilinear"}));
    command
        ->add_flag_callback(
            "-i,--interpolate", [&options] { options.demosaic = "bilinear"; }, "An older name of --demosaic bilinear")
        ->group("");
}

void AddGains(CLI::App* command, ConvertOptions& options) {
    Add(command, kConversion, "-g,--gain", options.gains, "R,G,B",
        "Factors for red, green and blue, like 1.9,1.0,1.6, or one\nfor all, which gray takes as well")
        ->delimiter(',')
        ->allow_extra_args(false);
    Add(command, kConversion, "--offset", options.offsets, "R,G,B",
        "Whole numbers to add after the gain, or one, in values of a\n"
        "source sample: of its high byte for normalized types (but\n"
        "not for Bayer types that are interlaced or have taps), of\n"
        "the 8-bit RGB that comes out of YUV")
        ->delimiter(',')
        ->allow_extra_args(false);
}

/// What makes a raw frame look right at once.
void AddLooks(CLI::App* command, ConvertOptions& options) {
    Add(command, kConversion, "--white-balance", options.whiteBalance, "auto",
        "Find gains that make the bright colours gray, without the\n"
        "saturated ones, and tell them; --gain comes on top")
        ->check(CLI::IsMember({"auto"}));
    Add(command, kConversion, "--black", options.black, "N",
        "Black level to subtract, in values of a source sample, or\n"
        "auto. White stays white");
    command
        ->add_option_function<std::string>(
            "--auto-levels", [&options](const std::string& text) { options.levels = text.empty() ? "0.1,99.9" : text; },
            "Make the darkest samples black and the brightest white.\nDefault percentiles: 0.1,99.9")
        ->group(kConversion)
        ->type_name("[LOW,HIGH]")
        ->expected(0, 1);
    Add(command, kConversion, "--gamma", options.gamma, "G", "Encode light for a screen: 2.2, or sRGB for its curve");
    Add(command, kConversion, "--table", options.table, "FILE",
        "Last, look the samples up: a text file of a line for each\n"
        "value of a sample, of one number or of three");
}

void AddArrangement(CLI::App* command, ConvertOptions& options) {
    Add(command, kOutput, "--crop", options.crop, "X,Y,WxH",
        "Only this part of the frame, before the conversion; the\n"
        "Bayer pattern follows");
    Add(command, kOutput, "--shrink", options.shrink, "N", "Make one pixel of N x N, their mean")
        ->check(CLI::Range(1, 1000));
    Add(command, kOutput, "--rotate", options.rotate, "DEGREES", "Turn the picture clockwise by 90, 180 or 270")
        ->check(CLI::IsMember({90, 180, 270}));
    Add(command, kOutput, "--flip", options.flip, "HOW", "Mirror the picture horizontal (left to right) or vertical")
        ->check(CLI::IsMember({"horizontal", "vertical"}));
}

/// An option that takes one of these words, in any case of letters.
template <typename Value>
void AddChoice(CLI::App* command, const char* name, Value& value, const std::map<std::string, Value>& choices,
               const char* text) {
    command
        ->add_option_function<std::string>(
            name, [&value, choices](const std::string& word) { value = choices.at(word); }, text)
        ->group(kOutput)
        ->type_name("HOW")
        ->check(CLI::IsMember(choices, CLI::ignore_case));
}

void AddEncoding(CLI::App* command, ConvertOptions& options) {
    AddChoice<PngCompression>(
        command, "--png-compression", options.encoding.png,
        {{"fast", PngCompression::Fast}, {"default", PngCompression::Default}, {"best", PngCompression::Best}},
        "fast does not compress, best tries several ways and keeps\n"
        "the smallest: slow, and for frames of a camera hardly\nsmaller than default");
    AddChoice<TiffCompression>(command, "--tiff-compression", options.encoding.tiff,
                               {{"none", TiffCompression::None}, {"deflate", TiffCompression::Deflate}},
                               "Default: none");
    Add(command, kOutput, "--quality", options.encoding.jpegQuality, "N", "Of a JPEG, 1 to 100. Default: 90")
        ->check(CLI::Range(1, 100));
}

void AddOutputRules(CLI::App* command, ConvertOptions& options) {
    command->add_flag("--no-clobber", options.noClobber, "Fail where the file to write exists already")->group(kOutput);
    command->add_flag("-q,--quiet", options.quiet, "No notes and no progress on standard error")->group(kOutput);
}

/// What of the formats is not in this program.
std::string MissingFormatsText() {
    const std::string missing = ListMissingFormats();
    return missing.empty() ? "" : fmt::format(".\nThis kyimg was built without: {}", missing);
}

std::string FormatText() {
    return "png, tiff, jpeg, ppm (of gray: pgm), npy, dng or raw, when\n"
           "the extension of FILE does not tell (also tif, jpg, pnm).\n"
           "The destination type decides between 8 and 16 bits a\n"
           "sample. png and tiff scale 10 to 14 bits to 16 and keep an\n"
           "alpha; ppm, npy and raw have the samples as they are. npy\n"
           "is for NumPy, raw the bytes alone. dng keeps the mosaic\n"
           "as it is for a raw developer, which then knows the Bayer\n"
           "pattern and, from --gain and --black, white and black" +
           MissingFormatsText();
}

}  // namespace

CLI::App* AddConvertCommand(CLI::App& app, ConvertOptions& options) {
    CLI::App* const command = app.add_subcommand("convert", "Convert raw frames to pictures, arrays or raw pixels");
    command->footer(kExamples);
    AddInput(command, options);
    AddBayer(command, options);
    Add(command, kInput, "--frames", options.frames, "WHICH",
        "Frames of an input that holds several: all, N (the first\n"
        "N) or N-M. Without it the input must be a single frame");
    command
        ->add_flag("--continuous", options.isContinuous,
                   "Packed pixels, of which two share three bytes: a pair may\n"
                   "be the last pixel of a line and the first of the next.\n"
                   "Without it each line is whole pairs, also where its width\nis odd")
        ->group(kInput);

    Add(command, kConversion, "--to", options.destination, "TYPE",
        "RGB16, RGB24, BGR24, RGB32, BGR32, or any name or ID as\n"
        "for --type. RGB48 keeps the 10 to 14 bits of Bayer samples.\n"
        "Default: RGB24, for gray types 8-bit gray, for RGB16 itself.\n"
        "YUV counts as BT.601, with Y from 16 to 235");
    AddDemosaic(command, options);
    AddGains(command, options);
    AddLooks(command, options);
    Add(command, kConversion, "--threads", options.threads, "N",
        "Convert each frame on N threads. Default: as many as the\n"
        "CPU has cores, fewer for small frames. The result is the\n"
        "same with any number")
        ->check(CLI::Range(1, 1024));

    Add(command, kOutput, "-o,--output", options.output, "FILE",
        "File to write; - is standard output. Several frames get\nnumbers: out-0001.png, out-0002.png, ...")
        ->required();
    Add(command, kOutput, "--format", options.format, "FORMAT", FormatText());
    AddArrangement(command, options);
    AddEncoding(command, options);
    AddOutputRules(command, options);
    return command;
}

CLI::App* AddPatternsCommand(CLI::App& app, const char* name, ConvertOptions& options) {
    CLI::App* const command =
        app.add_subcommand(name, "Demosaic a frame by all four Bayer patterns, to see which one is right");
    command->footer(
        "The sheet has GRBG and GBRG above, RGGB and BGGR below. Frames wider than about 800\n"
        "pixels are made smaller by a whole factor. Dark frames of more than 8 bits need a --gain.\n\n"
        "Examples:\n"
        "  kyimg patterns frame.raw --type BayerRG8 --size 1920x1080\n"
        "  kyimg patterns dark.raw --type BayerRG12p --size 2592x1536 --gain 8 -o patterns.png");
    AddInput(command, options);
    AddFrame(command, options);

    AddDemosaic(command, options);
    command
        ->add_flag_callback(
            "--no-interpolate", [&options] { options.demosaic = "nearest"; }, "An older name of --demosaic nearest")
        ->group("");
    AddGains(command, options);

    options.output = "patterns.png";
    Add(command, kOutput, "-o,--output", options.output, "FILE",
        "File to write; - is standard output. Default: patterns.png");
    Add(command, kOutput, "--format", options.format, "FORMAT",
        "png, tiff, jpeg, ppm or npy, when the extension of FILE\ndoes not tell" + MissingFormatsText());
    AddEncoding(command, options);
    AddOutputRules(command, options);
    return command;
}

void AddInputOptions(CLI::App* command, ConvertOptions& options) {
    command->add_option("INPUT", options.input, "Raw file without header, PNG or PNM; - or nothing is standard input")
        ->type_name("FILE");
    AddInputLayout(command, options);
}

void AddInputLayout(CLI::App* command, ConvertOptions& options) {
    AddLayout(command, options, false);
    AddBayer(command, options);
    AddFrame(command, options);
}

ImageSize ParseSize(const std::string& text, const char* option) {
    const std::size_t cross = std::min(text.find_first_of("xX"), text.size());
    const auto width = ParseWhole(std::string_view(text).substr(0, cross));
    const auto height = ParseWhole(std::string_view(text).substr(std::min(cross + 1, text.size())));
    if (!width || !height) throw UsageError(fmt::format("{}: \"{}\" is not like 1920x1080", option, text));
    if (*width == 0 || *height == 0) throw UsageError(fmt::format("{}: an image of {} has no pixels", option, text));
    if (*width > kLongestSide || *height > kLongestSide)
        throw UsageError(fmt::format("{}: {} is too large; a side has at most {} pixels", option, text, kLongestSide));
    return {static_cast<std::uint32_t>(*width), static_cast<std::uint32_t>(*height)};
}

CropArea ParseCrop(const std::string& text) {
    const std::string_view rest(text);
    const std::size_t first = std::min(rest.find(','), rest.size());
    const std::size_t second = std::min(rest.find(',', first + 1), rest.size());
    const auto left = ParseWhole(rest.substr(0, first));
    const auto top = ParseWhole(rest.substr(std::min(first + 1, second), second - std::min(first + 1, second)));
    if (!left || !top || *left > kLongestSide || *top > kLongestSide || second == rest.size())
        throw UsageError(fmt::format("--crop: \"{}\" is not like 100,50,640x480", text));
    return {static_cast<std::uint32_t>(*left), static_cast<std::uint32_t>(*top),
            ParseSize(text.substr(second + 1), "--crop")};
}

FrameRange ParseFrames(const std::string& text) {
    if (text.empty()) return {1, 1, false};
    if (text == "all") return {1, FrameRange::kNoEnd, false};
    const std::size_t dash = text.find('-');
    const auto first = ParseWhole(std::string_view(text).substr(0, dash));
    const auto last = dash == std::string::npos ? first : ParseWhole(std::string_view(text).substr(dash + 1));
    constexpr std::uint64_t kMostFrames = 1'000'000'000;
    if (!first || !last || *first == 0 || *last < *first || *last > kMostFrames)
        throw UsageError(fmt::format("--frames: \"{}\" is not all, N or N-M with frames from 1", text));
    return {dash == std::string::npos ? 1 : *first, *last, true};
}

}  // namespace kyimg
