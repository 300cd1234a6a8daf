#include "TiffWriter.h"

#include "Errors.h"

#include <KyImgLib/conversion/KyPixelConverter.h>

#include <fmt/format.h>
#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace kyimg {

namespace {

/// A file in memory: libtiff writes parts of it again, which a pipe could not take.
struct MemoryFile {
    std::vector<std::uint8_t> bytes;
    std::size_t position = 0;
};

MemoryFile& FileOf(thandle_t handle) { return *static_cast<MemoryFile*>(handle); }

tmsize_t Read(thandle_t handle, void* data, tmsize_t size) {
    MemoryFile& file = FileOf(handle);
    const std::size_t left = file.bytes.size() - std::min(file.position, file.bytes.size());
    const std::size_t count = std::min(left, static_cast<std::size_t>(size));
    std::memcpy(data, file.bytes.data() + file.position, count);
    file.position += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t Write(thandle_t handle, void* data, tmsize_t size) {
    MemoryFile& file = FileOf(handle);
    const std::size_t end = file.position + static_cast<std::size_t>(size);
    try {
        if (end > file.bytes.size()) file.bytes.resize(end);
    } catch (const std::bad_alloc&) {  // must not pass through libtiff
        return -1;
    }
    std::memcpy(file.bytes.data() + file.position, data, static_cast<std::size_t>(size));
    file.position = end;
    return size;
}

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
    MemoryFile& file = FileOf(handle);
    const std::size_t base = whence == SEEK_CUR ? file.position : whence == SEEK_END ? file.bytes.size() : 0;
    return file.position = base + static_cast<std::size_t>(offset);
}

toff_t Size(thandle_t handle) { return FileOf(handle).bytes.size(); }
int Close(thandle_t) { return 0; }

class TiffFile {
public:
    TiffFile(const PictureRows& pictureRows, bool isBig) : rows(pictureRows) {
        TIFFSetErrorHandler(nullptr);  // a call that fails is reported here
        TIFFSetWarningHandler(nullptr);
        file.bytes.reserve(rows.GetRowSize() * rows.GetHeight() + (1 << 16));
        tiff.reset(
            TIFFClientOpen("picture", isBig ? "wl8" : "wl", &file, Read, Write, Seek, Close, Size, nullptr, nullptr));
        if (tiff == nullptr) throw std::bad_alloc();
        Set(TIFFTAG_IMAGEWIDTH, rows.GetWidth());
        Set(TIFFTAG_IMAGELENGTH, rows.GetHeight());
        Set(TIFFTAG_BITSPERSAMPLE, static_cast<int>(8 * rows.GetSampleBytes()));
        Set(TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(rows.GetChannels()));
        Set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        Set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    }

    template <typename... Values>
    void Set(std::uint32_t tag, Values... values) {
        if (TIFFSetField(tiff.get(), tag, values...) != 1)
            throw Failure(fmt::format("cannot make a TIFF: tag {}", tag));
    }

    /// Whether the number of values is an argument depends on the tag, and for some on the version of libtiff.
    template <typename Value, std::size_t count>
    void SetAll(std::uint32_t tag, const std::array<Value, count>& values) {
        const TIFFField* const field = TIFFFieldWithTag(tiff.get(), tag);
        if (field != nullptr && TIFFFieldPassCount(field) != 0)
            Set(tag, static_cast<int>(count), values.data());
        else
            Set(tag, values.data());
    }

    /// All strips but perhaps the last one have this many lines.
    void WriteStrips(std::uint32_t stripLines) {
        Set(TIFFTAG_ROWSPERSTRIP, stripLines);
        std::vector<std::uint8_t> strip(rows.GetRowSize() * stripLines);
        for (std::uint32_t y = 0, index = 0; y < rows.GetHeight(); y += stripLines, ++index) {
            const std::uint32_t lines = std::min(stripLines, rows.GetHeight() - y);
            for (std::uint32_t line = 0; line < lines; ++line)
                rows.CopyRow(y + line, strip.data() + line * rows.GetRowSize());
            const auto size = static_cast<tmsize_t>(rows.GetRowSize() * lines);
            if (TIFFWriteEncodedStrip(tiff.get(), index, strip.data(), size) != size)
                throw Failure("cannot make a TIFF: the compression failed");
        }
    }

    std::span<const std::uint8_t> Finish() {
        if (TIFFFlush(tiff.get()) != 1) throw Failure("cannot make a TIFF: out of memory");
        tiff.reset();
        return file.bytes;
    }

private:
    struct Closer {
        void operator()(TIFF* opened) const { TIFFClose(opened); }
    };

