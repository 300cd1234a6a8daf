#ifndef KYIMGLIB_CONVERTERS_PLANESCONVERTERINTERNAL_H
#define KYIMGLIB_CONVERTERS_PLANESCONVERTERINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>

namespace ky {

/// A converter from or to an extended type, whose image may have several planes. Sizes of lines are those of all planes
/// together. An image in planes has no lines that a line call could take.
class PlanesConverter : public KyPixelConverter {
public:
    using KyPixelConverter::Convert;
    using KyPixelConverter::GetDestinationByteSize;
    using KyPixelConverter::GetSourceByteSize;

    std::uint32_t GetSourceByteSize(std::uint32_t count) const override;
    std::uint32_t GetDestinationByteSize(std::uint32_t count) const override;

    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override;

protected:
    /// Both types are registered.
    PlanesConverter(std::int64_t sourceType, std::int64_t destinationType);

private:
    const PixelFormat from, to;
    const bool hasPlanes;  ///< the source or the destination
};

}  // namespace ky

#endif
