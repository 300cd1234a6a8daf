#include "SampleImage.h"

#include "Conversion.h"
#include "Errors.h"
#include "FrameReader.h"
#include "Picture.h"
#include "RawInput.h"
#include "Routes.h"
#include "TypeNames.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>
#include <png.h>

#include <algorithm>
#include <cctype>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>

namespace kyimg {

namespace {

/// The type whose samples are the file's own, or those of RGB.
std::int64_t TypeToCount(std::int64_t source) {
    if (const auto plain = PlainType(*KyPixelTypeFactory::FindPixelType(source))) return *plain;
    ConvertedFrame frame;
    frame.type = source;
    frame.width = frame.height = 1;
    const auto layout = FindPictureLayout(frame);
    return layout && !layout->is565 ? source : std::int64_t{KY_TYPE_RGB24};
}

/// "RGGB" is R, Gr, Gb, B: a green is called after its line.
std::vector<std::string> NameSites(std::string pattern) {
    if (pattern.empty()) return {"x0y0", "x1y0", "x0y1", "x1y1"};
    std::ranges::transform(pattern, pattern.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    std::vector<std::string> names;
    for (std::size_t i = 0; i < 4; ++i) {
        const char neighbour = pattern[i ^ 1];
        names.push_back(pattern[i] != 'G' ? std::string(1, pattern[i]) : neighbour == 'R' ? "Gr" : "Gb");
    }
    return names;
}

std::string FindPattern(const ConvertOptions& input) {
    return input.bayer.empty() ? PatternText(FindNamedType(input.type).bayerFlags) : input.bayer;
}

/// All rows, as numbers.
void CopySamples(const PictureRows& rows, SampleImage& image) {
    const bool isWide = rows.GetSampleBytes() == 2;
    std::vector<std::uint8_t> row(rows.GetRowSize());
    image.samples.reserve(image.GetLineSize() * image.height);
    for (std::uint32_t y = 0; y < image.height; ++y) {
        rows.CopyRow(y, row.data());
        for (std::size_t i = 0; i < row.size(); i += isWide ? 2 : 1)
            image.samples.push_back(static_cast<std::uint16_t>(isWide ? row[i] << 8 | row[i + 1] : row[i]));
    }
}

using FilePointer = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

struct PngReader {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png == nullptr ? nullptr : png_create_info_struct(png);

    PngReader() = default;
    ~PngReader() { png_destroy_read_struct(&png, &info, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
};

/// False when libpng stopped, by a jump: nothing in here may need a destructor.
bool DecodePng(png_structp png, png_infop info, std::FILE* file) {
    if (setjmp(png_jmpbuf(png)) != 0) return false;
    png_init_io(png, file);
    png_read_png(png, info, PNG_TRANSFORM_EXPAND | PNG_TRANSFORM_STRIP_ALPHA, nullptr);
    return true;
}

SampleImage ReadPng(const std::string& path) {
    const FilePointer file(std::fopen(path.c_str(), "rb"), std::fclose);
    PngReader reader;
    if (file == nullptr || reader.info == nullptr || !DecodePng(reader.png, reader.info, file.get()))
        throw Failure(fmt::format("cannot read {} as a PNG", path));
    SampleImage image;
    image.width = png_get_image_width(reader.png, reader.info);
    image.height = png_get_image_height(reader.png, reader.info);
    image.bits = png_get_bit_depth(reader.png, reader.info);
    image.channels = {"R", "G", "B"};
    if (png_get_channels(reader.png, reader.info) == 1) image.channels = {"gray"};
    for (std::uint32_t y = 0; y < image.height; ++y) {
        const std::uint8_t* const row = png_get_rows(reader.png, reader.info)[y];
        for (std::size_t i = 0; i < image.GetLineSize(); ++i)
            image.samples.push_back(
                static_cast<std::uint16_t>(image.bits == 16 ? row[2 * i] << 8 | row[2 * i + 1] : row[i]));
    }
    return image;
}

/// Reads a number of a PNM's header, after white space and comments, and the one byte that follows.
std::uint32_t ReadHeaderNumber(std::FILE* file) {
    int c = std::fgetc(file);
    while (c == '#' || (c != EOF && std::isspace(c) != 0)) {
        if (c == '#')
            while (c != '\n' && c != EOF) c = std::fgetc(file);
        c = std::fgetc(file);
    }
    std::uint32_t number = 0;
    for (; c >= '0' && c <= '9' && number < 100'000'000; c = std::fgetc(file))
        number = 10 * number + static_cast<std::uint32_t>(c - '0');
    return number;
}

SampleImage ReadPnm(const std::string& path) {
    const FilePointer file(std::fopen(path.c_str(), "rb"), std::fclose);
    SampleImage image;
    std::fgetc(file.get());
    image.channels = {"R", "G", "B"};
    if (std::fgetc(file.get()) == '5') image.channels = {"gray"};
    image.width = ReadHeaderNumber(file.get());
    image.height = ReadHeaderNumber(file.get());
    const std::uint32_t largest = ReadHeaderNumber(file.get());
    if (image.width == 0 || image.height == 0 || largest == 0 || largest > 0xFFFF)
        throw Failure(fmt::format("cannot read {} as a PNM: its header is wrong", path));
    image.bits = 1;
    while (image.bits < 16 && image.GetLargest() < largest) ++image.bits;
    const bool isWide = largest > 255;
    const std::size_t lineBytes = image.GetLineSize() * (isWide ? 2 : 1);
    std::vector<std::uint8_t> line(lineBytes);
    for (std::uint32_t y = 0; y < image.height; ++y) {
        if (std::fread(line.data(), 1, lineBytes, file.get()) != lineBytes)
            throw Failure(fmt::format("cannot read {} as a PNM: it ends in line {}", path, y));
        for (std::size_t i = 0; i < lineBytes; i += isWide ? 2 : 1)
            image.samples.push_back(static_cast<std::uint16_t>(isWide ? line[i] << 8 | line[i + 1] : line[i]));
    }
    return image;
}

std::string ReadStart(const std::string& path) {
    RawInput input(path);
    std::uint8_t start[8] = {};
    input.Read(start, sizeof start);
    return {start, start + sizeof start};
}

bool IsPng(const std::string& start) { return start.starts_with("\x89PNG"); }

bool IsPnm(const std::string& start) {
    return start.size() > 2 && (start.starts_with("P5") || start.starts_with("P6")) &&
           std::isspace(static_cast<unsigned char>(start[2])) != 0;
}

/// Options that leave the samples of a frame as they are.
ConvertOptions PlainOptions(const ConvertOptions& input) {
    ConvertOptions options;
    options.input = input.input;
    options.type = input.type;
    options.size = input.size;
    options.skipBytes = input.skipBytes;
    options.stride = input.stride;
    options.isContinuous = input.isContinuous;
    options.frames = input.frames;
    options.threads = input.threads;
    options.destination = fmt::format("0x{:X}", TypeToCount(FindType(input.type)));
    return options;
}

SampleImage MakeSamples(const ConvertOptions& input, const ConvertedFrame& frame) {
    const PictureRows rows(frame, {false, false, true});
    SampleImage image;
    image.width = frame.width;
    image.height = frame.height;
    image.bits = rows.GetBits();
    image.isMosaic = KyPixelTypeFactory::FindPixelType(frame.type)->IsBayerPattern();
    image.channels = {"gray"};
    if (rows.GetChannels() == 3) image.channels = {"R", "G", "B"};
    if (image.isMosaic) image.channels = NameSites(FindPattern(input));
    CopySamples(rows, image);
    return image;
}

/// Of the first frame that is wanted.
SampleImage ReadRawSamples(const ConvertOptions& input) {
    const ConvertOptions options = PlainOptions(input);
    const Conversion conversion(options);
    FrameReader reader(options, conversion.GetSource(), ParseFrames(options.frames), "--frame N");
    reader.Next();
    return MakeSamples(input, conversion.Convert(reader.GetFrame()));
}

}  // namespace

SampleImage ReadSamples(const ConvertOptions& input, const std::string& path) {
    const std::string start = path == "-" ? "" : ReadStart(path);
    if (IsPng(start)) return ReadPng(path);
    if (IsPnm(start)) return ReadPnm(path);
    if (input.type.empty() || input.size.empty())
        throw UsageError(fmt::format("{} is no PNG or PNM: --type and --size are needed, see kyimg guess", path));
    ConvertOptions options = input;
    options.input = path;
    return ReadRawSamples(options);
}

SampleImage SamplesOfFrame(const ConvertOptions& input, const std::vector<std::uint8_t>& frame) {
    return MakeSamples(input, Conversion(PlainOptions(input)).Convert(frame));
}

}  // namespace kyimg
