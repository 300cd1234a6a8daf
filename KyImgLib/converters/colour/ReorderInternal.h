#ifndef KYIMGLIB_CONVERTERS_COLOUR_REORDERINTERNAL_H
#define KYIMGLIB_CONVERTERS_COLOUR_REORDERINTERNAL_H

#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/kernels/gray/GrayKernels.h>

namespace ky {

/// Between RGB32 and a type of four bytes a pixel that differs in the order of these. As a stage of a chain it ignores filters:
/// the other stage applies them.
class ReorderConverter final : public KyPixelConverter {
public:
    ReorderConverter(std::int64_t sourceType, std::int64_t destinationType, const ByteOrder& order, bool appliesFilter);
};

}  // namespace ky

#endif
