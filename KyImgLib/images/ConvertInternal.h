#ifndef KYIMGLIB_IMAGES_CONVERTINTERNAL_H
#define KYIMGLIB_IMAGES_CONVERTINTERNAL_H

#include <KyImgLib/images/CheckInternal.h>

#include <cstdint>

namespace ky {

/// Converts the lines of a band that begins and ends at multiples of the conversion's step or at the height.
std::uint32_t ConvertBand(const CheckedConversion& checked, std::uint32_t firstLine, std::uint32_t lineEnd) noexcept;

/// Converts by bands on several threads: those of the executor, or of the library where it is null.
std::uint32_t ConvertBands(const CheckedConversion& checked, const KyExecutor* executor) noexcept;

}  // namespace ky

#endif
