#ifndef KYIMGLIB_CONVERTERS_COLOUR_REORDERINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_REORDERINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/kernels/gray/GrayKernels.h>

namespace ky {

/// Between types of four bytes a pixel that differ in the order of these. Filters are ignored.
class ReorderConverter final : public KyPixelConverter {
public:
    ReorderConverter(std::int64_t sourceType, std::int64_t destinationType, const ByteOrder& order);
};

}  // namespace ky

#endif
