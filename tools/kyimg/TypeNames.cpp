#include "TypeNames.h"

#include "Errors.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/images/KyImageConverter.h>
#include <KyImgLib/names/KyPixelFormat.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

#include <fmt/format.h>

namespace kyimg {

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

NamedType FindNamedType(const std::string& text) {
    NamedType found = {};
    if (KyPixelFormat::Find(text.c_str(), found.id, &found.bayerFlags) != KY_STATUS_SUCCESS)
        throw UsageError(KyImageConverter::GetError());
    return found;
}

std::vector<KyPixelFormatName> CameraNamesOf(std::int64_t type) {
    std::vector<KyPixelFormatName> names;
    KyPixelFormatName name = {};
    for (std::uint32_t i = 0; KyPixelFormat::EnumNames(type, i, name); ++i) names.push_back(name);
    return names;
}

std::vector<std::pair<std::string, std::string>> DescribeCameraNames(std::int64_t type) {
    std::vector<std::pair<std::string, std::string>> texts;
    for (std::uint32_t convention = KY_NAMES_PFNC; convention <= KY_NAMES_FFMPEG; ++convention) {
        std::string text;
        for (const KyPixelFormatName& known : CameraNamesOf(type))
            if (known.convention == convention) text += (text.empty() ? "" : ", ") + std::string(known.name);
        if (!text.empty()) texts.emplace_back(ConventionText(convention), text);
    }
    return texts;
}

const char* ConventionText(std::uint32_t convention) {
    switch (convention) {
        case KY_NAMES_PFNC: return "PFNC";
        case KY_NAMES_V4L2: return "V4L2";
        case KY_NAMES_GSTREAMER: return "GStreamer";
        default: return "FFmpeg";
    }
}

const char* PatternText(std::uint32_t bayerFlags) {
    switch (bayerFlags) {
        case KyPixelConverter::FLAG_BAYER_GRBG: return "GRBG";
        case KyPixelConverter::FLAG_BAYER_GBRG: return "GBRG";
        case KyPixelConverter::FLAG_BAYER_RGGB: return "RGGB";
        case KyPixelConverter::FLAG_BAYER_BGGR: return "BGGR";
        default: return "";
    }
}

}  // namespace kyimg
