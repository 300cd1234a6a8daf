#ifndef KYIMGLIB_PLATFORM_KYSTRING_H
#define KYIMGLIB_PLATFORM_KYSTRING_H

#include <KyImgLib/platform/KyObject.h>

#include <cstddef>

/// Owned text in bytes, ended by a zero. Allocation failure throws std::bad_alloc.
class KYIMGLIB_API KyString : public KyObject {
public:
    KyString();
    /// A copy of `text`; null is taken as the empty text.
    explicit KyString(const char* text);
    KyString(const KyString& other);
    KyString(KyString&& other) noexcept;
    KyString& operator=(KyString other) noexcept;
    ~KyString();

    /// Appends a copy of `text`; null appends nothing.
    KyString& operator+=(const char* text);

    /// The text, never null; valid until this object is changed or destroyed.
    const char* c_str() const noexcept;
    /// Bytes before the ending zero.
    std::size_t GetLength() const noexcept { return length; }

private:
    char* text;
    std::size_t length;
};

/// Formats like C's snprintf into `buffer` of `size` bytes, cutting what does not fit; always ends with a zero
/// when `size` is not 0. Returns the length of the whole text, or a negative number when `format` is invalid.
#if defined(__GNUC__)
__attribute__((format(printf, 3, 4)))
#endif
KYIMGLIB_API int
KySprintf(char* buffer, std::size_t size, const char* format, ...);

#endif
