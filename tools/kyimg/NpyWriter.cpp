#include "NpyWriter.h"

#include "Errors.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <fmt/format.h>

#include <optional>
#include <string>

namespace kyimg {

namespace {

/// What one sample is in NumPy's words, and how many a pixel or, of planes, the frame has.
struct ArrayLayout {
    const char* sample;
    std::size_t channels;
    bool isPlanar;
};

std::optional<ArrayLayout> FindArrayLayout(std::int64_t type) {
    if (type == KY_TYPE_RGB_FLOAT_PLANAR) return ArrayLayout{"<f4", 3, true};
    ConvertedFrame frame;
    frame.type = type;
    frame.width = frame.height = 1;
    const auto picture = FindPictureLayout(frame);
    if (!picture) return std::nullopt;
    const bool isPlanar = (type & KY_TYPE_PLANAR) != 0;
    const std::size_t sampleBytes = picture->is565 ? 2 : picture->GetSampleBytes();
    const char* const word = picture->isBigEndian ? ">u2" : "<u2";
    return ArrayLayout{sampleBytes == 1 ? "|u1" : word, isPlanar ? 3 : picture->pixelBytes / sampleBytes, isPlanar};
}

/// The header's length, with all before it, is a multiple of 64.
std::string MakeHeader(const ArrayLayout& layout, const ConvertedFrame& frame) {
    std::string shape = fmt::format("{}, {}", frame.height, frame.width);
    if (layout.isPlanar) {
        shape = fmt::format("{}, {}", layout.channels, shape);
    } else if (layout.channels > 1) {
        shape = fmt::format("{}, {}", shape, layout.channels);
    }
    std::string text = fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': ({}), }}", layout.sample, shape);
    constexpr std::size_t kBefore = 10;
    text.resize((kBefore + text.size() + 1 + 63) / 64 * 64 - kBefore, ' ');
    text.back() = '\n';
    return std::string("\x93NUMPY\x01\x00", 8) + static_cast<char>(text.size() & 0xFF) +
           static_cast<char>(text.size() >> 8) + text;
}

}  // namespace

bool IsArray(std::int64_t type) { return FindArrayLayout(type).has_value(); }

void WriteNpy(const ConvertedFrame& frame, const ByteSink& sink) {
    const auto layout = FindArrayLayout(frame.type);
    if (!layout) throw Failure(fmt::format("{} is no array", DescribeType(frame.type)));
    const std::string header = MakeHeader(*layout, frame);
    sink({reinterpret_cast<const std::uint8_t*>(header.data()), header.size()});
    sink(frame.bytes);
}

}  // namespace kyimg
