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

reference::LineConversion ConversionOf(const Kind& kind, Form form, bool interlaced) {
    return {kind.format, kind.layout, form == Form::kPixel ? kind.readOne : kind.read, kind.rows, interlaced};
}

}  // namespace

const std::vector<FilterCase>& FiltersOf(const Samples& samples) {
    static std::map<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>, std::vector<FilterCase>> made;
    std::vector<FilterCase>& filters = made[{samples.bytes, samples.bits, samples.shift}];
    if (filters.empty()) filters = AllFilters(samples);
    return filters;
}

AreaCase RandomCase(const Kind& kind, std::uint32_t width, std::uint32_t height, support::Random& random) {
    AreaCase test = RandomArea(random, FiltersOf(kind.samples), width, height);
    test.flags = random.Below(2);
    if (kind.bayer)
        test.flags =
            0x10u << random.Below(4) | random.Below(2) * std::uint32_t{KyPixelConverter::FLAG_BAYER_INTERPOLATE};
    return test;
}

std::string Difference(const Kind& kind, Form form, const AreaCase& area, support::Random& random) {
    const bool interlaced = kind.fromInterlaced != nullptr && random.Below(4) == 0;
    const KyPixelConverter& converter = interlaced ? *kind.fromInterlaced : *kind.converter;
    const bool oneLine = kind.bayer && reference::BayerConversion::Interpolates(area.flags);
    const Caller caller(converter, oneLine ? 1 : kind.rows, form == Form::kPixel,
                        kind.format == Format::kPlanar ? 1 : converter.GetDestinationByteSize());
    const auto compare = [&](const auto& conversion) {
        const reference::Extent needs = conversion.Needs(area);
        return Difference(area, needs.source, needs.destination, random,
                          Converting(form == Form::kArea ? converter : caller, area),
                          [&](const std::uint8_t* source, std::uint8_t* destination) {
                              conversion.Convert(area, area.filter->tables, source, destination);
                          });
    };
    const std::string difference = kind.bayer ? compare(*kind.bayer) : compare(ConversionOf(kind, form, interlaced));
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
    const reference::LineConversion conversion = ConversionOf(kind, form, false);
    const reference::Extent needs = conversion.Needs(area);
    const std::string difference = Difference(
        area, needs.source, needs.destination, random,
        [&](const std::uint8_t* source, std::uint8_t* destination) {
            return onePixel ? kind.converter->Convert(source, destination)
                            : kind.converter->Convert(source, destination, width);
        },
        [&](const std::uint8_t* source, std::uint8_t* destination) {
            conversion.Convert(area, area.filter->tables, source, destination);
        });
    return difference.empty() ? "" : kind.name + " outside of an area, " + difference;
}
