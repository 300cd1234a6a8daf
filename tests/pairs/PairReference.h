#ifndef KYIMGLIB_TESTS_PAIRS_PAIRREFERENCE_H
#define KYIMGLIB_TESTS_PAIRS_PAIRREFERENCE_H

#include <tests/converters/AreaCase.h>
#include <tests/pairs/Path.h>
#include <tests/pairs/Stage.h>

#include <memory>
#include <vector>

/// The first one is none.
const std::vector<FilterCase>& PairFilters();

/// What the converter of a pair has to do, whole images after one another up to the last stage, which does the area.
class PairReference {
public:
    /// Throws when it knows nothing of one of the stages.
    explicit PairReference(const Path& path);

    bool IsChain() const { return stages.size() > 1; }

    /// What the area says of the source is enlarged until all that the area shows has been converted: of an odd line of
    /// pairs, say, the last pixel has not.
    void FitSource(reference::Area& area) const;

    reference::Extent Needs(const reference::Area& area) const;
    void Convert(const AreaCase& test, const std::uint8_t* source, std::uint8_t* destination) const;

private:
    std::vector<std::unique_ptr<Stage>> stages;
};

/// An area of at most this size with everything else at random.
AreaCase RandomPairCase(const PairReference& reference, bool filtered, bool interpolated, std::uint32_t width,
                        std::uint32_t height, support::Random& random);

#endif
