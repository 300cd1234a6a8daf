#include "NameHints.h"

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/names/KyPixelFormat.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <string>

namespace kyimg {

namespace {

std::uint32_t ReadNumber(std::string_view digits) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() ? number : 0;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

void ReadSize(std::string_view word, NameHints& hints) {
    const std::size_t cross = word.find('x');
    if (cross == std::string_view::npos) return;
    const std::uint32_t width = ReadNumber(word.substr(0, cross)), height = ReadNumber(word.substr(cross + 1));
    if (width == 0 || height == 0) return;
    hints.width = width;
    hints.height = height;
}

void ReadPattern(std::string_view word, NameHints& hints) {
    if (word == "grbg") hints.bayerFlags = KyPixelConverter::FLAG_BAYER_GRBG;
    if (word == "gbrg") hints.bayerFlags = KyPixelConverter::FLAG_BAYER_GBRG;
    if (word == "rggb") hints.bayerFlags = KyPixelConverter::FLAG_BAYER_RGGB;
    if (word == "bggr") hints.bayerFlags = KyPixelConverter::FLAG_BAYER_BGGR;
}

/// "12bit", "bayer12", "mono10", "raw12"
void ReadBits(std::string_view word, NameHints& hints) {
    constexpr std::string_view kBefore[] = {"bayer", "mono", "raw", "gray", "grey"}, kAfter[] = {"bit", "bits", "bpp"};
    for (const std::string_view before : kBefore)
        if (word.starts_with(before)) hints.bits = std::max(hints.bits, ReadNumber(word.substr(before.size())));
    for (const std::string_view after : kAfter)
        if (word.ends_with(after))
            hints.bits = std::max(hints.bits, ReadNumber(word.substr(0, word.size() - after.size())));
    if (hints.bits > 16) hints.bits = 0;
}

void ReadType(const std::string& word, NameHints& hints) {
    std::int64_t type = 0;
    std::uint32_t flags = 0;
    // A number alone is a counter or a date, and no type ID.
    if (word.size() < 4 || std::ranges::all_of(word, IsDigit)) return;
    if (KyPixelFormat::Find(word.c_str(), type, &flags) != KY_STATUS_SUCCESS) return;
    hints.types.push_back(type);
    if (flags != 0) hints.bayerFlags = flags;
}

}  // namespace

NameHints ReadNameHints(std::string_view name) {
    NameHints hints;
    name.remove_prefix(std::min(name.find_last_of("/\\") + 1, name.size()));
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of("_-. +,()"), name.size());
        const std::string word(name.substr(0, end));
        std::string lower = word;
        std::ranges::transform(lower, lower.begin(),
                               [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        ReadSize(lower, hints);
        ReadPattern(lower, hints);
        ReadBits(lower, hints);
        ReadType(word, hints);
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return hints;
}

}  // namespace kyimg
