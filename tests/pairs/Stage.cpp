#include <tests/pairs/Stage.h>

#include <tests/reference/Bayer.h>
#include <tests/reference/LineConversion.h>
#include <tests/reference/TypeFormat.h>

#include <optional>
#include <type_traits>
#include <utility>

namespace {

using reference::Area;
using reference::Extent;
using reference::Family;
using reference::Format;
using reference::TypeFormat;

/// Copies the bytes of each line, and deinterlaces.
class Copy : public Stage {
public:
    explicit Copy(const TypeFormat& sourceType, std::int64_t destinationID)
        : Stage(kByteSamples), source(sourceType), destination(destinationID) {}

    Extent Needs(const Area& area) const override {
        Extent extent;
        for (const reference::LinePlace& line : Walk(area)) {
            extent.source = std::max<std::size_t>(extent.source, line.source + Bytes(source.type, area.width));
            extent.destination =
                std::max<std::size_t>(extent.destination, line.destination + Bytes(source.type, area.width));
        }
        return extent;
    }

    void Convert(const Area& area, const reference::Tables&, const std::uint8_t* from,
                 std::uint8_t* to) const override {
        for (const reference::LinePlace& line : Walk(area))
            std::copy_n(from + line.source, Bytes(source.type, area.width), to + line.destination);
    }

    Cell CellOf(std::uint32_t) const override { return {1, source.IsInterlaced() ? 2u : 1u}; }

private:
    static std::size_t Bytes(std::int64_t type, std::uint32_t width) {
        return KyPixelTypeFactory::FindPixelType(type)->GetBufferSizeFor(width, 1);
    }

    std::vector<reference::LinePlace> Walk(const Area& area) const {
        const std::size_t sourceLine = Bytes(source.type, area.sourceWidth),
                          destinationLine = Bytes(destination, area.destinationWidth) + area.padding;
        if (!source.IsInterlaced()) return reference::PlainWalk(area.height, sourceLine, destinationLine);
        return reference::InterlacedWalk(area.height, sourceLine, destinationLine, area.sourceLines,
                                         (area.flags & KyPixelConverter::FLAG_INVERT_DEINTERLACER) != 0);
    }

    const TypeFormat source;
    const std::int64_t destination;
};

/// What the reference has for lines and mosaics.
template <typename Conversion>
class Reference : public Stage {
public:
    Reference(Conversion what, const Samples& asFiltersSeeThem)
        : Stage(asFiltersSeeThem), conversion(std::move(what)) {}

