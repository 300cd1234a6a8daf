#include <KyImgLib/kernels/KernelTable.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#define KY_KERNEL_FILE "KyImgLib/kernels/colour/YCbCr-inl.h"
#include <KyImgLib/kernels/EveryLevel.h>