    const PictureRows& rows;
    MemoryFile file;
    std::unique_ptr<TIFF, Closer> tiff;
};

/// Whether offsets into the file need more than 32 bits.
bool NeedsBig(const PictureRows& rows) {
    constexpr std::size_t kRoomForTags = 1 << 26;
    return rows.GetRowSize() * rows.GetHeight() > std::numeric_limits<std::uint32_t>::max() - kRoomForTags;
}

/// Bayer colours as DNG counts them: red 0, green 1, blue 2.
std::array<std::uint8_t, 4> CfaPattern(std::uint32_t bayerFlag) {
    switch (bayerFlag) {
        case KyPixelConverter::FLAG_BAYER_GRBG: return {1, 0, 2, 1};
        case KyPixelConverter::FLAG_BAYER_GBRG: return {1, 2, 0, 1};
        case KyPixelConverter::FLAG_BAYER_RGGB: return {0, 1, 1, 2};
        default: return {2, 1, 1, 0};
    }
}

/// What a white object is in samples of the camera: the gains make it white.
std::array<float, 3> CameraNeutral(const std::array<double, 3>& gains) {
    const double least = std::ranges::min(gains);
    std::array<float, 3> neutral;
    std::ranges::transform(gains, neutral.begin(), [least](double gain) { return static_cast<float>(least / gain); });
    return neutral;
}

}  // namespace

void WriteTiff(const ConvertedFrame& frame, TiffCompression compression, const ByteSink& sink) {
    const PictureRows rows(frame, {true, true, false});
    TiffFile tiff(rows, NeedsBig(rows));
    tiff.Set(TIFFTAG_PHOTOMETRIC, rows.GetChannels() == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    if (rows.GetChannels() == 4) tiff.SetAll<std::uint16_t, 1>(TIFFTAG_EXTRASAMPLES, {EXTRASAMPLE_UNASSALPHA});
    tiff.Set(TIFFTAG_COMPRESSION, compression == TiffCompression::None ? COMPRESSION_NONE : COMPRESSION_ADOBE_DEFLATE);
    if (compression == TiffCompression::Deflate) {
        tiff.Set(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        tiff.Set(TIFFTAG_ZIPQUALITY, 1);  // a sensor's noise gets hardly smaller with more effort
    }
    constexpr std::size_t kStripBytes = 1 << 18;
    const std::size_t stripLines = std::max<std::size_t>(1, kStripBytes / rows.GetRowSize());
    tiff.WriteStrips(static_cast<std::uint32_t>(std::min<std::size_t>(stripLines, rows.GetHeight())));
    sink(tiff.Finish());
}

void WriteDng(const ConvertedFrame& frame, const ByteSink& sink) {
    const PictureRows rows(frame, {});
    if (NeedsBig(rows)) throw Failure("a DNG holds at most 4 GB");
    TiffFile dng(rows, false);
    dng.SetAll<std::uint8_t, 4>(TIFFTAG_DNGVERSION, {1, 4, 0, 0});
    dng.SetAll<std::uint8_t, 4>(TIFFTAG_DNGBACKWARDVERSION, {1, 1, 0, 0});
    dng.Set(TIFFTAG_SUBFILETYPE, 0);
    dng.Set(TIFFTAG_MAKE, "Machine vision");
    dng.Set(TIFFTAG_MODEL, "camera");
    dng.Set(TIFFTAG_UNIQUECAMERAMODEL, "Machine vision camera");
    dng.Set(TIFFTAG_SOFTWARE, "kyimg " KYIMGLIB_VERSION);
    dng.Set(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    dng.Set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_CFA);

    dng.SetAll<std::uint16_t, 2>(TIFFTAG_CFAREPEATPATTERNDIM, {2, 2});
    dng.SetAll(TIFFTAG_CFAPATTERN, CfaPattern(frame.mosaic.bayerFlag));
    dng.SetAll<float, 1>(TIFFTAG_BLACKLEVEL, {frame.mosaic.black});
    dng.SetAll<std::uint32_t, 1>(TIFFTAG_WHITELEVEL, {(1U << rows.GetBits()) - 1});

    // From CIE XYZ to the linear colours of sRGB, under D65.
    constexpr int kD65 = 21;
    dng.Set(TIFFTAG_CALIBRATIONILLUMINANT1, kD65);
    dng.SetAll<float, 9>(TIFFTAG_COLORMATRIX1, {3.2404542F, -1.5371385F, -0.4985314F, -0.9692660F, 1.8760108F,
                                                0.0415560F, 0.0556434F, -0.2040259F, 1.0572252F});
    if (frame.mosaic.gains) dng.SetAll(TIFFTAG_ASSHOTNEUTRAL, CameraNeutral(*frame.mosaic.gains));
    dng.WriteStrips(rows.GetHeight());
    sink(dng.Finish());
}

}  // namespace kyimg
