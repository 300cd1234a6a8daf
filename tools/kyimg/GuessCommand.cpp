#include "GuessCommand.h"

#include "Columns.h"
#include "ContactSheet.h"
#include "Conversion.h"
#include "Errors.h"
#include "FrameReader.h"
#include "FrameWriter.h"
#include "Json.h"
#include "OutputFormat.h"
#include "RawInput.h"
#include "TypeNames.h"
#include "guess/FrameGuess.h"

#include <fmt/format.h>

#include <cstring>
#include <filesystem>
#include <string_view>

namespace kyimg {

namespace {

constexpr const char* kExamples =
    R"(The file is read as every layout that kyimg can guess, and ranked by how well each sample follows from its
neighbours of the same colour, by how usual the size and the header are, and by what the file's name says.
Not looked for: several taps, interlaced frames, floats, pixels of less than 8 bits.
Which of two colours is red and which is blue, no byte tells: look at the sheet.

Examples:
  kyimg guess frame.raw
  kyimg guess frame.raw --sheet guesses.png     the five best as pictures
  kyimg guess *.raw --json | jq -r '.[].guesses[0].type')";

/// A file format that says itself what it holds, by its first bytes.
struct Signature {
    const char* name;
    std::string_view bytes;
};
constexpr Signature kSignatures[] = {
    {"a PNG", {"\x89PNG", 4}},
    {"a JPEG", {"\xFF\xD8\xFF", 3}},
    {"a TIFF (or DNG)", {"II*\0", 4}},
    {"a TIFF (or DNG)", {"MM\0*", 4}},
    {"a GIF", {"GIF8", 4}},
    {"a PNM", {"P5\n", 3}},
    {"a PNM", {"P6\n", 3}},
    {"a NumPy array", {"\x93NUMPY", 6}},
    {"a FITS", {"SIMPLE  =", 9}},
    {"a RIFF", {"RIFF", 4}},
};

std::vector<std::uint8_t> ReadFile(const std::string& path) {
    constexpr std::size_t kPiece = std::size_t{16} << 20;
    RawInput input(path);
    std::vector<std::uint8_t> bytes;
    for (;;) {
        const std::size_t held = bytes.size();
        bytes.resize(held + kPiece);
        const std::uint64_t got = input.Read(bytes.data() + held, kPiece);
        bytes.resize(held + got);
        if (got < kPiece) return bytes;
    }
}

/// Null for a file that says nothing.
const char* KnownFormat(const std::vector<std::uint8_t>& bytes) {
    for (const Signature& signature : kSignatures)
        if (bytes.size() > signature.bytes.size() &&
            std::memcmp(bytes.data(), signature.bytes.data(), signature.bytes.size()) == 0)
            return signature.name;
    return nullptr;
}

/// The options of `kyimg convert` that read a guess's first frame.
ConvertOptions OptionsOf(const FrameGuess& guess, const std::string& input) {
    ConvertOptions options;
    options.input = input;
    options.type = guess.typeName;
    options.size = fmt::format("{}x{}", guess.width, guess.height);
    if (guess.bayerFlags != 0 && guess.typeName.starts_with("0x")) options.bayer = PatternText(guess.bayerFlags);
    options.skipBytes = guess.headerBytes;
    if (guess.isPadded) options.stride = guess.stride;
    if (guess.trailerBytes != 0 || guess.frames > 1) options.frames = "1-1";
    options.destination = "RGB24";
    return options;
}

std::string Quote(const std::string& text) {
    return text.find_first_of(" '\"()[]&;$*?") == std::string::npos ? text : fmt::format("'{}'", text);
}

std::string CommandOf(const FrameGuess& guess, const std::string& input) {
    const ConvertOptions options = OptionsOf(guess, input);
    std::string command = fmt::format("kyimg convert {} --type {} --size {}", Quote(input), options.type, options.size);
    if (!options.bayer.empty()) command += " --bayer " + options.bayer;
    if (options.skipBytes != 0) command += fmt::format(" --skip-bytes {}", options.skipBytes);
    if (options.stride != 0) command += fmt::format(" --stride {}", options.stride);
    if (guess.frames > 1)
        command += " --frames all";
    else if (!options.frames.empty())
        command += " --frames 1";
    return command + " -o " + Quote(std::filesystem::path(input).stem().string() + ".png");
}

std::string DescribeGuess(const FrameGuess& guess) {
    std::string text = fmt::format("{} {}x{}", guess.typeName, guess.width, guess.height);
    if (guess.bayerFlags != 0) text += fmt::format(", pattern {}", PatternText(guess.bayerFlags));
    if (guess.isPadded) text += fmt::format(", stride {}", guess.stride);
    if (guess.headerBytes != 0) text += fmt::format(", header of {} bytes", guess.headerBytes);
    if (guess.trailerBytes != 0) text += fmt::format(", {} bytes at the end", guess.trailerBytes);
    if (guess.frames > 1) text += fmt::format(", {} frames", guess.frames);
    return text;
}

void PrintText(const std::string& input, const std::vector<FrameGuess>& guesses) {
    fmt::print("{}\n", input);
    for (std::size_t i = 0; i < guesses.size(); ++i) {
        const FrameGuess& guess = guesses[i];
        fmt::print("\n{}. {:>3.0f} %  {}\n", i + 1, 100 * guess.likelihood, DescribeGuess(guess));
        PrintLine("           ", LibraryName(guess.type));
        for (const std::string& evidence : guess.evidence) PrintLine("           ", evidence);
        fmt::print("           {}\n", CommandOf(guess, input));
    }
}

Json ToJson(const std::string& input, const std::vector<FrameGuess>& guesses) {
    Json list = Json::array();
    for (const FrameGuess& guess : guesses)
        list.push_back({{"type", guess.typeName},
                        {"id", FormatTypeID(guess.type)},
                        {"width", guess.width},
                        {"height", guess.height},
                        {"stride", guess.stride},
                        {"padded", guess.isPadded},
                        {"headerBytes", guess.headerBytes},
                        {"trailerBytes", guess.trailerBytes},
                        {"frames", guess.frames},
                        {"bayer", guess.bayerFlags == 0 ? Json() : Json(PatternText(guess.bayerFlags))},
                        {"likelihood", guess.likelihood},
                        {"bitsPerByte", guess.bitsPerByte},
                        {"evidence", guess.evidence},
                        {"command", CommandOf(guess, input)}});
    return {{"file", input}, {"guesses", list}};
}

/// The best guesses as pictures, each with its number.
void WriteSheet(const GuessOptions& options, const std::vector<FrameGuess>& guesses) {
    std::vector<SheetTile> tiles;
    for (std::size_t i = 0; i < guesses.size(); ++i) {
        ConvertOptions convert = OptionsOf(guesses[i], options.inputs.front());
        convert.levels = "0.1,99.9";
        Conversion conversion(convert);
        FrameReader reader(convert, conversion.GetSource(), ParseFrames("1-1"), "");
        reader.Next();
        conversion.Adapt(reader.GetFrame());
        tiles.push_back({std::to_string(i + 1), ShrinkForSheet(conversion.Convert(reader.GetFrame()))});
    }
    WritePicture(options.sheet, {options.inputs.front()}, ArrangeSheet(tiles));
}

std::vector<FrameGuess> GuessInput(const std::string& input, std::size_t most) {
    const std::vector<std::uint8_t> bytes = ReadFile(input);
    if (const char* const known = KnownFormat(bytes))
        throw Failure(fmt::format("{} is {} file by its first bytes, and no raw frame", input, known));
    std::vector<FrameGuess> guesses = GuessFrame(bytes, input, most);
    if (guesses.empty())
        throw Failure(fmt::format("{}: its {} bytes are too few, or too much alike, for a guess", input, bytes.size()));
    return guesses;
}

}  // namespace

