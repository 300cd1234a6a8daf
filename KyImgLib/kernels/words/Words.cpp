#include <KyImgLib/kernels/KernelTable.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#define KY_KERNEL_FILE "KyImgLib/kernels/words/Words-inl.h"
#include <KyImgLib/kernels/EveryLevel.h>
