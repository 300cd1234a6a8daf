#include <KyImgLib/platform/KyString.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

char* Join(const char* head, std::size_t headLength, const char* tail, std::size_t tailLength) {
    if (headLength + tailLength == 0) return nullptr;
    char* joined = new char[headLength + tailLength + 1];
    if (headLength != 0) std::memcpy(joined, head, headLength);
    if (tailLength != 0) std::memcpy(joined + headLength, tail, tailLength);
    joined[headLength + tailLength] = '\0';
    return joined;
}

std::size_t LengthOf(const char* text) { return text == nullptr ? 0 : std::strlen(text); }

}  // namespace

KyString::KyString() : text(nullptr), length(0) {}

KyString::KyString(const char* source) : text(Join(nullptr, 0, source, LengthOf(source))), length(LengthOf(source)) {}

KyString::KyString(const KyString& other)
    : KyObject(), text(Join(nullptr, 0, other.text, other.length)), length(other.length) {}

KyString::KyString(KyString&& other) noexcept
    : text(std::exchange(other.text, nullptr)), length(std::exchange(other.length, 0)) {}

KyString& KyString::operator=(KyString other) noexcept {
    std::swap(text, other.text);
    std::swap(length, other.length);
    return *this;
}

KyString::~KyString() { delete[] text; }

KyString& KyString::operator+=(const char* tail) {
    const std::size_t tailLength = LengthOf(tail);
    char* joined = Join(text, length, tail, tailLength);
    delete[] text;
    text = joined;
    length += tailLength;
    return *this;
}

const char* KyString::c_str() const noexcept { return text == nullptr ? "" : text; }

int KySprintf(char* buffer, std::size_t size, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int needed = std::vsnprintf(buffer, size, format, arguments);
    va_end(arguments);
    return needed;
}
