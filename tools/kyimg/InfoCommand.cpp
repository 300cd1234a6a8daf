#include "InfoCommand.h"

#include "Columns.h"
#include "ConvertOptions.h"
#include "Json.h"
#include "MemoryLayout.h"
#include "Routes.h"
#include "SourceFrame.h"
#include "TypeFacts.h"
#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

namespace kyimg {

namespace {

/// Of a frame as kyimg convert reads it, which is how the library's images lie in memory.
std::uint64_t FrameBytes(const KyPixelType& type, const ImageSize& size) {
    return SourceFrame(type.GetTypeID(), size, ConvertOptions()).GetFileBytes();
}

/// What GetBufferSizeFor counts of the same size; none where its 32 bits do not hold that.
std::optional<std::uint32_t> BufferBytes(const KyPixelType& type, const ImageSize& size) {
    const std::uint64_t mostPixelBytes = std::max<std::uint64_t>(4, type.GetPixelByteSize());
    const std::uint64_t mostPixels = std::numeric_limits<std::uint32_t>::max() / mostPixelBytes;
    if (std::uint64_t{size.width} * size.height > mostPixels) return std::nullopt;
    return type.GetBufferSizeFor(size.width, size.height);
}

void PrintFact(const std::string& title, const std::string& text) { PrintLine(fmt::format("{:<15}", title), text); }

void PrintCameraNames(const KyPixelType& type) {
    const std::int64_t id = type.GetTypeID();
    for (const auto& [standard, names] : DescribeCameraNames(id)) PrintFact(standard, names);
    if (!type.IsBayerPattern()) return;
    std::string patterns;
    for (const KyPixelFormatName& known : CameraNamesOf(id))
        if (known.convention == KY_NAMES_PFNC)
            patterns += (patterns.empty() ? "" : ", ") + std::string(PatternText(known.bayerFlags));
    if (!patterns.empty()) PrintFact("", fmt::format("for the Bayer patterns {}", patterns));
}

void PrintDestinations(const std::vector<Route>& routes) {
    fmt::print("\nconverts to  how       through      name\n");
    for (const Route& route : routes)
        PrintLine(fmt::format("{:<11}  {:<8}  {:<11}  ", FormatTypeID(route.destination), HowText(route.how),
                              route.through ? FormatTypeID(*route.through) : "-"),
                  LibraryName(route.destination));
}

void PrintText(const KyPixelType& type, std::uint32_t bayerFlags, const std::vector<Route>& routes,
               const ImageSize& size) {
    const std::int64_t id = type.GetTypeID();
    fmt::print("{}\n\n", DescribeType(id));
    PrintFact("class", ClassName(type));
    PrintFact("format index", fmt::format("0x{:02X}", id & KY_TYPE_INDEX_MASK));
    PrintFact("colour space", ColourSpaceText(type));
    if (bayerFlags != 0) PrintFact("Bayer pattern", fmt::format("{}, by the name given", PatternText(bayerFlags)));
    PrintFact("layout", FlagsText(type));
    PrintFact("taps", TapText(id));
    PrintFact("bits, bytes", fmt::format("{}, {}", type.GetPixelBitSize(), PixelBytesText(type) + GroupText(type)));
    const std::uint64_t frameBytes = FrameBytes(type, size);
    PrintFact("frame", fmt::format("{} bytes for {}x{}", frameBytes, size.width, size.height));
    if (const auto bufferBytes = BufferBytes(type, size); bufferBytes && *bufferBytes != frameBytes)
        PrintFact("buffer", fmt::format("{} bytes in the class interface, see GetBufferSizeFor", *bufferBytes));
    PrintCameraNames(type);

    fmt::print("\n");
    for (const std::string& line : DrawType(type)) fmt::print("    {}\n", line);
    const Family* const family = FamilyOf(type);
    if (family != nullptr && *family->note != '\0') {
        fmt::print("\n");
        PrintLine("", family->note);
    }
    PrintDestinations(routes);
}

void PrintAsJson(const KyPixelType& type, const std::vector<Route>& routes, const ImageSize& size) {
    Json json = TypeToJson(type.GetTypeID());
    json["layout"] = DrawType(type);
    json["size"] = {size.width, size.height};
    json["frameBytes"] = FrameBytes(type, size);
    const std::optional<std::uint32_t> bufferBytes = BufferBytes(type, size);
    json["bufferBytes"] = bufferBytes ? Json(*bufferBytes) : Json();
    json["converters"] = Json::array();
    for (const Route& route : routes) json["converters"].push_back(RouteToJson(route));
    PrintJson(json);
}

}  // namespace

CLI::App* AddInfoCommand(CLI::App& app, InfoOptions& options) {
    CLI::App* const command =
        app.add_subcommand("info", "Explain a pixel type: its ID, names, memory layout, sizes, where it converts to");
    command->footer(
        "Examples:\n"
        "  kyimg info BayerRG12Packed\n"
        "  kyimg info 0x20010 --size 2592x1536     with the bytes of such a frame\n"
        "  kyimg info YUYV --json");
    command
        ->add_option("TYPE", options.type,
                     "ID as 0x20010 or decimal, library name, or a name like BayerRG8 (PFNC),\n"
                     "RG10 (V4L2), YUY2 (GStreamer), rgb565le (FFmpeg)")
        ->required();
    command->add_option("-s,--size", options.size, "Image size of the example (640x480)");
    command->add_flag("--json", options.json, "As JSON, for programs");
    return command;
}

void RunInfo(const InfoOptions& options) {
    const ImageSize size = ParseSize(options.size);
    const auto [id, bayerFlags] = FindNamedType(options.type);
    const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
    const std::vector<Route> routes = FindRoutes(id, std::nullopt);
    if (options.json)
        PrintAsJson(type, routes, size);
    else
        PrintText(type, bayerFlags, routes, size);
}

}  // namespace kyimg
