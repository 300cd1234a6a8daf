#include <KyImgLib/converters/colour/PlanesToRGBInternal.h>

#include <KyImgLib/converters/colour/ColourKernelsInternal.h>

namespace ky {

namespace {

struct PlanesMaker {
    PlanarFormat source;

    bool AddKernels(const ConversionSettings& conversion, Pipeline& pipeline) const {
        const RGBBitsTable& table = ActiveKernels().rgbBits;
        if (source.bits == 8)
            table.planesToRGB24(Settings(ByteStage(conversion.filter, false)), pipeline.Add());
        else
            table.planesToRGB48(Settings(WordStageOf(conversion.filter, source.bits)), pipeline.Add());
        return true;
    }

private:
    template <class Filter>
    ColourSettings<Filter> Settings(const Filter& filter) const {
        ColourSettings<Filter> settings = {};
        settings.filter = filter;
        std::copy_n(source.planes, 3, settings.places);
        return settings;
    }
};

}  // namespace

PlanesToRGB::PlanesToRGB(const PlanarFormat& source)
    : PlanesConverter(source.id, source.bits == 8 ? KY_TYPE_RGB24 : KY_TYPE_RGB48) {
    Record::Of(*this).SetKernels(typeid(PlanesToRGB), PlanesMaker{source});
}

}  // namespace ky
