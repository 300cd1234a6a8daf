#include "PngWriter.h"

#include "Errors.h"

#include <fmt/format.h>
#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <exception>
#include <new>
#include <numeric>
#include <vector>

namespace kyimg {

namespace {

struct Effort {
    int filters;
    int strategy;
    int level;
};

constexpr Effort kStored = {PNG_FILTER_NONE, Z_DEFAULT_STRATEGY, 0};

/// The faster the further ahead. Each is the best for some frames of cameras, whose noise repeats nothing: to search for
/// repetitions takes long and mostly makes a larger file.
constexpr Effort kQuick[] = {
    {PNG_FILTER_AVG, Z_HUFFMAN_ONLY, 1},      // 8-bit colours
    {PNG_FILTER_PAETH, Z_HUFFMAN_ONLY, 1},    // 16 bits
    {PNG_FILTER_PAETH, Z_RLE, 1},             // nearest-neighbour demosaicing: cells of four like pixels
    {PNG_FILTER_NONE, Z_DEFAULT_STRATEGY, 1}  // Bayer mosaics: neighbours are of another colour; and flat areas
};

/// For pictures with flat areas and repetitions, too.
constexpr Effort kPainstaking[] = {{PNG_FILTER_AVG, Z_HUFFMAN_ONLY, 1}, {PNG_FILTER_PAETH, Z_HUFFMAN_ONLY, 1},
                                   {PNG_FILTER_PAETH, Z_RLE, 1},        {PNG_FILTER_NONE, Z_DEFAULT_STRATEGY, 9},
                                   {PNG_FILTER_PAETH, Z_FILTERED, 6},   {PNG_ALL_FILTERS, Z_FILTERED, 6}};

struct Destination {
    const ByteSink& sink;
    std::exception_ptr error;  ///< must not pass through libpng
    char message[200] = "";
};

void Append(png_structp png, png_bytep data, std::size_t size) {
    auto& destination = *static_cast<Destination*>(png_get_io_ptr(png));
    try {
        destination.sink({data, size});
    } catch (...) {
        destination.error = std::current_exception();
    }
    if (destination.error) png_error(png, "cannot write");
}

void Flush(png_structp) {}

[[noreturn]] void Stop(png_structp png, png_const_charp message) {
    auto& destination = *static_cast<Destination*>(png_get_error_ptr(png));
    std::snprintf(destination.message, sizeof destination.message, "%s", message);
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

int ColourType(const PictureRows& rows) {
    switch (rows.GetChannels()) {
        case 1: return PNG_COLOR_TYPE_GRAY;
        case 3: return PNG_COLOR_TYPE_RGB;
        default: return PNG_COLOR_TYPE_RGB_ALPHA;
    }
}

void SetEffort(png_structp png, const Effort& effort) {
    png_set_filter(png, PNG_FILTER_TYPE_BASE, effort.filters);
    png_set_compression_strategy(png, effort.strategy);
    png_set_compression_level(png, effort.level);
    png_set_compression_mem_level(png, 9);  // blocks of 32 K symbols: fewer Huffman tables
    png_set_compression_buffer_size(png, 1 << 18);
}

/// False when libpng stopped. It does so by a jump out of this function, so nothing in here may need a destructor.
bool Write(png_structp png, png_infop info, const PictureRows& rows, const std::vector<std::uint32_t>& lines,
           const Effort& effort, std::uint8_t* row) {
    if (setjmp(png_jmpbuf(png)) != 0) return false;

    const int depth = static_cast<int>(8 * rows.GetSampleBytes());
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    SetEffort(png, effort);
    png_set_IHDR(png, info, rows.GetWidth(), static_cast<png_uint_32>(lines.size()), depth, ColourType(rows),
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const auto bits = static_cast<png_byte>(rows.GetBits());
    const png_color_8 significant = {bits, bits, bits, bits, bits};
    if (bits < depth) png_set_sBIT(png, info, &significant);
    png_write_info(png, info);
    for (const std::uint32_t y : lines) {
        rows.CopyRow(y, row);
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

struct PngStructs {
    png_structp png;
    png_infop info;

    explicit PngStructs(Destination& destination)
        : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &destination, Stop, IgnoreWarning)),
          info(png == nullptr ? nullptr : png_create_info_struct(png)) {
        if (info != nullptr) png_set_write_fn(png, &destination, Append, Flush);
    }
    ~PngStructs() { png_destroy_write_struct(&png, &info); }
    PngStructs(const PngStructs&) = delete;
    PngStructs& operator=(const PngStructs&) = delete;
};

/// Writes a PNG of these lines.
void Write(const PictureRows& rows, const std::vector<std::uint32_t>& lines, const Effort& effort,
           const ByteSink& sink) {
    Destination destination = {sink, nullptr};
    std::vector<std::uint8_t> row(rows.GetRowSize());
    PngStructs structs(destination);
    if (structs.info == nullptr) throw std::bad_alloc();
    if (Write(structs.png, structs.info, rows, lines, effort, row.data())) return;
    if (destination.error) std::rethrow_exception(destination.error);
    throw Failure(fmt::format("cannot make a PNG: {}", destination.message));
}

std::vector<std::uint32_t> AllLines(const PictureRows& rows) {
    std::vector<std::uint32_t> lines(rows.GetHeight());
    std::iota(lines.begin(), lines.end(), 0U);
    return lines;
}

/// Two blocks of lines that stand for all: of a large picture, every 32nd. Filters compare lines with those above, so
/// lines stay together; and so do the two of a Bayer cell.
std::vector<std::uint32_t> SampleLines(const PictureRows& rows) {
    const std::uint32_t height = rows.GetHeight();
    const std::uint32_t block = std::max(32U, height / 64);
    if (height < 4 * block) return AllLines(rows);
    std::vector<std::uint32_t> lines;
    for (const std::uint32_t first : {height / 3, height / 3 * 2})
        for (std::uint32_t line = 0; line < block; ++line) lines.push_back(first / 2 * 2 + line);
    return lines;
}

/// The first effort whose file is hardly larger than the smallest one.
Effort FindEffort(std::span<const Effort> efforts, const PictureRows& rows, const std::vector<std::uint32_t>& lines) {
    std::vector<std::size_t> sizes;
    for (const Effort& effort : efforts) {
        std::size_t& size = sizes.emplace_back(0);
        Write(rows, lines, effort, [&size](std::span<const std::uint8_t> bytes) { size += bytes.size(); });
    }
    const std::size_t enough = std::ranges::min(sizes) * 102 / 100;
    const auto found = std::ranges::find_if(sizes, [enough](std::size_t size) { return size <= enough; });
    return efforts[static_cast<std::size_t>(found - sizes.begin())];
}

Effort ChooseEffort(PngCompression compression, const PictureRows& rows) {
    switch (compression) {
        case PngCompression::Fast: return kStored;
        case PngCompression::Best: return FindEffort(kPainstaking, rows, AllLines(rows));
        default: return FindEffort(kQuick, rows, SampleLines(rows));
    }
}

}  // namespace

void WritePng(const ConvertedFrame& frame, PngCompression compression, const ByteSink& sink) {
    const PictureRows rows(frame, {true, true, true});
    Write(rows, AllLines(rows), ChooseEffort(compression, rows), sink);
}

}  // namespace kyimg
