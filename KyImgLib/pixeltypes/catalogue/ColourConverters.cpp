#include <KyImgLib/converters/colour/KyRGBtoRGB.h>
#include <KyImgLib/converters/colour/KyYUV10ToRGB.h>
#include <KyImgLib/converters/colour/KyYUV8411ToRGB.h>
#include <KyImgLib/converters/colour/KyYUV8444ToRGB.h>
#include <KyImgLib/converters/colour/KyYUV8ToRGB.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

namespace ky {

namespace {

/// An RGB source of bytes: how many more each channel has than one, and the order of the channels.
struct ByteSource {
    std::int64_t id;
    std::uint32_t extra;
    bool order;
};

// Of left-aligned words the high byte is all that counts.
constexpr ByteSource kThreeChannels[] =
    {
        {0x00020002, 0, kRGB}, {0x00420002, 0, kRGB}, {0x00020006, 0, kBGR},
        {0x00420006, 0, kBGR}, {0x0002000A, 0, kRGB}, {0x0042000A, 0, kRGB},
        {0x00120004, 1, kRGB}, {0x00120008, 1, kRGB}, {0x0012000C, 1, kRGB},  // normalized 3 x 16, 10, 12 bits
};
constexpr ByteSource kFourChannels[] = {
    {0x00020003, 0, kRGB}, {0x00020007, 0, kBGR}, {0x0002000B, 0, kRGB}, {0x0042000B, 0, kRGB},
    {0x00120005, 1, kRGB}, {0x00120009, 1, kRGB}, {0x0012000D, 1, kRGB},  // normalized 4 x 16, 10, 12 bits
};

/// A source of words, and the shift that brings its samples to 8 bits.
struct WordSource {
    std::int64_t id;
    std::uint32_t shift;
};

constexpr WordSource kThreeWords[] = {{0x00020004, 8}, {0x00020008, 2}, {0x0002000C, 4}};  // 16, 10, 12 bits
constexpr WordSource kFourWords[] = {{0x00020005, 8}, {0x00020009, 2}, {0x0002000D, 4}};
constexpr WordSource kYUV422Words[] = {
    {0x00040002, 2}, {0x00240002, 2}, {0x00140002, 8}, {0x00340002, 8},  // 10 bits, right- and left-aligned
};

/// A 4:4:4 source and the bytes of a pixel that hold Y, U and V.
struct YUV444Source {
    std::int64_t id;
    std::uint32_t y, u, v;
};

constexpr YUV444Source kYUV444Sources[] = {
    {0x00440003, 1, 0, 2},
    {0x00640003, 1, 0, 2},  // U Y V, the order of IIDC and of GigE Vision
    {0x00440005, 0, 2, 1},
    {0x00640005, 0, 2, 1},  // Y Cr Cb
};

constexpr std::int64_t kYUV422Sources[] = {0x00040001, 0x00240001};
constexpr std::int64_t kYUV411Sources[] = {0x00440006, 0x00640006};

/// The converters to all destinations that have an order; `arguments` come after it. A type needs none to itself: it has
/// the identity.
template <typename To24, typename To32, typename... Arguments>
void AddOrders(Constructor& construct, std::int64_t source, Arguments... arguments) {
    for (const bool order : {kRGB, kBGR}) {
        if (source != (order == kBGR ? KY_TYPE_BGR24 : KY_TYPE_RGB24)) construct.Add<To24>(source, order, arguments...);
        if (source != (order == kBGR ? KY_TYPE_BGR32 : KY_TYPE_RGB32)) construct.Add<To32>(source, order, arguments...);
    }
}

/// From words, where the shift comes before the order.
template <typename To16, typename To24, typename To32>
void AddFromWords(Constructor& construct, const WordSource& source) {
    construct.Add<To16>(source.id, source.shift);
    for (const bool order : {kRGB, kBGR}) {
        construct.Add<To24>(source.id, source.shift, order);
        construct.Add<To32>(source.id, source.shift, order);
    }
}

void ConstructRGBConverters(Constructor& construct) {
    for (const auto& [source, extra, order] : kThreeChannels) {
        construct.Add<KyRGB24ToRGB16>(source, extra, order);
        construct.Add<KyRGB24ToRGB24Planar>(source, extra, order);
        AddOrders<KyRGB24ToRGB24, KyRGB24ToRGB32>(construct, source, extra, order);
    }
    for (const auto& [source, extra, order] : kFourChannels) {
        construct.Add<KyRGB32ToRGB16>(source, extra, order);
        AddOrders<KyRGB32ToRGB24, KyRGB32ToRGB32>(construct, source, extra, order);
    }
    for (const WordSource& source : kThreeWords)
        AddFromWords<KyRGB48ToRGB16, KyRGB48ToRGB24, KyRGB48ToRGB32>(construct, source);
    for (const WordSource& source : kFourWords)
        AddFromWords<KyRGB64ToRGB16, KyRGB64ToRGB24, KyRGB64ToRGB32>(construct, source);
    AddOrders<KyRGB16ToRGB24, KyRGB16ToRGB32>(construct, KY_TYPE_RGB16);
}

void ConstructYUVConverters(Constructor& construct) {
    constexpr std::uint32_t kNoExtra = 0;
    for (const std::int64_t source : kYUV422Sources) {
        construct.Add<KyYUV8ToRGB16>(source, kNoExtra);
        AddOrders<KyYUV8ToRGB24, KyYUV8ToRGB32>(construct, source, kNoExtra);
    }
    for (const auto& [source, shift] : kYUV422Words) {
        construct.Add<KyYUV10ToRGB16>(source, shift);
        AddOrders<KyYUV10ToRGB24, KyYUV10ToRGB32>(construct, source, shift);
    }
    for (const auto& [source, y, u, v] : kYUV444Sources) {
        construct.Add<KyYUV8444ToRGB16>(source, kNoExtra, y, u, v);
        AddOrders<KyYUV8444ToRGB24, KyYUV8444ToRGB32>(construct, source, kNoExtra, y, u, v);
    }
    for (const std::int64_t source : kYUV411Sources) {
        construct.Add<KyYUV8411ToRGB16>(source);
        AddOrders<KyYUV8411ToRGB24, KyYUV8411ToRGB32>(construct, source);
    }
}

}  // namespace

void ConstructColourConverters(Constructor& construct) {
    ConstructRGBConverters(construct);
    ConstructYUVConverters(construct);
}

}  // namespace ky
