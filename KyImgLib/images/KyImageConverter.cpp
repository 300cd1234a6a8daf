#include <KyImgLib/images/KyImageConverter.h>

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/images/ImageInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

#include <new>

struct KyImageConverter::Record : KyObject {
    ky::ImagePair pair = {};
    const KyPixelConverter* given = nullptr;  ///< null: the registered one
    std::int64_t sourceType, destinationType;

    Record(std::int64_t source, std::int64_t destination, const KyPixelConverter* converter)
        : given(converter), sourceType(source), destinationType(destination) {
        if (Find(pair) != KY_STATUS_SUCCESS) pair.converter = nullptr;
    }

    std::uint32_t Find(ky::ImagePair& found) const noexcept {
        return ky::Guard([&] {
            return given != nullptr ? ky::MakePair(sourceType, destinationType, *given, found)
                                    : ky::FindPair(sourceType, destinationType, found);
        });
    }

    /// Hands the pair to `work(pair)`.
    template <typename Work>
    std::uint32_t WithPair(Work work) const noexcept {
        if (pair.converter != nullptr) return work(pair);
        ky::ImagePair found;
        const std::uint32_t status = Find(found);  // registered since, or a text that says what is missing
        return status != KY_STATUS_SUCCESS ? status : work(found);
    }
};

KyImageConverter::KyImageConverter(std::int64_t sourceType, std::int64_t destinationType)
    : record(new Record(sourceType, destinationType, nullptr)) {
    if (record == nullptr) throw std::bad_alloc();
}

KyImageConverter::KyImageConverter(const KyPixelConverter& converter)
    : record(new Record(converter.GetSourceType(), converter.GetDestinationType(), &converter)) {
    if (record == nullptr) throw std::bad_alloc();
}

KyImageConverter::~KyImageConverter() { delete record; }

bool KyImageConverter::IsValid() const noexcept { return record->pair.converter != nullptr; }

std::uint32_t KyImageConverter::Convert(const KyImage& source, const KyImage& destination,
                                        const KyConversion* conversion) const noexcept {
    return record->WithPair(
        [&](const ky::ImagePair& pair) { return ky::ConvertImages(&pair, &source, &destination, conversion); });
}

std::uint32_t KyImageConverter::ConvertParallel(const KyImage& source, const KyImage& destination,
                                                const KyConversion* conversion,
                                                const KyExecutor* executor) const noexcept {
    return record->WithPair([&](const ky::ImagePair& pair) {
        return ky::ConvertImagesParallel(&pair, &source, &destination, conversion, executor);
    });
}

std::uint32_t KyImageConverter::GetBandStep(const KyImage& source, const KyImage& destination,
                                            const KyConversion* conversion, std::uint32_t& lines) const noexcept {
    return record->WithPair([&](const ky::ImagePair& pair) {
        return ky::GetImageBandStep(&pair, &source, &destination, conversion, &lines);
    });
}

const char* KyImageConverter::GetError() noexcept { return ky::LastRefusal(); }
