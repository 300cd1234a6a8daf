#include <KyImgLib/converters/colour/ReorderInternal.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

namespace ky {

namespace {

/// The filter is applied to RGB32, on whichever side that is.
struct ReorderMaker {
    ByteOrder order;
    bool appliesFilter, sourceIsRGB32;

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        GraySettings settings = {};
        settings.order = order;
        if (sourceIsRGB32) AddFilter(conversion, pipeline);
        ActiveKernels().gray.reorderPixel(settings, pipeline.Add());
        if (!sourceIsRGB32) AddFilter(conversion, pipeline);
        return true;
    }

private:
    void AddFilter(const ConversionSettings& conversion, Pipeline& pipeline) const {
        if (!appliesFilter) return;
        Colour8Settings settings = {};
        settings.filter = ByteStage(conversion.filter, false);
        if (!settings.filter.IsIdentity()) ActiveKernels().rgb.fromRGB32.toRGB32(settings, pipeline.Add());
    }
};

}  // namespace

ReorderConverter::ReorderConverter(std::int64_t sourceType, std::int64_t destinationType, const ByteOrder& order,
                                   bool appliesFilter)
    : KyPixelConverter(sourceType, destinationType, 4, 4, 1, 1) {
    Record::Of(*this).SetKernels(typeid(ReorderConverter),
                                 ReorderMaker{order, appliesFilter, sourceType == KY_TYPE_RGB32});
}

}  // namespace ky
