#include "ReferenceCommand.h"

#include "MemoryLayout.h"
#include "Routes.h"
#include "TypeFacts.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace kyimg {

namespace {

constexpr const char* kIntroduction = R"(# Pixel formats

<!-- Made from the library's registry: edit the library or tools/kyimg, then run `make docs`. -->

All {types} types of the library and the {converters} conversions between them. `kyimg list` and `kyimg info` tell the same,
also as JSON.

- **Names.** `KyPixelFormat_Find` and `kyimg` take a type as ID (`0x00020010`), by its library name or by a name of another
  standard. A name that is spelled exactly comes first; otherwise only letters and digits count, and "bits" may be left out:
  `bayer rgb 8`. `KyPixelFormat_FindByPFNC` takes PFNC's 32-bit values, which `kyimg list --json` tells.
- **Names of other standards** are given where the bytes are the same: PFNC (GenICam, GigE Vision), V4L2 (four characters),
  GStreamer and FFmpeg. A Bayer type has one for each Bayer pattern, listed as GRBG, RGGB, GBRG, BGGR. `RGB16` stands for
  5-6-5, as in GStreamer; for PFNC's RGB16 give `0x00020004`.
- **Bayer pattern.** It is no part of a type: each conversion is told. Patterns are named by the first two pixels and the two
  below them: GRBG is G R over B G.
- **Bits and bytes** are those of a pixel; bits of one sample where a name says 3 x or 4 x. Pixels that share
  bytes have a fraction: 1.25 where four are in five. (`KyPixelType::GetPixelByteSize` tells whole bytes, two for these.)
- **Normalized** samples are MSB-aligned in their words: scaled to the full range.
- **Interlaced** images are two fields: {interlaced}.
- **Lines** of an image may be any stride apart (`KyImage::stride`, `kyimg convert --stride`): GStreamer pads them to four
  bytes, V4L2 drivers to what the hardware likes. A line has no gaps, and of pixels that share bytes it has whole groups,
  also where the width is odd: pairs of packed pixels and of 4:2:2, groups of four of 4:1:1.

## Taps

Cameras with two taps deliver a sample of each in turn. A line of eight pixels in memory is

    {memory}

and becomes, for the tap layouts in bits 24 to 28 of the ID,

)";

constexpr const char* kConversions = R"(## Conversions

| mark | is |
| :---: | --- |
| ● | a converter of its own |
| ○ | a chain of two converters, through the type in the last column |
| = | the identity: copies bytes, and deinterlaces (weave) an interlaced source |

Plain is the type of unpacked, LSB-aligned samples in scan order, not interlaced. Every type also converts to itself by the
identity; that is only marked where it has a column.

)";

struct Column {
    const char* title;
    std::int64_t type;
};

constexpr Column kColumns[] = {
    {"Gray8", KY_TYPE_GRAYSCALE8}, {"RGB16", KY_TYPE_RGB16}, {"RGB24", KY_TYPE_RGB24},         {"BGR24", KY_TYPE_BGR24},
    {"RGB32", KY_TYPE_RGB32},      {"BGR32", KY_TYPE_BGR32}, {"planar", KY_TYPE_RGB24_PLANAR}, {"RGB48", KY_TYPE_RGB48},
};

const KyPixelType& TypeOf(std::int64_t id) { return *KyPixelTypeFactory::FindPixelType(id); }

std::vector<std::int64_t> TypesOf(const Family& family) {
    std::vector<std::int64_t> types = AllTypes();
    std::erase_if(types, [&](std::int64_t id) { return !family.holds(TypeOf(id)); });
    // Variants of a format, which differ in the high bits, follow each other.
    std::ranges::stable_sort(types, {}, [](std::int64_t id) { return id & KY_TYPE_INDEX_MASK; });
    return types;
}

void PrintDrawing(const char* drawing) { fmt::print("```text\n{}\n```\n\n", drawing); }

std::string CameraNamesCell(std::int64_t id) {
    std::string text;
    for (const auto& [standard, names] : DescribeCameraNames(id))
        text += fmt::format("{}{}: {}", text.empty() ? "" : "<br>", standard, names);
    return text;
}

