#include "ListCommand.h"

#include "Columns.h"
#include "Errors.h"
#include "Json.h"
#include "Routes.h"
#include "TypeFacts.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <fmt/format.h>

#include <optional>

namespace kyimg {

namespace {

constexpr const char* kExamples = R"(Examples:
  kyimg list | grep Packed
  kyimg list --from "Bayer RGB 12-bits, Packed"     all that a type converts to
  kyimg list --to RGB48 --json
A chain converts in two steps, through the type that is told; identity copies bytes, and deinterlaces (weave)
an interlaced type.)";

/// ": BayerGR12p, BayerRG12p, ...", so that a search for a camera's name finds the line.
std::string NamesElsewhere(std::int64_t id) {
    std::string text;
    for (const KyPixelFormatName& known : CameraNamesOf(id))
        text += fmt::format("{}{}", text.empty() ? ": " : ", ", known.name);
    return text;
}

void ListTypes() {
    fmt::print("{:<11}  {:>4}  {:>5}  {}\n", "ID", "bits", "bytes", "name");
    for (const std::int64_t id : AllTypes()) {
        const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
        PrintLine(fmt::format("{:<11}  {:>4}  {:>5}  ", FormatTypeID(id), type.GetPixelBitSize(), PixelBytesText(type)),
                  LibraryName(id) + NamesElsewhere(id));
    }
}

/// IDs in columns of their own, as the names of a pair would not fit in a line of a terminal.
void ListRoutes(const std::vector<Route>& routes) {
    fmt::print("{:<11}  {:<11}  {:<8}  {:<10}  {}\n", "source", "destination", "how", "through", "names");
    for (const Route& route : routes)
        PrintLine(
            fmt::format("{:<11}  {:<11}  {:<8}  {:<10}  ", FormatTypeID(route.source), FormatTypeID(route.destination),
                        HowText(route.how), route.through ? FormatTypeID(*route.through) : "-"),
            fmt::format("{} -> {}", LibraryName(route.source), LibraryName(route.destination)));
}

/// Where one end is the same in all, only the other is told.
void ListRoutesOfOne(const std::vector<Route>& routes, std::int64_t Route::*other, const char* title) {
    fmt::print("{:<11}  {:<8}  {:<11}  {}\n", title, "how", "through", "name");
    for (const Route& route : routes)
        PrintLine(fmt::format("{:<11}  {:<8}  {:<11}  ", FormatTypeID(route.*other), HowText(route.how),
                              route.through ? FormatTypeID(*route.through) : "-"),
                  LibraryName(route.*other));
}

std::optional<std::int64_t> TypeOrAny(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional(FindType(text));
}

void ListConverters(const ListOptions& options) {
    const std::optional<std::int64_t> source = TypeOrAny(options.source);
    const std::optional<std::int64_t> destination = TypeOrAny(options.destination);
    const std::vector<Route> routes = FindRoutes(source, destination);
    if (options.json) {
        Json list = Json::array();
        for (const Route& route : routes) list.push_back(RouteToJson(route));
        PrintJson(list);
    } else if (routes.empty()) {
        throw Failure(
            fmt::format("no converter from {} to {}", DescribeType(source.value()), DescribeType(destination.value())));
    } else if (source && !destination) {
        fmt::print("{} converts to\n\n", DescribeType(*source));
        ListRoutesOfOne(routes, &Route::destination, "to");
    } else if (destination && !source) {
        fmt::print("{} is made from\n\n", DescribeType(*destination));
        ListRoutesOfOne(routes, &Route::source, "from");
    } else {
        ListRoutes(routes);
    }
}

}  // namespace

CLI::App* AddListCommand(CLI::App& app, ListOptions& options) {
    CLI::App* const command = app.add_subcommand("list", "List the pixel types or the converters between them");
    command->footer(kExamples);
    command->add_option("WHAT", options.what, "types (default) or converters (default with --from or --to)")
        ->check(CLI::IsMember({"types", "converters"}));
    command->add_option("--from", options.source, "Converters from this type only")->type_name("TYPE");
    command->add_option("--to", options.destination, "Converters to this type only")->type_name("TYPE");
    command->add_flag("--json", options.json, "As JSON, for programs");
    return command;
}

void RunList(const ListOptions& options) {
    const bool isFiltered = !options.source.empty() || !options.destination.empty();
    if (options.what == "types" && isFiltered)
        throw UsageError("--from and --to choose converters, not types: leave out \"types\"");
    if (options.what == "converters" || isFiltered) return ListConverters(options);
    if (!options.json) return ListTypes();
    Json list = Json::array();
    for (const std::int64_t id : AllTypes()) list.push_back(TypeToJson(id));
    PrintJson(list);
}

}  // namespace kyimg
