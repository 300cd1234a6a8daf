#include "ListCommand.h"

#include "TypeNames.h"

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <fmt/format.h>

namespace kyimg {

namespace {

void ListTypes() {
    fmt::print("{:<10}  {:>4}  {:>5}  {:<5}  {}\n", "ID", "bits", "bytes", "Bayer", "name");
    for (const std::int64_t id : AllTypes()) {
        const KyPixelType& type = *KyPixelTypeFactory::FindPixelType(id);
        fmt::print("{}  {:>4}  {:>5}  {:<5}  {}\n", FormatTypeID(id), type.GetPixelBitSize(), type.GetPixelByteSize(),
                   type.IsBayerPattern() ? "yes" : "-", KyPixelTypeFactory::GetPixelTypeName(id));
    }
}

void ListConverters() {
    fmt::print("{:<24}  {}\n", "source -> destination", "names");
    std::int64_t source = 0;
    std::int64_t destination = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumConverters(index, source, destination); ++index)
        fmt::print("{} -> {}  {} -> {}\n", FormatTypeID(source), FormatTypeID(destination),
                   KyPixelTypeFactory::GetPixelTypeName(source), KyPixelTypeFactory::GetPixelTypeName(destination));
}

}  // namespace

CLI::App* AddListCommand(CLI::App& app, ListOptions& options) {
    CLI::App* const command = app.add_subcommand("list", "List the pixel types or the converters between them");
    command->add_option("WHAT", options.what, "types (default) or converters")
        ->check(CLI::IsMember({"types", "converters"}));
    return command;
}

void RunList(const ListOptions& options) {
    if (options.what == "converters") return ListConverters();
    ListTypes();
}

}  // namespace kyimg
