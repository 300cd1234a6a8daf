#include "TypeNames.h"

#include "CameraNames.h"
#include "Errors.h"

#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace kyimg {

namespace {

struct NamedType {
    std::string name;
    std::int64_t id;
    std::string pattern;  ///< of a Bayer type, where the name tells it
    bool isForeign;       ///< of PFNC, V4L2, GStreamer or FFmpeg
};

/// What of a name counts in a comparison.
std::string Essence(std::string_view name) {
    std::string kept;
    for (const char c : name) {
        if (c >= 'A' && c <= 'Z') kept += static_cast<char>(c - 'A' + 'a');
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) kept += c;
    }
    for (std::size_t at; (at = kept.find("bits")) != std::string::npos;) kept.erase(at, 4);
    return kept;
}

/// Short names first: RGB 32-bits is the library name of two types, of which RGB32 is the one meant. Own names before
/// those of others: PFNC's RGB16 has 16 bits for each colour.
std::vector<NamedType> AllNames() {
    std::vector<NamedType> names = {{"RGB16", KY_TYPE_RGB16, "", false},
                                    {"RGB24", KY_TYPE_RGB24, "", false},
                                    {"BGR24", KY_TYPE_BGR24, "", false},
                                    {"RGB32", KY_TYPE_RGB32, "", false},
                                    {"BGR32", KY_TYPE_BGR32, "", false}};
    for (const std::int64_t id : AllTypes()) names.push_back({KyPixelTypeFactory::GetPixelTypeName(id), id, "", false});
    for (const CameraName& known : AllCameraNames()) names.push_back({known.name, known.type, known.pattern, true});
    return names;
}

std::optional<NamedType> FindNamed(const std::string& text) {
    const std::string wanted = Essence(text);
    for (const NamedType& named : AllNames())
        if (Essence(named.name) == wanted) return named;
    return std::nullopt;
}

std::optional<std::int64_t> ParseNumber(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, number, hexadecimal ? 16 : 10);
    if (error != std::errc() || parsed != end) return std::nullopt;
    return number;
}

/// How badly `typed` stands for `name`. Characters left out cost little, as people abbreviate; wrong ones cost more.
/// Nothing when more than a third of what was typed is wrong, or most of the name would have to be added.
std::optional<std::size_t> Distance(const std::string& typed, const std::string& name) {
    constexpr std::size_t kWrong = 100;
    std::vector<std::size_t> row(name.size() + 1);
    for (std::size_t j = 0; j <= name.size(); ++j) row[j] = j;
    for (std::size_t i = 0; i < typed.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] += kWrong;
        for (std::size_t j = 0; j < name.size(); ++j) {
            const std::size_t same = diagonal + (typed[i] == name[j] ? 0 : kWrong);
            diagonal = row[j + 1];
            row[j + 1] = std::min({same, row[j] + 1, diagonal + kWrong});
        }
    }
    const std::size_t distance = row[name.size()];
    if (3 * (distance / kWrong) > typed.size() || distance % kWrong > 4 * typed.size()) return std::nullopt;
    return distance;
}

/// Mono12p, BayerRG10p: names that come near those of types here, which have other bytes.
bool IsBitStream(const std::string& typed) {
    const std::string name = Essence(typed);
    const bool isPacked = name.size() > 2 && name.ends_with('p') && name[name.size() - 2] <= '9';
    return isPacked && (name.starts_with("mono") || name.starts_with("bayer"));
}

std::string SuggestNames(const std::string& typed) {
    if (IsBitStream(typed)) return "no type has the packing of PFNC's \"p\" formats, and \"Packed\" is another";
    struct Candidate {
        std::size_t distance;
        std::string text;
    };
    // The names of V4L2 and GStreamer are so short that hardly anything must be added to get there.
    constexpr std::size_t kForeign = 50;
    std::vector<Candidate> near;
    for (const NamedType& named : AllNames())
        if (const auto distance = Distance(Essence(typed), Essence(named.name)))
            near.push_back({*distance + (named.isForeign ? kForeign : 0),
                            fmt::format("{} ({})", named.name, FormatTypeID(named.id))});
    std::ranges::stable_sort(near, {}, &Candidate::distance);
    near.resize(std::min(near.size(), std::size_t{3}));
    if (near.empty()) return "`kyimg list types` shows all";

    std::vector<std::string> texts;
    for (const Candidate& candidate : near) texts.push_back(candidate.text);
    return fmt::format("did you mean {}?", fmt::join(texts, " or "));
}

}  // namespace

std::string FormatTypeID(std::int64_t id) { return fmt::format("0x{:08X}", id); }

std::string DescribeType(std::int64_t id) {
    return fmt::format("{} ({})", KyPixelTypeFactory::GetPixelTypeName(id), FormatTypeID(id));
}

std::string LibraryName(std::int64_t id) {
    const char* const name = KyPixelTypeFactory::GetPixelTypeName(id);
    if (id == KY_TYPE_RGB32) return fmt::format("{} [RGB32]", name);
    if (id == KY_TYPE_BGR32) return fmt::format("{} [BGR32]", name);
    return name;
}

std::vector<std::int64_t> AllTypes() {
    std::vector<std::int64_t> ids;
    std::int64_t id = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumPixelTypes(index, id); ++index) ids.push_back(id);
    return ids;
}

std::int64_t FindType(const std::string& text) {
    if (const auto number = ParseNumber(text)) {
        if (KyPixelTypeFactory::HasPixelType(*number)) return *number;
        throw UsageError(fmt::format("there is no pixel type {}; `kyimg list types` shows all", text));
    }
    if (const auto named = FindNamed(text)) return named->id;
    throw UsageError(fmt::format("unknown pixel type \"{}\"; {}", text, SuggestNames(text)));
}

std::string FindBayerPattern(const std::string& text) {
    const auto named = FindNamed(text);
    return named ? named->pattern : "";
}

}  // namespace kyimg
