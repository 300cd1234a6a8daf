#include <KyImgLib/conversion/KyRGBFilter.h>

#include <KyImgLib/conversion/FilterRecordInternal.h>

#include <algorithm>
#include <memory>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>
#include <tuple>

namespace {

constexpr std::uint32_t kLargestBitSize = 16;
constexpr std::uint32_t kByteEntries = 256;
constexpr ky::FilterShape8 kIdentityShape = {true, true, false, 0, 8, 1 << 8, 0, {}};

ky::FilterShape16 IdentityShape16(std::uint32_t entryCount) {
    return {true, true, 0, 1, 0, static_cast<std::uint16_t>(entryCount - 1)};
}

/// i x gain + offset as a table entry; the comparison is written so that a NaN becomes 0.
std::uint16_t Entry(std::uint32_t index, double gain, std::uint16_t offset, std::uint32_t entryCount) {
    const double value = index * gain + offset;
    if (value >= entryCount) return static_cast<std::uint16_t>(entryCount - 1);
    return value > 0.0 ? static_cast<std::uint16_t>(value) : std::uint16_t{0};
}

/// Entries that a filter of less than 8 bits does not reach are 0.
template <class Value>
std::unique_ptr<Value[]> IdentityTable(std::uint32_t size, std::uint32_t entryCount) {
    std::unique_ptr<Value[]> table(new Value[size]());
    std::iota(table.get(), table.get() + std::min(entryCount, size), Value{0});
    return table;
}

/// Sets an entry of a table and of its 8-bit view.
std::uint32_t SetValue(std::uint8_t* table8, std::uint16_t* table16, std::uint32_t entryCount,
                       ky::TrackedShape& tracked, std::uint32_t index, std::uint16_t value) {
    if (index >= entryCount || value >= entryCount) return KY_STATUS_BAD_ARGUMENT;
    tracked.tableMismatches -= table16[index] != index;
    tracked.tableMismatches += value != index;
    table16[index] = value;
    tracked.table = tracked.tableMismatches == 0 ? IdentityShape16(entryCount) : ky::FilterShape16{};
    if (index >= kByteEntries) return KY_STATUS_SUCCESS;

    const auto limited = static_cast<std::uint8_t>(std::min<std::uint16_t>(value, 255));
    tracked.viewMismatches -= table8[index] != index;
    tracked.viewMismatches += limited != index;
    table8[index] = limited;
    tracked.view = tracked.viewMismatches == 0 ? kIdentityShape : ky::FilterShape8{};
    return KY_STATUS_SUCCESS;
}

}  // namespace

KyRGBFilter::KyRGBFilter(std::uint32_t bitSize) : tables(nullptr) {
    if (bitSize > kLargestBitSize)
        throw std::length_error("KyRGBFilter takes samples of 0 to 16 bits, not " + std::to_string(bitSize));

    const std::uint32_t entryCount = 1u << bitSize;
    const auto newView = [=] { return IdentityTable<std::uint8_t>(kByteEntries, entryCount); };
    const auto newTable = [=] { return IdentityTable<std::uint16_t>(entryCount, entryCount); };
    auto red8 = newView(), green8 = newView(), blue8 = newView();
    auto red16 = newTable(), green16 = newTable(), blue16 = newTable();

    ky::TrackedShape shape = {};
    shape.viewMismatches = kByteEntries - std::min(entryCount, kByteEntries);
    if (shape.viewMismatches == 0) shape.view = kIdentityShape;
    shape.table = IdentityShape16(entryCount);

    Record* const record = new Record;
    if (record == nullptr) throw std::bad_alloc();
    tables = record;
    tables->bitSize = bitSize;
    tables->entryCount = entryCount;
    tables->indexMask = entryCount - 1;
    tables->red8 = red8.release();
    tables->green8 = green8.release();
    tables->blue8 = blue8.release();
    tables->red16 = red16.release();
    tables->green16 = green16.release();
    tables->blue16 = blue16.release();
    record->red = record->green = record->blue = shape;
}

KyRGBFilter::KyRGBFilter(const KyRGBFilter& other) : KyObject(), tables(other.tables) {}

KyRGBFilter& KyRGBFilter::operator=(const KyRGBFilter& other) {
    tables = other.tables;
    return *this;
}

KyRGBFilter::~KyRGBFilter() {
    for (std::uint8_t* table : {tables->red8, tables->green8, tables->blue8}) delete[] table;
    for (std::uint16_t* table : {tables->red16, tables->green16, tables->blue16}) delete[] table;
    delete static_cast<Record*>(tables);
    tables = nullptr;
}

std::uint32_t KyRGBFilter::GetBitSize() const { return tables->bitSize; }

std::uint32_t KyRGBFilter::GetEntryCount() const { return tables->entryCount; }

std::uint32_t KyRGBFilter::SetMultipliers(double red, double green, double blue, std::uint16_t redOffset,
                                          std::uint16_t greenOffset, std::uint16_t blueOffset) {
    if (red < 0.0 || green < 0.0 || blue < 0.0) return KY_STATUS_BAD_ARGUMENT;
    for (std::uint32_t i = 0; i < GetEntryCount(); ++i) {
        SetRedValue(i, Entry(i, red, redOffset, GetEntryCount()));
        SetGreenValue(i, Entry(i, green, greenOffset, GetEntryCount()));
        SetBlueValue(i, Entry(i, blue, blueOffset, GetEntryCount()));
    }
    Record& record = Record::Of(*this);
    for (auto [view, table, shape] : {std::tuple(tables->red8, tables->red16, &record.red),
                                      std::tuple(tables->green8, tables->green16, &record.green),
                                      std::tuple(tables->blue8, tables->blue16, &record.blue)}) {
        ky::FitLinear(view, shape->view);
        ky::FitLinear16(table, tables->entryCount, shape->table);
    }
    return KY_STATUS_SUCCESS;
}

std::uint32_t KyRGBFilter::SetMultipliers(double red, double green, double blue) {
    return SetMultipliers(red, green, blue, 0, 0, 0);
}

std::uint32_t KyRGBFilter::SetRedValue(std::uint32_t index, std::uint16_t value) {
    return SetValue(tables->red8, tables->red16, GetEntryCount(), Record::Of(*this).red, index, value);
}

std::uint32_t KyRGBFilter::SetGreenValue(std::uint32_t index, std::uint16_t value) {
    return SetValue(tables->green8, tables->green16, GetEntryCount(), Record::Of(*this).green, index, value);
}

std::uint32_t KyRGBFilter::SetBlueValue(std::uint32_t index, std::uint16_t value) {
    return SetValue(tables->blue8, tables->blue16, GetEntryCount(), Record::Of(*this).blue, index, value);
}
