#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/flat/GuardInternal.h>

#include <exception>

using ky::Guarded;

namespace {

template <typename Call>
uint32_t Setting(KyRGBFilter* filter, Call call) {
    return Guarded(filter, uint32_t{KY_STATUS_BAD_ARGUMENT}, uint32_t{KY_STATUS_OUT_OF_MEMORY}, call);
}

}  // namespace

KyRGBFilter* KyRGBFilter_Init(uint32_t bitSize) {
    try {
        return new KyRGBFilter(bitSize);
    } catch (const std::exception&) {  // more than 16 bits, or no memory for the tables
        return nullptr;
    }
}

void KyRGBFilter_Destroy(KyRGBFilter* filter) { delete filter; }

uint32_t KyRGBFilter_GetBitSize(const KyRGBFilter* filter) {
    return Guarded(filter, uint32_t{0}, [](auto& f) { return f.GetBitSize(); });
}

uint32_t KyRGBFilter_GetEntryCount(const KyRGBFilter* filter) {
    return Guarded(filter, uint32_t{0}, [](auto& f) { return f.GetEntryCount(); });
}

uint8_t KyRGBFilter_GetRedValue8(const KyRGBFilter* filter, uint32_t index) {
    return Guarded(filter, uint8_t{0}, [=](auto& f) { return f.GetRedValue8(index); });
}

uint8_t KyRGBFilter_GetGreenValue8(const KyRGBFilter* filter, uint32_t index) {
    return Guarded(filter, uint8_t{0}, [=](auto& f) { return f.GetGreenValue8(index); });
}

uint8_t KyRGBFilter_GetBlueValue8(const KyRGBFilter* filter, uint32_t index) {
    return Guarded(filter, uint8_t{0}, [=](auto& f) { return f.GetBlueValue8(index); });
}

uint16_t KyRGBFilter_GetRedValue16(const KyRGBFilter* filter, uint32_t index) {
    return Guarded(filter, uint16_t{0}, [=](auto& f) { return f.GetRedValue16(index); });
}

uint16_t KyRGBFilter_GetGreenValue16(const KyRGBFilter* filter, uint32_t index) {
    return Guarded(filter, uint16_t{0}, [=](auto& f) { return f.GetGreenValue16(index); });
}

uint16_t KyRGBFilter_GetBlueValue16(const KyRGBFilter* filter, uint32_t index) {
    return Guarded(filter, uint16_t{0}, [=](auto& f) { return f.GetBlueValue16(index); });
}

uint32_t KyRGBFilter_SetRedValue(KyRGBFilter* filter, uint32_t index, uint16_t value) {
    return Setting(filter, [=](auto& f) { return f.SetRedValue(index, value); });
}

uint32_t KyRGBFilter_SetGreenValue(KyRGBFilter* filter, uint32_t index, uint16_t value) {
    return Setting(filter, [=](auto& f) { return f.SetGreenValue(index, value); });
}

uint32_t KyRGBFilter_SetBlueValue(KyRGBFilter* filter, uint32_t index, uint16_t value) {
    return Setting(filter, [=](auto& f) { return f.SetBlueValue(index, value); });
}

uint32_t KyRGBFilter_SetMultipliers(KyRGBFilter* filter, double red, double green, double blue, uint16_t redOffset,
                                    uint16_t greenOffset, uint16_t blueOffset) {
    return Setting(filter,
                   [=](auto& f) { return f.SetMultipliers(red, green, blue, redOffset, greenOffset, blueOffset); });
}
