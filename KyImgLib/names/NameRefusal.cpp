#include <KyImgLib/names/NameRefusalInternal.h>

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/TypeTextInternal.h>

#include <algorithm>

namespace ky {

namespace {

constexpr const char* kConventions[] = {"library", "PFNC", "V4L2", "GStreamer", "FFmpeg"};

constexpr const char* kPackings =
    "\"p\" formats (Mono12p) start with the low bits; \"Packed\" ones (Mono12Packed) are GigE Vision's, with the low "
    "bits of two samples in the middle byte; \"g\" ones (Mono12g) and MIPI CSI-2 (V4L2 Y12P) have them in the last "
    "byte";

/// What was typed, as far as it fits into a line.
std::string Quoted(std::string_view name) {
    constexpr std::size_t kLongest = 80;
    std::string text = "\"";
    text += name.substr(0, kLongest);
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' ' || c == 0x7F; }, '?');
    return text + (name.size() > kLongest ? "...\"" : "\"");
}

const char* PatternText(std::uint32_t pattern) {
    switch (pattern) {
        case kGRBG: return "GRBG";
        case kGBRG: return "GBRG";
        case kRGGB: return "RGGB";
        case kBGGR: return "BGGR";
        default: return "";
    }
}

Refusal& operator<<(Refusal& refusal, const Meaning& meaning) {
    refusal << meaning.name << " (" << Hexadecimal{static_cast<std::uint64_t>(meaning.type)};
    if (meaning.bayerFlags != 0) refusal << " " << PatternText(meaning.bayerFlags);
    return refusal << ")";
}

void AddList(Refusal& refusal, const std::vector<Meaning>& meanings) {
    for (std::size_t i = 0; i < meanings.size(); ++i) {
        if (i > 0) refusal << " or ";
        refusal << meanings[i];
    }
}

/// Mono12pp, BayerRG10pmsb, Mono14Packed: names of gray or Bayer samples with something behind their bits.
bool IsPackedName(std::string_view name) {
    const std::string essence = Essence(name);
    if (!essence.starts_with("mono") && !essence.starts_with("bayer")) return false;
    const std::size_t digits = essence.find_first_of("0123456789");
    if (digits == std::string::npos) return false;
    const std::size_t behind = essence.find_first_not_of("0123456789", digits);
    return behind != std::string::npos && (essence[behind] == 'p' || essence[behind] == 'g' || essence[behind] == 'm');
}

/// Whether a type's pixels are made of words, which may have either byte first.
bool HasWords(std::int64_t id) {
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(id);
    if (type == nullptr || (id & (KY_TYPE_PACKED | KY_COLOUR_SPACE_YUV)) != 0) return false;
    const std::uint16_t bits = type->GetPixelBitSize();
    return bits > 8 && bits != 24 && bits != 32;
}

/// The little-endian words of what a name that ends in "be" stands for: rgb48le for rgb48be.
std::optional<Meaning> FindLittleEndian(std::string_view name) {
    std::string essence = Essence(name);
    if (!essence.ends_with("be")) return std::nullopt;
    essence.resize(essence.size() - 2);
    for (const char* const ending : {"le", ""}) {
        const std::vector<Meaning> meanings = FindMeanings(essence + ending);
        if (meanings.size() == 1 && HasWords(meanings[0].type)) return meanings[0];
    }
    return std::nullopt;
}

}  // namespace

std::uint32_t RefuseName(std::string_view name) {
    if (const AbsentFormat* const absent = FindAbsent(name))
        return Refusal(KY_STATUS_NOT_SUPPORTED)
               << "there is no pixel type for " << Quoted(name) << ": " << absent->reason;
    if (const auto little = FindLittleEndian(name))
        return Refusal(KY_STATUS_NOT_SUPPORTED)
               << "there is no pixel type for " << Quoted(name) << ": its words are big-endian, those of " << *little
               << " are little-endian";
    Refusal refusal(KY_STATUS_BAD_ARGUMENT);
    refusal << "unknown pixel type " << Quoted(name);
    const std::vector<Meaning> near = FindNear(name);
    if (!near.empty()) {
        refusal << "; did you mean ";
        AddList(refusal, near);
        refusal << "?";
    }
    if (IsPackedName(name)) return refusal << " (" << kPackings << ")";
    return near.empty() ? refusal << "; no name comes near it" : refusal;
}

std::uint32_t RefuseID(std::string_view text, std::int64_t id) {
    if ((id & KY_TYPE_EXTENDED) != 0 &&
        std::ranges::any_of(AllFormatNames(), [&](const FormatNames& format) { return HasBytesOf(format, id); }))
        return RefuseUnregistered({nullptr, id, 0});
    Refusal refusal(KY_STATUS_BAD_ARGUMENT);
    refusal << "there is no pixel type " << text;
    const bool isCode = id > 0 && id <= 0xFFFFFFFF;
    if (const auto meaning = isCode ? FindCode(static_cast<std::uint32_t>(id)) : std::nullopt)
        refusal << "; as a PFNC value it is " << *meaning;
    return refusal;
}

std::uint32_t RefuseAmbiguous(std::string_view name, const std::vector<Meaning>& meanings) {
    Refusal refusal(KY_STATUS_BAD_ARGUMENT);
    refusal << Quoted(name) << " may mean ";
    AddList(refusal, meanings);
    return refusal;
}

std::uint32_t RefuseCode(std::uint32_t code) {
    if (const AbsentFormat* const absent = FindAbsent(code)) {
        const auto known = std::ranges::find(absent->names, code, &PfncName::code);
        return Refusal(KY_STATUS_NOT_SUPPORTED) << "there is no pixel type for the PFNC value " << Hexadecimal{code}
                                                << " (" << known->name << "): " << absent->reason;
    }
    constexpr std::uint32_t kCustom = 0x80000000;
    Refusal refusal(KY_STATUS_BAD_ARGUMENT);
    refusal << "unknown PFNC value " << Hexadecimal{code};
    if ((code & kCustom) != 0) refusal << ", a camera maker's own";
    return refusal << ", of " << (code >> 16 & 0xFF) << " bits for each pixel";
}

std::uint32_t RefuseUnregistered(const Meaning& meaning) {
    Refusal refusal(KY_STATUS_NOT_SUPPORTED);
    if (meaning.name != nullptr)
        refusal << meaning;
    else
        refusal << Hexadecimal{static_cast<std::uint64_t>(meaning.type)};
    refusal << " is not registered";
    if ((meaning.type & KY_TYPE_EXTENDED) == 0) return refusal;
    refusal << ": call KyExtendedTypes_Register first";
    return meaning.name != nullptr && IsPackedName(meaning.name) ? refusal << " (" << kPackings << ")" : refusal;
}

std::uint32_t RefuseNameless(std::int64_t type, std::uint32_t pattern, std::uint32_t convention) {
    Refusal refusal(KY_STATUS_NOT_SUPPORTED);
    refusal << TypeText{type} << " has no " << kConventions[convention] << " name";
    const KyPixelType* const known = KyPixelTypeFactory::FindPixelType(type);
    return known != nullptr && known->IsBayerPattern() ? refusal << " for " << PatternText(pattern) : refusal;
}

}  // namespace ky
