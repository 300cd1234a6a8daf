#ifndef KYIMGLIB_TESTS_REFERENCE_TYPEFORMAT_H
#define KYIMGLIB_TESTS_REFERENCE_TYPEFORMAT_H

#include <tests/reference/Colour.h>
#include <tests/reference/Gray.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace reference {

enum class Family { kGray, kBayer, kRGB, k565, kYUV422, kYUV444, kYUV411 };

/// A format as its documentation has it; types of the same format differ in flags of the ID.
struct FormatRow {
    std::int64_t id;  ///< colour space and index
    Family family;
    std::uint32_t bits;  ///< of a sample
    std::uint32_t channels = 1;
    Places places = {0, 1, 2};  ///< of red, green and blue, or of Y, U and V
    std::int64_t plain = 0;  ///< the format of the same samples without this order or packing of theirs; 0 for itself
    bool quadTaps = false;
};

inline constexpr FormatRow kFormats[] = {
    {0x10001, Family::kGray, 8},
    {0x10002, Family::kGray, 10},
    {0x10003, Family::kGray, 12},
    {0x10004, Family::kGray, 14},
    {0x10005, Family::kGray, 16},
    {0x10006, Family::kGray, 8, 1, {}, 0x10001, true},
    {0x10007, Family::kGray, 10, 1, {}, 0x10002, true},
    {0x10008, Family::kGray, 10, 1, {}, 0x10002},  // packed as GigE Vision does it
    {0x10009, Family::kGray, 12, 1, {}, 0x10003},
    {0x20010, Family::kBayer, 8},
    {0x20011, Family::kBayer, 10},
    {0x20012, Family::kBayer, 12},
    {0x20013, Family::kBayer, 8},
    {0x20014, Family::kBayer, 10},
    {0x20015, Family::kBayer, 12},
    {0x20016, Family::kBayer, 14},
    {0x20001, Family::k565, 16},
    {0x20002, Family::kRGB, 8, 3},
    {0x20006, Family::kRGB, 8, 3, {2, 1, 0}},
    {0x2000A, Family::kRGB, 8, 3},
    {0x20003, Family::kRGB, 8, 4},
    {0x20007, Family::kRGB, 8, 4, {2, 1, 0}},
    {0x2000B, Family::kRGB, 8, 4},
    {0x20004, Family::kRGB, 16, 3},
    {0x20008, Family::kRGB, 10, 3},
    {0x2000C, Family::kRGB, 12, 3},
    {0x20005, Family::kRGB, 16, 4},
    {0x20009, Family::kRGB, 10, 4},
    {0x2000D, Family::kRGB, 12, 4},
    {0x40001, Family::kYUV422, 8},
    {0x40002, Family::kYUV422, 10},
    {0x40003, Family::kYUV444, 8, 3, {1, 0, 2}},  // U Y V
    {0x40005, Family::kYUV444, 8, 3, {0, 2, 1}},  // Y Cr Cb
    {0x40006, Family::kYUV411, 8},
};

/// Pixels that share bytes, and those bytes.
struct Group {
    std::uint32_t pixels, bytes;
};

/// What a type's ID says of its pixels.
struct TypeFormat : FormatRow {
    std::int64_t type;

    explicit TypeFormat(std::int64_t typeID) : FormatRow(RowOf(typeID)), type(typeID) {}

    bool IsNormalized() const { return (type & 0x00100000) != 0; }
    bool IsInterlaced() const { return (type & 0x00200000) != 0; }
    bool IsPacked() const { return (type & 0x00400000) != 0; }
    bool IsPlanar() const { return (type & 0x00800000) != 0; }
    bool IsDualLines() const { return (type & 0x10000000) != 0; }
    std::int64_t Deinterlaced() const { return type & ~0x00200000; }

    /// Taps of the camera that take turns in a line, and which of them run from right to left.
    Taps CameraTaps() const {
        if (quadTaps) return {false, true, false, true};
        const std::int64_t layout = type & 0x0F000000;
        if (layout == 0) return {false};
        return {layout == 0x04000000 || layout == 0x08000000, layout == 0x02000000 || layout == 0x08000000};
    }

    bool HasOneSample() const { return family == Family::kGray || family == Family::kBayer; }

    /// Position of a sample's highest bit in its byte or word, counted from 1.
    std::uint32_t TopBit() const { return IsNormalized() ? 16 : bits; }

    Group PixelGroup() const {
        const std::uint32_t sampleBytes = bits > 8 ? 2 : 1;
        if (IsPlanar()) return {1, sampleBytes};  // of each plane
        if (family == Family::kYUV422) return {2, 4 * sampleBytes};
        if (family == Family::kYUV411) return {4, 6 * sampleBytes};
        if (HasOneSample() && IsPacked()) return {2, 3};
        return {1, channels * sampleBytes};
    }

    /// Single samples one after the other, right-aligned, line by line; RGB24 where a pixel has several.
    std::int64_t PlainType() const {
        if (!HasOneSample()) return 0x20002;
        return plain != 0 ? plain : id;
    }

private:
    static const FormatRow& RowOf(std::int64_t type) {
        for (const FormatRow& row : kFormats)
            if (row.id == (type & 0x0007FFFF)) return row;
        throw std::out_of_range("no format is known of type " + std::to_string(type));
    }
};

}  // namespace reference

#endif
