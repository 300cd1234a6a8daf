#include <KyImgLib/names/NameSearchInternal.h>

#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <algorithm>

namespace ky {

namespace {

/// RGB 32-bits is the display name of two types, of which RGB32 is the one meant; PFNC's RGB16 is not this one.
constexpr Meaning kShortNames[] = {
    {"RGB16", KY_TYPE_RGB16, 0}, {"RGB24", KY_TYPE_RGB24, 0}, {"BGR24", KY_TYPE_BGR24, 0},
    {"RGB32", KY_TYPE_RGB32, 0}, {"BGR32", KY_TYPE_BGR32, 0},
};

template <typename Visit>
void ForEachDisplayName(Visit visit) {
    std::int64_t id = 0;
    for (std::uint32_t i = 0; KyPixelTypeFactory::EnumPixelTypes(i, id); ++i)
        visit(Meaning{KyPixelTypeFactory::GetPixelTypeName(id), id, 0});
}

/// The type that names mean: the first of the layout that is registered, or the first of all.
std::int64_t TypeOf(const FormatNames& format) {
    for (const std::int64_t type : format.types)
        if (type != 0 && KyPixelTypeFactory::HasPixelType(type)) return type;
    return format.types[0];
}

template <typename Visit>
void ForEachForeignName(Visit visit) {
    KyPixelFormatName name = {};
    for (const FormatNames& format : AllFormatNames())
        for (std::uint32_t i = 0; NthName(format, i, name); ++i)
            visit(Meaning{name.name, TypeOf(format), name.bayerFlags});
}

/// Takes names that match, each meaning once.
template <typename Matches>
class Collector {
public:
    Collector(std::vector<Meaning>& collected, Matches matching) : meanings(collected), matches(matching) {}

    void operator()(const Meaning& candidate) const {
        if (!matches(candidate.name)) return;
        const auto isSame = [&](const Meaning& known) {
            return known.type == candidate.type && known.bayerFlags == candidate.bayerFlags;
        };
        if (std::ranges::none_of(meanings, isSame)) meanings.push_back(candidate);
    }

private:
    std::vector<Meaning>& meanings;
    Matches matches;
};

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

template <typename Matches>
const AbsentFormat* FindAbsentIf(Matches matches) {
    for (const AbsentFormat& format : AllAbsentFormats())
        if (std::ranges::any_of(format.names,
                                [&](const PfncName& name) { return name.name != nullptr && matches(name); }))
            return &format;
    return nullptr;
}

}  // namespace

std::string Essence(std::string_view name) {
    std::string kept;
    for (const char c : name) {
        if (c >= 'A' && c <= 'Z') kept += static_cast<char>(c - 'A' + 'a');
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) kept += c;
    }
    for (std::size_t at; (at = kept.find("bits")) != std::string::npos;) kept.erase(at, 4);
    return kept;
}

std::vector<Meaning> FindMeanings(std::string_view name) {
    const std::string essence = Essence(name);
    const auto isEqual = [&](const char* known) { return name == known; };
    const auto isLike = [&](const char* known) { return essence == Essence(known); };
    std::vector<Meaning> meanings;
    std::ranges::for_each(kShortNames, Collector(meanings, isLike));
    if (meanings.empty()) ForEachDisplayName(Collector(meanings, isEqual));
    if (meanings.empty()) ForEachForeignName(Collector(meanings, isEqual));
    if (meanings.empty()) ForEachDisplayName(Collector(meanings, isLike));
    if (meanings.empty()) ForEachForeignName(Collector(meanings, isLike));
    return meanings;
}

std::optional<Meaning> FindCode(std::uint32_t code) {
    for (const FormatNames& format : AllFormatNames())
        for (const PfncName& known : format.pfnc)
            if (code != 0 && code == known.code) return Meaning{known.name, TypeOf(format), format.bayerFlags};
    return std::nullopt;
}

const AbsentFormat* FindAbsent(std::string_view name) {
    const std::string essence = Essence(name);
    return FindAbsentIf([&](const PfncName& known) { return essence == Essence(known.name); });
}

const AbsentFormat* FindAbsent(std::uint32_t code) {
    return FindAbsentIf([&](const PfncName& known) { return code != 0 && code == known.code; });
}

std::vector<Meaning> FindNear(std::string_view name) {
    struct Candidate {
        std::size_t distance;
        Meaning meaning;
    };
    const std::string typed = Essence(name);
    constexpr std::size_t kLongest = 128;  // longer than any name: not worth the time
    if (typed.size() > kLongest) return {};

    std::vector<Candidate> near;
    const auto consider = [&](const Meaning& meaning, std::size_t penalty) {
        if (!KyPixelTypeFactory::HasPixelType(meaning.type)) return;
        if (const auto distance = Distance(typed, Essence(meaning.name)))
            near.push_back({*distance + penalty, meaning});
    };
    for (const Meaning& meaning : kShortNames) consider(meaning, 0);
    ForEachDisplayName([&](const Meaning& meaning) { consider(meaning, 0); });
    // The names of V4L2 are so short that hardly anything must be added to get there.
    ForEachForeignName([&](const Meaning& meaning) { consider(meaning, Essence(meaning.name).size() < 5 ? 50 : 1); });
    std::ranges::stable_sort(near, {}, &Candidate::distance);

    std::vector<Meaning> nearest;
    for (std::size_t i = 0; i < near.size() && i < 3; ++i) nearest.push_back(near[i].meaning);
    return nearest;
}

}  // namespace ky
