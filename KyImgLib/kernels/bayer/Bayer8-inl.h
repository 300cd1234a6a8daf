#include <KyImgLib/kernels/bayer/Bayer-inl.h>

extern const Bayer8Table kBayer8;
const Bayer8Table kBayer8 = {
    KernelsTo<Write565, Bayer8Settings>,
    KernelsTo<Write24, Bayer8Settings>,
    KernelsTo<Write32, Bayer8Settings>,
};
