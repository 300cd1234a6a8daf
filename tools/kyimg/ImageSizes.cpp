#include "ImageSizes.h"

#include "Errors.h"
#include "Routes.h"

#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>

namespace kyimg {

KyImage MakeImage(std::int64_t type, std::uint32_t width, std::uint32_t height) {
    KyImage image = {};
    image.type = type;
    image.width = width;
    image.height = height;
    return image;
}

std::size_t SizeOf(const KyImage& image) {
    std::size_t bytes = 0;
    if (KyImage_GetSize(&image, &bytes) != KY_STATUS_SUCCESS) throw Failure(KyImage_GetError());
    return bytes;
}

std::int64_t UnpackedType(std::int64_t type) {
    const bool pixelsShareBytes = SizeOf(MakeImage(type, 1, 2)) == SizeOf(MakeImage(type, 2, 2));
    return pixelsShareBytes ? PlainType(*KyPixelTypeFactory::FindPixelType(type)).value_or(0) : 0;
}

}  // namespace kyimg