CLI::App* AddGuessCommand(CLI::App& app, GuessOptions& options) {
    CLI::App* const command =
        app.add_subcommand("guess", "Guess pixel type, size, stride, header and Bayer pattern of raw files");
    command->footer(kExamples);
    command->add_option("FILE", options.inputs, "Raw files")->required()->type_name("");
    command->add_option("-n,--most", options.most, "Guesses to show of each file (5)")->check(CLI::Range(1, 100));
    command->add_option("--sheet", options.sheet, "Contact sheet of these to write (.png or .ppm); of a single FILE");
    command->add_flag("--json", options.json, "As JSON, for programs");
    return command;
}

void RunGuess(const GuessOptions& options) {
    if (!options.sheet.empty() && (options.inputs.size() != 1 || options.inputs.front() == "-"))
        throw UsageError("--sheet: a contact sheet is of a single file, which is read twice");
    if (!options.sheet.empty() && FindOutputFormat(options.sheet, "") == OutputFormat::Raw)
        throw UsageError("a sheet is a picture: png and ppm can be written");
    Json list = Json::array();
    for (const std::string& input : options.inputs) {
        const std::vector<FrameGuess> guesses = GuessInput(input, options.most);
        if (options.json) {
            list.push_back(ToJson(input, guesses));
        } else {
            if (input != options.inputs.front()) fmt::print("\n");
            PrintText(input, guesses);
        }
        if (!options.sheet.empty()) WriteSheet(options, guesses);
    }
    if (options.json) PrintJson(list);
}

}  // namespace kyimg
