#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/converters/bayer/KyBayerRGB8ToRGB.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

namespace ky {

namespace {

constexpr std::uint32_t kReserved = 0;

/// A Bayer source of which one byte is read, and how many bytes come before it in each pixel.
struct BayerByteSource {
    std::int64_t id;
    std::uint32_t bytesBefore;
};

constexpr BayerByteSource kBayerByteSources[] = {
    {0x00020010, 0},                   // 8 bits
    {0x00020013, 0}, {0x00120011, 1},  // normalized words: the high byte
    {0x00120012, 1}, {0x00120014, 1}, {0x00120015, 1}, {0x00120016, 1},
};

/// A Bayer source of words, and the shift that brings its samples to 8 bits.
struct BayerWordSource {
    std::int64_t id;
    std::uint32_t shift;
};

constexpr BayerWordSource kBayerWordSources[] = {
    {0x00020011, 2},                   // 10 bits
    {0x00020014, 2}, {0x00020012, 4},  // 12 bits
    {0x00020015, 4}, {0x00020016, 6},  // 14 bits
};

}  // namespace

void ConstructBayerConverters(Constructor& construct) {
    for (const auto& [source, bytesBefore] : kBayerByteSources) {
        construct.Add<KyBayerRGB8ToRGB16>(source, bytesBefore, kReserved);
        for (const bool order : {kRGB, kBGR}) {
            construct.Add<KyBayerRGB8ToRGB24>(source, order, bytesBefore, kReserved);
            construct.Add<KyBayerRGB8ToRGB32>(source, order, bytesBefore, kReserved);
        }
    }
    for (const auto& [source, shift] : kBayerWordSources) {
        construct.Add<KyBayerRGB16ToRGB16>(source, shift, kReserved);
        for (const bool order : {kRGB, kBGR}) {
            construct.Add<KyBayerRGB16ToRGB24>(source, order, shift, kReserved);
            construct.Add<KyBayerRGB16ToRGB32>(source, order, shift, kReserved);
        }
    }
}

}  // namespace ky
