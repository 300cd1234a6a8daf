#include "PngWriter.h"

#include "Errors.h"

#include <fmt/format.h>
#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <new>

namespace kyimg {

namespace {

struct Sink {
    std::vector<std::uint8_t> bytes;
    char message[200] = "";
};

void Append(png_structp png, png_bytep data, std::size_t size) {
    auto& sink = *static_cast<Sink*>(png_get_io_ptr(png));
    bool done = false;
    try {
        sink.bytes.insert(sink.bytes.end(), data, data + size);
        done = true;
    } catch (const std::bad_alloc&) {  // must not pass through libpng
    }
    if (!done) png_error(png, "out of memory");
}

void Flush(png_structp) {}

[[noreturn]] void Stop(png_structp png, png_const_charp message) {
    auto& sink = *static_cast<Sink*>(png_get_error_ptr(png));
    std::snprintf(sink.message, sizeof sink.message, "%s", message);
    png_longjmp(png, 1);
}

void IgnoreWarning(png_structp, png_const_charp) {}

/// False when libpng stopped. It does so by a jump out of this function, so nothing in here may need a destructor.
bool Write(png_structp png, png_infop info, const PictureRows& rows, std::uint8_t* row) {
    if (setjmp(png_jmpbuf(png)) != 0) return false;

    const PictureLayout& layout = rows.GetLayout();
    const int depth = static_cast<int>(8 * layout.GetSampleBytes());
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    // Photographs with noise hardly get smaller with more effort.
    png_set_compression_level(png, 4);
    png_set_IHDR(png, info, rows.GetWidth(), rows.GetHeight(), depth,
                 layout.channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const bool scaled = static_cast<int>(layout.bits) < depth;
    const auto bits = static_cast<png_byte>(layout.bits);
    const png_color_8 significant = {bits, bits, bits, bits, bits};
    if (scaled) png_set_sBIT(png, info, &significant);
    png_write_info(png, info);
    if (scaled) png_set_shift(png, &significant);
    for (std::uint32_t y = 0; y < rows.GetHeight(); ++y) {
        rows.CopyRow(y, row);
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

struct PngStructs {
    png_structp png;
    png_infop info;

    explicit PngStructs(Sink& sink)
        : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, &sink, Stop, IgnoreWarning)),
          info(png == nullptr ? nullptr : png_create_info_struct(png)) {
        if (info != nullptr) png_set_write_fn(png, &sink, Append, Flush);
    }
    ~PngStructs() { png_destroy_write_struct(&png, &info); }
    PngStructs(const PngStructs&) = delete;
    PngStructs& operator=(const PngStructs&) = delete;
};

}  // namespace

std::vector<std::uint8_t> EncodePng(const PictureRows& rows) {
    Sink sink;
    std::vector<std::uint8_t> row(rows.GetRowSize());
    PngStructs structs(sink);
    if (structs.info == nullptr) throw std::bad_alloc();
    if (!Write(structs.png, structs.info, rows, row.data()))
        throw Failure(fmt::format("cannot make a PNG: {}", sink.message));
    return std::move(sink.bytes);
}

}  // namespace kyimg
