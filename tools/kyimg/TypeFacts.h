#ifndef KYIMG_TYPEFACTS_H
#define KYIMG_TYPEFACTS_H

#include <string>

class KyPixelType;

namespace kyimg {

/// "grayscale", "RGB", "RGB, Bayer mosaic", "YUV" or "unknown"
std::string ColourSpaceText(const KyPixelType& type);

/// "normalized (MSB-aligned), packed"; "plain" when nothing is to be said.
std::string FlagsText(const KyPixelType& type);

/// Bytes that a pixel takes in an image: 1.25 where four share 5 bytes. KyPixelType::GetPixelByteSize() counts whole bytes.
double PixelBytes(const KyPixelType& type);
std::string PixelBytesText(const KyPixelType& type);
/// " (4 pixels in 5)"; nothing where pixels share no bytes.
std::string GroupText(const KyPixelType& type);

/// The class of the format, such as "KyBayerRGB8"; "KyPixelType" for formats of the application's own.
const char* ClassName(const KyPixelType& type);

}  // namespace kyimg

#endif
