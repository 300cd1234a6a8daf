#include <KyImgLib/kernels/colour/Colour-inl.h>

extern const YUVKernels kYUV;
const YUVKernels kYUV = {
    KernelsFrom<ReadYUV422, Colour8Band>,
    KernelsFrom<ReadYUV422Words, Colour8Band>,
    KernelsFrom<ReadYUV411, Colour8Band>,
    KernelsFrom<ReadYUV444, Colour8Band>,
};
