#include <KyImgLib/conversion/KyIdentityConverter.h>

#include <KyImgLib/lines/LineStage.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

#include <algorithm>
#include <cstring>

KyIdentityConverter::KyIdentityConverter(const std::int64_t& sourceType, const std::int64_t& destinationType,
                                         std::uint32_t sourceByteSize, std::uint32_t destinationByteSize)
    : KyPixelConverter(sourceType, destinationType, sourceByteSize, destinationByteSize, 1, 1) {
    SetPassFunction(typeid(KyIdentityConverter), &ConvertPass);
}

namespace {

/// Bytes of a line, and of pixels that fill whole bytes in any type.
struct LineBytes {
    static constexpr std::uint32_t kPixels = 8;
    std::uint32_t line, ofPixels;
};

void CopyAsStage(const ky::LineStage& stage, const std::uint8_t* from, std::uint8_t* to, std::size_t first,
                 std::size_t end, const ky::FetchAhead&) {
    const auto& bytes = stage.Kept<LineBytes>();
    const std::size_t begin = first / LineBytes::kPixels * bytes.ofPixels;
    const std::size_t last =
        std::min<std::size_t>((end + LineBytes::kPixels - 1) / LineBytes::kPixels * bytes.ofPixels, bytes.line);
    if (begin < last) std::memcpy(to + begin, from + begin, last - begin);
}

}  // namespace

void KyIdentityConverter::ConvertPass(const KyPixelConverter& converter, const KyPixelConverterContext&,
                                      const KyLinePass& pass) {
    // Asked once: the answer is behind the registry's lock.
    const std::uint32_t bytes = converter.GetSourceByteSize(pass.width);
    if (pass.joint != nullptr && pass.joint->asked != nullptr)
        pass.joint->asked->Keep(LineBytes{bytes, converter.GetSourceByteSize(LineBytes::kPixels)}, &CopyAsStage);
    if (bytes == 0) return;
    const std::uint8_t* source = pass.source;
    std::uint8_t* destination = pass.destination;
    for (std::uint32_t line = 0; line < pass.height; line += pass.lineStep) {
        std::memcpy(destination, source, bytes);
        source += pass.sourceStep;
        destination += pass.destinationStep;
    }
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
    return Convert(source, destination, 1);
}
