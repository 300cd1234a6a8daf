#include <KyImgLib/kernels/KernelTable.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

#include <hwy/cache_control.h>

#define KY_KERNEL_FILE "KyImgLib/kernels/gray/Gray-inl.h"
#include <KyImgLib/kernels/EveryLevel.h>
