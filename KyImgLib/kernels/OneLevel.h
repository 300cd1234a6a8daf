// No include guard: EveryLevel.h includes it once for each of Highway's targets.
#include <hwy/highway.h>

#if HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128

#define KY_SCALAR 0

HWY_BEFORE_NAMESPACE();
namespace ky::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;
#define KY_VBMI 0
#include KY_KERNEL_FILE
#undef KY_VBMI
}  // namespace ky::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_TARGET == HWY_AVX3
HWY_PUSH_ATTRIBUTES(HWY_TARGET_STR ",avx512vbmi,avx512vbmi2")
namespace ky::N_AVX3_VBMI {
namespace hn = hwy::HWY_NAMESPACE;
#define KY_VBMI 1
#include KY_KERNEL_FILE
#undef KY_VBMI
}  // namespace ky::N_AVX3_VBMI
HWY_POP_ATTRIBUTES
#endif

#undef KY_SCALAR

#endif
