#include "JpegWriter.h"

#include "Errors.h"

#include <fmt/format.h>

#include <csetjmp>
#include <cstdio>  // which jpeglib.h needs
#include <exception>
#include <vector>

#include <jpeglib.h>

namespace kyimg {

namespace {

struct Compressor {
    jpeg_compress_struct jpeg = {};
    jpeg_error_mgr errors = {};
    jpeg_destination_mgr destination = {};
    std::jmp_buf stop = {};
    char message[JMSG_LENGTH_MAX] = "";
    const ByteSink& sink;
    std::exception_ptr error;  ///< must not pass through the library
    std::uint8_t buffer[1 << 16];

    explicit Compressor(const ByteSink& byteSink);
    ~Compressor() { jpeg_destroy_compress(&jpeg); }
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;

    void Flush(std::size_t bytes) {
        try {
            sink({buffer, bytes});
        } catch (...) {
            error = std::current_exception();
        }
        if (error) std::longjmp(stop, 1);
        destination.next_output_byte = buffer;
        destination.free_in_buffer = sizeof buffer;
    }
};

Compressor& CompressorOf(j_compress_ptr jpeg) { return *static_cast<Compressor*>(jpeg->client_data); }

[[noreturn]] void Stop(j_common_ptr jpeg) {
    auto& compressor = *static_cast<Compressor*>(jpeg->client_data);
    jpeg->err->format_message(jpeg, compressor.message);
    std::longjmp(compressor.stop, 1);
}

Compressor::Compressor(const ByteSink& byteSink) : sink(byteSink) {
    jpeg.err = jpeg_std_error(&errors);
    jpeg.client_data = this;
    errors.error_exit = Stop;
    destination.next_output_byte = buffer;
    destination.free_in_buffer = sizeof buffer;
    destination.init_destination = [](j_compress_ptr) {};
    destination.empty_output_buffer = [](j_compress_ptr full) -> boolean {
        CompressorOf(full).Flush(sizeof buffer);
        return TRUE;
    };
    destination.term_destination = [](j_compress_ptr last) {
        Compressor& self = CompressorOf(last);
        self.Flush(sizeof buffer - self.destination.free_in_buffer);
    };
}

/// False when the library stopped. It does so by a jump out of this function, so nothing in here may need a destructor.
bool Compress(Compressor& compressor, const PictureRows& rows, int quality, std::uint8_t* row) {
    if (setjmp(compressor.stop) != 0) return false;

    jpeg_compress_struct& jpeg = compressor.jpeg;
    jpeg_create_compress(&jpeg);
    jpeg.dest = &compressor.destination;
    jpeg.image_width = rows.GetWidth();
    jpeg.image_height = rows.GetHeight();
    jpeg.input_components = static_cast<int>(rows.GetChannels());
    jpeg.in_color_space = rows.GetChannels() == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, quality, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height) {
        rows.CopyRow(jpeg.next_scanline, row);
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    return true;
}

}  // namespace

void WriteJpeg(const ConvertedFrame& frame, int quality, const ByteSink& sink) {
    const PictureRows rows(frame, {});
    std::vector<std::uint8_t> row(rows.GetRowSize());
    Compressor compressor(sink);
    if (Compress(compressor, rows, quality, row.data())) return;
    if (compressor.error) std::rethrow_exception(compressor.error);
    throw Failure(fmt::format("cannot make a JPEG: {}", compressor.message));
}

}  // namespace kyimg
