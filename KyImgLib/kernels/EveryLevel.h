// No include guard: included once by each kernel source file.
//
// Compiles one kernel file for every instruction-set level. The source file names it and includes this header:
//
//     #define KY_KERNEL_FILE "KyImgLib/kernels/bayer/Bayer8-inl.h"
//     #include <KyImgLib/kernels/EveryLevel.h>
//
// The kernel file is ordinary code inside namespace ky::<level>, where <level> is N_SCALAR_LEVEL, N_SSE4, N_AVX2, N_AVX3,
// N_AVX3_VBMI or N_NEON. In it
//     KY_SCALAR  is 1 at the scalar level, which has no vectors, otherwise 0,
//     KY_VBMI    is 1 where the byte permutes of AVX-512 VBMI may be used, otherwise 0,
//     hn         is Highway's namespace for the level (not at the scalar level).
//
// Highway's own re-inclusion serves every level but two. The scalar level is compiled without it, so that it is the
// same code on every machine. VBMI is compiled as an extra pass over Highway's AVX3 with two more instruction sets switched
// on: the target that Highway itself has for them also brings instructions that some of these CPUs lack.
#include <hwy/cache_control.h>  // the same for all levels

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "KyImgLib/kernels/OneLevel.h"
// clang-format off
#include <hwy/foreach_target.h>  // includes OneLevel.h for every target but the lowest
#include <KyImgLib/kernels/OneLevel.h>
// clang-format on

namespace ky::N_SCALAR_LEVEL {
#define KY_SCALAR 1
#define KY_VBMI 0
#include KY_KERNEL_FILE
#undef KY_VBMI
#undef KY_SCALAR
}  // namespace ky::N_SCALAR_LEVEL
