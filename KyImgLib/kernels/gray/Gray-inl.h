// Kernels of gray samples at one instruction-set level: a reader and a writer, for samples in the order of their pixels or of
// several taps.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/RowWalk-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
#include <KyImgLib/kernels/gray/Readers-inl.h>
#include <KyImgLib/kernels/gray/BitReaders-inl.h>
#include <KyImgLib/kernels/gray/GrayWriters-inl.h>
#include <KyImgLib/kernels/gray/InOrder-inl.h>
#include <KyImgLib/kernels/gray/Taps-inl.h>
#include <KyImgLib/kernels/gray/Gather-inl.h>
// clang-format on

/// `kTaps`: the largest number of taps that the source may have.
template <class Reader, class Writer, std::size_t kTaps>
void MakeGrayKernel(const GraySettings& settings, RowKernel& kernel) {
    RowKernel::Needs needs;
    needs.group = Reader::kGroup;
    needs.groupBytes = Reader::kGroupBytes;
    needs.pixelBytes = Writer::kPixelBytes;
    needs.isComputeBound = Writer::kPixelBytes > 2;
    needs.areaPartialGroup = RowKernel::PartialGroup::kLeftOut;
    const TapLayout::Order order = settings.taps.order;
    needs.wholeRows = order != TapLayout::kInOrder;
    needs.rowStep = needs.rowsAtOnce = order == TapLayout::kLinePairs ? 2 : 1;
    const Reader reader(settings);
    if (order == TapLayout::kInOrder) {
        kernel.Set(needs, &ConvertInOrder<Reader, Writer>, reader);
    } else if constexpr (kTaps >= 2) {
        if (order != TapLayout::kQuarters)
            kernel.Set(needs, &ConvertTaps<Reader, Writer, 2>, TapState<Reader>{reader, settings.taps});
        else if constexpr (kTaps == 4)
            kernel.Set(needs, &ConvertTaps<Reader, Writer, 4>, TapState<Reader>{reader, settings.taps});
    }
}

template <class Writer>
constexpr GrayKernels KernelsTo = {
    &MakeGrayKernel<ReadBytes, Writer, 2>,
    &MakeGrayKernel<ReadWordBytes, Writer, 2>,
    &MakeGrayKernel<ReadPackedBytes, Writer, 2>,
};

extern const GrayTable kGray;
const GrayTable kGray = {
    KernelsTo<WriteGray8>,
    KernelsTo<WriteGray565>,
    KernelsTo<WriteGrayRGB<3>>,
    KernelsTo<WriteGrayRGB<4>>,
    &MakeGrayKernel<ReadShiftedWords<Shift::kRight>, WriteGray16, 4>,
    &MakeGrayKernel<ReadShiftedWords<Shift::kLeft>, WriteGray16, 1>,
    &MakeGrayKernel<ReadPacked, WriteGray16, 2>,
    &MakeGrayKernel<ReadBytes, WriteGray8, 4>,
    &MakeGather,
    {&MakeGrayKernel<ReadBits<LeastFirst<10, 4>>, WriteGray16, 1>,
     &MakeGrayKernel<ReadBits<LeastFirst<12, 2>>, WriteGray16, 1>,
     &MakeGrayKernel<ReadBits<LeastFirst<14, 4>>, WriteGray16, 1>},
    {&MakeGrayKernel<ReadBits<HighBytesFirst<10, 4>>, WriteGray16, 1>,
     &MakeGrayKernel<ReadBits<HighBytesFirst<12, 2>>, WriteGray16, 1>,
     &MakeGrayKernel<ReadBits<HighBytesFirst<14, 4>>, WriteGray16, 1>},
    {&MakeGrayKernel<ReadFewBits<LeastFirst<1, 8>>, WriteGray8, 1>,
     &MakeGrayKernel<ReadFewBits<LeastFirst<2, 4>>, WriteGray8, 1>,
     &MakeGrayKernel<ReadFewBits<LeastFirst<4, 2>>, WriteGray8, 1>},
    &MakeGrayKernel<ReadBigEndianWords, WriteGray16, 1>,
    &MakeGrayKernel<ReadReordered, WriteSamples<std::uint32_t>, 1>,
};
