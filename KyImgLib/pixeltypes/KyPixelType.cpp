#include <KyImgLib/pixeltypes/KyPixelType.h>

#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>
#include <KyImgLib/platform/NullReferenceInternal.h>

KyPixelType::KyPixelType(const std::int64_t& typeID, std::uint16_t pixelBitSize, std::uint16_t pixelByteSize,
                         bool bayer)
    : id(typeID), bitSize(pixelBitSize), byteSize(pixelByteSize),
      isBayer(bayer && (typeID & KY_COLOUR_SPACE_RGB) != 0) {}

KyPixelType::~KyPixelType() = default;

KyPixelType* KyPixelType::Clone() const {
    return new KyPixelType(GetTypeID(), GetPixelBitSize(), GetPixelByteSize(), IsBayerPattern());
}

const std::int64_t& KyPixelType::GetTypeID() const { return id; }

std::uint16_t KyPixelType::GetPixelBitSize() const { return bitSize; }

std::uint16_t KyPixelType::GetPixelByteSize() const { return byteSize; }

bool KyPixelType::IsBayerPattern() const { return isBayer; }

std::uint32_t KyPixelType::GetBufferSizeFor(std::uint32_t width, std::uint32_t height) const {
    const std::uint32_t pixels = width * height;
    const std::uint32_t bits = GetPixelBitSize();
    const bool isPacked = (id & KY_TYPE_PACKED) != 0;
    if (const ky::ExtendedType* const row = ky::FindExtendedType(id)) {
        const auto [groupPixels, groupBytes] = row->group;
        const ky::OtherPlanes& others = row->otherPlanes;
        return groupBytes * ((pixels + (groupPixels - pixels % groupPixels) % groupPixels) / groupPixels) +
               others.count * static_cast<std::uint32_t>(others.LineBytes(width)) * others.Lines(height);
    }
    // Published rules, which do not go by the group in all types.
    const bool oneSamplePerPixel = (id & KY_COLOUR_SPACE_GRAYSCALE) != 0 || IsBayerPattern();
    if (isPacked && oneSamplePerPixel && (bits == 10 || bits == 12)) return 3 * (pixels + pixels % 2) / 2;
    if (!isPacked && bits == 24 && GetPixelByteSize() == 3) return 4 * pixels;
    return GetPixelByteSize() * pixels;
}

void KyPixelType::GetPixelGroup(std::uint32_t& pixels, std::uint32_t& bytes) const {
    const ky::PixelGroup group = ky::FormatOf(*this).group;
    pixels = group.pixels;
    bytes = group.bytes;
}

std::int64_t KyPixelType::GetPlainTypeID() const { return ky::FormatOf(*this).plain; }

const KyPixelConverter* KyPixelType::FindConverterTo(const KyPixelType& other) const {
    return KyPixelTypeFactory::FindConverter(id, other.GetTypeID());
}

KY_MAY_RETURN_NULL_REFERENCE const KyPixelConverter& KyPixelType::GetConverterTo(const KyPixelType& other) const {
    return ky::ReferenceOrNull(FindConverterTo(other));
}

KY_MAY_RETURN_NULL_REFERENCE const KyPixelConverter& KyPixelType::GetConverterFrom(const KyPixelType& other) const {
    return other.GetConverterTo(*this);
}

bool KyPixelType::HasConverterTo(const KyPixelType& other) const {
    return KyPixelTypeFactory::HasConverter(id, other.GetTypeID());
}

bool KyPixelType::HasConverterFrom(const KyPixelType& other) const { return other.HasConverterTo(*this); }
