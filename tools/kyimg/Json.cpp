#include "Json.h"

#include "MemoryLayout.h"
#include "TypeFacts.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

namespace kyimg {

namespace {

Json NamesToJson(std::int64_t id) {
    Json names = Json::array();
    for (const KyPixelFormatName& known : CameraNamesOf(id)) {
        Json name = {{"name", known.name}, {"standard", ConventionText(known.convention)}};
        if (known.bayerFlags != 0) name["bayer"] = PatternText(known.bayerFlags);
        if (known.pfncCode != 0) name["code"] = FormatTypeID(known.pfncCode);
        names.push_back(name);
    }
    return names;
}

}  // namespace

Json TypeToJson(std::int64_t id) {
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
    const Family* const family = FamilyOf(type);
    return {
        {"id", FormatTypeID(id)},
        {"name", KyPixelTypeFactory::GetPixelTypeName(id)},
        {"class", ClassName(type)},
        {"family", family == nullptr ? Json() : Json(family->title)},
        {"bits", type.GetPixelBitSize()},
        {"bytes", type.GetPixelByteSize()},
        {"bytesPerPixel", PixelBytes(type)},
        {"bayer", type.IsBayerPattern()},
        {"normalized", (id & KY_TYPE_NORMALIZED) != 0},
        {"interlaced", (id & KY_TYPE_INTERLACED) != 0},
        {"packed", (id & KY_TYPE_PACKED) != 0},
        {"planar", (id & KY_TYPE_PLANAR) != 0},
        {"taps", TapText(id)},
        {"cameraNames", NamesToJson(id)},
    };
}

Json RouteToJson(const Route& route) {
    Json json = {
        {"source", FormatTypeID(route.source)},
        {"destination", FormatTypeID(route.destination)},
        {"how", HowText(route.how)},
    };
    if (route.through) json["through"] = FormatTypeID(*route.through);
    return json;
}

void PrintJson(const Json& json) { fmt::print("{}\n", json.dump(2)); }

}  // namespace kyimg
