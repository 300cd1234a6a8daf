#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

namespace ky {

void ConstructGrayscaleConverters(Constructor&) {}

}  // namespace ky
