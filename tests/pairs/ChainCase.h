#ifndef KYIMGLIB_TESTS_PAIRS_CHAINCASE_H
#define KYIMGLIB_TESTS_PAIRS_CHAINCASE_H

#include <tests/pairs/PairReference.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

// Stages of a chain follow one another in strips of the intermediate image, which nobody must see: the same stages, each
// called for whole images, are what a chain has to equal.

/// Strips hold as few lines as they ever do from about this size of an intermediate line on.
inline constexpr std::uint32_t kWideLine = 24 * 1024;

using Stages = std::vector<const KyPixelConverter*>;

inline Stages StagesOf(const Path& path) {
    Stages stages;
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        stages.push_back(KyPixelTypeFactory::FindConverter(path[i], path[i + 1]));
    return stages;
}

/// Of a test: the first and the last type.
inline std::string NameOf(const Path& path) {
    return Describe({path.front()}).substr(2) + "_" + Describe({path.back()}).substr(2);
}

/// A source that is never the same twice, so that nothing is right for having been left by an earlier conversion.
class Source {
public:
    explicit Source(std::size_t size) : bytes(support::Random(12).Bytes(size + kRoom)), end(size) {}
    const std::uint8_t* Pick(std::size_t size, support::Random& random) const {
        if (size > end) throw std::length_error("the source is too small");
        return bytes.data() + random.Below(kRoom);
    }

private:
    static constexpr std::uint32_t kRoom = 4096;
    std::vector<std::uint8_t> bytes;
    std::size_t end;
};

/// An area of lines of a wide image; intermediate lines take at least about `lineBytes`.
AreaCase RandomChainCase(const Path& path, const PairReference& reference, bool interpolated, std::uint32_t lineBytes,
                         std::uint32_t height, support::Random& random);

/// What differs between a chain and its stages one after the other; nothing when all is well.
std::string Difference(const KyPixelConverter& chain, const Stages& stages, const AreaCase& test,
                       const std::uint8_t* source);

#endif
