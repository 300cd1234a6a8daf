#include <KyImgLib/converters/grayscale/UnpackInternal.h>

#include <KyImgLib/converters/grayscale/GrayKernelsInternal.h>

namespace ky {

namespace {

/// The kernel by the source's packing and bits: 1, 2, 4 or 10, 12, 14.
struct UnpackMaker {
    Packing packing;
    std::uint32_t bits;

    bool AddKernels(const ConversionSettings&, Pipeline& pipeline) const {
        const GrayTable& table = ActiveKernels().gray;
        const std::size_t index = bits < 8 ? bits / 2 : (bits - 10) / 2;
        const MakeGray make = packing == Packing::kBigEndian ? table.swapBytes
                              : packing == Packing::kMIPI    ? table.unpackHighBytesFirst[index]
                              : bits < 8                     ? table.unpackFewBits[index]
                                                             : table.unpackLeastFirst[index];
        make({}, pipeline.Add());
        return true;
    }
};

std::uint32_t BytesOfPlain(const ExtendedType& source) { return source.bits < 8 ? 1 : 2; }

}  // namespace

UnpackConverter::UnpackConverter(const ExtendedType& source)
    : KyPixelConverter(source.id, source.plain, 2, BytesOfPlain(source), source.group.pixels, 1), group(source.group) {
    Record::Of(*this).SetKernels(typeid(UnpackConverter), UnpackMaker{source.packing, source.bits});
}

std::uint32_t UnpackConverter::GetSourceByteSize(std::uint32_t count) const {
    return static_cast<std::uint32_t>(BytesOf(group, count));
}

}  // namespace ky
