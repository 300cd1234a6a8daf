#include <KyImgLib/converters/colour/ReorderInternal.h>

#include <KyImgLib/conversion/ConverterRecordInternal.h>
#include <KyImgLib/kernels/KernelTable.h>

namespace ky {

namespace {

struct ReorderMaker {
    ByteOrder order;

    bool AddKernels(const ConversionSettings&, Pipeline& pipeline) const {
        GraySettings settings = {};
        settings.order = order;
        ActiveKernels().gray.reorderPixel(settings, pipeline.Add());
        return true;
    }
};

}  // namespace

ReorderConverter::ReorderConverter(std::int64_t sourceType, std::int64_t destinationType, const ByteOrder& order)
    : KyPixelConverter(sourceType, destinationType, 4, 4, 1, 1) {
    Record::Of(*this).SetKernels(typeid(ReorderConverter), ReorderMaker{order});
}

}  // namespace ky
