// The scalar kernels: one pixel after the other. What they write is what every other level must write.

template <class Writer, class Settings>
void DemosaicBilinear(const RowKernel& kernel, const Tile& tile) {
    using Sample = typename Settings::Sample;
    const auto& settings = kernel.Get<Settings>();
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const MosaicLine line = LineOf(settings, y);
        const bool hasAbove = y > 0, hasBelow = y + 1 < tile.height;
        const std::uint8_t* const above = hasAbove ? tile.source[y - 1] : nullptr;
        const std::uint8_t* const own = tile.source[y];
        const std::uint8_t* const below = hasBelow ? tile.source[y + 1] : nullptr;
        std::uint8_t* const to = tile.destination[y];
        for (std::size_t x = tile.begin; x < tile.end; ++x) {
            const std::size_t at = x * sizeof(Sample);
            const SiteColours<Sample> site =
                InterpolateSite<Sample>(hasAbove ? above + at : nullptr, own + at, hasBelow ? below + at : nullptr,
                                        x > 0, x + 1 < tile.width, line.IsGreenSite(x));
            StoreSite<Writer>(settings.filter, site, line.ownIsBlue, to + x * Writer::kPixelBytes);
        }
    }
}

template <class Writer, class Settings>
void DemosaicNearest(const RowKernel& kernel, const Tile& tile) {
    using Sample = typename Settings::Sample;
    constexpr auto read = &ReadSample<Sample>;
    const auto& settings = kernel.Get<Settings>();
    // The upper line's green is at its first pixel or at its second, the lower line's at the other one.
    const std::size_t green = settings.firstLine.greenFirst ? 0 : sizeof(Sample), colour = sizeof(Sample) - green;
    std::uint32_t cells = 0;
    for (std::uint32_t y = tile.first; y < tile.last; y += 2) {
        if (!HasCells<Writer>(tile, y, cells)) continue;
        for (std::uint32_t row = y; row < std::min(y + 2, tile.last); ++row) {
            std::uint8_t* const to = tile.destination[row];
            for (std::size_t x = tile.begin; x + 1 < tile.end; x += 2) {
                const std::uint8_t* const upper = tile.source[cells] + x * sizeof(Sample);
                const std::uint8_t* const lower = tile.source[cells + 1] + x * sizeof(Sample);
                const SiteColours<Sample> left = {read(upper + colour), read(upper + green), read(lower + green)};
                const SiteColours<Sample> right = {left.own, read(lower + colour), left.opposite};
                StoreSite<Writer>(settings.filter, left, settings.firstLine.ownIsBlue, to + x * Writer::kPixelBytes);
                StoreSite<Writer>(settings.filter, right, settings.firstLine.ownIsBlue,
                                  to + (x + 1) * Writer::kPixelBytes);
            }
            RepeatLastPixel<Writer>(tile, to);
        }
    }
}

template <class Writer, class Settings>
void SetBilinear(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    kernel.Set(needs, &DemosaicBilinear<Writer, Settings>, settings);
}

template <class Writer, class Settings>
void SetNearest(const RowKernel::Needs& needs, const Settings& settings, RowKernel& kernel) {
    kernel.Set(needs, &DemosaicNearest<Writer, Settings>, settings);
}
