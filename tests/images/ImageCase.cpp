#include <tests/images/ImageCase.h>
#include <tests/reference/TypeFormat.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <sstream>

namespace {

constexpr std::int64_t kOwn422 = 0x00041001, kOwn422Interlaced = 0x00241001;

std::uint32_t BytesOfCsi2(std::uint32_t pixels) { return (pixels * 5 + 3) / 4; }

std::size_t RoundUp(std::size_t number, std::size_t step) { return (number + step - 1) / step * step; }

class Csi2Type : public KyPixelType {
public:
    Csi2Type() : KyPixelType(kCsi2, 10, 2, true) {}
    KyPixelType* Clone() const override { return new Csi2Type; }
    std::uint32_t GetBufferSizeFor(std::uint32_t width, std::uint32_t height) const override {
        return BytesOfCsi2(width) * height;
    }
};

class Own422Type : public KyPixelType {
public:
    explicit Own422Type(std::int64_t typeID) : KyPixelType(typeID, 16, 2, false) {}
    KyPixelType* Clone() const override { return new Own422Type(GetTypeID()); }
    std::uint32_t GetBufferSizeFor(std::uint32_t width, std::uint32_t height) const override {
        return (width + width % 2) * 2 * height;
    }
};

class Csi2ToBayer8 : public KyPixelConverter {
public:
    Csi2ToBayer8() : KyPixelConverter(kCsi2, kBayer8, 2, 1, 4, 1) {}
    using KyPixelConverter::Convert;
    using KyPixelConverter::GetSourceByteSize;
    std::uint32_t GetSourceByteSize(std::uint32_t count) const override { return BytesOfCsi2(count); }
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        for (std::uint32_t x = 0; x < count; ++x) destination[x] = source[x / 4 * 5 + x % 4];
        return KY_STATUS_SUCCESS;
    }
};

/// Luminance as gray, whole pairs of it.
class Own422ToGray : public KyPixelConverter {
public:
    explicit Own422ToGray(std::int64_t source) : KyPixelConverter(source, KY_TYPE_GRAYSCALE8, 2, 1, 2, 1) {}
    using KyPixelConverter::Convert;
    std::uint32_t Convert(const std::uint8_t* source, std::uint8_t* destination, std::uint32_t count) const override {
        for (std::uint32_t x = 0; x < count + count % 2; ++x) destination[x] = source[2 * x + 1];
        return KY_STATUS_SUCCESS;
    }
};

bool IsChain(const KyPixelConverter& converter) {
    return dynamic_cast<const KyComplexConverter*>(&converter) != nullptr;
}

const std::array<KyRGBFilter*, 3>& Filters() {
    static const std::array<KyRGBFilter*, 3> filters = [] {
        std::array<KyRGBFilter*, 3> made = {};
        for (std::uint32_t i = 0; i < 3; ++i) {
            made[i] = new KyRGBFilter(8 + 4 * i);
            made[i]->SetMultipliers(1.9, 0.8, 1.3, 3, 20, 0);
        }
        return made;
    }();
    return filters;
}

Lines ConvertIdentity(const Shape& shape, const Lines& source, std::uint32_t width, std::uint32_t height,
                      std::uint32_t flags) {
    if (!shape.isInterlaced) return source;
    const std::uint32_t evenField = flags & KY_FLAG_INVERT_DEINTERLACER;
    const std::size_t line = shape.LineBytes(width);
    Lines deinterlaced;
    for (std::uint32_t y = 0; y < height; ++y) {
        const auto from =
            source.begin() + static_cast<std::ptrdiff_t>(((y + evenField) % 2 * (height / 2) + y / 2) * line);
        deinterlaced.insert(deinterlaced.end(), from, from + static_cast<std::ptrdiff_t>(line));
    }
    return deinterlaced;
}

