#include <KyImgLib/kernels/KernelTable.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

#define KY_KERNEL_FILE "KyImgLib/kernels/gray/Gray-inl.h"
#include <KyImgLib/kernels/EveryLevel.h>
