// Gathers the last byte of each sample: a kernel in front of those that read bytes one after the other. Needs InOrder-inl.h
// before it.

/// A tile's columns counted in samples instead of pixels. A partial group counts with all its samples.
inline Columns SamplesOf(const Tile& tile, const GatherSettings& settings) {
    const std::size_t group = settings.group, samples = settings.groupSamples;
    const auto samplesOf = [&](std::size_t columns) { return (columns + group - 1) / group * samples; };
    return {samplesOf(tile.begin), samplesOf(tile.end), samplesOf(tile.width)};
}

/// The upper bytes of words.
inline void GatherUpperBytes(const RowKernel& kernel, const Tile& tile) {
    GraySettings upperByte = {};
    upperByte.shift = 8;
    ConvertInOrder<ReadWordBytes, WriteGray8>(ReadWordBytes(upperByte), tile,
                                              SamplesOf(tile, kernel.Get<GatherSettings>()));
}

/// The last bytes of samples of any size, those of a pixel from wherever they are. Not worth vectors: nearly all sources have
/// words in order.
inline void GatherLastBytes(const RowKernel& kernel, const Tile& tile) {
    const auto& settings = kernel.Get<GatherSettings>();
    const Columns samples = SamplesOf(tile, settings);
    const std::size_t size = settings.sampleBytes;
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const std::uint8_t* const from = tile.source[y] + size - 1;
        std::uint8_t* const to = tile.destination[y];
        for (std::size_t i = samples.begin; i < samples.end; ++i)
            to[i] = from[settings.hasPlaces ? i / 3 * 3 * size + settings.places[i % 3] : i * size];
    }
}

inline void MakeGather(const GatherSettings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.group = settings.group;
    needs.groupBytes = settings.groupSamples * settings.sampleBytes;
    needs.pixelBytes = (settings.groupSamples + settings.group - 1) / settings.group;
    kernel.Set(needs, settings.sampleBytes == 2 && !settings.hasPlaces ? &GatherUpperBytes : &GatherLastBytes,
               settings);
}
