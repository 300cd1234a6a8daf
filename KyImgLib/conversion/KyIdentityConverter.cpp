#include <KyImgLib/conversion/KyIdentityConverter.h>

#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <cstring>

namespace {

struct CopiedRow {
    std::size_t bytes;

    static void Copy(const ky::RowKernel& kernel, const ky::Tile& tile) {
        const std::size_t bytes = kernel.Get<CopiedRow>().bytes;
        for (std::uint32_t y = tile.first; y < tile.last && bytes != 0; ++y)
            std::memcpy(tile.destination[y], tile.source[y], bytes);
    }
};

struct CopyMaker {
    const KyIdentityConverter* converter;

    bool AddKernels(const ky::ConversionSettings& settings, ky::Pipeline& pipeline) const {
        ky::RowKernel::Needs needs;
        needs.wholeRows = true;
        // Read once: it takes the registry's lock.
        const std::size_t bytes =
            settings.isExact ? settings.sourceRowBytes : converter->GetSourceByteSize(settings.width);
        const std::size_t pixels = settings.width;
        if (pixels != 0) needs.pixelBytes = static_cast<std::uint32_t>((bytes + pixels - 1) / pixels);
        pipeline.Add().Set(needs, &CopiedRow::Copy, CopiedRow{bytes});
        return true;
    }
};

}  // namespace

KyIdentityConverter::KyIdentityConverter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                         std::uint32_t sourceByteSize, std::uint32_t destinationByteSize)
    : KyPixelConverter(sourceType, destinationType, sourceByteSize, destinationByteSize, 1, 1) {
    Record::Of(*this).SetKernels(typeid(KyIdentityConverter), CopyMaker{this});
}

std::uint32_t KyIdentityConverter::GetSourceByteSize(std::uint32_t count) const {
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(GetSourceType());
    return type == nullptr ? KyPixelConverter::GetSourceByteSize(count) : type->GetBufferSizeFor(count, 1);
}

std::uint32_t KyIdentityConverter::GetDestinationByteSize(std::uint32_t count) const {
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(GetDestinationType());
    return type == nullptr ? KyPixelConverter::GetDestinationByteSize(count) : type->GetBufferSizeFor(count, 1);
}

std::uint32_t KyIdentityConverter::Convert(const std::uint8_t* source, std::uint8_t* destination,
                                           std::uint32_t count) const {
    const std::uint32_t bytes = GetSourceByteSize(count);
    if (bytes != 0) std::memcpy(destination, source, bytes);
    return KY_STATUS_SUCCESS;
}

std::uint32_t KyIdentityConverter::Convert(const std::uint8_t* source, std::uint8_t* destination) const {
    std::memcpy(destination, source, GetSourceByteSize(1));
    return KY_STATUS_SUCCESS;
}