/// The area form, which may leave the last column and line as they are: zero.
Lines ConvertArea(const KyPixelConverter& converter, const Lines& source, std::uint32_t width, std::uint32_t height,
                  std::uint32_t flags, const KyRGBFilter* filter) {
    const Shape from(converter.GetSourceType()), to(converter.GetDestinationType());
    const auto room = static_cast<std::uint32_t>(RoundUp(width, std::max(from.groupPixels, to.groupPixels)));
    const std::size_t fromLine = converter.GetSourceByteSize(room), fromBytes = from.LineBytes(width);
    Lines copy(fromLine * height + 64);
    for (std::uint32_t y = 0; y < height; ++y) std::memcpy(&copy[y * fromLine], &source[y * fromBytes], fromBytes);

    const std::size_t toLine = to.planes > 1 ? room : converter.GetDestinationByteSize(room);
    Lines picture(toLine * height * to.planes + 64);
    if (filter == nullptr)
        converter.Convert(copy.data(), room, height, picture.data(), room, height, room, height, flags, 0);
    else
        converter.Convert(*filter, copy.data(), room, height, picture.data(), room, height, room, height, flags, 0);

    const std::size_t toBytes = to.LineBytes(width);
    Lines cut;
    for (std::size_t y = 0; y < height * to.planes; ++y)
        cut.insert(cut.end(), &picture[y * toLine], &picture[y * toLine] + toBytes);
    return cut;
}

/// Gives an odd last column and line the pixels of the cell before them.
void RepeatLastCell(const Shape& shape, std::uint32_t width, std::uint32_t height, Lines& lines) {
    const std::size_t line = shape.LineBytes(width), pixel = line / width;
    if (width == 1 || height == 1) std::fill(lines.begin(), lines.end(), std::uint8_t{0});
    if (width == 1 || height == 1) return;
    for (std::size_t y = 0; y < height * shape.planes; ++y) {
        std::uint8_t* const pixels = &lines[y * line];
        if (height % 2 != 0 && y % height == height - 1) std::memcpy(pixels, pixels - line, line);
        if (width % 2 != 0) std::memcpy(pixels + line - pixel, pixels + line - 2 * pixel, pixel);
    }
}

}  // namespace

Shape::Shape(std::int64_t type) : isInterlaced((type & 0x00200000) != 0), isCsi2(type == kCsi2) {
    lineStep = isInterlaced ? 2 : 1;
    if (isCsi2) {
        groupPixels = 4, groupBytes = 5, isBayer = true;
        return;
    }
    if (type == kOwn422 || type == kOwn422Interlaced) {
        groupPixels = 2, groupBytes = 4;
        return;
    }
    const reference::TypeFormat format(type);
    isBayer = format.family == reference::Family::kBayer;
    hasTaps = format.CameraTaps().size() > 1 || format.IsDualLines();
    if (format.IsDualLines()) lineStep = 2;
    if (format.IsPlanar()) planes = format.channels;
    groupPixels = format.PixelGroup().pixels, groupBytes = format.PixelGroup().bytes;
}

std::size_t Shape::LineBytes(std::uint32_t width) const {
    if (isCsi2) return BytesOfCsi2(width);
    return RoundUp(width, groupPixels) / groupPixels * groupBytes;
}

Lines ConvertLines(const KyPixelConverter& converter, const Lines& source, std::uint32_t width, std::uint32_t height,
                   std::uint32_t flags, const KyRGBFilter* filter) {
    const Shape from(converter.GetSourceType()), to(converter.GetDestinationType());
    if (dynamic_cast<const KyIdentityConverter*>(&converter) != nullptr)
        return ConvertIdentity(from, source, width, height, flags);
    if (IsChain(converter) && (width % 4 != 0 || height % 2 != 0)) {
        const auto& chain = static_cast<const KyComplexConverter&>(converter);
        const Lines between = ConvertLines(chain.GetFirst(), source, width, height, flags, filter);
        return ConvertLines(chain.GetSecond(), between, width, height, flags, filter);
    }
    Lines lines = ConvertArea(converter, source, width, height, flags, filter);
    const bool isReplicated = from.isBayer && !to.isBayer && (flags & KY_FLAG_BAYER_INTERPOLATE) == 0 &&
                              (converter.GetDestinationType() & KY_COLOUR_SPACE_RGB) != 0;
    if (isReplicated) RepeatLastCell(to, width, height, lines);
    return lines;
}

GuardedImage::Strides GuardedImage::Choose(const Shape& shape, std::uint32_t width, std::uint32_t height, Role role,
                                           support::Random& random) {
    Strides chosen = {};
    const bool hasFields = shape.isInterlaced && role == Role::kSource;
    chosen.parts = hasFields ? 2 : shape.planes;
    chosen.partLines = hasFields ? height / 2 : height;
    chosen.line = shape.LineBytes(width);
    chosen.stride = chosen.line + random.Below(2) * random.Below(70);
    chosen.part = chosen.stride * chosen.partLines + random.Below(2) * random.Below(100);
    if (chosen.parts > 1 && random.Below(4) == 0) {  // in turns
        chosen.part = chosen.line + random.Below(10);
        chosen.stride = chosen.part * chosen.parts + random.Below(10);
    }
    chosen.size = (chosen.parts - 1) * chosen.part + (chosen.partLines - 1) * chosen.stride + chosen.line;
    return chosen;
}

