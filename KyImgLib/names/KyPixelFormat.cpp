#include <KyImgLib/names/KyPixelFormat.h>

#include <KyImgLib/names/NameRefusalInternal.h>
#include <KyImgLib/names/NameSearchInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/platform/RefusalInternal.h>

#include <bit>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

using namespace ky;

namespace {

constexpr std::uint32_t kPatterns = kGRBG | kGBRG | kRGGB | kBGGR;

bool IsMosaic(std::int64_t id) {
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(id);
    return type != nullptr && type->IsBayerPattern();
}

/// The pattern that types stand for by their display name alone: indexes 0x13 to 0x15 are named RGGB.
std::uint32_t NamedPattern(std::int64_t id) {
    const std::int64_t index = id & KY_TYPE_INDEX_MASK;
    return index >= 0x13 && index <= 0x15 && IsMosaic(id) ? kRGGB : 0;
}

/// The pattern of an image, as conversions take it.
std::uint32_t PatternOf(std::int64_t id, std::uint32_t flags) {
    if ((flags & kPatterns) != 0) return flags & kPatterns;
    const std::uint32_t named = NamedPattern(id);
    return named != 0 ? named : kGRBG;
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

std::uint32_t Accept(const Meaning& meaning, std::int64_t& type, std::uint32_t* bayerFlags) {
    if (!KyPixelTypeFactory::HasPixelType(meaning.type)) return RefuseUnregistered(meaning);
    type = meaning.type;
    if (bayerFlags != nullptr) *bayerFlags = meaning.bayerFlags != 0 ? meaning.bayerFlags : NamedPattern(meaning.type);
    return KY_STATUS_SUCCESS;
}

/// The first name of a convention for a type; null when there is none.
const char* FirstName(std::int64_t type, std::uint32_t pattern, std::uint32_t convention) {
    KyPixelFormatName name = {};
    for (const FormatNames& format : AllFormatNames()) {
        if (!HasBytesOf(format, type) || (format.bayerFlags != 0 && format.bayerFlags != pattern)) continue;
        for (std::uint32_t i = 0; NthName(format, i, name); ++i)
            if (name.convention == convention) return name.name;
    }
    return nullptr;
}

}  // namespace

std::uint32_t KyPixelFormat::Find(const char* name, std::int64_t& type, std::uint32_t* bayerFlags) noexcept {
    if (name == nullptr) return Refusal(KY_STATUS_BAD_ARGUMENT) << "name is null";
    return Guard([&]() -> std::uint32_t {
        if (const auto id = ParseNumber(name))
            return KyPixelTypeFactory::HasPixelType(*id) ? Accept({name, *id, 0}, type, bayerFlags)
                                                         : RefuseID(name, *id);
        const std::vector<Meaning> meanings = FindMeanings(name);
        if (meanings.empty()) return RefuseName(name);
        return meanings.size() > 1 ? RefuseAmbiguous(name, meanings) : Accept(meanings[0], type, bayerFlags);
    });
}

std::uint32_t KyPixelFormat::FindByPFNC(std::uint32_t code, std::int64_t& type, std::uint32_t* bayerFlags) noexcept {
    return Guard([&]() -> std::uint32_t {
        const std::optional<Meaning> meaning = FindCode(code);
        return meaning ? Accept(*meaning, type, bayerFlags) : RefuseCode(code);
    });
}

std::uint32_t KyPixelFormat::GetName(const std::int64_t& type, std::uint32_t bayerFlags, std::uint32_t convention,
                                     char* buffer, std::size_t size) noexcept {
    if (buffer == nullptr) return Refusal(KY_STATUS_BAD_ARGUMENT) << "buffer is null";
    if (convention > KY_NAMES_FFMPEG)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << "convention is " << convention << ": expected KY_NAMES_..., 0 to 4";
    if (std::popcount(bayerFlags & kPatterns) > 1)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << "bayerFlags has several patterns: expected one or none";
    return Guard([&]() -> std::uint32_t {
        const char* name = nullptr;
        if (convention == KY_NAMES_DISPLAY) {
            if (!KyPixelTypeFactory::HasPixelType(type)) return RefuseUnregistered({nullptr, type, 0});
            name = KyPixelTypeFactory::GetPixelTypeName(type);
        } else {
            const std::uint32_t pattern = PatternOf(type, bayerFlags);
            name = FirstName(type, pattern, convention);
            if (name == nullptr) return RefuseNameless(type, pattern, convention);
        }
        const std::size_t needed = std::strlen(name) + 1;
        if (size < needed)
            return Refusal(KY_STATUS_BAD_ARGUMENT)
                   << "buffer has " << size << " bytes: " << name << " needs " << needed;
        std::memcpy(buffer, name, needed);
        return KY_STATUS_SUCCESS;
    });
}

bool KyPixelFormat::EnumNames(const std::int64_t& type, std::uint32_t index, KyPixelFormatName& name) noexcept {
    KyPixelFormatName candidate = {};
    for (const FormatNames& format : AllFormatNames()) {
        if (!HasBytesOf(format, type)) continue;
        for (std::uint32_t i = 0; NthName(format, i, candidate); ++i) {
            if (index-- > 0) continue;
            name = candidate;
            return true;
        }
    }
    return false;
}