    Extent Needs(const Area& area) const override { return conversion.Needs(area); }
    void Convert(const Area& area, const reference::Tables& filter, const std::uint8_t* source,
                 std::uint8_t* destination) const override {
        conversion.Convert(area, filter, source, destination);
    }
    Cell CellOf(std::uint32_t flags) const override {
        if constexpr (isMosaic)
            return ReadsNeighbours(flags) ? Cell{1, 1} : Cell{2, 2};
        else
            return {conversion.layout.onlyWholeGroups ? conversion.layout.groupPixels : 1,
                    conversion.interlaced ? 2 : conversion.rows};
    }
    bool ReadsNeighbours(std::uint32_t flags) const override {
        return isMosaic && reference::BayerConversion::Interpolates(flags);
    }

private:
    static constexpr bool isMosaic = std::is_same_v<Conversion, reference::BayerConversion>;
    const Conversion conversion;
};

using Lines = Reference<reference::LineConversion>;
using Mosaic = Reference<reference::BayerConversion>;

std::optional<Format> FormatOf(const TypeFormat& type) {
    switch (type.type) {
        case 0x020001: return Format::kRGB16;
        case 0x020002: return Format::kRGB24;
        case 0x020006: return Format::kBGR24;
        case 0x020003: return Format::kRGB32;
        case 0x020007: return Format::kBGR32;
        case 0x820002: return Format::kPlanar;
        default: break;
    }
    if (!type.HasOneSample() || type.IsPacked() || type.quadTaps || type.CameraTaps().size() > 1) return std::nullopt;
    return type.bits == 8 ? Format::kGray8 : Format::kGray16;
}

/// A line of single samples in whatever order and packing; `topBit` is where the highest bit of one is to go.
reference::LineConversion FromSamples(const TypeFormat& source, Format format, std::uint32_t topBit) {
    if (source.IsPacked()) {
        const std::uint32_t low = source.bits - 8;
        const reference::Sample sample = topBit == 8 ? reference::PackedHighByte()
                                                     : reference::Packed(low, (1u << low) - 1, 4, topBit - source.bits);
        return {format, {2, 3, true}, reference::GrayOfTaps(sample, source.CameraTaps(), true)};
    }
    const std::uint32_t bytes = source.bits == 8 ? 1 : 2;
    reference::Sample sample = reference::ByteOf(1, 0);
    if (bytes == 2)
        sample = source.TopBit() >= topBit ? reference::WordShiftedRight(source.TopBit() - topBit)
                                           : reference::WordShiftedLeft(topBit - source.TopBit());
    if (source.IsDualLines()) return {format, {1, 2 * bytes, false, 0, bytes}, reference::GrayOfLinePair(sample), 2};
    return {format, {1, bytes}, reference::GrayOfTaps(sample, source.CameraTaps())};
}

std::unique_ptr<Stage> ToRGB(const TypeFormat& source, Format format) {
    const auto lines = [&](reference::Layout layout, reference::Reader reader, const Samples& samples = kByteSamples) {
        return std::make_unique<Lines>(
            reference::LineConversion{format, layout, std::move(reader), 1, source.IsInterlaced()}, samples);
    };
    // The high bytes of left-aligned words are taken for bytes; words that are right-aligned pass a filter of words.
    const bool words = source.bits > 8 && !source.IsNormalized();
    const Samples wordSamples = {2, source.bits, source.bits - 8};
    const std::uint32_t unit = source.bits > 8 ? 2 : 1;
    switch (source.family) {
        case Family::kGray: break;
        case Family::kBayer:
            if (source.IsInterlaced() || source.IsPacked() || source.CameraTaps().size() > 1) return nullptr;
            if (words) return std::make_unique<Mosaic>(reference::BayerConversion{format, 2, 2}, wordSamples);
            return std::make_unique<Mosaic>(reference::BayerConversion{format, unit, 1}, kByteSamples);
        case Family::kRGB:
            if (words) return lines({1, 2 * source.channels}, reference::RgbWords(source.channels), wordSamples);
            return lines({1, unit * source.channels},
                         reference::RgbBytes(source.channels, unit, unit - 1, source.places));
        case Family::k565:
            return lines({1, 2}, reference::BytesOf(format) == 3 ? reference::Rgb565ExpandedFirst()
                                                                 : reference::Rgb565FilteredFirst());
        case Family::kYUV422:
            if (source.bits == 8)
                return lines({2, 4},
                             reference::Yuv422(1, [](const std::uint8_t* sample) { return unsigned{sample[0]}; }));
            return lines({2, 8}, reference::Yuv422(2, [shift = source.TopBit() - 8](const std::uint8_t* sample) {
                             return reference::LoadWord(sample) >> shift & 0xFF;
                         }));
        case Family::kYUV444: return lines({1, 3}, reference::Yuv444(0, source.places));
        case Family::kYUV411: return lines({4, 6}, reference::Yuv411());
    }
    reference::LineConversion gray = FromSamples(source, format, 8);
    gray.interlaced = source.IsInterlaced();
    return std::make_unique<Lines>(std::move(gray), kByteSamples);
}

}  // namespace

std::unique_ptr<Stage> MakeStage(std::int64_t sourceID, std::int64_t destinationID) {
    const TypeFormat source(sourceID), destination(destinationID);
    if (destinationID == sourceID || destinationID == source.Deinterlaced())
        return std::make_unique<Copy>(source, destinationID);
    const std::optional<Format> format = FormatOf(destination);
    if (!format) return nullptr;
    if (!destination.HasOneSample()) return ToRGB(source, *format);
    if (source.family != destination.family) return nullptr;
    reference::LineConversion samples = FromSamples(source, *format, destination.TopBit());
    samples.interlaced = source.IsInterlaced();
    return std::make_unique<Lines>(std::move(samples), kByteSamples);
}
