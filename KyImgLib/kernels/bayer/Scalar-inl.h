// The scalar kernels: one pixel after the other. What they write is what every other level must write.

template <class Writer, class Settings>
void DemosaicBilinear(const RowKernel& kernel, const Tile& tile) {
    using Sample = typename Settings::Sample;
    const Settings settings = kernel.Get<Settings>();  // a copy, which no store to the destination can change
    const std::size_t width = tile.width, end = tile.end;
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const MosaicLine line = LineOf(settings, y);
        const bool hasAbove = y > 0, hasBelow = y + 1 < tile.height;
        const std::uint8_t* const above = hasAbove ? tile.source[y - 1] : nullptr;
        const std::uint8_t* const own = tile.source[y];
        const std::uint8_t* const below = hasBelow ? tile.source[y + 1] : nullptr;
        std::uint8_t* const to = tile.destination[y];
        for (std::size_t x = tile.begin; x < end; ++x) {
            const std::size_t at = x * sizeof(Sample);
            const SiteColours<Sample> site =
                InterpolateSite<Sample>(hasAbove ? above + at : nullptr, own + at, hasBelow ? below + at : nullptr,
                                        x > 0, x + 1 < width, line.IsGreenSite(x));
            StoreSite<Writer>(settings.filter, site, line.ownIsBlue, to + x * Writer::kPixelBytes);
        }
    }
}

template <class Writer, class Settings>
void DemosaicNearest(const RowKernel& kernel, const Tile& tile) {
    using Sample = typename Settings::Sample;
    constexpr auto read = &ReadSample<Sample>;
    constexpr std::size_t kBytes = Writer::kPixelBytes;
    const Settings settings = kernel.Get<Settings>();
    // The upper line's green is at its first pixel or at its second, the lower line's at the other one.
    const std::size_t green = settings.firstLine.greenFirst ? 0 : sizeof(Sample), colour = sizeof(Sample) - green;
    std::uint32_t cells = 0;
    for (std::uint32_t y = tile.first; y < tile.last; y += 2) {
        if (!HasCells<Writer>(tile, y, cells)) continue;
        std::uint8_t* const to = tile.destination[y];
        const std::uint8_t *const upperRow = tile.source[cells], *const lowerRow = tile.source[cells + 1];
        for (std::size_t x = tile.begin, end = tile.end; x + 1 < end; x += 2) {
            const std::uint8_t *const upper = upperRow + x * sizeof(Sample), *const lower =
                                                                                 lowerRow + x * sizeof(Sample);
            const SiteColours<Sample> left = {read(upper + colour), read(upper + green), read(lower + green)};
            const SiteColours<Sample> right = {left.own, read(lower + colour), left.opposite};
            StoreSite<Writer>(settings.filter, left, settings.firstLine.ownIsBlue, to + x * kBytes);
            StoreSite<Writer>(settings.filter, right, settings.firstLine.ownIsBlue, to + (x + 1) * kBytes);
        }
        RepeatLastPixel<Writer>(tile, to);
        if (y + 1 < tile.last)
            std::memmove(tile.destination[y + 1] + tile.begin * kBytes, to + tile.begin * kBytes,
                         (tile.end - tile.begin) * kBytes);
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
