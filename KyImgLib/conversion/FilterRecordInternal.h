#ifndef KYIMGLIB_CONVERSION_FILTERRECORDINTERNAL_H
#define KYIMGLIB_CONVERSION_FILTERRECORDINTERNAL_H

#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/pipeline/FilterShape.h>

namespace ky {

/// What is known of one channel's table and of its 8-bit view, kept current by every change.
struct TrackedShape {
    FilterShape8 view;
    FilterShape16 table;
    std::uint32_t viewMismatches;   ///< entries of the 8-bit view that are not their own index
    std::uint32_t tableMismatches;  ///< entries of the table that are not their own index
};

/// Looks for the gain and offset behind a table of 256 bytes and fills the linear part of `shape`; isLinear says
/// whether the arithmetic gives every single entry.
void FitLinear(const std::uint8_t* table, FilterShape8& shape);

/// The same for a table of `entryCount` words.
void FitLinear16(const std::uint16_t* table, std::uint32_t entryCount, FilterShape16& shape);

}  // namespace ky

struct KyRGBFilter::Record : Tables {
    ky::TrackedShape red, green, blue;

    static Record& Of(const KyRGBFilter& filter) { return static_cast<Record&>(*filter.tables); }
};

namespace ky {

struct FilterRecordName : KyRGBFilter {
    using KyRGBFilter::Record;
};
using FilterRecord = FilterRecordName::Record;

}  // namespace ky

#endif
