// The plain kernels: one pixel after the other. What they write is what every other level must write.

template <class Writer>
void Interpolate(const BayerBand& band) {
    const std::ptrdiff_t step = band.sourceStep;
    MosaicLine line = band.firstLine;
    for (std::uint32_t y = 0; y < band.lines; ++y, line = line.Next()) {
        const bool hasAbove = y > 0 || band.hasLineAbove;
        const bool hasBelow = y + 1 < band.lines || band.hasLineBelow;
        const std::uint8_t* at = band.source + y * band.sourceLine + (step - 1);
        std::uint8_t* to = band.destination + y * band.destinationLine;
        for (std::uint32_t x = 0; x < band.width; ++x, at += step, to += Writer::kPixelBytes) {
            const SiteColours<std::uint8_t> site = InterpolateSite(hasAbove ? at - band.sourceLine : nullptr, at,
                                                                   hasBelow ? at + band.sourceLine : nullptr, x > 0,
                                                                   x + 1 < band.width, line.IsGreenSite(x), step);
            StoreSite<Writer>(band.filter, site, line.ownIsBlue, to);
        }
    }
}

template <class Writer>
void Replicate(const BayerBand& band) {
    const std::size_t step = band.sourceStep;
    for (std::uint32_t y = 0; y < band.lines; y += 2) {
        const std::uint8_t* upper = band.source + y * band.sourceLine + (step - 1);
        std::uint8_t* to = band.destination + y * band.destinationLine;
        for (std::uint32_t x = 0; x < band.width; x += 2) {
            const std::uint8_t* const lower = upper + band.sourceLine;
            // The upper line's green is at its first pixel or at its second, the lower line's at the other one.
            const std::size_t green = band.firstLine.greenFirst ? 0 : step;
            const std::size_t colour = step - green;
            SiteColours<std::uint8_t> site = {upper[colour], upper[green], lower[green]};
            for (const std::uint8_t pixelGreen : {upper[green], lower[colour]}) {
                site.green = pixelGreen;
                StoreSite<Writer>(band.filter, site, band.firstLine.ownIsBlue, to);
                StoreSite<Writer>(band.filter, site, band.firstLine.ownIsBlue, to + band.destinationLine);
                to += Writer::kPixelBytes;
            }
            upper += 2 * step;
        }
    }
}
