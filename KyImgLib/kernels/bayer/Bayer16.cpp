#include <KyImgLib/kernels/KernelTable.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#define KY_KERNEL_FILE "KyImgLib/kernels/bayer/Bayer16-inl.h"
#include <KyImgLib/kernels/EveryLevel.h>
