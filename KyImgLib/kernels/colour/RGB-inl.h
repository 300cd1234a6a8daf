#include <KyImgLib/kernels/colour/Colour-inl.h>

template <class Reader>
constexpr ColourKernels<Colour8Settings> WithPlanes(ColourKernels<Colour8Settings> kernels) {
    kernels.toPlanar = &MakeColours<Reader, WritePlanes, Colour8Settings>;
    return kernels;
}

extern const RGBKernels kRGB;
const RGBKernels kRGB = {
    KernelsFrom<ReadRGB16, Colour8Settings>,
    WithPlanes<ReadRGBBytes<3>>(KernelsFrom<ReadRGBBytes<3>, Colour8Settings>),
    KernelsFrom<ReadRGBBytes<4>, Colour8Settings>,
    KernelsFrom<ReadRGBWords<3>, Colour16Settings>,
    KernelsFrom<ReadRGBWords<4>, Colour16Settings>,
};
