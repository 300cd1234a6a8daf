#include <KyImgLib/kernels/bayer/Bayer-inl.h>

extern const Bayer8Table kBayer8;
const Bayer8Table kBayer8 = {
    KernelsTo<Write565, Bayer8Band>,
    KernelsTo<Write24, Bayer8Band>,
    KernelsTo<Write32, Bayer8Band>,
};
