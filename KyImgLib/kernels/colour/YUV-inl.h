#include <KyImgLib/kernels/colour/Colour-inl.h>

extern const YUVKernels kYUV;
const YUVKernels kYUV = {
    KernelsFrom<ReadYUV422, Colour8Settings>,
    KernelsFrom<ReadYUV422Words, Colour8Settings>,
    KernelsFrom<ReadYUV411, Colour8Settings>,
    KernelsFrom<ReadYUV444, Colour8Settings>,
};
