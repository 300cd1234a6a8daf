#include <KyImgLib/images/LayoutInternal.h>

#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>
#include <KyImgLib/pixeltypes/TypeTextInternal.h>
#include <KyImgLib/platform/RefusalInternal.h>

#include <algorithm>
#include <cstdint>

namespace ky {

namespace {

/// What no image can need: larger objects than this are not possible in C++.
constexpr std::uint64_t kTooMuch = PTRDIFF_MAX;

// Sums and products that stop at kTooMuch; so do their operands.
std::uint64_t Limit(std::uint64_t a) { return std::min(a, kTooMuch); }
std::uint64_t Sum(std::uint64_t a, std::uint64_t b) { return Limit(a + b); }
std::uint64_t Product(std::uint64_t a, std::uint64_t b) { return b != 0 && a > kTooMuch / b ? kTooMuch : Limit(a * b); }

/// Types of four taps, which have no bits of their own in an ID.
constexpr std::int64_t kQuadTaps[] = {KY_COLOUR_SPACE_GRAYSCALE | 6, KY_COLOUR_SPACE_GRAYSCALE | 7};

bool IsQuadTaps(std::int64_t id) {
    const std::int64_t format = id & (KY_COLOUR_SPACE_MASK | KY_TYPE_INDEX_MASK);
    return std::find(std::begin(kQuadTaps), std::end(kQuadTaps), format) != std::end(kQuadTaps);
}

/// Whether the type's class has a buffer size other than KyPixelType's.
bool HasOwnRule(const KyPixelType& type) {
    if ((type.GetTypeID() & KY_TYPE_PLANAR) != 0) return false;
    for (const std::uint32_t width : {1u, 3u, 64u})
        if (type.GetBufferSizeFor(width, 1) != type.KyPixelType::GetBufferSizeFor(width, 1)) return true;
    return false;
}

/// The fewest pixels whose bytes repeat; none when no number does.
PixelGroup FindGroup(const KyPixelType& type) {
    constexpr std::uint32_t kMost = 64;
    for (std::uint32_t pixels = 1; pixels <= kMost; ++pixels) {
        const std::uint32_t bytes = type.GetBufferSizeFor(pixels, 1);
        if (type.GetBufferSizeFor(pixels * kMost, 1) == bytes * kMost) return {pixels, bytes};
    }
    return {0, 0};
}

/// Bytes from one line to the next in the other planes: as many as their pixels have of those of the first plane.
std::uint64_t OtherStride(const Layout& layout, std::uint64_t stride) {
    if (layout.otherPlanes.count == 0) return stride;
    const PixelGroup& other = layout.otherPlanes.group;
    const std::uint64_t bytes = Product(stride, std::uint64_t{other.bytes} * layout.groupPixels);
    const std::uint64_t ofBytes = std::uint64_t{other.pixels} * layout.groupBytes;
    return bytes / ofBytes + (bytes % ofBytes != 0);
}

}  // namespace

std::uint64_t Layout::LineBytes(std::uint32_t width) const {
    const std::uint32_t rest = width % groupPixels;
    const std::uint64_t whole = std::uint64_t{width / groupPixels} * groupBytes;
    if (rest == 0) return whole;
    return whole + (hasOwnRule ? type->GetBufferSizeFor(rest, 1) : groupBytes);
}

Layout Layout::Deinterlaced() const {
    Layout deinterlaced = *this;
    deinterlaced.fields = 1;
    return deinterlaced;
}

std::uint32_t FindLayout(const char* role, std::int64_t id, Layout& layout) {
    const KyPixelType* const type = KyPixelTypeFactory::FindPixelType(id);
    if (type == nullptr)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << role << ".type is " << TypeText{id} << ", expected a registered type";
    layout = {};
    layout.type = type;
    layout.hasOwnRule = HasOwnRule(*type);
    const PixelFormat format = FormatOf(*type);
    const PixelGroup group = layout.hasOwnRule ? FindGroup(*type) : format.group;
    if (group.pixels == 0)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << role << ".type is " << TypeText{id}
               << ", whose buffer size does not grow evenly with the width: expected groups of at most 64 pixels";
    layout.groupPixels = group.pixels;
    layout.groupBytes = group.bytes;
    layout.otherPlanes = format.otherPlanes;
    const bool isPlanar = (id & KY_TYPE_PLANAR) != 0, isInterlaced = (id & KY_TYPE_INTERLACED) != 0;
    layout.fields = isInterlaced && !isPlanar ? 2 : 1;
    layout.lineStep = isInterlaced || (id & KY_TAP_LAYOUT_MASK) == KY_TAP_DUAL_LINES ? 2 : 1;
    layout.hasTaps = (id & KY_TAP_LAYOUT_MASK) != 0 || IsQuadTaps(id);
    return KY_STATUS_SUCCESS;
}

std::uint32_t PlaceImage(const char* role, const KyImage& image, const Layout& layout, Placement& place) {
    if (image.height % layout.lineStep != 0)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << role << ".height is " << image.height << ", type "
                                               << TypeText{image.type} << " needs an even number of lines";
    place = {};
    place.parts = layout.Planes() * layout.fields;
    Placement::Part &first = place.first, &others = place.others;
    const OtherPlanes& planes = layout.otherPlanes;
    first.sharedLines = others.sharedLines = layout.fields;
    first.lines = others.lines = image.height / layout.fields;
    if (planes.count > 0) {
        others.sharedLines = planes.sharedLines;
        others.lines = planes.Lines(image.height);
    }
    if (image.width == 0 || image.height == 0) return KY_STATUS_SUCCESS;

    const std::uint64_t line = layout.LineBytes(image.width);
    const std::uint64_t otherLine = planes.count > 0 ? planes.LineBytes(image.width) : line;
    if (image.stride != 0 && image.stride < line)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << role << ".stride is " << image.stride << ", a line of " << image.width << " pixels of type "
               << TypeText{image.type} << " has " << line << " bytes";
    const std::uint64_t stride = image.stride != 0 ? Limit(image.stride) : line;
    const std::uint64_t otherStride = image.stride != 0 ? OtherStride(layout, stride) : otherLine;
    if (otherStride < otherLine)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << role << ".stride is " << image.stride << ", which leaves " << otherStride
               << " bytes for a line of the other planes: " << image.width << " pixels of type " << TypeText{image.type}
               << " have " << otherLine << " there";
    const std::uint64_t part = Sum(Product(first.lines - 1, stride), line);
    const std::uint64_t otherPart = Sum(Product(others.lines - 1, otherStride), otherLine);
    const bool areAlike = layout.ArePlanesAlike();
    const std::uint64_t firstStride = image.planeStride != 0 ? Limit(image.planeStride) : Product(first.lines, stride);
    const std::uint64_t othersStride = areAlike ? firstStride : Product(others.lines, otherStride);
    const std::uint64_t fromFirstToLast =
        place.parts > 1 ? Sum(firstStride, Product(place.parts - 2, othersStride)) : 0;
    const bool takeTurns = areAlike && firstStride >= line && Sum(fromFirstToLast, line) <= stride;
    if (place.parts > 1 && firstStride < part && !takeTurns)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << role << ".planeStride is " << image.planeStride << ", each of the " << place.parts
               << (layout.fields == 2 ? " fields has " : " planes has ") << (areAlike ? "" : "up to ") << part
               << " bytes: " << first.lines << " lines, " << stride << " bytes apart";
    const std::uint64_t size = Sum(fromFirstToLast, place.parts > 1 ? otherPart : part);
    if (size >= kTooMuch)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << role << " of " << image.width << "x" << image.height << " pixels of type " << TypeText{image.type}
               << ", lines " << image.stride << " and planes " << image.planeStride
               << " bytes apart, needs more bytes than can be addressed";
    // Where there is no next line, nobody shall compute where it would be.
    first.lineBytes = static_cast<std::size_t>(line);
    first.stride = static_cast<std::size_t>(first.lines > 1 ? stride : line);
    others.lineBytes = static_cast<std::size_t>(otherLine);
    others.stride = static_cast<std::size_t>(others.lines > 1 ? otherStride : otherLine);
    place.firstStride = static_cast<std::size_t>(place.parts > 1 ? firstStride : 0);
    place.othersStride = static_cast<std::size_t>(place.parts > 2 ? othersStride : 0);
    place.size = static_cast<std::size_t>(size);
    return KY_STATUS_SUCCESS;
}

std::uint32_t CheckBuffer(const char* role, const KyImage& image, const Placement& place) {
    if (place.size == 0) return KY_STATUS_SUCCESS;
    if (image.data == nullptr)
        return Refusal(KY_STATUS_BAD_ARGUMENT) << role << ".data is null, expected " << place.size << " bytes";
    if (image.size < place.size) {
        Refusal refusal(KY_STATUS_BAD_ARGUMENT);
        refusal << role << " holds " << image.size << " bytes, " << image.width << "x" << image.height << " of type "
                << TypeText{image.type} << " needs " << place.size;
        if (image.stride != 0) refusal << " with lines " << image.stride << " bytes apart";
        if (place.parts > 1 && image.planeStride != 0)
            refusal << " with planes or fields " << image.planeStride << " bytes apart";
        return refusal;
    }
    if (UINTPTR_MAX - reinterpret_cast<std::uintptr_t>(image.data) < place.size)
        return Refusal(KY_STATUS_BAD_ARGUMENT)
               << role << " needs " << place.size << " bytes, which do not fit between its data and the end of memory";
    return KY_STATUS_SUCCESS;
}

}  // namespace ky
