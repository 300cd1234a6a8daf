#ifndef KYIMGLIB_PLATFORM_REFUSALINTERNAL_H
#define KYIMGLIB_PLATFORM_REFUSALINTERNAL_H

#include <KyImgLib/platform/KyStatus.h>

#include <concepts>
#include <cstdint>
#include <exception>
#include <new>
#include <string_view>

namespace ky {

/// A number in the text of a refusal: 0x00420012.
struct Hexadecimal {
    std::uint64_t number;
};

/// A status other than success, and its text, which replaces the calling thread's last one:
///
///     return Refusal(KY_STATUS_BAD_ARGUMENT) << "source has " << width << " pixels";
///
/// A text too long for its place is cut.
class Refusal {
public:
    explicit Refusal(std::uint32_t statusCode) noexcept;

    Refusal& operator<<(std::string_view text) noexcept;
    Refusal& operator<<(Hexadecimal hexadecimal) noexcept;
    Refusal& operator<<(std::unsigned_integral auto number) noexcept { return AddNumber(number, 10, 1); }

    operator std::uint32_t() const noexcept { return status; }

private:
    Refusal& AddNumber(std::uint64_t number, int base, int digits) noexcept;

    std::uint32_t status;
};

/// The text of the calling thread's last refusal; empty when there was none.
const char* LastRefusal() noexcept;

/// Bytes of the longest text, with the 0 at its end.
inline constexpr std::size_t kRefusalSize = 512;

/// The status that `work` returns, or that of what it throws.
template <typename Work>
std::uint32_t Guard(Work work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return Refusal(KY_STATUS_OUT_OF_MEMORY) << "there is not enough memory";
    } catch (const std::exception& error) {
        return Refusal(KY_STATUS_OUT_OF_MEMORY) << "the call ended with an exception: " << error.what();
    } catch (...) {
        return Refusal(KY_STATUS_OUT_OF_MEMORY) << "the call ended with an exception";
    }
}

}  // namespace ky

#endif
