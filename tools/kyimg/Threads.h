#ifndef KYIMG_THREADS_H
#define KYIMG_THREADS_H

#include <KyImgLib/images/KyImage.h>

#include <cstdint>

namespace kyimg {

/// Converts each image on this many threads, which end with the conversion.
KyExecutor MakeExecutor(std::uint32_t threads);

}  // namespace kyimg

#endif
