// Kernels to 16-bit words, and from those or from bytes to floats, at one instruction-set level.

// Each piece builds on those before it.
// clang-format off
#include <KyImgLib/kernels/Lanes-inl.h>
#include <KyImgLib/kernels/RowWalk-inl.h>
#include <KyImgLib/kernels/Writers-inl.h>
#include <KyImgLib/kernels/gray/Readers-inl.h>
#include <KyImgLib/kernels/gray/BitReaders-inl.h>
#include <KyImgLib/kernels/gray/GrayWriters-inl.h>
#include <KyImgLib/kernels/gray/InOrder-inl.h>
#include <KyImgLib/kernels/words/Samples-inl.h>
#include <KyImgLib/kernels/words/Channels-inl.h>
// clang-format on

extern const WordTable kWords;
const WordTable kWords = {
    &MakeSamples<ReadWidened, 1>, &MakeSamples<ReadScaled, 1>, &MakeSamples<ReadStream, 4>,
    ChannelsFrom<ThreeBytes>,     ChannelsFrom<ThreeWords>,    &MakeChannels<ThreeBytes, WriteLuma>,
};
