#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/images/ImageInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

uint32_t KyImage_GetSize(const KyImage* image, size_t* bytes) { return ky::GetImageSize(image, bytes); }

uint32_t KyImage_Crop(const KyImage* image, uint32_t x, uint32_t y, uint32_t width, uint32_t height, KyImage* part,
                      uint32_t* flags) {
    return ky::CropImage(image, x, y, width, height, part, flags);
}

uint32_t KyImage_Convert(const KyImage* source, const KyImage* destination, const KyConversion* conversion) {
    return ky::ConvertImages(nullptr, source, destination, conversion);
}

uint32_t KyImage_GetBandStep(const KyImage* source, const KyImage* destination, const KyConversion* conversion,
                             uint32_t* lines) {
    return ky::GetImageBandStep(nullptr, source, destination, conversion, lines);
}

uint32_t KyImage_ConvertParallel(const KyImage* source, const KyImage* destination, const KyConversion* conversion,
                                 const KyExecutor* executor) {
    return ky::ConvertImagesParallel(nullptr, source, destination, conversion, executor);
}

const char* KyImage_GetError(void) { return ky::LastRefusal(); }
