#include <tests/pairs/PairReference.h>

#include <map>
#include <stdexcept>
#include <tuple>

namespace {

using reference::Area;
using reference::Extent;

/// Filters of which every stage of a chain makes something of its own.
struct Rule {
    const char* name;
    std::uint32_t bits;
    std::array<double, 3> gains;
    std::array<std::uint16_t, 3> offsets;
};
constexpr Rule kRules[] = {{"none", 0, {1, 1, 1}, {0, 0, 0}},
                           {"8 bits", 8, {1.9, 1.0, 1.6}, {0, 0, 0}},
                           {"10 bits", 10, {0.37, 1.25, 1}, {10, 3, 200}},
                           {"12 bits", 12, {2.3, 0.35, 5.6}, {0, 0, 7}},
                           {"16 bits", 16, {1.0001, 3.1415, 0.9999}, {0, 1, 65535}}};

FilterCase Make(const Rule& rule, const Samples& samples) {
    return LinearFilter(samples, rule.name, rule.bits == 0 ? samples.bits : rule.bits, rule.gains, rule.offsets);
}

const reference::Tables& TablesOf(const FilterCase& filter, const Samples& samples) {
    static std::map<std::tuple<std::ptrdiff_t, std::uint32_t, std::uint32_t>, reference::Tables> made;
    const std::ptrdiff_t index = &filter - PairFilters().data();
    reference::Tables& tables = made[{index, samples.bytes, samples.bits}];
    if (tables.red.empty()) tables = Make(kRules[index], samples).tables;
    return tables;
}

std::uint32_t RoundUp(std::uint32_t number, std::uint32_t step) { return (number + step - 1) / step * step; }

}  // namespace

const std::vector<FilterCase>& PairFilters() {
    static const std::vector<FilterCase> filters = [] {
        std::vector<FilterCase> made;
        for (const Rule& rule : kRules) made.push_back(Make(rule, kByteSamples));
        made.front().filter = nullptr;
        return made;
    }();
    return filters;
}

PairReference::PairReference(const Path& path) {
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        stages.push_back(MakeStage(path[i], path[i + 1]));
        if (stages.back() == nullptr)
            throw std::invalid_argument("nothing is known of a conversion on the way " + Describe(path));
    }
}

void PairReference::FitSource(Area& area) const {
    bool anyNeighbours = false;  // of a whole intermediate image
    Stage::Cell cell;
    for (std::size_t i = 0; i + 1 < stages.size(); ++i) {
        const Stage::Cell own = stages[i]->CellOf(area.flags);
        cell = {std::max(cell.width, own.width), std::max(cell.height, own.height)};
        anyNeighbours = anyNeighbours || stages[i + 1]->ReadsNeighbours(area.flags);
    }
    const bool oneBelow = stages.back()->ReadsNeighbours(area.flags) && area.height < area.destinationLines;
    const std::uint32_t width = RoundUp(area.width, cell.width), lines = RoundUp(area.height + oneBelow, cell.height);
    area.sourceWidth = std::max(area.sourceWidth, width);
    area.sourceLines = std::max(area.sourceLines, lines);
    if (anyNeighbours) {
        area.sourceWidth = RoundUp(area.sourceWidth, cell.width);
        area.sourceLines = RoundUp(area.sourceLines, cell.height);
    }
}

Extent PairReference::Needs(const Area& area) const {
    return {stages.front()->Needs(IsChain() ? area.Whole() : area).source, stages.back()->Needs(area).destination};
}

void PairReference::Convert(const AreaCase& test, const std::uint8_t* source, std::uint8_t* destination) const {
    const Area whole = test.Whole();
    std::vector<std::uint8_t> image, next;
    for (std::size_t i = 0; i + 1 < stages.size(); ++i) {
        const Area& area = i + 2 < stages.size() ? whole : test;
        next.assign(std::max(stages[i]->Needs(whole).destination, stages[i + 1]->Needs(area).source), 0xA5);
        stages[i]->Convert(whole, TablesOf(*test.filter, stages[i]->samples), source, next.data());
        image.swap(next);
        source = image.data();
    }
    stages.back()->Convert(test, TablesOf(*test.filter, stages.back()->samples), source, destination);
}

AreaCase RandomPairCase(const PairReference& reference, bool filtered, bool interpolated, std::uint32_t width,
                        std::uint32_t height, support::Random& random) {
    AreaCase test = RandomArea(random, PairFilters(), 1 + random.Below(width), 1 + random.Below(height));
    test.filter = &PairFilters()[filtered ? 1 + random.Below(std::size(kRules) - 1) : 0];
    test.destinationLines = test.height + random.Below(4);
    test.flags = random.Below(2) * random.Below(16) << 4;  // any patterns, or none
    test.flags |= random.Below(2) * KyPixelConverter::FLAG_INVERT_DEINTERLACER;
    if (interpolated) test.flags |= KyPixelConverter::FLAG_BAYER_INTERPOLATE;
    reference.FitSource(test);
    return test;
}
