#include <KyImgLib/kernels/KernelTable.h>

#include <KyImgLib/platform/KyCpuLevel.h>

namespace ky {

// Each kernel source file defines its table once in every level's namespace.
#define KY_LEVEL(level)                                                                            \
    namespace level {                                                                              \
    extern const Bayer8Table kBayer8;                                                              \
    extern const Bayer16Table kBayer16;                                                            \
    extern const RGBKernels kRGB;                                                                  \
    extern const YUVKernels kYUV;                                                                  \
    extern const YCbCrKernels kYCbCr;                                                              \
    extern const GrayTable kGray;                                                                  \
    extern const RGBBitsTable kRGBBits;                                                            \
    extern const WordTable kWords;                                                                 \
    constexpr KernelTable kAll = {kBayer8, kBayer16, kRGB, kYUV, kYCbCr, kGray, kRGBBits, kWords}; \
    }

KY_LEVEL(N_SCALAR_LEVEL)
#if defined(__x86_64__)
KY_LEVEL(N_SSE4)
KY_LEVEL(N_AVX2)
KY_LEVEL(N_AVX3)
KY_LEVEL(N_AVX3_VBMI)
#elif defined(__aarch64__)
KY_LEVEL(N_NEON)
#endif

#undef KY_LEVEL

namespace {

// In the order of KyCpuLevel.
constexpr const KernelTable* kLevels[] = {
    &N_SCALAR_LEVEL::kAll,
#if defined(__x86_64__)
    &N_SSE4::kAll,         &N_AVX2::kAll, &N_AVX3::kAll, &N_AVX3_VBMI::kAll,
#elif defined(__aarch64__)
    &N_NEON::kAll,
#endif
};

}  // namespace

const KernelTable& ActiveKernels() { return *kLevels[KyCpuLevel::GetActive()]; }

}  // namespace ky
