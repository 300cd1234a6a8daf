#ifndef KYIMGLIB_CONVERTERS_GRAYSCALE_UNPACKINTERNAL_H
#define KYIMGLIB_CONVERTERS_GRAYSCALE_UNPACKINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>

namespace ky {

/// From an extended type of single samples to its plain type: the samples in words or bytes of their own, in the order of the
/// source. Filters are ignored. Area conversions leave out the last pixels of a line that are less than a group.
class UnpackConverter final : public KyPixelConverter {
public:
    using KyPixelConverter::GetSourceByteSize;

    explicit UnpackConverter(const ExtendedType& source);

    /// Bytes of so many pixels, whole groups.
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;

private:
    const PixelGroup group;
};

}  // namespace ky

#endif
