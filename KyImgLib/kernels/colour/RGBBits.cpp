#include <KyImgLib/kernels/KernelTable.h>
#include <KyImgLib/kernels/colour/YUVRule.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#define KY_KERNEL_FILE "KyImgLib/kernels/colour/RGBBits-inl.h"
#include <KyImgLib/kernels/EveryLevel.h>
