#ifndef KYIMGLIB_IMAGES_CHECKINTERNAL_H
#define KYIMGLIB_IMAGES_CHECKINTERNAL_H

#include <KyImgLib/images/KyImage.h>
#include <KyImgLib/images/LayoutInternal.h>

#include <cstdint>

class KyPixelConverter;

namespace ky {

/// Two pixel types and the converter between them.
struct ImagePair {
    std::int64_t sourceType, destinationType;
    const KyPixelConverter* converter;
    Layout source, destination;
    bool copiesLines;    ///< of images with the same bytes
    bool agreesOnBytes;  ///< the converter reads and writes what the types say, so that kernels can work on the images
};

/// Refuses types that are not registered, and pairs without a converter.
std::uint32_t FindPair(std::int64_t sourceType, std::int64_t destinationType, ImagePair& pair);
/// The same with a given converter.
std::uint32_t MakePair(std::int64_t sourceType, std::int64_t destinationType, const KyPixelConverter& converter,
                       ImagePair& pair);

/// A conversion with which all is well.
struct CheckedConversion {
    const ImagePair* pair;
    KyImage source, destination;
    Placement sourcePlace, destinationPlace;
    std::uint32_t flags;
    const KyRGBFilter* filter;
    bool hasKernels;                   ///< its bands can be converted by themselves
    std::uint32_t step;                ///< of bands
    std::uint32_t firstLine, lineEnd;  ///< of the band asked for

    bool IsEmpty() const { return source.width == 0 || firstLine == lineEnd; }
};

/// Checks everything but buffers and band.
std::uint32_t CheckShapes(const ImagePair& pair, const KyImage& source, const KyImage& destination,
                          const KyConversion* conversion, CheckedConversion& checked);
/// Checks everything.
std::uint32_t Check(const ImagePair& pair, const KyImage& source, const KyImage& destination,
                    const KyConversion* conversion, CheckedConversion& checked);

}  // namespace ky

#endif
