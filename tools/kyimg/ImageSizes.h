#ifndef KYIMG_IMAGESIZES_H
#define KYIMG_IMAGESIZES_H

#include <KyImgLib/images/KyImage.h>

#include <cstddef>
#include <cstdint>

namespace kyimg {

/// An image whose lines follow one another without padding, without data yet.
KyImage MakeImage(std::int64_t type, std::uint32_t width, std::uint32_t height);

/// Bytes of an image. Throws Failure with the library's words where there cannot be such an image.
std::size_t SizeOf(const KyImage& image);

/// The type of the samples, not packed, of a grayscale or Bayer type in which two pixels share three bytes; otherwise 0.
std::int64_t UnpackedType(std::int64_t type);

}  // namespace kyimg

#endif
