// The plain kernels: one pixel after the other. What they write is what every other level must write.

template <class Writer, class Band>
void Interpolate(const Band& band) {
    using Sample = typename Band::Sample;
    const std::ptrdiff_t step = band.sourceStep;
    MosaicLine line = band.firstLine;
    for (std::uint32_t y = 0; y < band.lines; ++y, line = line.Next()) {
        const bool hasAbove = y > 0 || band.hasLineAbove;
        const bool hasBelow = y + 1 < band.lines || band.hasLineBelow;
        const std::uint8_t* const above = hasAbove ? FirstSample(band, std::ptrdiff_t{y} - 1) : nullptr;
        const std::uint8_t* const own = FirstSample(band, y);
        const std::uint8_t* const below = hasBelow ? FirstSample(band, std::ptrdiff_t{y} + 1) : nullptr;
        std::uint8_t* to = band.destination + y * band.destinationLine;
        for (std::uint32_t x = 0; x < band.width; ++x, to += Writer::kPixelBytes) {
            const std::ptrdiff_t at = x * step;
            const SiteColours<Sample> site =
                InterpolateSite<Sample>(hasAbove ? above + at : nullptr, own + at, hasBelow ? below + at : nullptr,
                                        x > 0, x + 1 < band.width, line.IsGreenSite(x), step);
            StoreSite<Writer>(band.filter, site, line.ownIsBlue, to);
        }
    }
}

template <class Writer, class Band>
void Replicate(const Band& band) {
    using Sample = typename Band::Sample;
    const std::size_t step = band.sourceStep;
    for (std::uint32_t y = 0; y < band.lines; y += 2) {
        const std::uint8_t* upper = FirstSample(band, y);
        const std::uint8_t* lower = FirstSample(band, std::ptrdiff_t{y} + 1);
        std::uint8_t* to = band.destination + y * band.destinationLine;
        for (std::uint32_t x = 0; x < band.width; x += 2) {
            // The upper line's green is at its first pixel or at its second, the lower line's at the other one.
            const std::size_t green = band.firstLine.greenFirst ? 0 : step;
            const std::size_t colour = step - green;
            const auto read = &ReadSample<Sample>;
            SiteColours<Sample> site = {read(upper + colour), 0, read(lower + green)};
            for (const std::uint8_t* const greenAt : {upper + green, lower + colour}) {
                site.green = read(greenAt);
                StoreSite<Writer>(band.filter, site, band.firstLine.ownIsBlue, to);
                StoreSite<Writer>(band.filter, site, band.firstLine.ownIsBlue, to + band.destinationLine);
                to += Writer::kPixelBytes;
            }
            upper += 2 * step;
            lower += 2 * step;
        }
    }
}
