#include <tests/converters/Kind.h>

#include <map>
#include <tuple>

namespace {

using reference::Format;

/// An application's converter between the same types, which calls the line or one-pixel form of another.
class Caller : public KyPixelConverter {
public:
    Caller(const KyPixelConverter& converter, std::uint32_t rows, bool pixelByPixel, std::uint32_t pixelStep)
        : KyPixelConverter(converter.GetSourceType(), converter.GetDestinationType(), converter.GetSourceByteSize(),
                           converter.GetDestinationByteSize(), 1, rows),
          inner(converter), pixels(pixelByPixel), step(pixelStep) {}

    using KyPixelConverter::GetSourceByteSize;
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override { return inner.GetSourceByteSize(count); }

    using KyPixelConverter::Convert;
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        if (!pixels) return inner.Convert(source, destination, count);
        for (std::uint32_t x = 0; x < count; ++x)
            if (inner.Convert(source + x * GetSourceByteSize(), destination + x * step) != KY_STATUS_SUCCESS) break;
        return KY_STATUS_SUCCESS;
    }

private:
    const KyPixelConverter& inner;
    bool pixels;
    std::uint32_t step;
};

void ConvertLine(const Kind& kind, const reference::Reader& read, const reference::Line& line, std::uint32_t count,
                 std::uint8_t* destination, std::size_t planeBytes) {
    for (std::uint32_t x = 0; x < count; ++x)
        reference::Store(kind.format, read(line, x), destination + x * reference::BytesOf(kind.format), planeBytes);
}

}  // namespace

const std::vector<FilterCase>& FiltersOf(const Samples& samples) {
    static std::map<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>, std::vector<FilterCase>> made;
    std::vector<FilterCase>& filters = made[{samples.bytes, samples.bits, samples.shift}];
    if (filters.empty()) filters = AllFilters(samples);
    return filters;
}

std::string Difference(const Kind& kind, Form form, const AreaCase& area, support::Random& random,
                       const std::function<void(std::span<std::uint8_t>)>& fill) {
    const bool planar = kind.format == Format::kPlanar, interlaced = kind.woven != nullptr && random.Below(4) == 0;
    const std::uint32_t pixelBytes = reference::BytesOf(kind.format),
                        sourceLine = kind.layout.LineBytes(area.sourceWidth);
    const std::size_t planeBytes = std::size_t{area.destinationWidth} * area.lines;
    const std::size_t destinationLine =
        planar ? area.sourceWidth : std::size_t{area.destinationWidth} * pixelBytes + area.padding;
    const bool inverted = (area.flags & KyPixelConverter::FLAG_INVERT_DEINTERLACER) != 0;
    const std::vector<reference::LinePlace> lines =
        interlaced ? reference::InterlacedWalk(area.height, sourceLine, destinationLine, area.lines, inverted)
                   : reference::PlainWalk(area.height, sourceLine, destinationLine, kind.rows);

    const std::uint32_t pixels = form == Form::kPixel ? area.width : kind.layout.PixelsWritten(area.width);
    std::size_t sourceSize = 0, destinationSize = 0;
    for (const reference::LinePlace& line : lines) {
        sourceSize = std::max(sourceSize, line.source + kind.layout.BytesRead(area.width));
        destinationSize = std::max(destinationSize, line.destination + pixels * pixelBytes);
    }
    if (planar && !lines.empty()) destinationSize += 2 * planeBytes;

    const KyPixelConverter& converter = interlaced ? *kind.woven : *kind.converter;
    const Caller caller(converter, kind.rows, form == Form::kPixel, planar ? 1 : converter.GetDestinationByteSize());
    const std::string difference = Difference(
        area, sourceSize, destinationSize, random, Converting(form == Form::kArea ? converter : caller, area),
        [&](const std::uint8_t* source, std::uint8_t* destination) {
            for (const reference::LinePlace& line : lines)
                ConvertLine(kind, form == Form::kPixel ? kind.readOne : kind.read,
                            {source + line.source, area.width, area.filter->tables, line.row}, pixels,
                            destination + line.destination, planeBytes);
        },
        fill);
    if (difference.empty()) return "";
    static const char* const names[] = {"", " by lines", " by pixels"};
    return kind.name + names[static_cast<int>(form)] + (interlaced ? " interlaced" : "") + difference;
}

std::string DifferenceOutside(const Kind& kind, Form form, std::uint32_t width, support::Random& random) {
    const bool onePixel = form == Form::kPixel;
    // Whatever its source type says, a line call of its own has an identity that keeps every bit.
    const Samples samples = {kind.samples.bytes, kind.samples.bytes == 1 ? 8u : 16u, kind.samples.shift};
    AreaCase area;
    area.filter = &FiltersOf(samples).front();
    area.width = onePixel ? 1 : width;
    area.height = 1;
    const std::uint32_t pixels = onePixel ? 1 : kind.layout.PixelsWritten(width);
    const std::string difference = Difference(
        area, kind.layout.BytesRead(area.width), pixels * reference::BytesOf(kind.format), random,
        [&](const std::uint8_t* source, std::uint8_t* destination) {
            return onePixel ? kind.converter->Convert(source, destination)
                            : kind.converter->Convert(source, destination, width);
        },
        [&](const std::uint8_t* source, std::uint8_t* destination) {
            ConvertLine(kind, onePixel ? kind.readOne : kind.read, {source, area.width, area.filter->tables}, pixels,
                        destination, 0);
        });
    return difference.empty() ? "" : kind.name + " outside of an area, " + difference;
}
