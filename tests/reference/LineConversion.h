#ifndef KYIMGLIB_TESTS_REFERENCE_LINECONVERSION_H
#define KYIMGLIB_TESTS_REFERENCE_LINECONVERSION_H

#include <tests/reference/Area.h>
#include <tests/reference/Lines.h>

#include <algorithm>

namespace reference {

/// Takes each pixel of a line from one line of the source.
struct LineConversion {
    Format format;
    Layout layout;
    Reader read;
    std::uint32_t rows = 1;  ///< lines that are made of one of the source
    bool interlaced = false;

    std::vector<LinePlace> Walk(const Area& area) const {
        const std::size_t sourceLine = layout.LineBytes(area.sourceWidth), destinationLine = DestinationLine(area);
        constexpr std::uint32_t kInvertDeinterlacer = 1;
        if (!interlaced) return PlainWalk(area.height, sourceLine, destinationLine, rows);
        return InterlacedWalk(area.height, sourceLine, destinationLine, area.sourceLines,
                              (area.flags & kInvertDeinterlacer) != 0);
    }

    Extent Needs(const Area& area) const {
        Extent extent;
        for (const LinePlace& line : Walk(area)) {
            extent.source = std::max(extent.source, line.source + layout.BytesRead(area.width));
            extent.destination =
                std::max(extent.destination, line.destination + layout.PixelsWritten(area.width) * BytesOf(format));
        }
        if (format == Format::kPlanar && extent.destination != 0) extent.destination += 2 * PlaneBytes(area);
        return extent;
    }

    /// Of an area without fields, whose lines are made one by one.
    Rgb PixelAt(const Area& area, const Tables& filter, const std::uint8_t* source, std::uint32_t x,
                std::uint32_t y) const {
        const Line line = {source + std::size_t{y} * layout.LineBytes(area.sourceWidth), area.width, filter};
        return read(line, x);
    }

    void Convert(const Area& area, const Tables& filter, const std::uint8_t* source, std::uint8_t* destination) const {
        const std::uint32_t pixels = layout.PixelsWritten(area.width);
        for (const LinePlace& place : Walk(area)) {
            const Line line = {source + place.source, area.width, filter, place.row};
            for (std::uint32_t x = 0; x < pixels; ++x)
                Store(format, read(line, x), destination + place.destination + x * BytesOf(format), PlaneBytes(area));
        }
    }

private:
    std::size_t PlaneBytes(const Area& area) const {
        return std::size_t{area.destinationWidth} * area.destinationLines;
    }
    std::size_t DestinationLine(const Area& area) const {
        return format == Format::kPlanar ? area.sourceWidth
                                         : std::size_t{area.destinationWidth} * BytesOf(format) + area.padding;
    }
};

}  // namespace reference

#endif
