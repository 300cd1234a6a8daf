#include <KyImgLib/converters/bayer/KyBayerRGB8ToRGB.h>

#include <KyImgLib/converters/FilterStageInternal.h>
#include <KyImgLib/converters/bayer/BayerDriverInternal.h>
#include <KyImgLib/kernels/KernelTable.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>

/// The kernels of one destination, at whichever level is active.
struct KyBayerRGB8ToRGB::Kernels {
    using Of = ky::BayerKernels<ky::Bayer8Band> ky::Bayer8Table::*;

    static ky::BayerDriver<ky::Bayer8Band> Driver(const KyBayerRGB8ToRGB& converter, Of kernels) {
        return {
            ky::ActiveKernels().bayer8.*kernels, converter.shiftOrStep, converter.swapRedBlue, 8, 0, &ky::ByteStage};
    }

    template <Of kKernels>
    static void ConvertPass(const KyPixelConverter& converter, const KyPixelConverterContext& context,
                            const KyLinePass& pass) {
        Driver(static_cast<const KyBayerRGB8ToRGB&>(converter), kKernels).ConvertPass(context, pass);
    }
};

namespace {
constexpr std::uint32_t kPipelining = 8;
constexpr std::uint32_t kNeighbourLines = 1;
}  // namespace

KyBayerRGB8ToRGB::KyBayerRGB8ToRGB(const std::int64_t& sourceType, const std::int64_t& destinationType, std::uint32_t a,
                                   std::uint32_t b, std::uint32_t c, bool swap, std::uint32_t e, std::uint32_t reserved)
    : KyBayerToRGB(sourceType, destinationType, a * (e + 1), b, c, swap, e + 1, reserved) {}

KyBayerRGB8ToRGB16::KyBayerRGB8ToRGB16(const std::int64_t& sourceType, std::uint32_t e, std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, KY_TYPE_RGB16, 1, 2, kPipelining, false, e, reserved) {
    SetPassFunction(typeid(KyBayerRGB8ToRGB16), &Kernels::ConvertPass<&ky::Bayer8Table::toRGB16>, kNeighbourLines);
}

std::uint32_t KyBayerRGB8ToRGB16::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                  std::uint32_t count) const {
    return Kernels::Driver(*this, &ky::Bayer8Table::toRGB16).ConvertLinePair(source, destination, count);
}

std::uint32_t KyBayerRGB8ToRGB16::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                      std::uint32_t count) const {
    return Kernels::Driver(*this, &ky::Bayer8Table::toRGB16).ConvertInterpolated(source, destination, count);
}

KyBayerRGB8ToRGB24::KyBayerRGB8ToRGB24(const std::int64_t& sourceType, bool swap, std::uint32_t e,
                                       std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, swap ? KY_TYPE_BGR24 : KY_TYPE_RGB24, 1, 3, kPipelining, swap, e, reserved) {
    SetPassFunction(typeid(KyBayerRGB8ToRGB24), &Kernels::ConvertPass<&ky::Bayer8Table::toRGB24>, kNeighbourLines);
}

std::uint32_t KyBayerRGB8ToRGB24::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                  std::uint32_t count) const {
    return Kernels::Driver(*this, &ky::Bayer8Table::toRGB24).ConvertLinePair(source, destination, count);
}

std::uint32_t KyBayerRGB8ToRGB24::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                      std::uint32_t count) const {
    return Kernels::Driver(*this, &ky::Bayer8Table::toRGB24).ConvertInterpolated(source, destination, count);
}

KyBayerRGB8ToRGB32::KyBayerRGB8ToRGB32(const std::int64_t& sourceType, bool swap, std::uint32_t e,
                                       std::uint32_t reserved)
    : KyBayerRGB8ToRGB(sourceType, swap ? KY_TYPE_BGR32 : KY_TYPE_RGB32, 1, 4, kPipelining, swap, e, reserved) {
    SetPassFunction(typeid(KyBayerRGB8ToRGB32), &Kernels::ConvertPass<&ky::Bayer8Table::toRGB32>, kNeighbourLines);
}

std::uint32_t KyBayerRGB8ToRGB32::ConvertLinePair(const std::uint8_t* source, std::uint8_t* destination,
                                                  std::uint32_t count) const {
    return Kernels::Driver(*this, &ky::Bayer8Table::toRGB32).ConvertLinePair(source, destination, count);
}

std::uint32_t KyBayerRGB8ToRGB32::ConvertInterpolated(const std::uint8_t* source, std::uint8_t* destination,
                                                      std::uint32_t count) const {
    return Kernels::Driver(*this, &ky::Bayer8Table::toRGB32).ConvertInterpolated(source, destination, count);
}
