#include <KyImgLib/kernels/colour/Colour-inl.h>

template <class Reader>
constexpr ColourKernels<Colour8Band> WithPlanes(ColourKernels<Colour8Band> kernels) {
    kernels.toPlanar = &ConvertColour<Reader, WritePlanes, Colour8Band>;
    return kernels;
}

extern const RGBKernels kRGB;
const RGBKernels kRGB = {
    KernelsFrom<ReadRGB16, Colour8Band>,        WithPlanes<ReadRGBBytes<3>>(KernelsFrom<ReadRGBBytes<3>, Colour8Band>),
    KernelsFrom<ReadRGBBytes<4>, Colour8Band>,  KernelsFrom<ReadRGBWords<3>, Colour16Band>,
    KernelsFrom<ReadRGBWords<4>, Colour16Band>,
};
