// Gray samples in the order of their pixels. Needs the readers and writers before it.

#if KY_SCALAR

template <class Reader, class Writer>
void ConvertInOrder(const Reader& reader, const Tile& tile, const Columns& columns) {
    for (std::uint32_t y = tile.first; y < tile.last; ++y) {
        const std::uint8_t* const from = tile.source[y];
        std::uint8_t* const to = tile.destination[y];
        for (std::size_t x = columns.begin; x < columns.end; ++x)
            Writer::StorePixel(reader.Sample(from, x), to + x * Writer::kPixelBytes);
    }
}

#else

template <class Reader, class Writer>
struct InOrderStep : PixelStep<Reader, Writer::kPixelBytes> {
    static constexpr StepCost kCost = StepCost::kFewInstructions;
    static constexpr bool kStreamsApart = true;
    using State = Reader;

    static HWY_INLINE void Run(const Reader& reader, const typename InOrderStep::Rows& rows, std::size_t,
                               bool streams) {
        V8 samples[Reader::kSampleBytes];
        reader.Read(rows.in[0], samples);
        Writer::Store(samples, rows.out[0], streams);
    }
};

template <class Reader, class Writer>
HWY_INLINE void ConvertInOrder(const Reader& reader, const Tile& tile, const Columns& columns) {
    WalkPixels<InOrderStep<Reader, Writer>>(reader, tile, columns);
}

#endif

template <class Reader, class Writer>
void ConvertInOrder(const RowKernel& kernel, const Tile& tile) {
    ConvertInOrder<Reader, Writer>(kernel.Get<Reader>(), tile, tile.GetColumns());
}
