#ifndef KYIMG_JSON_H
#define KYIMG_JSON_H

#include "Routes.h"

#include <nlohmann/json.hpp>

#include <cstdint>

namespace kyimg {

using Json = nlohmann::ordered_json;

/// All IDs are strings as the command line takes them: "0x00020010".
///@{
Json TypeToJson(std::int64_t id);
Json RouteToJson(const Route& route);
///@}

/// To standard output.
void PrintJson(const Json& json);

}  // namespace kyimg

#endif
