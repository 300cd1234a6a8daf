#include <KyImgLib/kernels/bayer/Bayer-inl.h>

extern const Bayer16Table kBayer16;
const Bayer16Table kBayer16 = {
    KernelsTo<Write565, Bayer16Settings>,
    KernelsTo<Write24, Bayer16Settings>,
    KernelsTo<Write32, Bayer16Settings>,
    KernelsTo<Write48, Bayer16Settings>,
};
