#include <KyImgLib/kernels/bayer/Bayer-inl.h>

extern const Bayer16Table kBayer16;
const Bayer16Table kBayer16 = {
    KernelsTo<Write565, Bayer16Band>,
    KernelsTo<Write24, Bayer16Band>,
    KernelsTo<Write32, Bayer16Band>,
    KernelsTo<Write48, Bayer16Band>,
};
