#ifndef KYIMGLIB_TESTS_PAIRS_STAGE_H
#define KYIMGLIB_TESTS_PAIRS_STAGE_H

#include <tests/converters/FilterCase.h>
#include <tests/reference/Area.h>

#include <cstdint>
#include <memory>

/// What one registered converter has to do; for a chain, one of its converters.
class Stage {
public:
    /// Pixels and lines that are only converted together.
    struct Cell {
        std::uint32_t width = 1, height = 1;
    };

    explicit Stage(const Samples& asFiltersSeeThem) : samples(asFiltersSeeThem) {}
    virtual ~Stage() = default;

    virtual reference::Extent Needs(const reference::Area& area) const = 0;
    virtual void Convert(const reference::Area& area, const reference::Tables& filter, const std::uint8_t* source,
                         std::uint8_t* destination) const = 0;
    virtual Cell CellOf(std::uint32_t flags) const = 0;
    /// Whether a line depends on those above and below it.
    virtual bool ReadsNeighbours(std::uint32_t) const { return false; }

    const Samples samples;
};

/// Follows from the two IDs alone; null when the types have nothing to do with each other.
std::unique_ptr<Stage> MakeStage(std::int64_t source, std::int64_t destination);

#endif
