#include <KyImgLib/platform/RefusalInternal.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace ky {

namespace {

// Without a destructor: the library may be unloaded while threads live on.
struct Text {
    char characters[kRefusalSize];
    std::size_t length;
};

thread_local Text last = {};

}  // namespace

Refusal::Refusal(std::uint32_t statusCode) noexcept : status(statusCode) {
    last.length = 0;
    last.characters[0] = '\0';
}

Refusal& Refusal::operator<<(std::string_view text) noexcept {
    const std::size_t added = std::min(text.size(), kRefusalSize - 1 - last.length);
    if (added > 0) std::memcpy(last.characters + last.length, text.data(), added);
    last.length += added;
    last.characters[last.length] = '\0';
    return *this;
}

Refusal& Refusal::operator<<(Hexadecimal hexadecimal) noexcept {
    *this << "0x";
    return AddNumber(hexadecimal.number, 16, 8);
}

Refusal& Refusal::AddNumber(std::uint64_t number, int base, int digits) noexcept {
    char text[20];
    char* const end = std::to_chars(text, text + sizeof text, number, base).ptr;
    std::transform(text, end, text, [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    for (std::ptrdiff_t missing = digits - (end - text); missing > 0; --missing) *this << "0";
    return *this << std::string_view(text, static_cast<std::size_t>(end - text));
}

const char* LastRefusal() noexcept { return last.characters; }

}  // namespace ky