GuardedImage::GuardedImage(std::int64_t type, std::uint32_t width, std::uint32_t height, Role role,
                           support::Random& random)
    : GuardedImage(type, width, height, Choose(Shape(type), width, height, role, random), random) {}

GuardedImage::GuardedImage(std::int64_t type, std::uint32_t width, std::uint32_t height, const Strides& chosen,
                           support::Random& random)
    : strides(chosen),
      buffer(chosen.size,
             random.Below(2) == 0 ? support::GuardedBuffer::Side::kStart : support::GuardedBuffer::Side::kEnd,
             random.Below(2) * random.Below(40)) {
    auto everything = buffer.Accessible();
    random.Fill(everything);
    image.type = type;
    image.width = width;
    image.height = height;
    image.data = buffer.data();
    image.size = strides.size;
    image.stride = strides.stride == strides.line && random.Below(2) == 0 ? 0 : strides.stride;
    const bool isDefault = strides.part == strides.stride * strides.partLines;
    image.planeStride = strides.parts == 1 || (isDefault && random.Below(2) == 0) ? 0 : strides.part;
}

template <typename Work>
void GuardedImage::ForEachLine(Work work) const {
    for (std::uint32_t part = 0; part < strides.parts; ++part)
        for (std::uint32_t line = 0; line < strides.partLines; ++line)
            work(part * strides.part + line * strides.stride, (part * strides.partLines + line) * strides.line);
}

Lines GuardedImage::Read() const {
    Lines lines(strides.line * strides.parts * strides.partLines);
    ForEachLine(
        [&](std::size_t here, std::size_t there) { std::memcpy(&lines[there], image.data + here, strides.line); });
    return lines;
}

std::vector<std::uint8_t> GuardedImage::MemoryWith(const Lines& lines) {
    std::vector<std::uint8_t> memory = Memory();
    ForEachLine([&](std::size_t here, std::size_t there) {
        std::memcpy(&memory[buffer.DataOffset() + here], &lines[there], strides.line);
    });
    return memory;
}

void RegisterApplicationConverters() {
    static const bool once = [] {
        const Csi2Type csi2;
        KyPixelTypeFactory::RegisterPixelType(kCsi2, &csi2, "Bayer RGB 10-bits, CSI-2");
        for (const std::int64_t id : {kOwn422, kOwn422Interlaced}) {
            const Own422Type type(id);
            KyPixelTypeFactory::RegisterPixelType(id, &type, nullptr);
        }
        static const Csi2ToBayer8 unpack;
        static const Own422ToGray gray(kOwn422), grayOfFields(kOwn422Interlaced);
        static std::vector<std::unique_ptr<KyComplexConverter>> chains;
        for (const std::int64_t to : {KY_TYPE_RGB24, KY_TYPE_RGB16, KY_TYPE_RGB24_PLANAR})
            chains.push_back(
                std::make_unique<KyComplexConverter>(&unpack, KyPixelTypeFactory::FindConverter(kBayer8, to)));
        chains.push_back(std::make_unique<KyComplexConverter>(
            &grayOfFields, KyPixelTypeFactory::FindConverter(KY_TYPE_GRAYSCALE8, KY_TYPE_RGB24_PLANAR)));
        return true;
    }();
    static_cast<void>(once);
}

KyConversion RandomConversion(support::Random& random) {
    std::uint32_t flags = 0;
    for (const std::uint32_t flag : {KY_FLAG_INVERT_DEINTERLACER, KY_FLAG_BAYER_INTERPOLATE})
        flags |= random.Below(2) * flag;
    if (const std::uint32_t pattern = random.Below(5); pattern != 0) flags |= 8u << pattern;
    return Conversion(flags, random.Below(2) == 0 ? nullptr : random.Pick(Filters()));
}

std::string Describe(const KyImage& image) {
    std::ostringstream text;
    text << "0x" << std::hex << image.type << std::dec << " " << image.width << "x" << image.height << ", data "
         << static_cast<const void*>(image.data) << ", " << image.size << " bytes, strides " << image.stride << " and "
         << image.planeStride;
    return text.str();
}
