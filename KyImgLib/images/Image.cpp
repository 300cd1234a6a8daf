#include <KyImgLib/images/ImageInternal.h>

#include <KyImgLib/images/ConvertInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

namespace ky {

namespace {

/// Hands the pair of the two images to `work(pair)`.
template <typename Work>
std::uint32_t WithPair(const ImagePair* known, const KyImage* source, const KyImage* destination, Work work) noexcept {
    if (source == nullptr || destination == nullptr)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << (source == nullptr ? "source" : "destination") << " is null";
    return Guard([&]() -> std::uint32_t {
        if (known != nullptr) return work(*known);
        ImagePair pair;
        const std::uint32_t status = FindPair(source->type, destination->type, pair);
        return status != KY_STATUS_SUCCESS ? status : work(pair);
    });
}

}  // namespace

std::uint32_t ConvertImages(const ImagePair* known, const KyImage* source, const KyImage* destination,
                            const KyConversion* conversion) noexcept {
    return WithPair(known, source, destination, [&](const ImagePair& pair) {
        CheckedConversion checked;
        const std::uint32_t status = Check(pair, *source, *destination, conversion, checked);
        if (status != KY_STATUS_SUCCESS || checked.IsEmpty()) return status;
        return ConvertBand(checked, checked.firstLine, checked.lineEnd);
    });
}

std::uint32_t ConvertImagesParallel(const ImagePair* known, const KyImage* source, const KyImage* destination,
                                    const KyConversion* conversion, const KyExecutor* executor) noexcept {
    return WithPair(known, source, destination, [&](const ImagePair& pair) -> std::uint32_t {
        CheckedConversion checked;
        const std::uint32_t status = Check(pair, *source, *destination, conversion, checked);
        if (status != KY_STATUS_SUCCESS || checked.IsEmpty()) return status;
        return ConvertBands(checked, executor);
    });
}

std::uint32_t GetImageBandStep(const ImagePair* known, const KyImage* source, const KyImage* destination,
                               const KyConversion* conversion, std::uint32_t* lines) noexcept {
    return WithPair(known, source, destination, [&](const ImagePair& pair) -> std::uint32_t {
        if (lines == nullptr) return Refusal(KY_STATUS_BAD_ARGUMENT) << "lines is null";
        CheckedConversion checked;
        const std::uint32_t status = CheckShapes(pair, *source, *destination, conversion, checked);
        if (status == KY_STATUS_SUCCESS) *lines = checked.step;
        return status;
    });
}

std::uint32_t GetImageSize(const KyImage* image, std::size_t* bytes) noexcept {
    if (image == nullptr || bytes == nullptr)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << (image == nullptr ? "image" : "bytes") << " is null";
    return Guard([&]() -> std::uint32_t {
        Layout layout;
        if (const std::uint32_t status = FindLayout("image", image->type, layout)) return status;
        Placement place;
        if (const std::uint32_t status = PlaceImage("image", *image, layout, place)) return status;
        *bytes = place.size;
        return KY_STATUS_SUCCESS;
    });
}

}  // namespace ky
