#ifndef KYIMG_ROUTES_H
#define KYIMG_ROUTES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class KyPixelType;

namespace kyimg {

/// A registered pair of types, and how the library converts the one to the other.
struct Route {
    enum class How { Direct, Chain, Identity };

    std::int64_t source;
    std::int64_t destination;
    How how;
    std::optional<std::int64_t> through;  ///< the intermediate type of a chain
};

/// "direct", "chain" or "identity"
const char* HowText(Route::How how);

/// Nothing when the pair is not registered.
std::optional<Route> FindRoute(std::int64_t source, std::int64_t destination);

/// All registered pairs by ascending IDs; those from a source only, to a destination only, or both.
std::vector<Route> FindRoutes(std::optional<std::int64_t> source, std::optional<std::int64_t> destination);

/// The type of unpacked, LSB-aligned samples of a single tap, not interlaced, that a grayscale or Bayer type is a variant
/// of; nothing for other types.
std::optional<std::int64_t> PlainType(const KyPixelType& type);

}  // namespace kyimg

#endif
