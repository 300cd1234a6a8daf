#ifndef KYIMGLIB_IMAGES_IMAGEINTERNAL_H
#define KYIMGLIB_IMAGES_IMAGEINTERNAL_H

#include <KyImgLib/images/CheckInternal.h>

/// The operations on images behind both interfaces. They take null pointers where those do, and throw nothing.
namespace ky {

std::uint32_t GetImageSize(const KyImage* image, std::size_t* bytes) noexcept;
std::uint32_t CropImage(const KyImage* image, std::uint32_t x, std::uint32_t y, std::uint32_t width,
                        std::uint32_t height, KyImage* part, std::uint32_t* flags) noexcept;

// With a null pair, that of the two images is looked up.
std::uint32_t ConvertImages(const ImagePair* pair, const KyImage* source, const KyImage* destination,
                            const KyConversion* conversion) noexcept;
std::uint32_t ConvertImagesParallel(const ImagePair* pair, const KyImage* source, const KyImage* destination,
                                    const KyConversion* conversion, const KyExecutor* executor) noexcept;
std::uint32_t GetImageBandStep(const ImagePair* pair, const KyImage* source, const KyImage* destination,
                               const KyConversion* conversion, std::uint32_t* lines) noexcept;

}  // namespace ky

#endif
