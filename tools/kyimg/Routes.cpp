#include "Routes.h"

#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

namespace kyimg {

const char* HowText(Route::How how) {
    switch (how) {
        case Route::How::Direct: return "direct";
        case Route::How::Chain: return "chain";
        default: return "identity";
    }
}

std::optional<Route> FindRoute(std::int64_t source, std::int64_t destination) {
    const KyPixelConverter* const converter = KyPixelTypeFactory::FindConverter(source, destination);
    if (converter == nullptr) return std::nullopt;
    Route route = {source, destination, Route::How::Direct, std::nullopt};
    if (const auto* const chain = dynamic_cast<const KyComplexConverter*>(converter)) {
        route.how = Route::How::Chain;
        route.through = chain->GetFirst().GetDestinationType();
    } else if (dynamic_cast<const KyIdentityConverter*>(converter) != nullptr) {
        route.how = Route::How::Identity;
    }
    return route;
}

std::vector<Route> FindRoutes(std::optional<std::int64_t> source, std::optional<std::int64_t> destination) {
    std::vector<Route> routes;
    std::int64_t from = source.value_or(0);
    std::int64_t to = 0;
    for (std::uint32_t index = 0; source ? KyPixelTypeFactory::EnumConverterFrom(index, from, to)
                                         : KyPixelTypeFactory::EnumConverters(index, from, to);
         ++index)
        if (to == destination.value_or(to)) routes.push_back(*FindRoute(from, to));
    return routes;
}

std::optional<std::int64_t> PlainType(const KyPixelType& type) {
    const bool isGrayscale = (type.GetTypeID() & KY_COLOUR_SPACE_MASK) == KY_COLOUR_SPACE_GRAYSCALE;
    if (!isGrayscale && !type.IsBayerPattern()) return std::nullopt;
    return type.GetPlainTypeID();
}

}  // namespace kyimg
