// Kernels of gray samples at one instruction-set level: readers and writers meet in order or through tap runs.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/Streaming-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
#include <KyImgLib/kernels/PixelLines-inl.h>
#include <KyImgLib/kernels/gray/Readers-inl.h>
#include <KyImgLib/kernels/gray/GrayWriters-inl.h>
#include <KyImgLib/kernels/gray/TapLines-inl.h>
// clang-format on

/// All samples of a band, `kTaps` outputs at most.
template <class Reader, class Writer, std::size_t kTaps>
void ConvertGray(const GrayBand& band) {
#if KY_PLAIN
    OneByOne<Reader, Writer>(band);
#else
    if (band.taps == 1) {
        PixelLines(band, InOrderStep<Reader, Writer>{Reader(band)}).Run();
    } else if constexpr (kTaps >= 2) {
        if (band.taps == 2) TapLines<Reader, Writer, 2>(band).Run();
        if constexpr (kTaps == 4)
            if (band.taps == 4) TapLines<Reader, Writer, 4>(band).Run();
    }
#endif
}

template <class Writer>
constexpr GrayKernels KernelsTo = {
    &ConvertGray<ReadBytes, Writer, 2>,
    &OneByOne<ReadLastBytes, Writer>,
    &ConvertGray<ReadWordBytes, Writer, 2>,
    &ConvertGray<ReadPackedBytes, Writer, 2>,
};

extern const GrayTable kGray;
const GrayTable kGray = {
    KernelsTo<WriteGray8>,
    KernelsTo<WriteGray565>,
    KernelsTo<WriteGrayRGB<3>>,
    KernelsTo<WriteGrayRGB<4>>,
    &ConvertGray<ReadShiftedWords<Shift::kRight>, WriteGray16, 4>,
    &ConvertGray<ReadShiftedWords<Shift::kLeft>, WriteGray16, 1>,
    &ConvertGray<ReadPacked, WriteGray16, 2>,
    &ConvertGray<ReadBytes, WriteGray8, 4>,
};
