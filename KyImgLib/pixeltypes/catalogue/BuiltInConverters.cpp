#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

namespace ky {

BuiltInConverters ConstructBuiltInConverters() {
    Constructor construct;
    ConstructGrayscaleConverters(construct);
    ConstructColourConverters(construct);
    ConstructBayerConverters(construct);
    ConstructChains(construct);
    return construct.Take();
}

}  // namespace ky
