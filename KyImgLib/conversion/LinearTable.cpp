#include <KyImgLib/conversion/FilterRecordInternal.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace ky {

namespace {

constexpr std::int32_t kNoLine = 256;

/// Fills in the smallest multiplier with which the shape's arithmetic reaches every entry of the table, and the entries
/// that it exceeds by one. Returns their number; kNoLine when they are too many, or are exceeded by more.
std::int32_t FindMultiplier(const std::uint8_t* table, FilterShape8& shape) {
    std::int32_t multiplier = 0;
    const auto lineAt = [&](std::int32_t i) { return shape.offset + (shape.addsIndex ? i : 0); };
    for (std::int32_t i = 1; i < 256; ++i) {
        // What i * multiplier >> shift must be at least.
        const std::int32_t needed = table[i] - lineAt(i);
        if (needed > 0) multiplier = std::max(multiplier, ((needed << shape.shift) + i - 1) / i);
    }
    if (multiplier > 0xFFFF) return kNoLine;
    shape.multiplier = static_cast<std::uint16_t>(multiplier);

    shape.exceptionCount = 0;
    for (std::int32_t i = 0; i < 256; ++i) {
        const std::int32_t excess = std::min(lineAt(i) + (i * multiplier >> shape.shift), 255) - table[i];
        if (excess == 0) continue;
        if (excess > 1 || shape.exceptionCount == std::size(shape.exceptions)) return kNoLine;
        shape.exceptions[shape.exceptionCount++] = static_cast<std::uint8_t>(i);
    }
    return shape.exceptionCount;
}

}  // namespace

// A table filled from gain g and offset b holds floor(i * g) + b, limited to 255. All gains with the same table lie
// between two neighbouring fractions whose denominators are at most n, the last index that is not limited; such
// fractions are at least 1 / (n * n) apart. Gains below 1 have 16 binary places here and n of 255, gains g of 2 and more
// have 15 - log2(g) places and n of 255 / g: in both cases the distance between two multipliers is smaller, so one of
// them serves. Between 1 and 2 there may be none with 15 places, and then the index is added to a gain below 1.
//
// Tables are filled in double precision, though, where a product that should be an integer may come out just below it.
// Gains like 2.3 so miss a line by some entries; these are the exceptions.
void FitLinear(const std::uint8_t* table, FilterShape8& shape) {
    std::int32_t fewest = kNoLine;
    FilterShape8 candidate = shape;
    candidate.isLinear = true;
    candidate.offset = table[0];
    shape.isLinear = false;
    for (const bool addsIndex : {false, true}) {
        candidate.addsIndex = addsIndex;
        for (candidate.shift = 16; candidate.shift >= 8 && fewest > 0; --candidate.shift) {
            const std::int32_t exceptions = FindMultiplier(table, candidate);
            if (exceptions >= fewest) continue;
            fewest = exceptions;
            shape = candidate;
        }
    }
}

// The same argument with 65536 entries at most: neighbouring fractions are at least 1 / (65535 * 65534) apart, which is
// more than 1 / 2^32. The whole part of the gain is the step from entry 0 to entry 1.
void FitLinear16(const std::uint16_t* table, std::uint32_t entryCount, FilterShape16& shape) {
    const std::uint32_t largest = entryCount - 1;
    const auto limited = static_cast<std::uint32_t>(std::find(table, table + entryCount, largest) - table);
    shape.isLinear = false;
    if (limited == 0) return;
    const std::uint32_t last = std::min(limited, entryCount) - 1;
    const std::int64_t offset = table[0];
    const std::int64_t whole = last == 0 ? 0 : table[1] - offset;
    if (whole < 0) return;

    std::int64_t lowest = 0;
    std::int64_t highest = (std::int64_t{1} << 32) - 1;
    for (std::int64_t i = 1; i <= last; ++i) {
        const std::int64_t needed = table[i] - offset - i * whole;
        if (needed < 0) return;
        const auto smallestReaching = [i](std::int64_t value) { return ((value << 32) + i - 1) / i; };
        lowest = std::max(lowest, smallestReaching(needed));
        highest = std::min(highest, smallestReaching(needed + 1) - 1);
        if (lowest > highest) return;
    }
    for (std::uint32_t i = last + 1; i < entryCount; ++i)
        if (table[i] != largest) return;
    shape.isLinear = true;
    shape.offset = static_cast<std::uint16_t>(offset);
    shape.wholeGain = static_cast<std::uint16_t>(whole);
    shape.fractionGain = static_cast<std::uint32_t>(lowest);
    shape.last = static_cast<std::uint16_t>(last);
}

}  // namespace ky