void PrintTypes(const Family& family) {
    fmt::print("## {}\n\n", family.title);
    PrintDrawing(family.drawing);
    if (*family.note != '\0') fmt::print("{}\n\n", family.note);
    fmt::print("| ID | name | class | bits | bytes | other names |\n| --- | --- | --- | ---: | ---: | --- |\n");
    for (const std::int64_t id : TypesOf(family)) {
        const KyPixelType& type = TypeOf(id);
        fmt::print("| `{}` | {} | {} | {} | {} | {} |\n", FormatTypeID(id), LibraryName(id), ClassName(type),
                   type.GetPixelBitSize(), PixelBytesText(type) + GroupText(type), CameraNamesCell(id));
    }
    fmt::print("\n");
}

const char* Mark(Route::How how) {
    switch (how) {
        case Route::How::Direct: return "●";
        case Route::How::Chain: return "○";
        default: return "=";
    }
}

std::string MarkOfPair(std::int64_t source, std::int64_t destination) {
    if (const auto route = FindRoute(source, destination)) return Mark(route->how);
    return "";
}

std::string ThroughCell(std::int64_t source) {
    std::set<std::string> intermediates;
    for (const Route& route : FindRoutes(source, std::nullopt))
        if (route.through) intermediates.insert(fmt::format("`{}`", FormatTypeID(*route.through)));
    return fmt::format("{}", fmt::join(intermediates, ", "));
}

void PrintMatrix(const Family& family) {
    fmt::print("### From {}\n\n| ID | name | plain |", family.title);
    for (const Column& column : kColumns) fmt::print(" {} |", column.title);
    fmt::print(" chains through |\n| --- | --- | :---: |");
    for (std::size_t i = 0; i < std::size(kColumns); ++i) fmt::print(" :---: |");
    fmt::print(" --- |\n");
    for (const std::int64_t id : TypesOf(family)) {
        const std::optional<std::int64_t> plain = PlainType(TypeOf(id));
        fmt::print("| `{}` | {} | {} |", FormatTypeID(id), LibraryName(id), plain ? MarkOfPair(id, *plain) : "");
        for (const Column& column : kColumns) fmt::print(" {} |", MarkOfPair(id, column.type));
        fmt::print(" {} |\n", ThroughCell(id));
    }
    fmt::print("\n");
}

bool HasColumn(const Route& route) {
    return route.destination == route.source || route.destination == PlainType(TypeOf(route.source)) ||
           std::ranges::find(kColumns, route.destination, &Column::type) != std::end(kColumns);
}

/// What the tables have no column for.
void PrintOtherPairs() {
    fmt::print("### Other destinations\n\n| from | to |\n| --- | --- |\n");
    for (const std::int64_t source : AllTypes()) {
        std::vector<std::string> destinations;
        for (const Route& route : FindRoutes(source, std::nullopt))
            if (!HasColumn(route))
                destinations.push_back(fmt::format("{} `{}` {}", Mark(route.how), FormatTypeID(route.destination),
                                                   LibraryName(route.destination)));
        if (!destinations.empty())
            fmt::print("| `{}` {} | {} |\n", FormatTypeID(source), LibraryName(source),
                       fmt::join(destinations, "<br>"));
    }
}

}  // namespace

CLI::App* AddReferenceCommand(CLI::App& app) {
    return app.add_subcommand("reference", "Write the reference of all types and conversions, as Markdown");
}

void RunReference() {
    fmt::print(fmt::runtime(kIntroduction), fmt::arg("types", AllTypes().size()),
               fmt::arg("converters", FindRoutes(std::nullopt, std::nullopt).size()),
               fmt::arg("interlaced", kInterlacedNote), fmt::arg("memory", kTapMemory));
    fmt::print("| layout | name | line of the picture |\n| --- | --- | --- |\n");
    for (const TapOrder& order : AllTapOrders())
        fmt::print("| `{}` | {} | `{}` |\n", FormatTypeID(order.layout), order.name, order.picture);
    fmt::print(
        "\nOf a line with an odd number of pixels, the left half has the pixel more. The names of 0x02020013 "
        "and\n0x04020013 tell each other's taps; what counts is the ID.\n\n");
    for (const Family& family : AllFamilies()) PrintTypes(family);
    fmt::print("{}", kConversions);
    for (const Family& family : AllFamilies()) PrintMatrix(family);
    PrintOtherPairs();
}

}  // namespace kyimg
